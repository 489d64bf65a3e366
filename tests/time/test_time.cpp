// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/glbase/GLLayout.h"
#include "platform/glwidgets/XAxisWidget.h"
#include "platform/gui/ColorSet.h"
#include "time/GLTimeDiagram.h"

#include <QPainter>
#include <QTest>

#include <gtest/gtest.h>

#include <cmath>

struct TestAccess
{
    using Record = GLTimeDiagram::ValueRecord;
    static std::vector<Record*>& records(GLTimeDiagram& d) { return d.m_records; }
    static bool& showGrid(GLTimeDiagram& d) { return d.m_showGrid; }
};

namespace {

using Ranges = std::vector<std::pair<double, double>>;

/// A time diagram in a frame of its own, with an X axis that is not part of the frame.
struct TimeTraces : testing::Test
{
    static constexpr double nan = NAN, inf = INFINITY;

    TimeTraces()
    {
        ColorSet& colors = ColorSet::Instance(); // of one colour: the pixels of its gradient count
        colors[IColorBase::colTimeBackgroundEnd] = colors[IColorBase::colTimeBackground];
        frame.resize(101, 101);
        frame.AddWidget(diagram);
        diagram->setXAxisWidget(xAxis);
        diagram->SetBaudrate(1.0F);
        TestAccess::showGrid(*diagram) = false;
        xAxis->SetLength(101);
        xAxis->SetRange(-100.0, 0.0);
    }
    void add(std::vector<double> samples) { diagram->AddData(samples); }
    TestAccess::Record& record(std::size_t index) { return *TestAccess::records(*diagram)[index]; }
    std::size_t kept() { return TestAccess::records(*diagram).size(); }
    QImage paint()
    {
        QImage image(frame.size(), QImage::Format_RGB32);
        image.fill(Qt::magenta);
        QPainter painter(&image);
        frame.Render(painter);
        return image;
    }
    void expectPixel(int x, int y, IColorBase::ECOLOR color)
    {
        EXPECT_EQ(paint().pixelColor(x, y), ColorSet::Instance()[color]) << x << ", " << y;
    }

    GLLayout frame;
    std::shared_ptr<GLTimeDiagram> diagram = std::make_shared<GLTimeDiagram>("TimeDiagram");
    std::shared_ptr<XAxisWidget> xAxis = std::make_shared<XAxisWidget>("XAxis", nullptr);
};

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

TEST_F(TimeTraces, AreQuantisedLikeOneSampleAfterTheOtherAtAnyLength)
{
    for (const std::size_t count : {1, 31, 32, 33, 65, 100}) { // about chunks of 32
        for (const double odd : {0.5, nan, inf, -1e300}) {
            for (const std::size_t place : {std::size_t{0}, count / 2, count - 1}) {
                std::vector<double> samples;
                for (std::size_t i = 0; i < count; ++i)
                    samples.push_back(std::sin(1.7 * double(i)));
                samples[place] = odd;
                float min = 1e35F, max = -1e35F;
                for (const double sample : samples) {
                    min = float(sample) >= min ? min : float(sample);
                    max = max >= float(sample) ? max : float(sample);
                }
                const auto margin = float(double(max - min) * 0.05);
                const float step = (max + margin - (min - margin)) * 0.0039063282F;
                const float lowest = min - margin - (max + margin - (min - margin)) * 0.00001F;
                add(samples);
                const std::vector<unsigned char>& levels = record(0).m_stepLine.Levels();
                for (std::size_t i = 0; i < count && max > min; ++i) {
                    const float level = (float(samples[i]) - lowest) / step;
                    const int whole = level > 0 ? level < 255 ? int(level) : 255 : 0;
                    EXPECT_EQ(levels[i], whole) << count << ' ' << odd << ' ' << place << ' ' << i;
                }
                EXPECT_EQ(levels.size(), count);
            }
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
    paint();
    EXPECT_EQ(record(0).m_stepLine.DestRect(), QRect(90, 26, 11, 2)); // flat: two rows high
    EXPECT_EQ(record(1).m_stepLine.DestRect(), QRect(70, 24, 20, 55));
    using C = IColorBase;
    const std::pair<C::ECOLOR, std::vector<QPoint>> parts[] = {
        {C::colTimeTrace, {{100, 27}, {89, 60}, {60, 51}}}, // the join is left of the marker
        {C::colTimeMarker, {{90, 26}, {90, 40}, {90, 51}, {70, 40}}}, // the oldest is tied to zero
        {C::colTimeBackground, {{95, 77}, {45, 60}}}};
    for (const auto& [color, points] : parts)
        for (const QPoint& at : points)
            expectPixel(at.x(), at.y(), color);
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

} // namespace
