// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/measure/CrossingClock.h"

#include "workbench/measure/LineSums.h"

#include <algorithm>
#include <cmath>

namespace {

// A mean over so many symbols passes half the power of a wander with a period of 1667 symbols: the
// sinc is 1 / sqrt 2 at 0.443 periods.
constexpr double meanSymbols = 739.0;
constexpr std::size_t leastCrossings = 16; // of a run: of fewer, a line removes too much
constexpr std::size_t leastBlocks = 3;     // of as many symbols, to find wander
constexpr double clearly = 5.0;            // standard deviations of the sum of as many squares

/// Crossings of one run.
class Run
{
public:
    using Crossing = crossingClock::Crossing;

    Run(const Crossing* first, std::size_t count)
    {
        const double middle = 0.5 * (first->symbol + first[count - 1].symbol);
        LineSums line;
        for (std::size_t k = 0; k < count; ++k) {
            m_places.push_back(first[k].symbol - middle);
            line.add(m_places[k], first[k].time);
        }
        for (std::size_t k = 0; k < count; ++k)
            m_offsets.push_back(first[k].time - line.at(m_places[k]));
    }

    /// Whether the means of blocks deviate from the constant clock by more than chance.
    bool wanders() const
    {
        const double span = m_places.back() - m_places.front();
        const auto blockCount = static_cast<std::size_t>(span / meanSymbols);
        if (blockCount < leastBlocks)
            return false;
        std::vector<LineSums> blocks(blockCount);
        std::vector<double> squares(blockCount);
        for (std::size_t k = 0; k < m_places.size(); ++k) {
            const double part = (m_places[k] - m_places.front()) / span;
            const auto block = std::min(
                static_cast<std::size_t>(part * static_cast<double>(blockCount)), blockCount - 1);
            blocks[block].add(0.0, m_offsets[k]);
            squares[block] += m_offsets[k] * m_offsets[k];
        }
        double between = 0.0, within = 0.0, count = 0.0;
        for (std::size_t k = 0; k < blockCount; ++k) {
            if (!(blocks[k].n > 0.0)) // blocks in stretches that were left out
                continue;
            const double ofMean = blocks[k].sy * blocks[k].sy / blocks[k].n;
            between += ofMean;
            within += squares[k] - ofMean;
            count += 1.0;
        }
        const double variance = within / (static_cast<double>(m_places.size()) - count);
        return between > variance * (count + clearly * std::sqrt(2.0 * count));
    }

    /// Removes slow wander.
    void follow()
    {
        const std::vector<double> slow = slidingLine(m_places, m_offsets, {}, 0.5 * meanSymbols);
        for (std::size_t k = 0; k < m_offsets.size(); ++k)
            m_offsets[k] -= slow[k];
    }

    const std::vector<double>& offsets() const { return m_offsets; }

private:
    std::vector<double> m_places; // symbols from the middle
    std::vector<double> m_offsets;
};

} // namespace

crossingClock::Offsets crossingClock::offsetsOf(const std::vector<Crossing>& crossings)
{
    Offsets result;
    for (std::size_t first = 0; first < crossings.size();) {
        std::size_t end = first;
        while (end < crossings.size() && crossings[end].run == crossings[first].run)
            ++end;
        if (end - first >= leastCrossings) {
            Run run(&crossings[first], end - first);
            if (run.wanders())
                run.follow();
            result.values.insert(result.values.end(), run.offsets().begin(), run.offsets().end());
            result.fittedCount += 2;
        }
        first = end;
    }
    return result;
}
