// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/measure/EyeTraces.h"

#include "workbench/receiver/Interpolation.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

// By which neighbours may miss a distance of a symbol: others are not of one clock, such as those
// of characters that are out of step.
constexpr double spacingTolerance = 0.1;
constexpr std::size_t cutLength = 65536;    // samples that are waited for
constexpr std::int64_t groupLength = 2048;  // traces: some times what a clock of jitter follows
constexpr std::size_t leastGroupCount = 16; // of the most

} // namespace

EyeTraceCutter::EyeTraceCutter(double from, double to, const SignalFormat& format, double bandwidth,
                               std::size_t most)
    : m_from(from)
    , m_to(to)
    , m_format(format)
    , m_bandwidth(bandwidth)
    , m_most(most)
    , m_groupLength(std::min(groupLength, static_cast<std::int64_t>(most / leastGroupCount)))
{}

void EyeTraceCutter::add(const SignalBlock& block)
{
    if (!(m_format.samplesPerSymbol > 1.0))
        return;
    if (block.isAfterGap ||
        block.position != m_position + static_cast<std::int64_t>(m_samples.size()))
        cut(true);
    auto symbol = block.symbols.begin();
    for (std::size_t k = 0; k < block.count(); ++k) {
        const bool isQuiet = !block.isQuiet.empty() && block.isQuiet[k];
        if (isQuiet || !std::isfinite(block.samples[k])) {
            cut(true);
            continue;
        }
        const std::int64_t position = block.position + static_cast<std::int64_t>(k);
        if (!m_isOpen)
            start(position);
        m_samples.push_back(m_filter ? m_filter->run(block.samples[k]) : block.samples[k]);
        for (;
             symbol != block.symbols.end() && symbol->position < static_cast<double>(position + 1);
             ++symbol)
            m_symbols.push_back(*symbol);
        if (m_samples.size() >= m_nextCut) {
            cut(false);
            m_nextCut = m_samples.size() + cutLength;
        }
    }
}

void EyeTraceCutter::start(std::int64_t position)
{
    m_isOpen = true;
    m_isStart = true;
    m_position = position;
    m_nextCut = cutLength;
    m_filter.reset();
    if (m_bandwidth > 0.0)
        m_filter.emplace(m_bandwidth / m_format.samplesPerSymbol);
}

/// Cuts the traces whose samples are there. At the end of what is not torn, all.
void EyeTraceCutter::cut(bool isEnd)
{
    const double margin = (m_filter ? m_filter->delay() : 0.0) + Interpolation::reach + 1.0;
    const double end =
        static_cast<double>(m_position) + static_cast<double>(m_samples.size()) - margin;
    std::size_t k = 1;
    for (; k + 1 < m_symbols.size(); ++k) {
        const Symbol& before = m_symbols[k - 1];
        const Symbol& symbol = m_symbols[k];
        const Symbol& after = m_symbols[k + 1];
        if (!isEnd && after.position > end)
            break;
        ++m_instant.symbol;
        if (std::exchange(m_isStart, false) || !isWhole(before, symbol)) {
            ++m_instant.run;
            m_instant.symbol = 0.0;
            m_runStart = symbol.time;
        }
        if (symbol.time < m_from || symbol.time >= m_to)
            continue;
        if (!isWhole(before, symbol) || !isWhole(symbol, after))
            continue;
        append(k);
    }
    if (isEnd) {
        m_isOpen = false;
        m_samples.clear();
        m_symbols.clear();
        return;
    }
    m_symbols.erase(m_symbols.begin(), m_symbols.begin() + static_cast<std::ptrdiff_t>(k - 1));
    const double needed = m_symbols.empty() ? end - margin : m_symbols.front().position - margin;
    const auto count = static_cast<std::int64_t>(std::clamp(
        needed - static_cast<double>(m_position), 0.0, static_cast<double>(m_samples.size())));
    m_samples.erase(m_samples.begin(), m_samples.begin() + static_cast<std::ptrdiff_t>(count));
    m_position += count;
}

bool EyeTraceCutter::isWhole(const Symbol& a, const Symbol& b) const
{
    return a.state == SymbolState::Good && b.state == SymbolState::Good &&
           std::abs((b.position - a.position) / m_format.samplesPerSymbol - 1.0) < spacingTolerance;
}

/// The trace about a symbol, if it is one that is kept.
void EyeTraceCutter::append(std::size_t middle)
{
    const std::int64_t group = m_number++ / m_groupLength;
    if (group % m_every != 0)
        return;
    m_groups.push_back(group);
    const double first = static_cast<double>(m_position) - (m_filter ? m_filter->delay() : 0.0);
    const auto last = static_cast<std::ptrdiff_t>(m_samples.size()) - 1;
    const auto value = [&](std::ptrdiff_t index) {
        return m_samples[static_cast<std::size_t>(std::clamp<std::ptrdiff_t>(index, 0, last))];
    };
    constexpr auto half = static_cast<double>(EyeTraces::perSymbol);
    for (std::size_t k = 0; k < EyeTraces::length; ++k) {
        const std::size_t part = k <= EyeTraces::perSymbol ? 0 : 1;
        const double from = m_symbols[middle - 1 + part].position;
        const double to = m_symbols[middle + part].position;
        const double place =
            from + (to - from) * (static_cast<double>(k) / half - static_cast<double>(part)) -
            first;
        const double whole = std::round(place);
        m_traces.samples.push_back(std::abs(place - whole) < 1e-9
                                       ? value(static_cast<std::ptrdiff_t>(whole))
                                       : Interpolation::at(place, value));
    }
    const Symbol& symbol = m_symbols[middle];
    m_traces.nearest.push_back(
        value(static_cast<std::ptrdiff_t>(std::lround(symbol.position - first))));
    m_instant.late = (symbol.time - m_runStart) * m_format.sampleRate / m_format.samplesPerSymbol -
                     m_instant.symbol;
    if (!m_format.hasCharacters)
        m_traces.instants.push_back(m_instant);
    if (m_groups.size() > m_most)
        thin();
}

/// Keeps every second one of the groups.
void EyeTraceCutter::thin()
{
    m_every *= 2;
    std::size_t kept = 0;
    const auto keep = [&](auto& values, std::size_t from, std::size_t length) {
        if (values.empty())
            return;
        const auto begin = values.begin() + static_cast<std::ptrdiff_t>(from * length);
        std::copy(begin, begin + static_cast<std::ptrdiff_t>(length),
                  values.begin() + static_cast<std::ptrdiff_t>(kept * length));
    };
    for (std::size_t k = 0; k < m_groups.size(); ++k) {
        if (m_groups[k] % m_every != 0)
            continue;
        keep(m_traces.samples, k, EyeTraces::length);
        keep(m_traces.nearest, k, 1);
        keep(m_traces.instants, k, 1);
        m_groups[kept++] = m_groups[k];
    }
    m_groups.resize(kept);
    m_traces.samples.resize(kept * EyeTraces::length);
    m_traces.nearest.resize(kept);
    m_traces.instants.resize(std::min(kept, m_traces.instants.size()));
}

EyeTraces EyeTraceCutter::finish()
{
    cut(true);
    m_traces.skipped = m_number - static_cast<std::int64_t>(m_groups.size());
    return std::move(m_traces);
}

EyeTraces EyeTraces::of(const std::vector<SignalBlockPtr>& blocks, double from, double to,
                        const SignalFormat& format, double bandwidth, std::size_t most)
{
    EyeTraceCutter cutter(from, to, format, bandwidth, most);
    for (const SignalBlockPtr& block : blocks)
        cutter.add(*block);
    return cutter.finish();
}
