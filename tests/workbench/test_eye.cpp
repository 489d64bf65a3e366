// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "TreeAccess.h"
#include "workbench/feed/DensityFeed.h"
#include "workbench/feed/EyeFeed.h"
#include "workbench/receiver/Receiver.h"
#include "workbench/sources/LowPass.h"
#include "workbench/sources/NrzSource.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

using Trace = std::vector<double>;
using Parts = std::deque<BlockPart>;

std::vector<Trace> tracesOf(const EyeCut& cut, const Parts& parts, std::int64_t step = 1)
{
    EyeCutter cutter(cut);
    cutter.setStep(step);
    for (const BlockPart& part : parts) // in pieces
        for (std::size_t k = 0; k < part.count; k += 77)
            cutter.push({part.block, part.first + k, std::min<std::size_t>(77, part.count - k)});
    std::vector<double> samples;
    std::vector<double> markers;
    cutter.takeTraces(100000000, samples, markers);
    std::vector<Trace> traces;
    for (std::size_t i = 0; i < samples.size(); i += cutter.traceLength()) {
        EXPECT_EQ(markers[i], double(cutter.traceLength()));
        const auto first = samples.begin() + long(i);
        traces.emplace_back(first, first + long(cutter.traceLength()));
    }
    return traces;
}

/// How far the eye is open in the middle: the gap between a level and the next where no trace
/// passes, relative to the levels' distance.
double opening(const std::vector<Trace>& traces, int levelCount)
{
    double worst = 1.0;
    for (const Trace& trace : traces) {
        const double place = (trace[trace.size() / 2] + 1.0) / 2.0 * (levelCount - 1);
        worst = std::min(worst, 1.0 - 2.0 * std::abs(place - std::round(place)));
    }
    return worst;
}

/// The signal of a source with its symbols, 3000 of them.
Parts received(NrzSource& source, std::optional<double> symbolRate)
{
    ReceiverSettings settings;
    settings.symbolRate = symbolRate;
    Receiver receiver(source.facts(), 0, settings);
    std::vector<double> values;
    std::vector<SignalBlock> blocks;
    source.read(values,
                std::size_t(3000.0 * source.facts().sampleRate / *source.facts().symbolRate));
    receiver.process(0, values, blocks);
    receiver.finish(blocks);
    Parts parts;
    for (SignalBlock& block : blocks) {
        const std::size_t count = block.count();
        parts.push_back({std::make_shared<SignalBlock>(std::move(block)), 0, count});
    }
    return parts;
}

TEST(Eye, IsOpenInTheMiddleOfEverySymbol)
{
    // Whether the symbols are known, their rate, error of the rate that is told, a part of it,
    // levels, noise, symbols in a trace, bandwidth, and how far the eye is open.
    const std::tuple<bool, double, double, int, double, int, double, double> rows[] = {
        {true, 1200.0, 0.0, 2, 0.0, 2, 0.0, 0.9},     {true, 1100.0, 0.0, 4, 0.0, 3, 0.0, 0.7},
        {true, 9600.0, 0.0, 2, 0.0, 1, 0.0, 0.85},    {false, 1234.5, 20e-6, 2, 0.1, 2, 0.0, 0.5},
        {false, 4800.0, 5e-3, 2, 0.05, 16, 0.0, 0.6}, {false, 5000.0, -1e-3, 4, 0.02, 2, 0.0, 0.4},
        {true, 1200.0, 0.0, 2, 0.15, 2, 0.6, 0.5},    {false, 1200.0, 0.0, 2, 0.15, 2, 0.6, 0.5}};
    for (const auto& [isKnown, symbolRate, error, levelCount, noise, symbolCount, bandwidth,
                      least] : rows) {
        SCOPED_TRACE(testing::Message() << symbolRate << " Bd, error " << error);
        NrzSettings settings;
        settings.symbolRate = symbolRate;
        settings.levelCount = levelCount;
        settings.noise = noise;
        NrzSource source(settings);
        const double told = symbolRate * (1.0 + error);
        const Parts parts = received(source, isKnown ? std::nullopt : std::optional(told));
        const EyeCut cut{settings.sampleRate / told, symbolCount, bandwidth};
        const auto traces = tracesOf(cut, parts);
        EXPECT_NEAR(double(traces.size()), 3000.0, isKnown ? 20.0 : 300.0);
        EXPECT_GT(opening(traces, levelCount), least);
        const auto tenth = tracesOf(cut, parts, 10);
        EXPECT_NEAR(double(tenth.size()), double(traces.size()) / 10.0, 5.0);
        for (std::size_t k = 0; k < tenth.size() && bandwidth == 0.0; ++k)
            EXPECT_NE(std::find(traces.begin(), traces.end(), tenth[k]), traces.end());
    }
}

