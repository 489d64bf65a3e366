// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/receiver/Decisions.h"

#include "workbench/receiver/FastFunctions.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <set>

namespace {

constexpr int rounds = 4;           // of deciding and fitting
constexpr double negligible = 40.0; // logarithm of a chance beside the largest: it adds nothing

template<class Value>
std::vector<double> onAxis(const std::vector<Decisions::Complex>& ideal, Value value)
{
    std::vector<double> values;
    values.reserve(ideal.size());
    for (const Decisions::Complex& point : ideal)
        values.push_back(value(point));
    return values;
}

constexpr std::size_t together = Decisions::together;

/// Sums over levels, or points, for each of some numbers: of the chance of each to have been meant
/// against that of the nearest one, and of the chances times the square of what it is off.
struct Chances
{
    float totals[together], squares[together];
    float exponents[together]; ///< of the nearest one's likelihood, negative
};

/// @param off  the square of what a number, by its index, is off a level, by its own.
template<class Off>
ORVANE_WITHIN void sumChances(std::size_t count, float scale, const Off& off, Chances& chances)
{
    float nearest[together], totals[together] = {}, squares[together] = {};
    for (std::size_t k = 0; k < together; ++k)
        nearest[k] = off(k, 0);
    for (std::size_t level = 1; level < count; ++level) {
        for (std::size_t k = 0; k < together; ++k)
            nearest[k] = std::min(nearest[k], off(k, level));
    }
    for (std::size_t level = 0; level < count; ++level) {
        for (std::size_t k = 0; k < together; ++k) {
            const float square = off(k, level);
            const float chance = fast::exponential(scale * (nearest[k] - square));
            totals[k] += chance;
            squares[k] += chance * square;
        }
    }
    for (std::size_t k = 0; k < together; ++k) {
        chances.totals[k] = totals[k];
        chances.squares[k] = squares[k];
        chances.exponents[k] = scale * nearest[k];
    }
}

ORVANE_WIDEST void sumLevels(const std::vector<float>& levels, float scale, const float* values,
                             Chances& chances)
{
    const auto off = [&levels, values](std::size_t k, std::size_t level) {
        return (values[k] - levels[level]) * (values[k] - levels[level]);
    };
    sumChances(levels.size(), scale, off, chances);
}

ORVANE_WIDEST void sumPoints(const std::vector<float>& pointsI, const std::vector<float>& pointsQ,
                             float scale, const float* i, const float* q, Chances& chances)
{
    const auto off = [&](std::size_t k, std::size_t point) {
        return (i[k] - pointsI[point]) * (i[k] - pointsI[point]) +
               (q[k] - pointsQ[point]) * (q[k] - pointsQ[point]);
    };
    sumChances(pointsI.size(), scale, off, chances);
}

ORVANE_WIDEST void combine(const Chances& i, const Chances& q, float* squares, float* likelihoods)
{
    for (std::size_t k = 0; k < together; ++k) {
        squares[k] = i.squares[k] / i.totals[k] + q.squares[k] / q.totals[k];
        likelihoods[k] =
            i.totals[k] * q.totals[k] * fast::exponential(-i.exponents[k] - q.exponents[k]);
    }
}

} // namespace

Decisions::Axis::Axis(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    for (const double value : values) { // points of one circle differ by rounding
        if (m_levels.empty() || value - m_levels.back() > 1e-6)
            m_levels.push_back(value);
    }
    for (std::size_t k = 1; k < m_levels.size(); ++k)
        m_bounds.push_back(0.5 * (m_levels[k - 1] + m_levels[k]));
    m_singleLevels.assign(m_levels.begin(), m_levels.end());
}

Decisions::Axis::Chances Decisions::Axis::chances(double value, double variance) const
{
    const double near = value - nearest(value);
    const double scale = 0.5 / variance;
    Chances result{0.0, 0.0, 0.0, scale * near * near};
    for (const double level : m_levels) {
        const double off = (value - level) * (value - level);
        const double exponent = scale * (near * near - off);
        if (exponent < -negligible)
            continue;
        const double chance = exponent == 0.0 ? 1.0 : std::exp(exponent);
        result.total += chance;
        result.square += chance * off;
        result.mean += chance * level;
    }
    return result;
}

