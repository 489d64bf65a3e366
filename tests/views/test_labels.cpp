// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
// What stands beside the axes of each view, read as it is drawn.
#include "glwidgets/TextRecorder.h"
#include "platform/gui/ColorSet.h"
#include "platform/values/Tree.h"
#include "views/VCGLEyeDiagram.h"
#include "views/VCGLIQDiagram.h"
#include "views/VCGLTimeDiagram.h"

#include <QApplication>
#include <QTest>

#include <gtest/gtest.h>

#include <array>

namespace {

int difference(const QColor& a, const QColor& b)
{
    return std::abs(a.red() - b.red()) + std::abs(a.green() - b.green()) +
           std::abs(a.blue() - b.blue());
}

template<class View>
struct Labels : testing::Test
{
    static constexpr bool isEye = std::is_same_v<View, VCGLEyeDiagram>;
    static constexpr bool isIq = std::is_same_v<View, VCGLIQDiagram>;

    Labels()
    {
        for (int i = 0; i < 5; ++i)
            ends[i] = tree.Create<values::ValueNumeric<double>>(QString::number(i));
        ends[4]->SetValue(1.0);
        if constexpr (!isIq)
            view.SetBaudrate_ValuePath("4");
        view.SetXAxisMin_ValuePath("0");
        view.SetXAxisMax_ValuePath("1");
        view.SetYAxisMin_ValuePath("2");
        view.SetYAxisMax_ValuePath("3");
        view.resize(520, 380);
        view.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&view));
    }
    ~Labels() override
    {
        for (int i = 0; i < 5; ++i)
            tree.Remove(QString::number(i));
        QApplication::setFont(font);
        colors.SetScheme(ColorSet::Scheme::Dark);
    }
    QRect place(int index) const { return view.Widgets().at(index)->geometry(); }
    /// At a distance along an axis and one across.
    QColor at(const QRect& area, bool isX, int along, int across) const
    {
        return picture.pixelColor(area.topLeft() +
                                  (isX ? QPoint(along, across) : QPoint(across, along)));
    }

    void check(const TextRecorder::Text& label, bool isX, double start, double stop)
    {
        SCOPED_TRACE((isX ? "X " : "Y ") + label.text.toStdString());
        const QRect plot = place(1);
        const int length = isX ? plot.width() : plot.height();
        const int offset = int((length - 1) * (label.text.toDouble() - start) / (stop - start));
        // An eye has a row for the start of Y, the others have it one below the last.
        const int pixel = isX ? offset : length - offset - isEye;
        const QRect box = label.box.toAlignedRect();
        EXPECT_TRUE(place(isX ? 2 : 1).contains(box));
        const QPointF middle = label.box.center() - plot.topLeft();
        const int size = isX ? box.width() : box.height();
        const bool isMoved = pixel < size || pixel > length - size; // to stay inside
        EXPECT_NEAR(isX ? middle.x() : middle.y(), pixel, isMoved ? size : 1);
        EXPECT_EQ(label.pointSize, QApplication::font().pointSizeF());

        const QColor ground = picture.pixelColor(box.topLeft());
        int most = 0;
        for (int i = 0; i < box.width() * box.height(); ++i)
            most =
                std::max(most, difference(ground, at(box, true, i % box.width(), i / box.width())));
        EXPECT_GT(most, 300);
        if (pixel >= length)
            return;
        EXPECT_EQ(at(isX ? place(2) : plot, isX, pixel, 1), colors[IColorBase::colLabel]);
        const int across = isX ? plot.height() : plot.width();
        int lit = 0;
        for (int i = 0; i < across; ++i)
            lit += at(plot, isX, pixel, i) == colors[IColorBase::colGrid];
        EXPECT_GT(lit, across / 4); // the rest is under labels
    }

    values::Tree& tree = values::Tree::Instance();
    ColorSet& colors = ColorSet::Instance();
    const QFont font = QApplication::font();
    values::ValueNumeric<double>* ends[5];
    View view;
    QImage picture;
};

using AllViews = testing::Types<VCGLTimeDiagram, VCGLEyeDiagram, VCGLIQDiagram>;
TYPED_TEST_SUITE(Labels, AllViews, );

TYPED_TEST(Labels, TellTheValueAtTheirPlaceAndAreSeenOnEveryGround)
{
    using C = IColorBase;
    constexpr bool isEye = TestFixture::isEye;
    const C::ECOLOR ground = isEye               ? C::colEyeBackground
                             : TestFixture::isIq ? C::colIQBackground
                                                 : C::colTimeBackground;
    for (const auto scheme : {ColorSet::Scheme::Dark, ColorSet::Scheme::Light}) {
        this->colors.SetScheme(scheme);
        const int light = scheme == ColorSet::Scheme::Light ? 200 : 0;
        const QColor from(light, light + 10, light + 40), to(light + 40, light + 20, light);
        this->colors[ground] = from;
        this->colors[C::ECOLOR(ground + 1)] = to;
        QFont other = this->font;
        other.setPointSize(light ? 9 : 13);
        QApplication::setFont(other);
        for (const auto& [xStart, xStop, yStart, yStop] :
             {std::array<double, 4>{-1, 1, -1, 1},
              {3, -2, 5, -0.7},
              {-0.02, 0.0, 1e-5, 4e-5},
              {1e6 + 0.3, 1e6 + 4.1, -2e5, -2e5 + 0.07},
              {-100, 0, -3000, 12000}}) {
            SCOPED_TRACE(testing::Message() << xStart << ", " << yStart);
            const double range[] = {xStart, xStop, yStart, yStop};
            for (int i = 0; i < 4; ++i)
                this->ends[i]->SetValue(range[i]);
            QCoreApplication::processEvents();
            this->picture = this->view.grab().toImage();
            TextRecorder recorder(this->view.size());
            QPainter painter(&recorder);
            this->view.RenderPicture(painter, this->view.size());
            int counts[2] = {};
            for (const TextRecorder::Text& label : recorder.texts) {
                const bool isX = label.box.top() >= this->place(2).top();
                if (label.box.top() < this->place(1).top())
                    continue; // the caption
                ++counts[isX];
                if (isX)
                    this->check(label, true, isEye ? 0.0 : xStart, isEye ? 1.0 : xStop);
                else
                    this->check(label, false, yStart, yStop);
            }
            EXPECT_GT(std::min(counts[0], counts[1]), 1);
            const QRect plot = this->place(1); // places without line or label
            const QPoint first = isEye ? QPoint(300, 2) : QPoint(1, 7);
            const QPoint last =
                isEye ? QPoint(300, plot.height() - 3) : QPoint(plot.width() - 2, 7);
            if (yStart == -1.0) {
                const auto at = [&](const QPoint& p) {
                    return this->picture.pixelColor(plot.topLeft() + p);
                };
                EXPECT_NEAR(difference(at(first), from), isEye ? 45 : 0,
                            7); // its lower half is seen
                EXPECT_LT(difference(at(last), to), 7);
            }
        }
    }
}

} // namespace
