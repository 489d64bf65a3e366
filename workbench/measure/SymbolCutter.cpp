// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/measure/SymbolCutter.h"

#include "workbench/receiver/Interpolation.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

// Tolerance of the distance of neighbours, in symbols: others do not share a clock, for example
// those of characters that are out of step.
constexpr double spacingTolerance = 0.1;
constexpr std::size_t cutLength = 65536; // largest number of samples of a long block that are kept

} // namespace

SymbolCutter::SymbolCutter(const SignalFormat& format, double bandwidth, std::size_t perSymbol,
                           Take take, Skip skip)
    : m_format(format)
    , m_bandwidth(bandwidth)
    , m_perSymbol(perSymbol)
    , m_take(std::move(take))
    , m_skip(std::move(skip))
    , m_trace(2 * perSymbol + 1)
{}

void SymbolCutter::skip(const Symbol& symbol, bool isTorn) const
{
    if (m_skip)
        m_skip(symbol, isTorn);
}

void SymbolCutter::add(const SignalBlock& block, std::size_t first, std::size_t count)
{
    if (!(m_format.samplesPerSymbol > 1.0) || count == 0)
        return;
    const std::int64_t begin = block.position + static_cast<std::int64_t>(first);
    if ((first == 0 && block.isAfterGap) ||
        begin != m_position + static_cast<std::int64_t>(m_samples.size()))
        end(false);
    const auto isBefore = [](const Symbol& symbol, double position) {
        return symbol.position < position;
    };
    auto symbol = first == 0 ? block.symbols.begin()
                             : std::lower_bound(block.symbols.begin(), block.symbols.end(),
                                                static_cast<double>(begin), isBefore);
    const bool isAll = first + count == block.count();
    for (std::size_t k = first; k < first + count; ++k) {
        const bool isQuiet = !block.isQuiet.empty() && block.isQuiet[k];
        const bool isTorn = isQuiet || !std::isfinite(block.samples[k]);
        const std::int64_t position = block.position + static_cast<std::int64_t>(k);
        if (isTorn) {
            end(true);
        } else {
            if (!m_isOpen)
                start(position);
            m_samples.push_back(m_filter ? m_filter->run(block.samples[k]) : block.samples[k]);
        }
        const bool isLast = isAll && k + 1 == first + count;
        for (; symbol != block.symbols.end() &&
               (isLast || symbol->position < static_cast<double>(position + 1));
             ++symbol) {
            if (isTorn)
                skip(*symbol, true);
            else
                m_symbols.push_back(*symbol);
        }
        if (m_isOpen && m_samples.size() >= m_nextCut)
            cut(false);
    }
    if (m_isOpen)
        cut(false);
}

void SymbolCutter::start(std::int64_t position)
{
    m_isOpen = true;
    m_isStart = true;
    m_position = position;
    m_nextCut = cutLength;
    m_filter.reset();
    if (m_bandwidth > 0.0)
        m_filter.emplace(m_bandwidth / m_format.samplesPerSymbol);
}

/// Reports the symbols whose samples are there; at the end of a stretch, all of them.
void SymbolCutter::cut(bool isEnd)
{
    const double margin = (m_filter ? m_filter->delay() : 0.0) + Interpolation::reach + 1.0;
    const double end =
        static_cast<double>(m_position) + static_cast<double>(m_samples.size()) - margin;
    m_traced = 0; // none, because the first symbol is in no middle
    for (m_middle = 1; m_middle + 1 < m_symbols.size(); ++m_middle) {
        const Symbol& before = m_symbols[m_middle - 1];
        const Symbol& symbol = m_symbols[m_middle];
        const Symbol& after = m_symbols[m_middle + 1];
        if (!isEnd && after.position > end)
            break;
        const bool follows = isWhole(before, symbol);
        const bool isFirst = std::exchange(m_isStart, false);
        if (isFirst)
            skip(before, m_isAfterTorn);
        m_take({symbol, isFirst || !follows, follows && isWhole(symbol, after)});
    }
    if (isEnd)
        return;
    m_symbols.erase(m_symbols.begin(),
                    m_symbols.begin() + static_cast<std::ptrdiff_t>(m_middle - 1));
    const double needed = m_symbols.empty() ? end - margin : m_symbols.front().position - margin;
    const auto count = static_cast<std::int64_t>(std::clamp(
        needed - static_cast<double>(m_position), 0.0, static_cast<double>(m_samples.size())));
    m_samples.erase(m_samples.begin(), m_samples.begin() + static_cast<std::ptrdiff_t>(count));
    m_position += count;
    m_nextCut = m_samples.size() + cutLength;
}

void SymbolCutter::end(bool isTorn)
{
    cut(true);
    // The last one, or of fewer than three all.
    for (std::size_t k = m_isStart ? 0 : m_middle; k < m_symbols.size(); ++k)
        skip(m_symbols[k], isTorn);
    m_isOpen = false;
    m_isStart = true;
    m_isAfterTorn = isTorn;
    m_samples.clear();
    m_symbols.clear();
}

bool SymbolCutter::isWhole(const Symbol& a, const Symbol& b) const
{
    return a.state == SymbolState::Good && b.state == SymbolState::Good &&
           std::abs((b.position - a.position) / m_format.samplesPerSymbol - 1.0) < spacingTolerance;
}

/// Position of the first sample of the stretch after filtering.
double SymbolCutter::origin() const
{
    return static_cast<double>(m_position) - (m_filter ? m_filter->delay() : 0.0);
}

double SymbolCutter::valueAt(double position) const
{
    const auto last = static_cast<std::ptrdiff_t>(m_samples.size()) - 1;
    const auto value = [&](std::ptrdiff_t index) {
        return m_samples[static_cast<std::size_t>(std::clamp<std::ptrdiff_t>(index, 0, last))];
    };
    const double whole = std::round(position);
    if (std::abs(position - whole) < 1e-9)
        return value(static_cast<std::ptrdiff_t>(whole));
    const auto first = static_cast<std::ptrdiff_t>(std::floor(position)) - Interpolation::reach;
    if (first < 0 || first + 2 * Interpolation::reach > last)
        return Interpolation::at(position, value);
    return Interpolation::at(
        position, [samples = m_samples.data()](std::ptrdiff_t index) { return samples[index]; });
}

/// Interpolates the samples between two symbols, without the one at the second symbol.
void SymbolCutter::interpolate(const Symbol& from, const Symbol& to, double* samples) const
{
    const double start = from.position - origin();
    const double step = (to.position - from.position) / static_cast<double>(m_perSymbol);
    for (std::size_t k = 0; k < m_perSymbol; ++k)
        samples[k] = valueAt(start + static_cast<double>(k) * step);
}

const std::vector<double>& SymbolCutter::trace()
{
    const Symbol& middle = m_symbols[m_middle];
    const auto half = m_trace.begin() + static_cast<std::ptrdiff_t>(m_perSymbol);
    if (m_traced != 0 && m_traced + 1 == m_middle)
        std::copy(half, m_trace.end() - 1, m_trace.begin());
    else
        interpolate(m_symbols[m_middle - 1], middle, m_trace.data());
    interpolate(middle, m_symbols[m_middle + 1], &*half);
    m_trace.back() = valueAt(m_symbols[m_middle + 1].position - origin());
    m_traced = m_middle;
    return m_trace;
}

double SymbolCutter::nearest() const
{
    const auto last = static_cast<std::ptrdiff_t>(m_samples.size()) - 1;
    const auto index = std::lround(m_symbols[m_middle].position - origin());
    return m_samples[static_cast<std::size_t>(std::clamp<std::ptrdiff_t>(index, 0, last))];
}
