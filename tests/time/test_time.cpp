// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/base/IObserver.h"
#include "platform/glbase/GLLayout.h"
#include "platform/glwidgets/XAxisWidget.h"
#include "platform/glwidgets/YAxisHandler.h"
#include "platform/gui/ColorSet.h"
#include "time/GLTimeDiagram.h"

#include <QMenu>
#include <QPainter>
#include <QTest>

#include <gtest/gtest.h>

#include <cmath>

struct TestAccess
{
    using Record = GLTimeDiagram::ValueRecord;
    static std::vector<Record*>& records(GLTimeDiagram& d) { return d.m_records; }
    static QTimer& timer(GLTimeDiagram& d) { return d.m_autoScaleTimer; }
    static bool& showGrid(GLTimeDiagram& d) { return d.m_showGrid; }
};

namespace {

using Ranges = std::vector<std::pair<double, double>>;

/// A time diagram in a frame of its own, with an X axis that is not part of the frame. Logs the
/// ranges of the Y axis as they change.
struct TimeDiagram : testing::Test, IObserver
{
    static constexpr double nan = NAN, inf = INFINITY;

    TimeDiagram()
    {
        ColorSet& colors = ColorSet::Instance(); // of one colour: the pixels of its gradient count
        colors[IColorBase::colTimeBackgroundEnd] = colors[IColorBase::colTimeBackground];
        frame->resize(101, 101);
        frame->AddWidget(diagram);
        diagram->setXAxisWidget(xAxis);
        diagram->SetBaudrate(1.0F);
        TestAccess::showGrid(*diagram) = false;
        xAxis->SetLength(101);
        xAxis->SetRange(-100.0, 0.0);
        diagram->GetYAxisHandler()->Attach(this);
    }
    void Update(Observable*, TChangeCode) override { ranges.push_back(yRange()); }
    std::pair<double, double> yRange()
    {
        std::pair<double, double> range;
        diagram->GetYStartStop(range.first, range.second);
        return range;
    }
    void add(std::vector<double> samples) { diagram->AddData(samples); }
    TestAccess::Record& record(std::size_t index) { return *TestAccess::records(*diagram)[index]; }
    std::size_t kept() { return TestAccess::records(*diagram).size(); }
    QImage paint()
    {
        QImage image(frame->size(), QImage::Format_RGB32);
        image.fill(Qt::magenta);
        QPainter painter(&image);
        frame->Render(painter);
        return image;
    }
    void expectPixel(int x, int y, IColorBase::ECOLOR color)
    {
        EXPECT_EQ(paint().pixelColor(x, y), ColorSet::Instance()[color]) << x << ", " << y;
    }

