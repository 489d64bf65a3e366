// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/measure/EyeTraces.h"

#include <algorithm>
#include <utility>

namespace {

// Traces: several times the period that the clock of jitter follows.
constexpr std::int64_t groupLength = 2048;
constexpr std::size_t leastGroupCount = 16; // of the largest number of traces

} // namespace

EyeTraceCutter::EyeTraceCutter(double from, double to, const SignalFormat& format, double bandwidth,
                               std::size_t most)
    : m_from(from)
    , m_to(to)
    , m_format(format)
    , m_most(most)
    , m_groupLength(std::min(groupLength, static_cast<std::int64_t>(most / leastGroupCount)))
    , m_cutter(format, bandwidth, EyeTraces::perSymbol,
               [this](const SymbolCutter::Place& place) { take(place); })
{}

void EyeTraceCutter::take(const SymbolCutter::Place& place)
{
    const Symbol& symbol = place.symbol;
    ++m_instant.symbol;
    if (place.isStart) {
        ++m_instant.run;
        m_instant.symbol = 0.0;
        m_runStart = symbol.time;
    }
    if (place.isWhole && symbol.time >= m_from && symbol.time < m_to)
        append(symbol);
}

/// Takes the trace around a symbol, if it is one that is kept.
void EyeTraceCutter::append(const Symbol& symbol)
{
    const std::int64_t group = m_number++ / m_groupLength;
    if (group % m_every != 0)
        return;
    m_groups.push_back(group);
    const std::vector<double>& trace = m_cutter.trace();
    m_traces.samples.insert(m_traces.samples.end(), trace.begin(), trace.end());
    m_traces.nearest.push_back(m_cutter.nearest());
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
    m_cutter.finish();
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