Decisions::Decisions(const std::vector<Complex>& ideal)
    : m_ideal(ideal)
    , m_i(onAxis(ideal, [](const Complex& point) { return point.real(); }))
    , m_q(onAxis(ideal, [](const Complex& point) { return point.imag(); }))
{
    m_isGrid = m_ideal.size() == m_i.count() * m_q.count();
    m_spacing = std::numeric_limits<double>::infinity();
    for (const Complex& point : m_ideal) {
        m_power += std::norm(point) / static_cast<double>(m_ideal.size());
        m_idealI.push_back(static_cast<float>(point.real()));
        m_idealQ.push_back(static_cast<float>(point.imag()));
        for (const Complex& other : m_ideal) {
            if (&other != &point)
                m_spacing = std::min(m_spacing, std::abs(point - other));
        }
    }
}

Decisions::Complex Decisions::nearestOfAll(const Complex& point) const
{
    const Complex* best = &m_ideal.front();
    double least = std::norm(point - *best);
    for (const Complex& ideal : m_ideal) {
        const double off = std::norm(point - ideal);
        if (off < least) {
            least = off;
            best = &ideal;
        }
    }
    return *best;
}

Decisions::Expected Decisions::expected(const Complex& point, double variance) const
{
    if (m_isGrid) {
        const Axis::Chances i = m_i.chances(point.real(), variance);
        const Axis::Chances q = m_q.chances(point.imag(), variance);
        return {i.square / i.total + q.square / q.total,
                {i.mean / i.total, q.mean / q.total},
                i.total * q.total * std::exp(-i.exponent - q.exponent)};
    }
    double total = 0.0, square = 0.0;
    Complex mean = 0.0;
    const double least = std::norm(point - nearest(point));
    for (const Complex& ideal : m_ideal) {
        const double off = std::norm(point - ideal);
        const double exponent = 0.5 * (least - off) / variance;
        if (exponent < -negligible)
            continue;
        const double chance = std::exp(exponent);
        total += chance;
        square += chance * off;
        mean += chance * ideal;
    }
    return {square / total, mean / total, total * std::exp(-0.5 * least / variance)};
}

void Decisions::expected(const float* i, const float* q, float variance, float* squares,
                         float* likelihoods) const
{
    const float scale = 0.5F / variance;
    Chances ofI, ofQ;
    if (m_isGrid) {
        sumLevels(m_i.singleLevels(), scale, i, ofI);
        sumLevels(m_q.singleLevels(), scale, q, ofQ);
    } else {
        sumPoints(m_idealI, m_idealQ, scale, i, q, ofI);
        std::fill_n(ofQ.totals, together, 1.0F);
        std::fill_n(ofQ.squares, together, 0.0F);
        std::fill_n(ofQ.exponents, together, 0.0F);
    }
    combine(ofI, ofQ, squares, likelihoods);
}

std::optional<Decisions::Complex> Decisions::gainOf(const std::vector<Complex>& points) const
{
    const auto count = static_cast<double>(points.size());
    double power = 0.0;
    for (const Complex& point : points)
        power += std::norm(point) / count;
    if (!(power > 0.0) || !std::isfinite(power) || !(m_power > 0.0))
        return std::nullopt;
    Complex gain = std::sqrt(power / m_power);
    std::vector<Complex> decided(points.size());
    for (int round = 0; round < rounds; ++round) {
        Complex mean = 0.0; // of the points, where the ideal ones are
        Complex meanIdeal = 0.0;
        bool isAsBefore = round > 0;
        for (std::size_t k = 0; k < points.size(); ++k) {
            const Complex before = std::exchange(decided[k], nearest(points[k] / gain));
            isAsBefore = isAsBefore && decided[k] == before;
            mean += points[k] / count;
            meanIdeal += decided[k] / count;
        }
        if (isAsBefore)
            break; // so is the gain
        Complex cross = 0.0;
        double square = 0.0;
        for (std::size_t k = 0; k < points.size(); ++k) {
            cross += (points[k] - mean) * std::conj(decided[k] - meanIdeal);
            square += std::norm(decided[k] - meanIdeal);
        }
        if (!(square > 0.0) || !(std::abs(cross) > 0.0))
            return std::nullopt;
        gain = cross / square;
    }
    return gain;
}

double Decisions::gainOf(const Complex* points, std::size_t count, const Complex& whole) const
{
    double cross = 0.0, square = 0.0;
    for (std::size_t k = 0; k < count; ++k) {
        const Complex point = points[k] / whole;
        const Complex decided = nearest(point);
        cross += (point * std::conj(decided)).real();
        square += std::norm(decided);
    }
    return square > 0.0 && cross > 0.0 ? cross / square : 1.0;
}
