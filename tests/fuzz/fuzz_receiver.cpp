// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
// Receives signals of any samples with any settings, twice, in blocks of different lengths.
#include "AnySettings.h"
#include "Attack.h"
#include "workbench/receiver/Receiver.h"

namespace {

constexpr std::size_t mostSamples = 60000;

Receiver::Input anyInput(Bytes& input)
{
    Receiver::Input result;
    result.sampleRate = anyRate(input);
    result.isComplex = input.flag();
    result.valueCount = static_cast<int>(1 + input.below(3)) * (result.isComplex ? 2 : 1);
    if (input.flag())
        result.symbolRate = result.sampleRate / anySamplesPerSymbol(input);
    if (result.symbolRate && input.flag()) // known to the built-in sources alone
        result.firstSymbol = 0.25 * input.below(200);
    if (result.valueCount > 1 && input.flag())
        result.constellationChannel = result.valueCount - 2;
    return result;
}

/// A stretch of signal, for one value of a sample.
std::vector<double> anyStretch(Bytes& input, std::size_t width, double samplesPerSymbol)
{
    const double level = input.flag() ? input.number() : 0.5;
    const auto kind = input.below(4);
    const double step = input.flag() ? input.take<std::uint16_t>() / 65536.0 : 0.0; // turns
    std::vector<double> values(width * (1 + input.take<std::uint16_t>() % 20000));
    std::uint32_t random = input.take<std::uint16_t>();
    const std::uint64_t bits = input.take<std::uint16_t>();
    for (std::size_t k = 0; k < values.size(); ++k) {
        const auto sample = static_cast<double>(k / width);
        random = random * 1664525 + 1013904223;
        const auto symbol = static_cast<std::size_t>(sample / samplesPerSymbol) + k % width;
        switch (kind) {
        case 0:
            values[k] = level;
            break;
        case 1: // noise
            values[k] = level * (random / 2147483648.0 - 1.0);
            break;
        case 2: // symbols
            values[k] = level * ((symbol + bits) * 0x9e3779b97f4a7c15U >> 63 != 0U ? 1.0 : -1.0);
            break;
        default: // a few samples that are repeated
            values[k] = k < 8 * width ? input.number() : values[k - 8 * width];
        }
        if (step > 0.0)
            values[k] *= std::cos(6.283185307179586 *
                                  (sample * step - 0.25 * static_cast<double>(k % width)));
    }
    return values;
}

struct Taken
{
    void take(const SignalFormat& format, std::vector<SignalBlock>& blocks, bool isReceived)
    {
        for (const SignalBlock& block : blocks) {
            check(format, block, isReceived);
            const std::vector<double>* const values[] = {&block.samples, &block.i, &block.q};
            for (std::size_t k = 0; k < std::size(figures); ++k)
                figures[k].insert(figures[k].end(), values[k]->begin(), values[k]->end());
            for (const Symbol& symbol : block.symbols)
                symbols.insert(symbols.end(), {symbol.position, symbol.time, symbol.phase,
                                               double{symbol.value.real()}, symbol.level});
        }
        blocks.clear();
    }
    void check(const SignalFormat& format, const SignalBlock& block, bool isReceived)
    {
        const std::size_t count = block.count();
        require(count > 0 && block.i.size() == count, "samples and I");
        require(block.q.size() == (format.hasQ ? count : 0), "samples and Q");
        require(block.isQuiet.empty() || block.isQuiet.size() == count, "samples and quiet ones");
        require(block.isAfterGap || block.position == next, "a position");
        next = block.end();
        double last = static_cast<double>(block.position);
        for (const Symbol& symbol : block.symbols) {
            require(symbol.position >= last && symbol.position < static_cast<double>(next) &&
                        std::isfinite(symbol.time),
                    "a symbol");
            last = symbol.position;
        }
        if (!isReceived)
            return;
        for (const auto* values : {&block.samples, &block.i, &block.q})
            require(std::all_of(values->begin(), values->end(),
                                [](double value) { return std::isfinite(value); }),
                    "finite samples");
        for (const Symbol& symbol : block.symbols)
            require(std::isfinite(symbol.value.real()) && std::isfinite(symbol.level) &&
                        std::isfinite(symbol.phase),
                    "finite symbols");
    }
    std::int64_t next = 0;
    std::vector<double> figures[3]; // samples, I, Q
    std::vector<double> symbols;
};

bool isSame(const std::vector<double>& a, const std::vector<double>& b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](double x, double y) {
        return x == y || (std::isnan(x) && std::isnan(y));
    });
}

/// Lets a receiver and its twin, which has shorter blocks, receive the same.
struct Twins
{
    Twins(const Receiver::Input& input, const ChannelChoice& channel,
          const ReceiverSettings& settings, bool isReceived)
        : whole(input, channel, settings)
        , cut(input, channel, settings)
        , width(static_cast<std::size_t>(input.valueCount))
        , isReceived(isReceived)
    {}
    void process(std::int64_t position, const std::vector<double>& values, std::size_t length)
    {
        whole.process(position, values, blocks);
        ofWhole.take(whole.format(), blocks, isReceived);
        for (std::size_t k = 0; k < values.size(); k += length * width) {
            const auto first = values.begin() + static_cast<std::ptrdiff_t>(k);
            const std::size_t count = std::min(length * width, values.size() - k);
            cut.process(position + static_cast<std::int64_t>(k / width),
                        {first, first + static_cast<std::ptrdiff_t>(count)}, blocks);
        }
        ofCut.take(cut.format(), blocks, isReceived);
    }
    void finish()
    {
        whole.finish(blocks);
        ofWhole.take(whole.format(), blocks, isReceived);
        cut.finish(blocks);
        ofCut.take(cut.format(), blocks, isReceived);
        for (std::size_t k = 0; k < std::size(ofWhole.figures); ++k)
            require(isSame(ofWhole.figures[k], ofCut.figures[k]),
                    "samples of blocks of other lengths");
        require(isSame(ofWhole.symbols, ofCut.symbols), "symbols of blocks of other lengths");
        ofWhole = ofCut = {};
    }
    Receiver whole, cut;
    std::size_t width;
    bool isReceived;
    std::vector<SignalBlock> blocks;
    Taken ofWhole, ofCut;
};

} // namespace

void attackReceiver(Bytes& input)
{
    const Receiver::Input signal = anyInput(input);
    const ReceiverSettings settings = anySettings(input, signal.sampleRate);
    ReceiverSettings used = settings;
    used.symbolRate = settings.symbolRate ? settings.symbolRate : signal.symbolRate;
    const bool isReceived =
        settings.isOn && !signal.firstSymbol && used.flaw(signal.sampleRate).isEmpty();
    Twins twins(signal, anyChannel(input, signal.valueCount), settings, isReceived);
    const double perSymbol =
        used.symbolRate ? std::clamp(signal.sampleRate / *used.symbolRate, 1.0, 1e5) : 8.0;
    std::int64_t position = 0;
    std::size_t count = 0;
    while (!input.isEmpty() && count < mostSamples) {
        const unsigned kind = input.below(16);
        if (kind == 0) // as far as files reach: times are exact there
            position = static_cast<std::int64_t>(input.take<std::uint64_t>() >> 24);
        else if (kind == 1)
            twins.finish();
        const std::vector<double> values = anyStretch(input, twins.width, perSymbol);
        twins.process(
            position, values,
            input.oneOf({std::size_t{1}, std::size_t{7}, std::size_t{4096}, std::size_t{5000}}));
        const std::size_t samples = values.size() / twins.width;
        position += static_cast<std::int64_t>(samples);
        count += samples;
    }
    twins.finish();
}
