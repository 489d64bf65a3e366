// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "density/Counter.h"
#include "density/CountingThread.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <set>
#include <thread>

using namespace density;

namespace {

using Trace = std::vector<float>;
using Cell = std::pair<int, int>; // column, row
using Touched = std::set<Cell>;

std::size_t indexOf(const Cell& cell, const GridSize& size)
{
    return static_cast<std::size_t>(cell.second) * static_cast<std::size_t>(size.columns) +
           static_cast<std::size_t>(cell.first);
}

// Segment by segment and column by column: the definition, as plain as can be.
Touched touchedBy(const Trace& trace, const TraceShape& shape, const Window& window,
                  const GridSize& size)
{
    Touched cells;
    const auto rowOf = [&](std::size_t k) {
        const double row = (static_cast<double>(trace[k]) - window.bottom) *
                           (static_cast<double>(size.rows) / window.height());
        return std::clamp(row, -1e12, 1e12);
    };
    const auto isGood = [&](std::size_t k) { return k < trace.size() && std::isfinite(trace[k]); };
    const auto borderOf = [&](int column) {
        const double time =
            window.left + window.width() * (static_cast<double>(column) / size.columns);
        return (time + 0.5 * shape.symbolCount) * shape.samplesPerSymbol();
    };
    for (std::size_t k = 0; k < trace.size(); ++k) {
        if (!isGood(k))
            continue;
        const std::size_t next = isGood(k + 1) ? k + 1 : k;
        const auto rowAt = [&](double place) {
            const double fraction = place - static_cast<double>(k);
            return place == static_cast<double>(next)
                       ? rowOf(next)
                       : rowOf(k) + fraction * (rowOf(next) - rowOf(k));
        };
        for (int column = 0; column < size.columns; ++column) {
            const double left = std::max(borderOf(column), static_cast<double>(k));
            const double right = std::min(borderOf(column + 1), static_cast<double>(next));
            if (left > right)
                continue;
            const double low = std::floor(std::min(rowAt(left), rowAt(right)));
            const double high = std::floor(std::max(rowAt(left), rowAt(right)));
            for (int row = 0; row < size.rows; ++row) {
                if (row >= low && row <= high)
                    cells.insert({column, row});
            }
        }
    }
    return cells;
}

class Traces
{
public:
    explicit Traces(unsigned seed)
        : m_random(seed)
    {}
    int below(int limit) { return static_cast<int>(m_random() % static_cast<unsigned>(limit)); }
    double uniform(double low, double high)
    {
        return std::uniform_real_distribution<double>(low, high)(m_random);
    }
    /// Noise, now and then with what no receiver should send.
    Trace make(int sampleCount)
    {
        static const float nasty[] = {std::numeric_limits<float>::quiet_NaN(),
                                      std::numeric_limits<float>::infinity(),
                                      -std::numeric_limits<float>::infinity(),
                                      3e38F,
                                      -3e38F,
                                      1e-42F,
                                      -1.0F,
                                      1.0F,
                                      0.0F};
        const int kind = below(3);
        Trace trace;
        for (int k = 0; k < sampleCount; ++k) {
            // Of the second kind many levels are those of borders of rows.
            const auto level = static_cast<float>(kind == 1 ? below(9) * 0.25 - 1.0
                                                            : std::sin(uniform(-2.0, 2.0)));
            trace.push_back(kind == 2 && below(4) == 0 ? nasty[below(9)] : level);
        }
        return trace;
    }

private:
    std::mt19937 m_random;
};

Counter::Settings settings(const TraceShape& shape, const GridSize& size, const Window& home = {},
                           const Persistence& persistence = {})
{
    Counter::Settings result;
    result.shape = shape;
    result.size = size;
    result.home = home;
    result.persistence = persistence;
    return result;
}

TEST(Counting, EqualsThePlainTwinOnNastyTraces)
{
    Traces traces(1);
    for (int round = 0; round < 150; ++round) {
        TraceShape shape;
        shape.sampleCount = 2 + traces.below(round % 2 ? 40 : 4);
        shape.symbolCount = traces.uniform(0.5, 3.0);
        const GridSize size{1 + traces.below(50), 1 + traces.below(40)};
        Window window;
        if (round % 3 == 0)
            window = {-0.5 * shape.symbolCount, 0.5 * shape.symbolCount, -1.0, 1.0};
        else if (round % 3 == 1)
            window.left = traces.uniform(-3.0, 0.9), window.bottom = traces.uniform(-2.0, 0.9);
        else
            window = {0.1, 0.1 + traces.uniform(1e-6, 1e-2), 0.2, 0.2 + traces.uniform(1e-6, 1e-2)};
        Counter counter(settings(shape, size, window));
        std::vector<double> twin(size.cellCount());
        std::vector<std::int64_t> hits;
        const int column = traces.below(size.columns), row = traces.below(size.rows);
        std::int64_t torn = 0, bad = 0, symbol = 1000;
        for (int k = 0; k < 40; ++k, ++symbol) {
            const Trace trace = traces.make(shape.sampleCount + (traces.below(20) == 0 ? 1 : 0));
            counter.add(trace.data(), trace.size(), symbol);
            const auto isBad = [](float sample) { return !std::isfinite(sample); };
            const auto badCount = std::count_if(trace.begin(), trace.end(), isBad);
            const bool isTorn = static_cast<int>(trace.size()) != shape.sampleCount;
            torn += isTorn || badCount == shape.sampleCount ? 1 : 0;
            bad += isTorn ? 0 : badCount;
            for (const auto& cell : isTorn ? Touched() : touchedBy(trace, shape, window, size)) {
                twin[indexOf(cell, size)] += 1.0;
                if (cell == std::pair(column, row))
                    hits.insert(hits.begin(), symbol);
            }
        }
        const SnapshotPtr seen = counter.snapshot();
        ASSERT_EQ(seen->counts, twin) << round;
        EXPECT_EQ(seen->symbolCount, 40 - torn);
        EXPECT_EQ(seen->leftOut.tornTraces, torn);
        EXPECT_EQ(seen->leftOut.badSamples, bad);
        std::vector<std::int64_t> found;
        for (const Counter::Hit& hit : counter.hits(window, size, column, row, 1000))
            found.push_back(hit.symbol);
        ASSERT_EQ(found, hits) << round;
    }
}

// What each symbol weighs in the end, by its age.
double weightOf(const Persistence& persistence, int age)
{
    switch (persistence.kind) {
    case Persistence::Kind::Infinite:
        return 1.0;
    case Persistence::Kind::Newest:
        return age < persistence.symbols ? 1.0 : 0.0;
    case Persistence::Kind::Fading:
        return std::exp2(-age / persistence.symbols);
    }
    return 0.0;
}

TEST(Counting, KeepsSymbolsAsLongAsAskedInHomeAndZoom)
{
    using Kind = Persistence::Kind;
    const TraceShape shape{9, 2.0};
    const GridSize size{20, 10};
    const Window zoom{-0.3, 0.4, -0.2, 0.6};
    constexpr int count = 2000;
    Traces traces(2);
    std::vector<Trace> all;
    all.reserve(count);
    for (int k = 0; k < count; ++k)
        all.push_back(traces.make(shape.sampleCount));
    for (const Persistence& persistence :
         {Persistence(), Persistence{Kind::Newest, 1.0}, Persistence{Kind::Newest, 777.0},
          Persistence{Kind::Newest, 1e15}, Persistence{Kind::Fading, 1.0},
          Persistence{Kind::Fading, 300.5}}) {
        // Asked from the start, later, and with the zoom in the middle: always the same in the end.
        Counter early(settings(shape, size, {}, persistence));
        Counter late(settings(shape, size));
        std::vector<double> home(size.cellCount()), zoomed(size.cellCount());
        for (int k = 0; k < count; ++k) {
            const Trace& trace = all[static_cast<std::size_t>(k)];
            early.add(trace.data(), trace.size(), k);
            late.add(trace.data(), trace.size(), k);
            if (k == count / 2)
                early.setZoom(zoom);
            const double weight = weightOf(persistence, count - 1 - k);
            for (const auto& cell : touchedBy(trace, shape, Window(), size))
                home[indexOf(cell, size)] += weight;
            for (const auto& cell : touchedBy(trace, shape, zoom, size))
                zoomed[indexOf(cell, size)] += weight;
        }
        late.setPersistence(persistence);
        const auto expectNear = [](const std::vector<double>& seen,
                                   const std::vector<double>& truth) {
            ASSERT_EQ(seen.size(), truth.size());
            // Rounding of as many sums.
            for (std::size_t k = 0; k < truth.size(); ++k)
                ASSERT_NEAR(seen[k], truth[k], 1e-12 * count);
        };
        expectNear(early.homeSnapshot()->counts, home);
        expectNear(early.snapshot()->counts, zoomed);
        expectNear(late.snapshot()->counts, home);
        late.setHome(zoom);
        expectNear(late.snapshot()->counts, zoomed);
        early.setZoom({});
        expectNear(early.snapshot()->counts, home);
        early.clear();
        EXPECT_EQ(early.snapshot()->counts, std::vector<double>(size.cellCount()));
        EXPECT_EQ(early.snapshot()->allSymbols, 0);
    }
}

TEST(Counting, GoesBeyondWhatItsSmallNumbersHoldAndWhatItKeeps)
{
    const TraceShape shape{2, 2.0};
    Counter counter(settings(shape, {4, 3}));
    const Trace flat{0.1F, 0.1F};
    constexpr std::int64_t count = 250'001;
    for (std::int64_t k = 0; k < count; ++k)
        counter.add(flat.data(), flat.size(), k);
    const SnapshotPtr all = counter.snapshot();
    for (int column = 0; column < 4; ++column) {
        EXPECT_EQ(all->at(column, 0), 0.0);
        EXPECT_EQ(all->at(column, 1), static_cast<double>(count));
        EXPECT_EQ(all->at(column, 2), 0.0);
    }
    EXPECT_EQ(counter.kept().count(), Counter::leastKept);
    const std::vector<Counter::Hit> hits = counter.hits(Window(), {4, 3}, 2, 1, 3);
    ASSERT_EQ(hits.size(), 3U);
    EXPECT_EQ(hits[2].symbol, count - 3);
    EXPECT_EQ(counter.hits(Window(), {4, 3}, 2, 1, count).back().symbol,
              count - static_cast<std::int64_t>(Counter::leastKept));
    counter.setZoom(Window{-0.5, 0.5, 0.0, 0.2});
    EXPECT_EQ(counter.snapshot()->symbolCount, static_cast<std::int64_t>(Counter::leastKept));
    EXPECT_EQ(counter.homeSnapshot()->symbolCount, count);
    EXPECT_EQ(counter.snapshot()->allSymbols, count);
}

TEST(Counting, CountsPointsInTheCellsTheyAreIn)
{
    Counter::Settings points;
    points.shape.reset();
    points.size = {4, 2};
    Counter counter(points);
    const float nan = std::numeric_limits<float>::quiet_NaN();
    for (const auto& point : std::vector<Trace>{{-1.0F, -1.0F},
                                                {0.0F, 0.0F},
                                                {0.1F, 0.9F},
                                                {1.0F, 0.0F},
                                                {0.0F, nan},
                                                {1e30F, 0.0F},
                                                {0.5F}})
        counter.add(point.data(), point.size(), 0);
    const SnapshotPtr seen = counter.snapshot();
    EXPECT_EQ(seen->counts, (std::vector<double>{1, 0, 0, 0, 0, 0, 2, 0}));
    EXPECT_EQ(seen->symbolCount, 5);
    EXPECT_EQ(seen->leftOut.tornTraces, 2);
}

TEST(Counting, TakesUnusableSettingsForTheStandardOnes)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    Counter counter(
        settings({1, nan}, {0, 99999}, {nan, 1.0, 2.0, 1.0}, {Persistence::Kind::Fading, nan}));
    EXPECT_EQ(counter.settings().shape, TraceShape());
    EXPECT_TRUE(counter.settings().size == GridSize() && counter.settings().home == Window());
    for (const Window& window : {Window{1.0, 1.0, 0.0, 1.0}, Window{0.0, 1e300, -1e308, 1e308},
                                 Window{1e9, 1e9 + 1e-9, 0.0, 1.0}}) {
        counter.setZoom(window);
        counter.setHome(window);
        EXPECT_TRUE(counter.hits(window, {}, 0, 0, 1).empty());
    }
    EXPECT_TRUE(!counter.zoom() && counter.settings().home == Window());
}

