// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/feed/EyeCutter.h"

#include "workbench/receiver/Interpolation.h"
#include "workbench/receiver/SingleNumbers.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

// A diagram keeps a fixed number of samples: longer traces leave fewer traces.
constexpr int usualTraceLength = 24;
constexpr int minSymbolLength = 8; // output samples; even, so that half a trace is whole
constexpr std::int64_t reach = Interpolation::reach;
constexpr double spacingTolerance = 0.1; // of the distance of neighbouring symbols

constexpr std::size_t readAtOnce = 1024;                   // samples
constexpr std::size_t mostWaiting = std::size_t{1} << 18U; // samples that are not cut yet
constexpr std::size_t noLimit = std::numeric_limits<std::size_t>::max();

constexpr std::uint8_t isQuiet = 1;
constexpr std::uint8_t isNoNumber = 2;

constexpr double largest = std::numeric_limits<float>::max();

int symbolLengthOf(const EyeCut& cut)
{
    return std::max(usualTraceLength / cut.symbolCount / 2 * 2, minSymbolLength);
}

/// Hashes consecutive numbers (the finaliser of the generator SplitMix64).
std::uint64_t scattered(std::uint64_t number)
{
    number += 0x9e3779b97f4a7c15U;
    number = (number ^ (number >> 30U)) * 0xbf58476d1ce4e5b9U;
    number = (number ^ (number >> 27U)) * 0x94d049bb133111ebU;
    return number ^ (number >> 31U);
}

} // namespace

EyeCutter::EyeCutter(const EyeCut& cut)
    : m_cut(cut)
    , m_symbolLength(symbolLengthOf(cut))
    , m_reach(static_cast<std::size_t>(cut.symbolCount + 1) / 2)
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
    m_unread.clear();
    m_flaws.clear();
    m_lastFlaw = -1;
    m_symbols.clear();
    m_next = 0;
}

void EyeCutter::push(const BlockPart& part)
{
    if (!m_cut.hasSymbols())
        return;
    const auto end = m_start + static_cast<std::int64_t>(m_samples.size());
    if (part.position() != end || (part.first == 0 && part.block->isAfterGap)) {
        cut(noLimit);
        start(part.position());
    }
    append(part);
    if (m_samples.size() > mostWaiting)
        cut(noLimit);
}

void EyeCutter::append(const BlockPart& part)
{
    m_samples.resize(m_samples.size() + part.count);
    m_flaws.resize(m_samples.size());
    m_unread.push_back(part);
    const auto [begin, end] = part.symbols();
    m_symbols.insert(m_symbols.end(), begin, end);
}

/// Makes samples single from a position on, or from some before it.
void EyeCutter::read(std::int64_t first)
{
    while (!m_unread.empty() && m_unread.back().end() > first) {
        BlockPart& part = m_unread.back();
        const std::int64_t left = std::max<std::int64_t>(first - part.position(), 0);
        BlockPart here = part;
        part.count = static_cast<std::size_t>(left) / readAtOnce * readAtOnce;
        here.first += part.count;
        here.count -= part.count;
        readPart(here);
        if (part.count == 0)
            m_unread.pop_back();
    }
}

void EyeCutter::readPart(const BlockPart& part)
{
    const SignalBlock& block = *part.block;
    const auto start = static_cast<std::size_t>(part.position() - m_start);
    if (block.isQuiet.empty() &&
        makeSingle(&block.samples[part.first], part.count, largest, &m_samples[start]))
        return;
    for (std::size_t k = 0; k < part.count; ++k) {
        const double sample = block.samples[part.first + k];
        const bool isSilent = !block.isQuiet.empty() && block.isQuiet[part.first + k] != 0;
        const bool isNumber = std::isfinite(sample);
        m_samples[start + k] =
            isNumber ? static_cast<float>(std::clamp(sample, -largest, largest)) : 0.0F;
        if (isNumber && !isSilent)
            continue;
        m_flaws[start + k] =
            static_cast<std::uint8_t>((isSilent ? isQuiet : 0U) | (isNumber ? 0U : isNoNumber));
        m_lastFlaw = std::max(m_lastFlaw, part.position() + static_cast<std::int64_t>(k));
    }
}

/// Cuts the newest traces, so many of them, of the symbols that are known with all around them.
void EyeCutter::cut(std::size_t most)
{
    std::size_t end = m_symbols.size();
    while (end > m_next && !isKnown(end - 1))
        --end;
    m_middles.clear();
    for (std::size_t k = end; k > m_next && m_middles.size() < most; --k) {
        if (isChosen(std::floor(m_symbols[k - 1].position / m_cut.samplesPerSymbol)) &&
            isWhole(k - 1))
            m_middles.push_back(k - 1);
    }
    m_next = end;
    for (auto middle = m_middles.rbegin(); middle != m_middles.rend(); ++middle)
        trace(*middle);
    forget();
}

