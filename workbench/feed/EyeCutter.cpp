// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/feed/EyeCutter.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include <liquid/liquid.h>

namespace {

// A diagram keeps a number of samples: more of a trace leave fewer traces.
constexpr int usualTraceLength = 24;
constexpr int minSymbolLength = 8;       // output samples; even, so that half a trace is whole
constexpr int phaseCount = 64;           // of the interpolation from sample to sample
constexpr int reach = 8;                 // samples that it takes to either side
constexpr float stopBand = 60.0F;        // dB
constexpr double spacingTolerance = 0.1; // of two symbols that follow one another

constexpr std::uint8_t isQuiet = 1;
constexpr std::uint8_t isNoNumber = 2;

int symbolLengthOf(const EyeCut& cut)
{
    return std::max(usualTraceLength / cut.symbolCount / 2 * 2, minSymbolLength);
}

/// Impulse response of the interpolation. To design it takes milliseconds.
const std::vector<float>& kernel()
{
    static const std::vector<float> taps = [] {
        std::vector<float> result(2 * reach * phaseCount + 1);
        liquid_firdes_kaiser(static_cast<unsigned>(result.size()), 0.5F / phaseCount, stopBand,
                             0.0F, result.data());
        return result;
    }();
    return taps;
}

/// Scatters numbers that follow one another (the finaliser of the generator SplitMix64).
std::uint64_t scattered(std::uint64_t number)
{
    number += 0x9e3779b97f4a7c15U;
    number = (number ^ (number >> 30U)) * 0xbf58476d1ce4e5b9U;
    number = (number ^ (number >> 27U)) * 0x94d049bb133111ebU;
    return number ^ (number >> 31U);
}

} // namespace

/// The signal between its samples.
struct EyeCutter::Interpolator
{
    Interpolator()
    {
        std::vector<float> taps = kernel();
        bank = firpfb_rrrf_create(phaseCount, taps.data(), static_cast<unsigned>(taps.size()));
    }
    ~Interpolator() { firpfb_rrrf_destroy(bank); }
    Interpolator(const Interpolator&) = delete;
    Interpolator& operator=(const Interpolator&) = delete;

    /// @param sampleAt  is asked for all samples from the next one on, in order.
    template<class SampleAt>
    double at(double position, SampleAt sampleAt)
    {
        auto whole = static_cast<std::int64_t>(std::floor(position));
        auto phase = static_cast<unsigned>(
            std::lround((position - static_cast<double>(whole)) * phaseCount));
        if (phase == phaseCount) {
            phase = 0;
            ++whole;
        }
        constexpr double largest = std::numeric_limits<float>::max();
        for (; next <= whole + reach; ++next)
            firpfb_rrrf_push(bank,
                             static_cast<float>(std::clamp(sampleAt(next), -largest, largest)));
        float result = 0.0F;
        firpfb_rrrf_execute(bank, phase, &result);
        return result;
    }

    firpfb_rrrf bank = nullptr;
    std::int64_t next = 0; // sample to be taken
};

EyeCutter::EyeCutter(const EyeCut& cut)
    : m_cut(cut)
    , m_symbolLength(symbolLengthOf(cut))
    , m_reach(static_cast<std::size_t>(cut.symbolCount + 1) / 2)
    , m_interpolator(std::make_unique<Interpolator>())
{
    m_traceLength = static_cast<std::size_t>(m_cut.symbolCount * m_symbolLength) + 1;
    if (m_cut.hasSymbols() && m_cut.bandwidth > 0.0)
        m_filter = std::make_unique<LowPass>(m_cut.bandwidth / m_cut.samplesPerSymbol);
}

EyeCutter::~EyeCutter() = default;

void EyeCutter::setStep(std::int64_t step) { m_step = std::max<std::int64_t>(step, 1); }

void EyeCutter::start(std::int64_t position)
{
    m_start = position;
    m_samples.clear();
    m_flaws.clear();
    m_symbols.clear();
    m_next = 0;
}

void EyeCutter::push(const BlockPart& part)
{
    if (!m_cut.hasSymbols())
        return;
    const auto end = m_start + static_cast<std::int64_t>(m_samples.size());
    if (part.position() != end || (part.first == 0 && part.block->isAfterGap))
        start(part.position());
    append(part);
    cutSymbols();
    forget();
}

void EyeCutter::append(const BlockPart& part)
{
    const SignalBlock& block = *part.block;
    for (std::size_t k = part.first; k < part.first + part.count; ++k) {
        const double sample = block.samples[k];
        const bool isNumber = std::isfinite(sample);
        m_samples.push_back(isNumber ? sample : 0.0);
        const bool isSilent = !block.isQuiet.empty() && block.isQuiet[k] != 0;
        m_flaws.push_back(
            static_cast<std::uint8_t>((isSilent ? isQuiet : 0U) | (isNumber ? 0U : isNoNumber)));
    }
    part.forEachSymbol([this](const Symbol& symbol) { m_symbols.push_back(symbol); });
}

void EyeCutter::cutSymbols()
{
    const auto end = static_cast<double>(m_start) + static_cast<double>(m_samples.size());
    const double delay = m_filter ? m_filter->delay() : 0.0;
    for (; m_next < m_symbols.size(); ++m_next) {
        const bool isKnown = m_next + m_reach < m_symbols.size();
        const double last = isKnown
                                ? m_symbols[m_next + m_reach].position + reach + 1.0
                                : m_symbols[m_next].position +
                                      (static_cast<double>(m_reach) + 2.0) * m_cut.samplesPerSymbol;
        if (last + delay >= end)
            return;
        if (!isChosen(std::floor(m_symbols[m_next].position / m_cut.samplesPerSymbol)))
            continue;
        if (isWhole(m_next))
            trace(m_next);
        else
            ++m_leftOutCount;
    }
}

