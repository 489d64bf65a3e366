// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/measure/EyeTraces.h"

#include "workbench/receiver/Interpolation.h"
#include "workbench/sources/LowPass.h"

#include <algorithm>
#include <cmath>
#include <memory>

namespace {

// By which neighbours may miss a distance of a symbol: others are not of one clock, such as those
// of characters that are out of step.
constexpr double spacingTolerance = 0.1;

/// Samples in a row, and the symbols in them.
struct Stretch
{
    std::int64_t position = 0; // of the first sample
    std::vector<double> samples;
    std::vector<Symbol> symbols;
};

/// The stretches of a signal that are not torn.
std::vector<Stretch> stretchesOf(const std::vector<SignalBlockPtr>& blocks)
{
    std::vector<Stretch> stretches;
    bool isOpen = false;
    for (const SignalBlockPtr& block : blocks) {
        const auto isQuiet = [&](std::size_t k) {
            return !block->isQuiet.empty() && block->isQuiet[k];
        };
        std::size_t k = 0;
        isOpen = isOpen && !block->isAfterGap &&
                 block->position == stretches.back().position +
                                        static_cast<std::int64_t>(stretches.back().samples.size());
        auto symbol = block->symbols.begin();
        for (; k < block->count(); ++k) {
            if (isQuiet(k) || !std::isfinite(block->samples[k])) {
                isOpen = false;
                continue;
            }
            const std::int64_t position = block->position + static_cast<std::int64_t>(k);
            if (!isOpen) {
                stretches.push_back({position, {}, {}});
                isOpen = true;
            }
            Stretch& stretch = stretches.back();
            stretch.samples.push_back(block->samples[k]);
            for (; symbol != block->symbols.end() &&
                   symbol->position < static_cast<double>(position + 1);
                 ++symbol)
                stretch.symbols.push_back(*symbol);
        }
    }
    return stretches;
}

class Cutter
{
public:
    Cutter(EyeTraces& traces, const SignalFormat& format, double bandwidth, std::size_t every)
        : m_traces(traces)
        , m_format(format)
        , m_bandwidth(bandwidth)
        , m_every(std::max<std::size_t>(every, 1))
    {}

    void cut(Stretch& stretch, double from, double to)
    {
        double delay = 0.0;
        if (m_bandwidth > 0.0) {
            LowPass filter(m_bandwidth / m_format.samplesPerSymbol);
            delay = filter.delay();
            for (double& sample : stretch.samples)
                sample = filter.run(sample);
        }
        const auto& symbols = stretch.symbols;
        for (std::size_t k = 1; k + 1 < symbols.size(); ++k) {
            ++m_instant.symbol;
            if (k == 1 || !isWhole(symbols[k - 1], symbols[k])) {
                ++m_instant.run;
                m_instant.symbol = 0.0;
                m_runStart = symbols[k].time;
            }
            if (symbols[k].time < from || symbols[k].time >= to)
                continue;
            if (!isWhole(symbols[k - 1], symbols[k]) || !isWhole(symbols[k], symbols[k + 1]))
                continue;
            if (m_number++ % m_every != 0) {
                ++m_traces.skipped;
                continue;
            }
            append(stretch, k, delay);
            m_instant.late =
                (symbols[k].time - m_runStart) * m_format.sampleRate / m_format.samplesPerSymbol -
                m_instant.symbol;
            if (!m_format.hasCharacters)
                m_traces.instants.push_back(m_instant);
        }
    }

private:
    bool isWhole(const Symbol& a, const Symbol& b) const
    {
        return a.state == SymbolState::Good && b.state == SymbolState::Good &&
               std::abs((b.position - a.position) / m_format.samplesPerSymbol - 1.0) <
                   spacingTolerance;
    }
    void append(const Stretch& stretch, std::size_t middle, double delay)
    {
        const auto first = static_cast<double>(stretch.position) - delay;
        const auto last = static_cast<std::ptrdiff_t>(stretch.samples.size()) - 1;
        const auto value = [&](std::ptrdiff_t index) {
            return stretch
                .samples[static_cast<std::size_t>(std::clamp<std::ptrdiff_t>(index, 0, last))];
        };
        constexpr auto half = static_cast<double>(EyeTraces::perSymbol);
        for (std::size_t k = 0; k < EyeTraces::length; ++k) {
            const std::size_t part = k <= EyeTraces::perSymbol ? 0 : 1;
            const double from = stretch.symbols[middle - 1 + part].position;
            const double to = stretch.symbols[middle + part].position;
            const double place =
                from + (to - from) * (static_cast<double>(k) / half - static_cast<double>(part)) -
                first;
            const double whole = std::round(place);
            m_traces.samples.push_back(std::abs(place - whole) < 1e-9
                                           ? value(static_cast<std::ptrdiff_t>(whole))
                                           : Interpolation::at(place, value));
        }
        m_traces.nearest.push_back(value(
            static_cast<std::ptrdiff_t>(std::lround(stretch.symbols[middle].position - first))));
    }

    EyeTraces& m_traces;
    const SignalFormat& m_format;
    double m_bandwidth;
    std::size_t m_every;
    std::size_t m_number = 0;
    EyeReadings::Instant m_instant;
    double m_runStart = 0.0; // s
};

} // namespace

EyeTraces EyeTraces::of(const std::vector<SignalBlockPtr>& blocks, double from, double to,
                        const SignalFormat& format, double bandwidth, std::size_t most)
{
    EyeTraces traces;
    if (!(format.samplesPerSymbol > 1.0))
        return traces;
    std::vector<Stretch> stretches = stretchesOf(blocks);
    std::size_t symbolCount = 0;
    for (const Stretch& stretch : stretches)
        symbolCount += stretch.symbols.size();
    Cutter cutter(traces, format, bandwidth,
                  (symbolCount + most - 1) / std::max<std::size_t>(most, 1));
    for (Stretch& stretch : stretches)
        cutter.cut(stretch, from, to);
    return traces;
}
