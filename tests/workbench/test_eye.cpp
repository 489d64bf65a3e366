// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "TreeAccess.h"
#include "workbench/feed/EyeFeed.h"
#include "workbench/sources/NrzSource.h"

#include <gtest/gtest.h>

#include <random>

namespace {

using Clock = EyeCut::Clock;
using Trace = std::vector<double>;

struct Cutting
{
    explicit Cutting(const EyeCut& cut)
        : cutter(cut)
    {}
    void push(std::int64_t position, const std::vector<double>& samples)
    {
        cutter.push(position, samples);
        take();
    }
    void finish()
    {
        cutter.finish();
        take();
    }
    void take()
    {
        std::vector<double> samples;
        std::vector<double> markers;
        cutter.takeTraces(1000000, samples, markers);
        EXPECT_EQ(markers.size(), samples.size());
        for (std::size_t i = 0; i < samples.size(); i += cutter.traceLength()) {
            EXPECT_EQ(markers[i], double(cutter.traceLength()));
            const auto first = samples.begin() + static_cast<std::ptrdiff_t>(i);
            traces.emplace_back(first, first + static_cast<std::ptrdiff_t>(cutter.traceLength()));
        }
    }
    EyeCutter cutter;
    std::vector<Trace> traces;
};

/// How far the eye is open in the middle: the gap between a level and the next where no trace
/// passes, relative to the levels' distance.
double opening(const std::vector<Trace>& traces, std::size_t skipped, int levelCount)
{
    double worst = 1.0;
    for (std::size_t i = skipped; i < traces.size(); ++i) {
        const double place = (traces[i][traces[i].size() / 2] + 1.0) / 2.0 * (levelCount - 1);
        worst = std::min(worst, 1.0 - 2.0 * std::abs(place - std::round(place)));
    }
    return worst;
}

TEST(Eye, IsOpenInTheMiddleWhereTheClockIsKnownOrRecovered)
{
    struct
    {
        Clock clock;
        double symbolRate;
        double error; // of the rate that is told, a part of it
        int levelCount;
        double noise;
        int symbolCount;
        double bandwidth;
        double opening;
    } const rows[] = {{Clock::Known, 1200.0, 0.0, 2, 0.0, 2, 0.0, 0.9},
                      {Clock::Known, 1100.0, 0.0, 4, 0.0, 3, 0.0, 0.7},
                      {Clock::Known, 9600.0, 0.0, 2, 0.0, 1, 0.0, 0.85},
                      {Clock::Recovered, 1200.0, 0.0, 2, 0.0, 2, 0.0, 0.85},
                      {Clock::Recovered, 1234.5, 20e-6, 2, 0.1, 2, 0.0, 0.5},
                      {Clock::Recovered, 4800.0, 5e-3, 2, 0.05, 16, 0.0, 0.6},
                      {Clock::Recovered, 9600.0, -5e-3, 2, 0.05, 2, 0.0, 0.6},
                      {Clock::Recovered, 5000.0, -1e-3, 4, 0.02, 2, 0.0, 0.4},
                      {Clock::Known, 1200.0, 0.0, 2, 0.15, 2, 0.6, 0.5},
                      {Clock::Recovered, 1200.0, 0.0, 2, 0.15, 2, 0.6, 0.5}};
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.symbolRate << " Bd, error " << row.error);
        NrzSettings settings;
        settings.symbolRate = row.symbolRate;
        settings.levelCount = row.levelCount;
        settings.noise = row.noise;
        NrzSource source(settings);
        EyeCut cut;
        cut.clock = row.clock;
        cut.samplesPerSymbol = settings.sampleRate / row.symbolRate / (1.0 + row.error);
        cut.firstSymbol = *source.firstSymbol();
        cut.symbolCount = row.symbolCount;
        cut.bandwidth = row.bandwidth;
        Cutting inBlocks(cut);
        Cutting atOnce(cut);
        std::vector<double> all;
        std::vector<double> block;
        while (double(source.position()) < 3000.0 * 48000.0 / row.symbolRate) {
            const std::int64_t position = source.position();
            source.read(block, 1000 + all.size() % 777);
            inBlocks.push(position, block);
            all.insert(all.end(), block.begin(), block.end());
        }
        inBlocks.finish();
        atOnce.push(0, all);
        atOnce.finish();

