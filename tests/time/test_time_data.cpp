// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "TimeTestAccess.h"

#include "platform/base/IObserver.h"

#include <QTest>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double inf = std::numeric_limits<double>::infinity();

struct Intake
{
    std::vector<double> samples;
    float min, max;
    std::vector<unsigned char> levels;
};

TEST(TimeData, QuantisesEachSetOverItsOwnExtent)
{
    const Intake table[] = {
        {{0, 1}, -0.0500110015F, 1.05001092F, {11, 244}},
        {{0, 0.49999, 1}, -0.0500110015F, 1.05001092F, {11, 127, 244}}, // 128 at 1/256 a level
        // Only the samples after the last NaN count; levels outside saturate.
        {{0, 1, nan, 5, 6}, 4.94998884F, 6.05001116F, {0, 0, 0, 11, 244}},
        {{5, 6, nan}, nan, nan, {0, 0, 0}},
        {{7}, 7.0F, 7.0F, {0}},
        {{2, 2, 2}, 2.0F, 2.0F, {0, 0, 0}},
        // The margin is lost in rounding: the largest sample must not wrap to level 0.
        {{16777216, 16777218}, 16777216.0F, 16777218.0F, {0, 255}},
    };
    for (const Intake& c : table) {
        TimeFixture f;
        f.add(c.samples);
        const TestAccess::Record& record = f.record(0);
        if (std::isnan(c.min)) {
            EXPECT_TRUE(std::isnan(record.m_min));
        } else {
            EXPECT_FLOAT_EQ(record.m_min, c.min);
            EXPECT_FLOAT_EQ(record.m_max, c.max);
            EXPECT_EQ(record.m_last, static_cast<float>(c.samples.back()));
        }
        EXPECT_EQ(record.m_stepLine.Levels(), c.levels);
        EXPECT_EQ(record.m_first, static_cast<float>(c.samples.front()));
    }
}

TEST(TimeData, TakesAnySamplesWithoutUndefinedBehaviour)
{
    TimeFixture f;
    for (const std::vector<double>& samples : {std::vector<double>{1e-45, 3e-45},
                                               {inf, 0},
                                               {-inf, inf},
                                               {3e38, -3e38},
                                               {1e308},
                                               {2e35, 3e35},
                                               {nan},
                                               {nan, nan},
                                               {-0.0, 0.0}}) {
        f.diagram->AutoScale();
        TestAccess::timer(*f.diagram).stop();
        f.add(samples);
        f.paint();
    }
    EXPECT_EQ(TestAccess::records(*f.diagram).size(), 9U);
}

TEST(TimeData, RecyclesTheOldestOfMoreThan100AndSwapsItsSamplesOut)
{
    TimeFixture f;
    std::vector<double> data;
    for (int i = 0; i < 101; ++i) {
        data = {double(i), double(i) + 0.5};
        f.diagram->AddData(data);
        EXPECT_TRUE(data.empty());
    }
    EXPECT_EQ(TestAccess::records(*f.diagram).size(), 100U);
    ASSERT_EQ(TestAccess::freeRecords(*f.diagram).size(), 1U);
    const TestAccess::Record* recycled = TestAccess::freeRecords(*f.diagram).front();

    data = {7.0, 8.0, 9.0};
    f.diagram->AddData(data);
    EXPECT_EQ(data, (std::vector<double>{0.0, 0.5})); // what the first set left
    EXPECT_EQ(&f.record(0), recycled);
    EXPECT_EQ(f.record(0).m_samples, (std::vector<double>{7.0, 8.0, 9.0}));
    EXPECT_EQ(f.record(0).m_stepLine.Levels().size(), 3U); // the new levels, not the old samples'
    EXPECT_EQ(f.record(1).m_stepLine.Levels(), (std::vector<unsigned char>{11, 244}));
    EXPECT_EQ(TestAccess::records(*f.diagram).size() + TestAccess::freeRecords(*f.diagram).size(),
              101U);
}

/// Logs each range of an axis as it changes.
struct RangeLog : IObserver
{
    explicit RangeLog(AxisHandler& axis)
        : m_axis(axis)
    {
        m_axis.Attach(this);
    }
    ~RangeLog() override { m_axis.Detach(this); }
    void Update(Observable*, TChangeCode) override
    {
        ranges.emplace_back(m_axis.GetStartValue(), m_axis.GetStopValue());
    }
    std::vector<std::pair<double, double>> ranges;

private:
    AxisHandler& m_axis;
};

constexpr double asFloat(double value) { return double(float(value)); }

TEST(TimeAutoScale, ReplacesThenWidensOneEndAtATime)
{
    TimeFixture f;
    f.diagram->SetYStart(-3.0);
    f.diagram->SetYStop(3.0);
    const RangeLog log(*f.diagram->GetYAxisHandler());
    f.add({50, 60});
    EXPECT_TRUE(log.ranges.empty()); // no request

    f.diagram->AutoScale();
    f.add({}); // rejected: the request stands
    f.add({10, 20});
    f.add({12, 13});
    f.add({0, 10});
    using Ranges = std::vector<std::pair<double, double>>;
    EXPECT_EQ(log.ranges, (Ranges{{9.5, 3.0}, {9.5, 20.5}, {-0.5, 20.5}}));

    TestAccess::timer(*f.diagram).stop(); // as if the second were over
    f.add({100, 200});
    EXPECT_EQ(log.ranges.size(), 3U);
}

TEST(TimeAutoScale, RoundsTheRangeToSinglePrecisionWhenItWidens)
{
    TimeFixture f;
    f.diagram->AutoScale();
    f.add({0, 1});
    f.diagram->SetYStart(-0.1);
    f.add({0, 1});
    EXPECT_EQ(TestAccess::yStart(*f.diagram), asFloat(-0.1));
    EXPECT_NE(TestAccess::yStart(*f.diagram), -0.1);
}

TEST(TimeAutoScale, RequestOutlivesThePeriodButThePeriodIsNotProlonged)
{
    TimeFixture f;
    QTimer& timer = TestAccess::timer(*f.diagram);
    EXPECT_TRUE(timer.isSingleShot());
    EXPECT_EQ(timer.interval(), 1000);
    f.diagram->AutoScale();
    const int id = timer.timerId();
    f.diagram->AutoScale();
    EXPECT_EQ(timer.timerId(), id); // a restart would make a new timer

    ASSERT_TRUE(QTest::qWaitFor([&] { return !timer.isActive(); }, 5000));
    f.add({10, 20});
    f.add({100, 200});
    double start = 0;
    double stop = 0;
    f.diagram->GetYStartStop(start, stop);
    EXPECT_EQ(start, 9.5);
    EXPECT_EQ(stop, 20.5);

    f.diagram->AutoScale();
    timer.stop();
    f.diagram->AutoScale(); // pending, period over: starts again
    EXPECT_TRUE(timer.isActive() && TestAccess::pending(*f.diagram));
}

} // namespace
