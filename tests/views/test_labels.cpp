// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
// What stands beside the axes of each view, read as it is drawn.
#include "ViewsFixture.h"
#include "glwidgets/TextRecorder.h"
#include "platform/gui/ColorSet.h"

#include <array>
#include <set>

namespace {

int difference(const QColor& a, const QColor& b)
{
    return std::abs(a.red() - b.red()) + std::abs(a.green() - b.green()) +
           std::abs(a.blue() - b.blue());
}

template<class View>
struct Labels : Views<View>
{
    using Views<View>::view, Views<View>::isEye;

    Labels()
    {
        this->b->SetValue(1.0);
        if constexpr (!Views<View>::isIq)
            view->SetBaudrate_ValuePath("B");
        view->resize(520, 380);
        view->show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(view.get()));
    }
    ~Labels() override
    {
        QApplication::setFont(font);
        colors.SetScheme(ColorSet::Scheme::Dark);
        TestAccess::showGrid(*view) = true; // persists
    }
    QRect place(int index) const { return view->Widgets().at(index)->geometry(); }
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
        // What is not seen is under labels; these stay without the grid.
        EXPECT_TRUE(TestAccess::showGrid(*view) ? lit > across / 4 : lit == 0) << lit;
    }

    ColorSet& colors = ColorSet::Instance();
    const QFont font = QApplication::font();
    QImage picture;
};

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
            TestAccess::showGrid(*this->view) = xStart != 3.0;
            this->view->SetXAxisRange(xStart, xStop);
            this->view->SetYAxisRange(yStart, yStop);
            QCoreApplication::processEvents();
            this->picture = this->view->grab().toImage();
            TextRecorder recorder(this->view->size());
            QPainter painter(&recorder);
            this->view->RenderPicture(painter, this->view->size());
            std::set<double> values[2];
            for (const TextRecorder::Text& label : recorder.texts) {
                const bool isX = label.box.top() >= this->place(2).top();
                if (label.box.top() < this->place(1).top())
                    continue; // the caption
                values[isX].insert(label.text.toDouble());
                if (isX)
                    this->check(label, true, isEye ? 0.0 : xStart, isEye ? 1.0 : xStop);
                else
                    this->check(label, false, yStart, yStop);
            }
            EXPECT_GT(std::min(values[0].size(), values[1].size()), 1U);
            const QRect plot = this->place(1); // places without line or label
            const QPoint first = isEye ? QPoint(300, 2) : QPoint(1, 7);
            const QPoint last =
                isEye ? QPoint(300, plot.height() - 3) : QPoint(plot.width() - 2, 7);
            if (yStart == -1.0) {
                EXPECT_TRUE(values[0].count(-1.0) && values[0].count(1.0)); // both ends
                const auto at = [&](const QPoint& p) {
                    return this->picture.pixelColor(plot.topLeft() + p);
                };
                // Of an eye's, the lower half is seen.
                EXPECT_NEAR(difference(at(first), from), isEye ? 45 : 0, 7);
                EXPECT_LT(difference(at(last), to), 7);
            }
        }
    }
}

} // namespace