TEST(CountingThread, LosesNothingAndCountsWhatItLeavesOut)
{
    const TraceShape shape{33, 2.0};
    Counter::Settings setup = settings(shape, {40, 30});
    for (const bool isLive : {false, true}) {
        CountingThread thread(setup);
        constexpr std::size_t perBlock = 20'000;
        constexpr std::int64_t blocks = 40;
        CountingThread::Block block;
        block.samples.assign(perBlock * static_cast<std::size_t>(shape.sampleCount), 0.1F);
        const auto feed = [&](std::int64_t first) {
            for (std::int64_t k = first; k < blocks; k += 2) {
                block.firstSymbol = k * std::int64_t{perBlock};
                CountingThread::Block copy = block;
                if (isLive)
                    thread.tryPush(std::move(copy));
                else
                    thread.push(std::move(copy));
            }
        };
        feed(0);
        thread.order([](Counter& counter) { counter.setZoom(Window{-0.5, 0.5, 0.0, 1.0}); });
        std::thread other(feed, 1);
        other.join();
        thread.tryPush({{0.1F, 0.2F}, 0, 5}); // less than a trace, and told of five
        thread.wait();
        SnapshotPtr home;
        thread.order([&](Counter& counter) { home = counter.homeSnapshot(); });
        thread.wait();
        EXPECT_EQ(home->allSymbols + home->leftOut.tornTraces, blocks * std::int64_t{perBlock} + 6);
        EXPECT_TRUE(isLive || home->leftOut.tornTraces == 6);
        EXPECT_EQ(home->at(7, 16), static_cast<double>(home->allSymbols));
        feed(0); // and goes while there is work
    }
}

} // namespace
