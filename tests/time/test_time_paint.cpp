// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "TimeTestAccess.h"

#include "platform/gui/ColorSet.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double inf = std::numeric_limits<double>::infinity();

struct TimePaint : testing::Test, TimeFixture
{
    TimePaint()
    {
        ColorSet& colors = ColorSet::Instance();
        colors[IColorBase::colTimeTrace] = Qt::red;
        colors[IColorBase::colTimeMarker] = Qt::green;
        colors[IColorBase::colGrid] = Qt::blue;
        colors[IColorBase::colTimeBackground] = Qt::black;
        colors[IColorBase::colTimeBackgroundEnd] = Qt::black;
        colors[IColorBase::colBackground] = Qt::white;
        TestAccess::showGrid(*diagram) = false;
    }
    static QColor at(const QImage& image, int x, int y) { return image.pixelColor(x, y); }
    std::size_t kept() { return TestAccess::records(*diagram).size(); }
};

TEST_F(TimePaint, LaysTracesEndToEndWithTheNewestAtTheRightBorder)
{
    add(std::vector<double>(20, -0.5));
    add(std::vector<double>(10, 0.5));
    const QImage image = paint();
    EXPECT_EQ(record(0).m_stepLine.DestRect(), QRect(90, 26, 11, 2)); // flat: two rows high
    EXPECT_EQ(record(1).m_stepLine.DestRect(), QRect(70, 76, 20, 2));
    EXPECT_EQ(at(image, 100, 27), QColor(Qt::red)); // level 0 lies on the lower row
    EXPECT_EQ(at(image, 80, 77), QColor(Qt::red));
    EXPECT_EQ(at(image, 95, 77), QColor(Qt::black));
    // The join leads to the column before the newer trace; the marker to zero lies over it.
    EXPECT_EQ(at(image, 89, 76), QColor(Qt::red));
    for (const int y : {26, 40, 51})
        EXPECT_EQ(at(image, 90, y), QColor(Qt::green)) << y;
    // The oldest trace of the history is tied to zero, and zero runs on to the left.
    EXPECT_EQ(at(image, 70, 60), QColor(Qt::green));
    EXPECT_EQ(at(image, 60, 51), QColor(Qt::red));
    EXPECT_EQ(at(image, 80, 51), QColor(Qt::black));
}

TEST_F(TimePaint, TiesOnlyTheOldestOfTheHistoryToZero)
{
    add(std::vector<double>(300, 0.5));
    add(std::vector<double>(300, 0.5)); // crosses the left border, the older one is out of sight
    const QImage image = paint();
    EXPECT_EQ(at(image, 80, 51), QColor(Qt::black));
    EXPECT_EQ(kept(), 1U);
}

TEST_F(TimePaint, TruncatesTowardZeroAtTheLeftBorder)
{
    diagram->SetBaudrate(2.0F);
    add({1.0});
    add(std::vector<double>(201, 0.0)); // left edge at -0.5 pixels: not yet past the border
    paint();
    EXPECT_EQ(record(0).m_stepLine.DestRect().left(), 0);
    EXPECT_EQ(kept(), 2U);
    add({0.0}); // pushes it to -1
    paint();
    EXPECT_EQ(kept(), 2U);
    EXPECT_EQ(TestAccess::freeRecords(*diagram).size(), 1U);
}

TEST_F(TimePaint, DividesTheOffsetInSinglePrecision)
{
    const double third = double(-1.0F / 3.0F);
    diagram->SetBaudrate(3.0F);
    xAxis->SetRange(third, third + 1e-9);
    add({0.0});
    paint();
    EXPECT_EQ(record(0).m_stepLine.DestRect().left(), 0);
}

TEST_F(TimePaint, DrawsNothingWithoutAxisOrBaudrateAndKeepsTheHistory)
{
    add(std::vector<double>(300, 0.0));
    add(std::vector<double>(300, 0.0));
    diagram->SetBaudrate(0.0F);
    EXPECT_EQ(at(paint(), 50, 50), QColor(Qt::white));
    diagram->SetBaudrate(1.0F);
    diagram->setXAxisWidget({});
    EXPECT_EQ(at(paint(), 50, 50), QColor(Qt::white));
    EXPECT_EQ(kept(), 2U);
}

TEST_F(TimePaint, ShowsGridLinesOnlyWhenSwitchedOn)
{
    xAxis->SetLength(101);
    add({0.0});
    const auto countBlue = [](const QImage& image) {
        int count = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                count += image.pixelColor(x, y) == QColor(Qt::blue) ? 1 : 0;
        return count;
    };
    EXPECT_EQ(countBlue(paint()), 0);
    TestAccess::showGrid(*diagram) = true;
    EXPECT_GT(countBlue(paint()), 150); // at least one line along each axis
}

TEST_F(TimePaint, SurvivesAnyBaudrateAndRange)
{
    for (const double baudrate : {1e-30, 1e30, -5.0, nan, inf}) {
        add({0, 1, 2});
        diagram->SetBaudrate(float(baudrate));
        paint();
    }
    diagram->SetBaudrate(1.0F);
    add(std::vector<double>(300, 0.0));
    add(std::vector<double>(300, 0.0));
    const std::size_t before = kept();
    for (const auto& range : std::vector<std::pair<double, double>>{
             {0, 0}, {nan, nan}, {nan, 0}, {-inf, inf}, {-1e308, 1e308}, {5, 5}}) {
        xAxis->SetRange(range.first, range.second);
        EXPECT_EQ(at(paint(), 99, 3), QColor(Qt::black)); // the background all the same
    }
    EXPECT_EQ(kept(), before); // nothing is given up while nothing can be placed
    xAxis->SetRange(-100.0, 0.0);
    diagram->SetYStart(0.0);
    diagram->SetYStop(0.0);
    paint();
    EXPECT_EQ(kept(), before);
    diagram->SetYStart(1.1e35);
    diagram->SetYStop(-1.1e35);
    paint();
    EXPECT_EQ(kept(), 1U);
    xAxis->SetRange(0.0, -100.0); // reversed
    paint();
}

} // namespace
