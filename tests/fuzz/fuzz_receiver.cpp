// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
// Receives signals of any samples with any settings, twice, in blocks of different lengths.
#include "AnySettings.h"
#include "Attack.h"
#include "workbench/receiver/Receiver.h"

namespace {

constexpr std::size_t mostSamples = 60000;

SignalFacts anyInput(Bytes& input)
{
    SignalFacts result;
    result.sampleRate = anyRate(input);
    result.isComplex = input.flag();
    result.channelCount = static_cast<int>(1 + input.below(3));
    if (input.flag())
        result.symbolRate = result.sampleRate / anySamplesPerSymbol(input);
    if (result.symbolRate && input.flag()) // known to the built-in sources alone
        result.firstSymbol = 0.25 * input.below(200);
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

/// A receiver, and what it makes of a signal.
struct Receiving
{
    /// @param length  of the blocks that it is given, samples.
    void process(std::int64_t position, const std::vector<double>& values, std::size_t width,
                 std::size_t length)
    {
        for (std::size_t k = 0; k < values.size(); k += length * width) {
            const auto first = values.begin() + static_cast<std::ptrdiff_t>(k);
            const std::size_t count = std::min(length * width, values.size() - k);
            receiver.process(position + static_cast<std::int64_t>(k / width),
                             {first, first + static_cast<std::ptrdiff_t>(count)}, blocks);
        }
        take();
    }
    void finish()
    {
        receiver.finish(blocks);
        take();
    }
    void take()
    {
        for (const SignalBlock& block : blocks) {
            check(block);
            const std::vector<double>* const values[] = {&block.samples, &block.i, &block.q};
            for (std::size_t k = 0; k < std::size(values); ++k)
                figures[k].insert(figures[k].end(), values[k]->begin(), values[k]->end());
            for (const Symbol& symbol : block.symbols)
                figures[3].insert(figures[3].end(), {symbol.position, symbol.time, symbol.phase,
                                                     double{symbol.value.real()}, symbol.level});
        }
        blocks.clear();
        for (const auto& numbers : figures)
            require(!isReceived || std::all_of(numbers.begin(), numbers.end(),
                                               [](double value) { return std::isfinite(value); }),
                    "finite figures");
    }
    void check(const SignalBlock& block)
    {
        const std::size_t count = block.count();
        require(count > 0 && block.i.size() == count, "samples and I");
        require(block.q.size() == (receiver.format().hasQ ? count : 0), "samples and Q");
        require(block.isQuiet.empty() || block.isQuiet.size() == count, "samples and quiet ones");
        require(block.isAfterGap == (block.position != next), "a gap");
        next = block.end();
        double last = static_cast<double>(block.position);
        for (const Symbol& symbol : block.symbols) {
            require(symbol.position >= last && symbol.position < static_cast<double>(next) &&
                        std::isfinite(symbol.time),
                    "a symbol");
            last = symbol.position;
        }
    }
    Receiver receiver;
    bool isReceived; // so that all is finite
    std::vector<SignalBlock> blocks = {};
    std::int64_t next = -1;              // position
    std::vector<double> figures[4] = {}; // samples, I, Q, symbols
};

/// Receivers that were given the same in blocks of different lengths.
void finish(Receiving& whole, Receiving& cut)
{
    whole.finish();
    cut.finish();
    const auto isSame = [](double a, double b) {
        return a == b || (std::isnan(a) && std::isnan(b));
    };
    for (std::size_t k = 0; k < std::size(whole.figures); ++k) {
        auto &a = whole.figures[k], &b = cut.figures[k];
        require(std::equal(a.begin(), a.end(), b.begin(), b.end(), isSame),
                "figures of blocks of other lengths");
        a.clear();
        b.clear();
    }
    whole.next = cut.next = -1;
}

} // namespace

void attackReceiver(Bytes& input)
{
    const SignalFacts signal = anyInput(input);
    const ReceiverSettings settings = anySettings(input, signal.sampleRate);
    ReceiverSettings used = settings;
    used.symbolRate = settings.symbolRate ? settings.symbolRate : signal.symbolRate;
    const bool isReceived = settings.isOn && !signal.firstSymbol && used.check(signal.sampleRate);
    const ChannelChoice channel = anyChannel(input, signal.valueCount());
    const auto width = static_cast<std::size_t>(signal.valueCount());
    Receiving whole{{signal, channel, settings}, isReceived};
    Receiving cut{{signal, channel, settings}, isReceived};
    const double ratio = signal.sampleRate / used.symbolRate.value_or(signal.sampleRate / 8.0);
    const double perSymbol = ratio >= 1.0 ? std::min(ratio, 1e5) : 1.0; // of NaN, too
    std::int64_t position = 0;
    std::size_t count = 0;
    while (!input.isEmpty() && count < mostSamples) {
        const unsigned kind = input.below(16);
        if (kind == 0) // as far as files reach: times are exact there
            position = static_cast<std::int64_t>(input.take<std::uint64_t>() >> 24);
        else if (kind == 1)
            finish(whole, cut);
        const std::vector<double> values = anyStretch(input, width, perSymbol);
        const std::size_t samples = values.size() / width;
        whole.process(position, values, width, samples);
        cut.process(position, values, width, input.oneOf<std::size_t>({1, 7, 4096, 5000}));
        position += static_cast<std::int64_t>(samples);
        count += samples;
    }
    finish(whole, cut);
}