    Ranges ranges;
    std::unique_ptr<GLLayout> frame = std::make_unique<GLLayout>();
    std::shared_ptr<GLTimeDiagram> diagram = std::make_shared<GLTimeDiagram>("TimeDiagram");
    QTimer& timer = TestAccess::timer(*diagram);
    std::shared_ptr<XAxisWidget> xAxis = std::make_shared<XAxisWidget>("XAxis", nullptr);
};

using TimeTraces = TimeDiagram;

TEST_F(TimeTraces, AreQuantisedOverTheirOwnExtent)
{
    const std::tuple<std::vector<double>, float, float, std::vector<unsigned char>> rows[] = {
        {{0, 1}, -0.0500110015F, 1.05001092F, {11, 244}},
        {{0, 0.49999, 1}, -0.0500110015F, 1.05001092F, {11, 127, 244}}, // 128 at 1/256 a level
        // Only the samples after the last NaN count; levels outside saturate.
        {{0, 1, nan, 5, 6}, 4.94998884F, 6.05001116F, {0, 0, 0, 11, 244}},
        {{5, 6, nan}, 0, 0, {0, 0, 0}},
        {{2, 2}, 2, 2, {0, 0}},
        // The margin is lost in rounding: the largest sample must not wrap to level 0.
        {{16777216, 16777218}, 16777216, 16777218, {0, 255}},
    };
    for (const auto& [samples, min, max, levels] : rows) {
        add(samples);
        EXPECT_EQ(record(0).m_stepLine.Levels(), levels);
        if (!std::isnan(samples.back())) {
            EXPECT_FLOAT_EQ(record(0).m_min, min);
            EXPECT_FLOAT_EQ(record(0).m_max, max);
        }
    }
}

TEST_F(TimeTraces, AreRecycledBeyond100AndSwapTheirSamplesOut)
{
    std::vector<double> data;
    for (int i = 0; i < 101; ++i) {
        data = {double(i), double(i) + 0.5};
        diagram->AddData(data);
        EXPECT_TRUE(data.empty());
    }
    EXPECT_EQ(kept(), 100U);
    data = {7, 8, 9};
    diagram->AddData(data);
    EXPECT_EQ(data, (std::vector<double>{0, 0.5})); // what the first set left
    EXPECT_EQ(record(0).m_samples, (std::vector<double>{7, 8, 9}));
    EXPECT_EQ(record(0).m_stepLine.Levels(), (std::vector<unsigned char>{11, 127, 244}));
    EXPECT_EQ(record(1).m_stepLine.Levels(), (std::vector<unsigned char>{11, 244}));
}

TEST_F(TimeTraces, LieEndToEndWithTheNewestAtTheRightBorder)
{
    std::vector<double> older(20, -0.5);
    older.front() = 0.5;
    add(older);
    add(std::vector<double>(10, 0.5));
    TestAccess::showGrid(*diagram) = true;
    paint();
    EXPECT_EQ(record(0).m_stepLine.DestRect(), QRect(90, 26, 11, 2)); // flat: two rows high
    EXPECT_EQ(record(1).m_stepLine.DestRect(), QRect(70, 24, 20, 55));
    using C = IColorBase;
    const std::pair<C::ECOLOR, std::vector<QPoint>> parts[] = {
        {C::colTimeTrace, {{100, 27}, {89, 60}, {60, 51}}}, // the join is left of the marker
        {C::colTimeMarker, {{90, 26}, {90, 40}, {90, 51}, {70, 40}}}, // the oldest is tied to zero
        {C::colTimeBackground, {{95, 77}, {45, 60}}},
        {C::colGrid, {{80, 51}, {100, 60}}},
        {C::colLabel, {{1, 51}}}};
    for (const auto& [color, points] : parts)
        for (const QPoint& at : points)
            expectPixel(at.x(), at.y(), color);
    frame->resize(101, 201);
    expectPixel(80, 101, C::colGrid); // follows
    TestAccess::showGrid(*diagram) = false;
    expectPixel(80, 101, C::colTimeBackground);
    const QImage without = paint();
    diagram->AddMarker("note", "text", {50, 50});
    EXPECT_NE(paint(), without);
}

TEST_F(TimeTraces, AreGivenUpOnceTheyAreOutOfSight)
{
    diagram->SetBaudrate(2.0F);
    add({1.0});
    add(std::vector<double>(201, 0.5)); // left edge at -0.5 pixels: not yet past the border
    paint();
    EXPECT_EQ(record(0).m_stepLine.DestRect().left(), 0);
    EXPECT_EQ(kept(), 2U);
    add({0.5}); // pushes it to -1
    paint();
    EXPECT_EQ(kept(), 2U);
    expectPixel(80, 51, IColorBase::colTimeBackground); // one that was left does not run on at zero

    diagram->SetBaudrate(3.0F); // positions are divided in single precision
    xAxis->SetRange(double(-1.0F / 3.0F), double(-1.0F / 3.0F) + 1e-9);
    paint();
    EXPECT_EQ(record(0).m_stepLine.DestRect().left(), 0);
}

TEST_F(TimeTraces, StayWhileNothingCanBePlaced)
{
    const std::vector<double> odd[] = {{1e-45, 3e-45}, {inf, 0},     {-inf, inf}, {3e38, -3e38},
                                       {1e308},        {2e35, 3e35}, {nan},       {-0.0, 0.0}};
    for (const auto& samples : odd) {
        diagram->AutoScale();
        timer.stop();
        add(samples);
        paint();
    }
    EXPECT_EQ(kept(), 8U);
    for (const double baudrate : {1e-30, 1e30, -5.0, nan, inf, 1.0}) {
        diagram->SetBaudrate(float(baudrate));
        add(std::vector<double>(300, 0.0));
        paint();
    }
    add(std::vector<double>(300, 0.0));
    add(std::vector<double>(300, 0.0));
    const std::size_t before = kept();
    const auto expectGround = [&](const Ranges& range, float baudrate, IColorBase::ECOLOR ground) {
        xAxis->SetRange(range[0].first, range[0].second);
        diagram->SetYStart(range[1].first);
        diagram->SetYStop(range[1].second);
        diagram->SetBaudrate(baudrate);
        expectPixel(99, 3, ground);
        EXPECT_EQ(kept(), before);
    };
    for (const auto& bad :
         Ranges{{0, 0}, {nan, nan}, {nan, 0}, {-inf, inf}, {-1e308, 1e308}, {5, 5}}) {
        expectGround({bad, {-1, 1}}, 1, IColorBase::colTimeBackground);
        expectGround({{-100, 0}, bad}, 1, IColorBase::colTimeBackground);
    }
    expectGround({{-100, 0}, {-1, 1}}, 0, IColorBase::colBackground);
    diagram->setXAxisWidget({});
    expectGround({{-100, 0}, {1.1e35, -1.1e35}}, 1, IColorBase::colBackground);
    diagram->setXAxisWidget(xAxis);
    paint();
    EXPECT_EQ(kept(), 1U);
    xAxis->SetRange(0.0, -100.0); // reversed
    paint();
}

TEST_F(TimeDiagram, AutoScalingReplacesTheRangeThenWidensItForASecond)
{
    diagram->SetYStart(-3.0);
    diagram->SetYStop(3.0);
    ranges.clear();
    add({50, 60});
    EXPECT_EQ(ranges, Ranges{}); // no request
    timer.setTimerType(Qt::PreciseTimer);
    diagram->getContextMenu(nullptr, nullptr, 0)->actions().at(1)->trigger();
    add({}); // rejected: the request stands
    add({10, 20});
    add({12, 13});
    QTest::qWait(30);
    diagram->AutoScale(); // again, while it lasts: nothing
    EXPECT_LE(timer.remainingTime(), 1000 - 30);
    add({0, 10});
    diagram->SetYStart(-0.6);
    add({0, 10});
    EXPECT_EQ(ranges,
              (Ranges{{9.5, 3.0}, {9.5, 20.5}, {-0.5, 20.5}, {-0.6, 20.5}, {double(-0.6F), 20.5}}));
    timer.stop(); // as if the second were over
    add({100, 200});
    EXPECT_EQ(ranges.size(), 5U);

    EXPECT_EQ(timer.interval(), 1000);
    diagram->AutoScale();
    ASSERT_TRUE(QTest::qWaitFor([&] { return !timer.isActive(); }));
    add({10, 20}); // the request outlives the second
    add({100, 200});
    EXPECT_EQ(yRange(), std::pair(9.5, 20.5));
}

TEST_F(TimeDiagram, MenuMayGoWithItsFrame)
{
    EXPECT_EQ(diagram->getContextMenu(nullptr, nullptr, 0)->parent(), frame.get());
    frame.reset();
    EXPECT_NE(diagram->getContextMenu(nullptr, nullptr, 0), nullptr);
}

} // namespace
