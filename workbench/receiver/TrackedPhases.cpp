// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/receiver/TrackedPhases.h"

#include "workbench/receiver/Vectors.h"

#include <algorithm>

namespace {

constexpr double faintPower = 0.1;        // of the power of points: weaker symbols are not followed
constexpr double faintMean = 0.4;         // of the same: mean of symbols at the edge of a burst
constexpr std::ptrdiff_t rampSymbols = 3; // of a burst
constexpr double mostOdds = 9.0;          // logarithm: a carrier is lost once in e^9 symbols
constexpr std::size_t mostDone = 4096;    // symbols that are past, before they are dropped
constexpr std::size_t mostMoves = 64;     // of sums, before rounding errors add up

struct Columns
{
    const double* angles;
    const double* weights;
    const double* qualities;
    const double* heard;
};

ORVANE_WITHIN double total(const Doubles& sums)
{
    return ((sums[0] + sums[4]) + (sums[2] + sums[6])) +
           ((sums[1] + sums[5]) + (sums[3] + sums[7]));
}

ORVANE_WIDEST TrackedPhases::Sums sumUp(const Columns& columns, std::size_t count, double first,
                                        double angle)
{
    Doubles s0{}, s1{}, s2{}, e0{}, e1{}, quality{}, heard{};
    Doubles x = first + Doubles{0.0, 1.0, 2.0, 3.0, 4.0, 5.0, 6.0, 7.0};
    std::size_t k = 0;
    for (; k + doublesWidth <= count; k += doublesWidth) {
        Doubles weights, angles, column;
        load(columns.weights + k, weights);
        load(columns.angles + k, angles);
        const Doubles errors = weights * (angles - angle);
        const Doubles moments = weights * x;
        s0 += weights;
        s1 += moments;
        s2 += moments * x;
        e0 += errors;
        e1 += errors * x;
        load(columns.qualities + k, column);
        quality += column;
        load(columns.heard + k, column);
        heard += column;
        x += static_cast<double>(doublesWidth);
    }
    TrackedPhases::Sums result{total(s0), total(s1),      total(s2),   total(e0),
                               total(e1), total(quality), total(heard)};
    for (; k < count; ++k) {
        const double place = first + static_cast<double>(k);
        const double weight = columns.weights[k];
        const double error = weight * (columns.angles[k] - angle);
        result.s0 += weight;
        result.s1 += weight * place;
        result.s2 += weight * place * place;
        result.e0 += error;
        result.e1 += error * place;
        result.quality += columns.qualities[k];
        result.count += columns.heard[k];
    }
    return result;
}

} // namespace

void TrackedPhases::configure(std::size_t reach, bool isUneven)
{
    m_reach = reach;
    m_about = isUneven ? 8 : 4;
    clear();
}

void TrackedPhases::clear()
{
    m_symbols.clear();
    m_angles.clear();
    m_weights.clear();
    m_qualities.clear();
    m_heard.clear();
    m_loud.clear();
    m_here = 0;
    m_past = 0;
    m_odds = 0.0;
    m_areSummed = false;
}

bool TrackedPhases::isHeard(double power) { return power > faintPower; }

void TrackedPhases::add(const Symbol* symbols, std::size_t count)
{
    std::size_t loud = m_loud.empty() ? 0 : m_loud.back();
    const std::size_t before = m_symbols.size();
    m_symbols.insert(m_symbols.end(), symbols, symbols + count);
    const auto grow = [before, count](auto& values) {
        values.resize(before + count);
        return values.data() + before;
    };
    double* const angles = grow(m_angles);
    double* const weights = grow(m_weights);
    double* const qualities = grow(m_qualities);
    double* const heard = grow(m_heard);
    std::size_t* const louds = grow(m_loud);
    for (std::size_t k = 0; k < count; ++k) {
        const Symbol& symbol = symbols[k];
        heard[k] = isHeard(symbol.power) ? 1.0 : 0.0;
        angles[k] = symbol.phase + symbol.error;
        weights[k] = heard[k] * symbol.weight;
        qualities[k] = heard[k] * symbol.quality;
        loud = symbol.power > faintMean ? loud + 1 : 0;
        louds[k] = loud;
    }
}

void TrackedPhases::advance()
{
    m_odds = std::clamp(m_odds + symbol().evidence, -mostOdds, mostOdds);
    m_past = std::min(m_past + 1, m_reach);
    ++m_here;
    const std::size_t done = m_here - m_past;
    if (done < mostDone)
        return;
    const auto drop = [done](auto& values) {
        values.erase(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(done));
    };
    drop(m_symbols);
    drop(m_angles);
    drop(m_weights);
    drop(m_qualities);
    drop(m_heard);
    drop(m_loud);
    m_here -= done;
    m_areSummed = false;
}

