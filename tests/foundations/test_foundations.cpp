// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "foundations/GLBackground.h"
#include "foundations/GLOrvanePropertyPage.h"
#include "foundations/LibraryEntry.h"
#include "glbase/FrameFixture.h"
#include "platform/gui/ColorSet.h"
#include "platform/startup/TranslationCenter.h"

#include <QCheckBox>
#include <QDoubleSpinBox>
#include <QLabel>

namespace {

TEST(SettingsPage, HasTheRowsAskedFor)
{
    const QStringList rows{"XAxis Min: ", "XAxis Max: ",   "YAxis Min: ", "YAxis Max: ",
                           "Show Grid: ", "Buffer Size: ", "Aging: ",     "s"};
    for (const int extra : {0, 1, 2, 3}) {
        const GLOrvanePropertyPage page(nullptr, "p\xe9ge", extra & 1, extra & 2);
        QStringList labels;
        for (const auto* label : page.findChildren<QLabel*>())
            labels << label->text();
        EXPECT_EQ(labels, rows.mid(0, 5) + rows.mid(5, extra & 1) + rows.mid(6, extra & 2));
        EXPECT_EQ(page.objectName(), QString::fromUtf8("p\u00e9ge"));
    }
}

TEST(SettingsPage, SetsRangeBeforeValueAndAnswersWhatItShows)
{
    using Page = GLOrvanePropertyPage;
    struct
    {
        void (Page::*set)(double, double, double, bool);
        double (Page::*get)() const;
        double value, shown;
    } const rows[] = {{&Page::SetXAxisMin, &Page::GetXAxisMin, -99, -99},
                      {&Page::SetXAxisMax, &Page::GetXAxisMax, -1e9, -1000}, // clamped
                      {&Page::SetYAxisMin, &Page::GetYAxisMin, 7, 7},
                      {&Page::SetYAxisMax, &Page::GetYAxisMax, 1e9, 500},
                      {&Page::SetAging, &Page::GetAging, 1.234, 1.23}}; // two decimals
    for (const bool isFull : {true, false}) {
        Page page(nullptr, nullptr, isFull, isFull);
        const auto editors = page.findChildren<QDoubleSpinBox*>();
        ASSERT_EQ(editors.size(), isFull ? 5 : 4);
        for (const auto& row : rows)
            (page.*row.set)(-1000, 500, row.value, row.value > 0);
        for (int i = 0; i < 5; ++i) {
            const bool isThere = i < editors.size();
            EXPECT_EQ((page.*rows[i].get)(), isThere ? rows[i].shown : 0) << i;
            EXPECT_TRUE(!isThere || editors[i]->isEnabled() == (rows[i].value > 0)) << i;
        }
        page.SetBufferSize(100, 10000, 12345, true);
        EXPECT_EQ(page.GetBufferSize(), isFull ? 10000 : 0);
        page.SetShowGrid(true, false);
        EXPECT_TRUE(page.GetShowGrid() && !page.findChild<QCheckBox*>()->isEnabled());
    }
}

TEST(Background, FillsTheWidgetAndLeavesThePainterAlone)
{
    ColorSet::Instance()[IColorBase::colBackground] = Qt::black;
    ColorSet::Instance()[IColorBase::colBackgroundEnd] = Qt::white;
    // Whether a gradient, horizontal, inverted; grey levels left at the top, right, and at the
    // bottom.
    const std::tuple<bool, bool, bool, int, int, int> rows[] = {{true, true, false, 0, 255, 0},
                                                                {true, true, true, 255, 0, 255},
                                                                {true, false, false, 0, 0, 255},
                                                                {true, false, true, 255, 255, 0},
                                                                {false, true, true, 255, 255, 255}};
    const auto canvas = std::make_shared<Canvas>("Canvas");
    GLLayout layout;
    layout.AddWidget(canvas);
    layout.resize(80, 40);
    for (const auto& [isGradient, isHorizontal, isInverted, leftTop, rightTop, leftBottom] : rows) {
        GLBackground background;
        background.m_gradient = isGradient;
        background.m_horizontal = isHorizontal;
        background.m_inverted = isInverted;
        canvas->paint = [&](GLPainter& painter) {
            painter.setPen(QPen(Qt::red));
            background.Draw(painter, canvas.get(), 0);
            EXPECT_EQ(painter.pen().color(), QColor(Qt::red));
            EXPECT_EQ(painter.depth(), 0);
        };
        QImage image(80, 40, QImage::Format_RGB32);
        QPainter painter(&image);
        layout.Render(painter);
        // No outline: the corners belong to the gradient, too.
        EXPECT_NEAR(qRed(image.pixel(0, 0)), leftTop, 8);
        EXPECT_NEAR(qRed(image.pixel(79, 0)), rightTop, 8);
        EXPECT_NEAR(qRed(image.pixel(0, 39)), leftBottom, 8);
    }
}

TEST(LibraryEntry, ActsOnProcessAttachAndDetachOnly)
{
    using Reason = LibraryReason;
    for (const auto& [reason, expected] : {std::pair(Reason::ThreadAttach, 1),
                                           {Reason::ThreadDetach, 1},
                                           {Reason::ProcessDetach, 0},
                                           {Reason::ProcessAttach, 1}}) {
        EXPECT_TRUE(OrvaneLibraryEntry(reason));
        EXPECT_EQ(TranslationCenter::Instance().Registered().count("Orvane"), expected);
    }
}

} // namespace