bool EyeCutter::isChosen(double number) const
{
    const auto index = static_cast<std::int64_t>(number);
    const auto group = static_cast<std::uint64_t>(index / m_step);
    const auto chosen = scattered(group) % static_cast<std::uint64_t>(m_step);
    return index % m_step == static_cast<std::int64_t>(chosen);
}

/// Whether all of the trace about a symbol can be had and trusted.
bool EyeCutter::isWhole(std::size_t middle) const
{
    if (middle < m_reach || middle + m_reach >= m_symbols.size())
        return false;
    const std::size_t touched = static_cast<std::size_t>(m_cut.symbolCount) / 2;
    for (std::size_t k = middle - m_reach; k <= middle + m_reach; ++k) {
        const std::size_t distance = k > middle ? k - middle : middle - k;
        if (distance <= touched && m_symbols[k].state != SymbolState::Good)
            return false;
        const double spacing =
            k > middle - m_reach
                ? (m_symbols[k].position - m_symbols[k - 1].position) / m_cut.samplesPerSymbol
                : 1.0;
        if (!(std::abs(spacing - 1.0) < spacingTolerance))
            return false;
    }
    const double half = 0.5 * m_cut.symbolCount;
    const auto first = static_cast<std::int64_t>(std::floor(placeOf(middle, -half)));
    const auto last = static_cast<std::int64_t>(std::ceil(placeOf(middle, half)));
    return first - reach >= m_start && isClear(first, last, isQuiet) &&
           isClear(first - reach, last + reach, isNoNumber);
}

/// Where the signal is so many symbols after the middle of one, samples.
double EyeCutter::placeOf(std::size_t middle, double symbols) const
{
    const double whole = std::floor(symbols);
    const auto before = static_cast<std::size_t>(static_cast<std::int64_t>(middle) +
                                                 static_cast<std::int64_t>(whole));
    const Symbol& from = m_symbols[before];
    if (symbols == whole)
        return from.position;
    const Symbol& to = m_symbols[before + 1];
    return from.position + (symbols - whole) * (to.position - from.position);
}

bool EyeCutter::isClear(std::int64_t first, std::int64_t last, std::uint8_t flaws) const
{
    const auto begin = m_flaws.begin() + static_cast<std::ptrdiff_t>(first - m_start);
    return std::none_of(begin, begin + static_cast<std::ptrdiff_t>(last - first + 1),
                        [flaws](std::uint8_t flaw) { return (flaw & flaws) != 0; });
}

/// Before the first sample as if that one had lasted.
double EyeCutter::sampleAt(std::int64_t position) const
{
    return m_samples[static_cast<std::size_t>(std::max(position, m_start) - m_start)];
}

void EyeCutter::trace(std::size_t middle)
{
    const double half = 0.5 * m_cut.symbolCount;
    const double delay = m_filter ? m_filter->delay() : 0.0;
    m_interpolator->next =
        static_cast<std::int64_t>(std::floor(placeOf(middle, -half) + delay)) - reach;
    if (m_filter) { // its state is that of another place
        for (std::int64_t k = m_interpolator->next - m_filter->settleLength();
             k < m_interpolator->next; ++k)
            m_filter->run(sampleAt(k));
    }
    const auto filtered = [this](std::int64_t position) {
        return m_filter ? m_filter->run(sampleAt(position)) : sampleAt(position);
    };
    for (std::size_t k = 0; k < m_traceLength; ++k) {
        const double symbols = static_cast<double>(k) / m_symbolLength - half;
        m_traces.push_back(m_interpolator->at(placeOf(middle, symbols) + delay, filtered));
    }
}

/// Forgets what no trace can need any more.
void EyeCutter::forget()
{
    const std::size_t used = m_next - std::min(m_next, m_reach + 1);
    m_symbols.erase(m_symbols.begin(), m_symbols.begin() + static_cast<std::ptrdiff_t>(used));
    m_next -= used;
    const double settle = m_filter ? m_filter->settleLength() + m_filter->delay() : 0.0;
    const double kept =
        (m_cut.symbolCount + 2) * std::max(m_cut.samplesPerSymbol, 1.0) + settle + 2.0 * reach;
    const auto end = static_cast<double>(m_start) + static_cast<double>(m_samples.size());
    const double needed = m_next < m_symbols.size() ? m_symbols[m_next].position : end;
    const double surplus = std::floor(std::min(needed, end) - kept - static_cast<double>(m_start));
    if (surplus < static_cast<double>(m_samples.size()) / 2.0) // seldom, as it moves the rest
        return;
    m_samples.erase(m_samples.begin(), m_samples.begin() + static_cast<std::ptrdiff_t>(surplus));
    m_flaws.erase(m_flaws.begin(), m_flaws.begin() + static_cast<std::ptrdiff_t>(surplus));
    m_start += static_cast<std::int64_t>(surplus);
}

void EyeCutter::takeTraces(std::size_t most, std::vector<double>& samples,
                           std::vector<double>& markers)
{
    const std::size_t kept = std::min(m_traces.size() / m_traceLength, most / m_traceLength + 1);
    samples.assign(m_traces.end() - static_cast<std::ptrdiff_t>(kept * m_traceLength),
                   m_traces.end());
    m_traces.clear();
    markers.assign(samples.size(), 0.0);
    for (std::size_t i = 0; i < markers.size(); i += m_traceLength)
        markers[i] = static_cast<double>(m_traceLength);
}