bool TrackedPhases::isHeld() const
{
    const double odds = m_odds + symbol().evidence;
    if (std::abs(odds) > mostOdds) // whatever comes
        return odds > 0.0;
    double after = 0.0;
    for (std::size_t k = std::min(m_here + m_reach, m_symbols.size() - 1); k > m_here; --k)
        after = std::clamp(after + m_symbols[k].evidence, -mostOdds, mostOdds);
    return odds + after >= 0.0;
}

bool TrackedPhases::isFaint() const
{
    const std::ptrdiff_t oldest = static_cast<std::ptrdiff_t>(m_here - m_past);
    const auto count = static_cast<std::ptrdiff_t>(m_symbols.size());
    const std::ptrdiff_t length = std::ptrdiff_t{2} * m_about + 1;
    const std::ptrdiff_t first = static_cast<std::ptrdiff_t>(m_here) - m_about - rampSymbols;
    const std::ptrdiff_t last = first + length + 2 * rampSymbols - 1;
    if (first >= oldest && last < count &&
        m_loud[static_cast<std::size_t>(last)] > static_cast<std::size_t>(last - first))
        return false;
    const auto powerAt = [&](std::ptrdiff_t k) {
        return k >= oldest && k < count ? m_symbols[static_cast<std::size_t>(k)].power : 0.0;
    };
    const double least = faintMean * static_cast<double>(length);
    double sum = 0.0;
    for (std::ptrdiff_t k = first; k < first + length; ++k)
        sum += powerAt(k);
    for (std::ptrdiff_t k = first; sum >= least; ++k) {
        if (k == first + 2 * rampSymbols)
            return false;
        sum += powerAt(k + length) - powerAt(k);
    }
    return true;
}

/// Brings the sums to the symbols around the examined one: most often one leaves, and one comes.
void TrackedPhases::moveSums()
{
    const std::size_t first = m_here - m_past;
    const std::size_t end = std::min(m_here + m_reach + 1, m_symbols.size());
    if (!m_areSummed || m_here - m_anewHere >= mostMoves) {
        m_areSummed = true;
        m_anewHere = m_here;
        m_reference = symbol().phase;
        m_sums = sumUp({&m_angles[first], &m_weights[first], &m_qualities[first], &m_heard[first]},
                       end - first, -static_cast<double>(m_past), m_reference);
    } else {
        // In numbers of their own, which stay in the processor.
        double s0 = m_sums.s0, s1 = m_sums.s1, s2 = m_sums.s2;
        double e0 = m_sums.e0, e1 = m_sums.e1;
        double quality = m_sums.quality, heard = m_sums.count;
        for (std::size_t k = m_sumsHere; k < m_here; ++k) {
            s2 -= 2.0 * s1 - s0;
            s1 -= s0;
            e1 -= e0;
        }
        const auto add = [&](std::size_t index, double sign) {
            const double x = static_cast<double>(static_cast<std::ptrdiff_t>(index - m_here));
            const double weight = sign * m_weights[index];
            const double error = weight * (m_angles[index] - m_reference);
            s0 += weight;
            s1 += weight * x;
            s2 += weight * x * x;
            e0 += error;
            e1 += error * x;
            quality += sign * m_qualities[index];
            heard += sign * m_heard[index];
        };
        for (std::size_t k = m_sumsFirst; k < first; ++k)
            add(k, -1.0);
        for (std::size_t k = m_sumsEnd; k < end; ++k)
            add(k, 1.0);
        m_sums.s0 = s0;
        m_sums.s1 = s1;
        m_sums.s2 = s2;
        m_sums.e0 = e0;
        m_sums.e1 = e1;
        m_sums.quality = quality;
        m_sums.count = heard;
    }
    m_sumsHere = m_here;
    m_sumsFirst = first;
    m_sumsEnd = end;
}

TrackedPhases::Smoothed TrackedPhases::smoothed(double usualSlope)
{
    moveSums();
    const double phase = symbol().phase;
    Smoothed result{phase, usualSlope, 0.0};
    if (!(m_sums.count > 0.0) || !(m_sums.s0 > 0.0))
        return result;
    const double s0 = m_sums.s0, s1 = m_sums.s1, s2 = m_sums.s2;
    const double e0 = m_sums.e0 - s0 * (phase - m_reference);
    const double e1 = m_sums.e1 - s1 * (phase - m_reference);
    const double determinant = s0 * s2 - s1 * s1;
    const bool isLine = determinant > 1e-9 * s0 * s0;
    const double scale = isLine ? 1.0 / determinant : 0.0;
    result.slope = (s0 * e1 - s1 * e0) * scale;
    result.phase += isLine ? (s2 * e0 - s1 * e1) * scale : e0 / s0;
    result.quality = m_sums.quality / m_sums.count;
    return result;
}