/// A sine of 8 samples a symbol, one symbol a sample of it.
std::shared_ptr<SignalBlock> block(std::int64_t position, std::size_t symbols)
{
    auto result = std::make_shared<SignalBlock>();
    result->position = position;
    for (std::size_t k = 0; k < 8 * symbols; ++k)
        result->samples.push_back(std::sin(0.1 * double(position + std::int64_t(k))));
    for (std::size_t k = 0; k < symbols; ++k) {
        Symbol symbol;
        symbol.position = double(position) + 8.0 * double(k) + 4.25;
        symbol.time = symbol.position / 8.0;
        symbol.state = SymbolState::Good;
        result->symbols.push_back(symbol);
    }
    return result;
}

TEST(Eye, LeavesOutWhatTouchesAFlaw)
{
    using Flaw = std::function<void(SignalBlock&, SignalBlock&)>;
    const auto late = [](double samples) { // from a symbol on
        return [samples](SignalBlock& first, SignalBlock& second) {
            for (std::size_t k = 50; k < 100; ++k)
                first.symbols[k].position += samples;
            for (Symbol& symbol : second.symbols)
                symbol.position += samples;
        };
    };
    const auto quiet = [](SignalBlock& first, SignalBlock&) {
        first.isQuiet.resize(800);
        first.isQuiet[400] = 1;
    };
    // What is amiss, traces that are left out, and how exactly that is known.
    const std::tuple<Flaw, double, double> rows[] = {
        {[](SignalBlock&, SignalBlock&) {}, 0.0, 0.0},
        // One and its neighbours.
        {[](auto& bad, auto&) { bad.symbols[50].state = SymbolState::Unlocked; }, 3.0, 0.0},
        {[](auto& bad, auto&) { bad.symbols.erase(bad.symbols.begin() + 50); }, 3.0, 0.0},
        // Between two symbols, in the traces of four.
        {quiet, 2.5, 1.0},
        // What interpolates it, too.
        {[](auto& bad, auto&) { bad.samples[400] = std::nan(""); }, 5.0, 2.0},
        {[](auto&, auto& second) { second = *block(8000, 100); }, 5.0, 2.0}, // after a gap
        {late(-1.2), 2.0, 0.0},                                              // by 0.15 of a symbol
        {late(1.2), 2.0, 0.0}};
    std::size_t all = 0;
    for (const auto& [flaw, leftOut, tolerance] : rows) {
        SCOPED_TRACE(leftOut);
        auto first = block(0, 100), second = block(800, 100);
        second->isAfterGap = false;
        flaw(*first, *second);
        const auto traces =
            tracesOf({8.0, 2, 0.0}, {{first, 0, first->count()}, {second, 0, second->count()}});
        all = std::max(all, traces.size());
        EXPECT_NEAR(double(traces.size()), double(all) - leftOut, tolerance);
        for (const Trace& trace : traces) // the sine, between its samples
            for (std::size_t k = 1; k < trace.size(); ++k)
                EXPECT_LT(std::abs(trace[k] - trace[k - 1]), 0.075);
    }
    EXPECT_GE(all, 194U); // but some at either end
}

/// The same samples, some of which are silenced or no numbers.
Parts flawed(const Parts& parts)
{
    Parts result;
    for (const BlockPart& part : parts) {
        auto block = std::make_shared<SignalBlock>(*part.block);
        if (result.size() % 3 == 1)
            block->isQuiet.assign(block->count(), 0);
        for (std::size_t k = 30; k < block->count(); k += 4000) {
            block->samples[k] = std::nan("");
            if (!block->isQuiet.empty())
                block->isQuiet[k + 9] = 1;
        }
        result.push_back({block, part.first, part.count});
    }
    return result;
}

TEST(Eye, IsTheSameHoweverManyTracesAreTakenAtOnce)
{
    NrzSource source;
    const Parts whole = received(source, std::nullopt);
    for (const auto& [parts, bandwidth] :
         {std::make_pair(whole, 0.0), {flawed(whole), 0.0}, {flawed(whole), 0.6}}) {
        EyeCutter often({40.0, 2, bandwidth}), seldom({40.0, 2, bandwidth});
        often.setStep(3);
        seldom.setStep(3);
        std::vector<double> all, samples, markers;
        std::size_t pieces = 0;
        int compared = 0;
        for (const BlockPart& part : parts) {
            for (std::size_t k = 0; k < part.count; k += 501) {
                const std::size_t count = std::min<std::size_t>(501, part.count - k);
                seldom.push({part.block, part.first + k, count});
                often.push({part.block, part.first + k, count});
                often.takeTraces(100000000, samples, markers);
                all.insert(all.end(), samples.begin(), samples.end());
                if (++pieces % 97 != 0)
                    continue;
                seldom.takeTraces(2500, samples, markers);
                ASSERT_EQ(samples.size(), 101 * often.traceLength());
                EXPECT_EQ(samples,
                          std::vector<double>(all.end() - long(samples.size()), all.end()));
                ++compared;
            }
        }
        EXPECT_GE(compared, 2);
    }
}