        EXPECT_EQ(inBlocks.traces, atOnce.traces);
        const double symbolCount = double(all.size()) / 48000.0 * row.symbolRate;
        EXPECT_NEAR(double(atOnce.traces.size()), symbolCount / row.symbolCount, 5.0);
        EXPECT_GT(opening(atOnce.traces, 0, row.levelCount), row.opening);
        for (std::size_t i = 1; i < atOnce.traces.size(); ++i)
            EXPECT_EQ(atOnce.traces[i].front(), atOnce.traces[i - 1].back());
    }
}

TEST(Eye, OfUnknownSymbolsIsTheSignalItself)
{
    Cutting cutting{EyeCut()};
    for (const std::int64_t position : {0, 1000, 10000}) { // goes on, and then does not
        cutting.push(position, ramp(1000, double(position)));
    }
    ASSERT_EQ(cutting.traces.size(), 19U + 9U);
    for (const Trace& trace : cutting.traces) {
        ASSERT_EQ(trace.size(), 101U);
        for (std::size_t i = 0; i < trace.size(); ++i)
            EXPECT_NEAR(trace[i], trace[0] + double(i), 0.01);
    }
    EXPECT_NEAR(cutting.traces[19][0], 10050.0, 0.01);
}

TEST(Eye, OpensAgainAfterWhatIsNoSignal)
{
    NrzSource source;
    std::vector<double> samples;
    source.read(samples, 200000);
    const double odd[] = {std::nan(""), INFINITY, 1e300, -1e300};
    for (std::size_t i = 0; i < 4; ++i)
        samples[50000 + i] = odd[i];
    EyeCut cut;
    cut.clock = Clock::Recovered;
    cut.samplesPerSymbol = 40.0;
    for (const double bandwidth : {0.0, 0.75}) {
        cut.bandwidth = bandwidth;
        Cutting cutting(cut);
        cutting.push(0, samples);
        cutting.finish();
        ASSERT_GT(cutting.traces.size(), 2450U);
        EXPECT_GT(opening(cutting.traces, 1300, 2), 0.7);
    }
}

TEST(Eye, IsNotifiedOnceABlock)
{
    struct : IObserver
    {
        void Update(Observable*, TChangeCode code) override { count += code == ccContent; }
        int count = 0;
    } observer;
    EyeFeed feed;
    auto& trigger = valueAt<values::ValueBase>(EyeValues::triggerPath);
    trigger.Attach(&observer);
    NrzSource source;
    feed.open(source, std::nullopt);
    std::vector<double> block;
    for (int i = 1; i <= 3; ++i) {
        const std::int64_t position = source.position();
        source.read(block, 48000);
        feed.take(position, block);
        feed.settle();
        EXPECT_EQ(observer.count, i);
        EXPECT_NEAR(double(listAt(EyeValues::samplesPath).size()), 10000.0, 25.0); // the newest
    }
    feed.setLevels(-9.0, 9.0);
    feed.fitLevels();
    EXPECT_NEAR(numberAt(EyeValues::yMaxPath), 1.25, 0.1); // level, noise and margin
    std::vector<double> noise(200000);
    std::mt19937 random(1);
    std::generate(noise.begin(), noise.end(), [&] { return 1e-9 * double(random()) - 2.0; });
    feed.take(source.position(), noise);
    feed.settle();
    EXPECT_FALSE(feed.measure());
    source.seek(source.position() + 200000);
    source.read(block, 10000); // a burst of 125 traces
    feed.take(source.position() - 10000, block);
    feed.settle();
    EXPECT_NEAR(feed.measure().value().eyes.front().highLevel, 1.0, 0.05);
    const int before = observer.count;
    feed.take(source.position(), block);
    feed.restart();
    feed.fitLevels();
    EXPECT_NEAR(numberAt(EyeValues::yMaxPath), 1.25, 0.1) << "of no traces";
    feed.settle();
    EXPECT_EQ(observer.count, before) << "of an earlier signal";
    EXPECT_EQ(feed.dropCount(), 0);
    for (int i = 0; i < 20; ++i)
        feed.take(source.position(), block); // nobody takes them up
    EXPECT_GE(feed.dropCount(), 10);
    feed.open(source, std::nullopt);
    EXPECT_EQ(feed.dropCount(), 0);
    trigger.Detach(&observer);
}

} // namespace
