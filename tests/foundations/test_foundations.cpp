// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "foundations/GLBackground.h"
#include "foundations/GLOrvanePropertyPage.h"
#include "foundations/LibraryEntry.h"
#include "foundations/TraceHistory.h"
#include "platform/glbase/GLLayout.h"
#include "platform/glbase/GLPainter.h"
#include "platform/gui/ColorSet.h"
#include "platform/startup/TranslationCenter.h"

#include <QCheckBox>
#include <QDoubleSpinBox>
#include <QGridLayout>
#include <QLabel>
#include <QPainter>

#include <gtest/gtest.h>

#include <functional>

namespace {

struct CountedRecord
{
    static inline int alive = 0;
    CountedRecord() { ++alive; }
    ~CountedRecord() { --alive; }
};

TEST(TraceHistory, ReusesTheRecordRecycledLastAndFreesEachOnce)
{
    std::vector<CountedRecord*> records;
    std::vector<CountedRecord*> freeRecords;
    traceHistory::removeRecord(records, freeRecords);
    EXPECT_TRUE(records.empty() && freeRecords.empty());

    CountedRecord* first = traceHistory::addRecord(records, freeRecords);
    CountedRecord* second = traceHistory::addRecord(records, freeRecords);
    EXPECT_EQ(records, (std::vector<CountedRecord*>{second, first}));
    traceHistory::removeRecord(records, freeRecords); // first, the oldest
    traceHistory::removeRecord(records, freeRecords);
    EXPECT_EQ(traceHistory::addRecord(records, freeRecords), second);
    EXPECT_EQ(traceHistory::addRecord(records, freeRecords), first);
    traceHistory::removeRecord(records, freeRecords);
    EXPECT_EQ(CountedRecord::alive, 2);

    traceHistory::freeHistory(records, freeRecords);
    EXPECT_EQ(CountedRecord::alive, 0);
    EXPECT_TRUE(records.empty() && freeRecords.empty());
}

QString textAt(const QGridLayout& grid, int row, int column)
{
    auto* item = grid.itemAtPosition(row, column);
    auto* label = item ? qobject_cast<QLabel*>(item->widget()) : nullptr;
    return label ? label->text() : QString();
}

TEST(SettingsPage, HasTheRowsAskedFor)
{
    for (const bool buffer : {false, true}) {
        for (const bool aging : {false, true}) {
            const GLOrvanePropertyPage page(nullptr, "p\xe9ge", buffer, aging);
            EXPECT_EQ(page.objectName(), QString::fromUtf8("p\u00e9ge"));
            const auto& grid = *qobject_cast<QGridLayout*>(page.layout());
            EXPECT_EQ(grid.itemAtPosition(0, 0), nullptr);
            EXPECT_EQ(grid.rowStretch(0), 2);
            EXPECT_EQ(grid.columnStretch(4), 2);
            EXPECT_EQ(grid.columnMinimumWidth(1), 75);
            QStringList texts{
                "XAxis Min: ", "XAxis Max: ", "YAxis Min: ", "YAxis Max: ", "Show Grid: "};
            if (buffer)
                texts << "Buffer Size: ";
            if (aging)
                texts << "Aging: ";
            EXPECT_EQ(grid.rowCount(), texts.size() + 1);
            for (int row = 1; row < grid.rowCount(); ++row) {
                EXPECT_EQ(textAt(grid, row, 0), texts[row - 1]);
                EXPECT_EQ(grid.itemAtPosition(row, 0)->alignment(), Qt::AlignLeft);
                EXPECT_EQ(grid.itemAtPosition(row, 1)->alignment(), Qt::Alignment());
                EXPECT_EQ(textAt(grid, row, 2), texts[row - 1] == "Aging: " ? "s" : "");
            }
        }
    }
    EXPECT_TRUE(GLOrvanePropertyPage(nullptr, nullptr, false, false).objectName().isEmpty());
}

TEST(SettingsPage, SetsRangeBeforeValueAndAnswersWhatItShows)
{
    GLOrvanePropertyPage page(nullptr, "page", true, true);
    page.SetYAxisMin(-10000.0, 10000.0, -5.0, true);
    EXPECT_EQ(page.GetYAxisMin(), -5.0);
    page.SetXAxisMin(-100.0, 0.0, 7.0, false); // clamped, disabled
    EXPECT_EQ(page.GetXAxisMin(), 0.0);
    page.SetAging(0.0, 10.0, 0.004, true); // two decimals
    EXPECT_EQ(page.GetAging(), 0.0);
    page.SetBufferSize(100, 10000, 12345, true);
    EXPECT_EQ(page.GetBufferSize(), 10000);
    page.SetShowGrid(true, false);
    EXPECT_TRUE(page.GetShowGrid());
    EXPECT_FALSE(page.findChild<QCheckBox*>()->isEnabled());

    GLOrvanePropertyPage bare(nullptr, "bare", false, false);
    bare.SetAging(0.0, 10.0, 1.0, true);
    bare.SetBufferSize(100, 10000, 1000, true);
    EXPECT_EQ(bare.GetAging(), 0.0);
    EXPECT_EQ(bare.GetBufferSize(), 0);
}

/// A GL widget that is painted by a function.
class Canvas : public GLBaseWidget
{
public:
    explicit Canvas(std::function<void(GLPainter&, GLBaseWidget*)> paint)
        : GLBaseWidget("Canvas", nullptr)
        , m_paint(std::move(paint))
    {}

protected:
    void paintEvent(QPaintEvent*) override
    {
        GLPainter painter(GetFrameWidget());
        m_paint(painter, this);
    }

private:
    std::function<void(GLPainter&, GLBaseWidget*)> m_paint;
};

QImage render(const std::function<void(GLPainter&, GLBaseWidget*)>& paint)
{
    GLLayout layout;
    layout.AddWidget(std::make_shared<Canvas>(paint));
    layout.resize(80, 40);
    QImage image(80, 40, QImage::Format_RGB32);
    image.fill(Qt::magenta);
    QPainter painter(&image);
    layout.Render(painter);
    return image;
}

TEST(Background, FillsTheWidgetAndLeavesThePainterAlone)
{
    ColorSet::Instance()[IColorBase::colBackground] = Qt::black;
    ColorSet::Instance()[IColorBase::colBackgroundEnd] = Qt::white;
    struct Case
    {
        bool gradient, horizontal, inverted;
        int leftTop, rightTop, leftBottom; // grey levels
    };
    for (const Case& c : {Case{true, true, false, 0, 255, 0}, Case{true, true, true, 255, 0, 255},
                          Case{true, false, false, 0, 0, 255}, Case{true, false, true, 255, 255, 0},
                          Case{false, true, true, 255, 255, 255}}) {
        const QImage image = render([&c](GLPainter& painter, GLBaseWidget* widget) {
            GLBackground background;
            background.m_gradient = c.gradient;
            background.m_horizontal = c.horizontal;
            background.m_inverted = c.inverted;
            painter.setPen(QPen(Qt::red));
            painter.setBrush(QBrush(Qt::blue));
            background.Draw(painter, widget, 0);
            EXPECT_EQ(painter.pen().color(), QColor(Qt::red));
            EXPECT_EQ(painter.brush().color(), QColor(Qt::blue));
            EXPECT_EQ(painter.depth(), 0);
        });
        // No outline: the corners belong to the gradient, too.
        EXPECT_NEAR(qRed(image.pixel(0, 0)), c.leftTop, 8);
        EXPECT_NEAR(qRed(image.pixel(79, 0)), c.rightTop, 8);
        EXPECT_NEAR(qRed(image.pixel(0, 39)), c.leftBottom, 8);
    }
    GLBackground background;
    EXPECT_EQ(background.GetDescription(), QStringLiteral("Default background implementation"));
    background.SetDescription(QStringLiteral("Paper"));
    EXPECT_EQ(background.GetDescription(), QStringLiteral("Paper"));
}

TEST(LibraryEntry, ActsOnProcessAttachAndDetachOnly)
{
    const auto registered = [] {
        return TranslationCenter::Instance().Registered().count(QStringLiteral("Orvane"));
    };
    ASSERT_EQ(registered(), 1); // the library is linked
    EXPECT_TRUE(OrvaneLibraryEntry(LibraryReason::ThreadAttach));
    EXPECT_TRUE(OrvaneLibraryEntry(LibraryReason::ThreadDetach));
    EXPECT_EQ(registered(), 1);
    EXPECT_TRUE(OrvaneLibraryEntry(LibraryReason::ProcessDetach));
    EXPECT_EQ(registered(), 0);
    EXPECT_TRUE(OrvaneLibraryEntry(LibraryReason::ProcessAttach));
    EXPECT_EQ(registered(), 1);
}

} // namespace