TEST(Eye, ShowsAsManyTracesAsAViewKeepsFromAllOfTheGate)
{
    NrzSource source;
    const Parts parts = received(source, std::nullopt);
    EyeFeed feed;
    feed.open({48000.0, 40.0, false, false, false});
    feed.show(parts);
    const std::vector<double> shown = listAt(EyeValues::samplesPath);
    EXPECT_NEAR(double(shown.size()), 10000.0 * 25.0 / 26.0, 400.0);
    const auto traces = tracesOf(feed.cut(), parts);
    const Trace first(shown.begin(), shown.begin() + 25);
    const Trace last(shown.end() - 25, shown.end());
    EXPECT_LT(std::find(traces.begin(), traces.end(), first) - traces.begin(), 20);
    EXPECT_GT(std::find(traces.begin(), traces.end(), last) - traces.begin(), 2970);
    feed.setLevels(-9.0, 9.0);
    feed.fitLevels();
    feed.followLevels(0.0);
    EXPECT_NEAR(numberAt(EyeValues::yMaxPath), 1.25, 0.1); // level, noise and margin
}

TEST(LowPasses, AreThreeDecibelsDownAtTheirCornersHoweverLow)
{
    for (const double corner : {0.1, 1e-2, 1e-4, 1e-5}) {
        LowPass rest(corner), tone(corner);
        double end = 0.0, power = 0.0;
        const int period = int(std::lround(1.0 / corner)), settle = 20 * period;
        for (int k = 0; k < settle; ++k)
            end = rest.run(1.0);
        EXPECT_NEAR(end, 1.0, 1e-6) << corner;
        for (int k = 0; k < settle + period; ++k) {
            const double sample = tone.run(std::sin(2.0 * M_PI * k / period));
            power += k < settle ? 0.0 : sample * sample / period;
        }
        EXPECT_NEAR(10.0 * std::log10(2.0 * power), -3.01, 0.03) << corner;
    }
}

TEST(DensityFeed, TellsEachSymbolOfALiveSignalOrCountsItAsTorn)
{
    SignalFormat format;
    format.sampleRate = 8.0;
    format.samplesPerSymbol = 8.0;
    auto first = block(0, 100), lost = block(2000, 100), quiet = block(2800, 100);
    quiet->isAfterGap = false;
    quiet->isQuiet.resize(800);
    quiet->isQuiet[404] = 1; // at the symbol 50
    quiet->symbols[20].state = SymbolState::Unlocked;
    // The clock slips: two symbols are near to one another, and none is of another run.
    first->symbols[50].position -= 0.7 * 8.0;
    first->symbols[50].time -= 0.7;
    for (const bool isLive : {true, false}) {
        SCOPED_TRACE(isLive);
        std::int64_t told = 0, torn = 0, next = 0;
        DensityFeed feed(DensityFeed::Kind::Traces);
        feed.open(format, 0.0, isLive);
        feed.setSink([&](const DensityFeed::Batch& batch, bool mayWait) {
            EXPECT_NE(mayWait, isLive);
            torn += batch.torn;
            if (batch.samples.empty())
                return;
            EXPECT_GE(batch.firstSymbol, next) << "numbers grow";
            const auto count = std::int64_t(batch.samples.size() / DensityFeed::traceLength);
            told += count;
            next = batch.firstSymbol + count;
        });
        for (int pass = 0; pass < 2; ++pass) {
            for (const auto& each : {first, lost, quiet})
                feed.take({each, 0, each->count()});
            feed.finish();
            feed.wait();
            if (isLive)
                break;
        }
        // Without a trace are those at the gap and at the end, the one that is not locked and its
        // neighbours, the one that is quiet and its neighbours, and those at the slip.
        EXPECT_EQ(told, 98 + 198 - 3 - 3 - 3);
        EXPECT_EQ(torn, isLive ? 300 - told : 9) << "ends of a recording may come yet";
    }
}

} // namespace