/// Whether all samples that a trace may need have come.
bool EyeCutter::isKnown(std::size_t middle) const
{
    const double last = middle + m_reach < m_symbols.size()
                            ? m_symbols[middle + m_reach].position + reach + 1.0
                            : m_symbols[middle].position +
                                  (static_cast<double>(m_reach) + 2.0) * m_cut.samplesPerSymbol;
    const double delay = m_filter ? m_filter->delay() : 0.0;
    return last + delay < static_cast<double>(m_start) + static_cast<double>(m_samples.size());
}

bool EyeCutter::isChosen(double number) const
{
    const auto index = static_cast<std::int64_t>(number);
    const auto group = static_cast<std::uint64_t>(index / m_step);
    const auto chosen = scattered(group) % static_cast<std::uint64_t>(m_step);
    return index % m_step == static_cast<std::int64_t>(chosen);
}

/// Whether the whole trace around a symbol is there and reliable.
bool EyeCutter::isWhole(std::size_t middle)
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
    if (first - reach < m_start)
        return false;
    read(first - reach);
    return isClear(first, last, isQuiet) && isClear(first - reach, last + reach, isNoNumber);
}

/// Position of the signal a number of symbols after the middle of one, samples.
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
    return first > m_lastFlaw ||
           std::none_of(begin, begin + static_cast<std::ptrdiff_t>(last - first + 1),
                        [flaws](std::uint8_t flaw) { return (flaw & flaws) != 0; });
}

/// Before the first sample, the signal counts as constant.
float EyeCutter::sampleAt(std::int64_t position) const
{
    return m_samples[static_cast<std::size_t>(std::max(position, m_start) - m_start)];
}

/// Filters the samples from one to another. @return the position of the first.
std::int64_t EyeCutter::filter(std::int64_t first, std::int64_t last)
{
    const std::int64_t start = first - m_filter->settleLength();
    read(start);
    for (std::int64_t k = start; k < first; ++k)
        m_filter->run(double{sampleAt(k)}); // its state was that of another place
    m_filtered.clear();
    for (std::int64_t k = first; k <= last; ++k)
        m_filtered.push_back(static_cast<float>(m_filter->run(double{sampleAt(k)})));
    return first;
}

void EyeCutter::trace(std::size_t middle)
{
    const double half = 0.5 * m_cut.symbolCount;
    const float* samples = m_samples.data();
    double origin = static_cast<double>(m_start);
    if (m_filter) {
        const double delay = m_filter->delay();
        const auto first = static_cast<std::int64_t>(std::floor(placeOf(middle, -half) + delay));
        const auto last = static_cast<std::int64_t>(std::floor(placeOf(middle, half) + delay));
        origin = static_cast<double>(filter(first - reach, last + reach + 1)) - delay;
        samples = m_filtered.data();
    }
    const std::size_t begin = m_traces.size();
    m_traces.resize(begin + m_traceLength);
    // From one symbol to the next, places are evenly spaced.
    const auto perSymbol = static_cast<std::size_t>(m_symbolLength);
    std::size_t past = m_cut.symbolCount % 2 == 0 ? 0 : perSymbol / 2; // of a symbol's
    double symbols = std::floor(-half);
    for (std::size_t k = 0; k < m_traceLength; past = 0, symbols += 1.0) {
        const std::size_t count = std::min(perSymbol - past, m_traceLength - k);
        const double from = placeOf(middle, symbols);
        const bool isLast = count == 1 && past == 0; // to which no symbol need follow
        const double step =
            isLast ? 1.0 : (placeOf(middle, symbols + 1.0) - from) / static_cast<double>(perSymbol);
        Interpolation::ofWholeBand().fill(samples, from - origin + static_cast<double>(past) * step,
                                          step, count, &m_traces[begin + k]);
        k += count;
    }
}

/// Drops samples that no trace needs any more.
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
    if (surplus < static_cast<double>(m_samples.size()) / 2.0) // rarely, because it moves the rest
        return;
    m_samples.erase(m_samples.begin(), m_samples.begin() + static_cast<std::ptrdiff_t>(surplus));
    m_flaws.erase(m_flaws.begin(), m_flaws.begin() + static_cast<std::ptrdiff_t>(surplus));
    m_start += static_cast<std::int64_t>(surplus);
    while (!m_unread.empty() && m_unread.front().position() < m_start) {
        BlockPart& oldest = m_unread.front();
        const std::int64_t dropped = m_start - oldest.position();
        if (dropped < static_cast<std::int64_t>(oldest.count)) {
            oldest.first += static_cast<std::size_t>(dropped);
            oldest.count -= static_cast<std::size_t>(dropped);
            break;
        }
        m_unread.pop_front();
    }
}

void EyeCutter::takeTraces(std::size_t most, std::vector<double>& samples,
                           std::vector<double>& markers)
{
    cut(most / m_traceLength + 1);
    const std::size_t kept = std::min(m_traces.size() / m_traceLength, most / m_traceLength + 1);
    samples.assign(m_traces.end() - static_cast<std::ptrdiff_t>(kept * m_traceLength),
                   m_traces.end());
    m_traces.clear();
    markers.assign(samples.size(), 0.0);
    for (std::size_t i = 0; i < markers.size(); i += m_traceLength)
        markers[i] = static_cast<double>(m_traceLength);
}
