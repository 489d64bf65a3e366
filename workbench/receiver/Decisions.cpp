// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/receiver/Decisions.h"

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
}

double Decisions::Axis::nearest(double value) const
{
    std::size_t index = 0; // there are few bounds: to look at all is faster than to search
    for (const double bound : m_bounds)
        index += value >= bound ? 1 : 0;
    return m_levels[index];
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
        for (const Complex& other : m_ideal) {
            if (&other != &point)
                m_spacing = std::min(m_spacing, std::abs(point - other));
        }
    }
}

Decisions::Complex Decisions::nearest(const Complex& point) const
{
    if (m_isGrid)
        return {m_i.nearest(point.real()), m_q.nearest(point.imag())};
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
