// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/receiver/Decisions.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <set>

namespace {

constexpr int rounds = 4; // of deciding and fitting

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
    const auto bound = std::upper_bound(m_bounds.begin(), m_bounds.end(), value);
    return m_levels[static_cast<std::size_t>(bound - m_bounds.begin())];
}

Decisions::Expected Decisions::Axis::expected(double value, double variance) const
{
    double total = 0.0, square = 0.0, mean = 0.0;
    const double near = value - nearest(value);
    for (const double level : m_levels) {
        const double off = (value - level) * (value - level);
        const double chance = std::exp(0.5 * (near * near - off) / variance);
        total += chance;
        square += chance * off;
        mean += chance * level;
    }
    return {square / total, mean / total, total * std::exp(-0.5 * near * near / variance)};
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
    return *std::min_element(m_ideal.begin(), m_ideal.end(),
                             [&](const Complex& a, const Complex& b) {
                                 return std::norm(point - a) < std::norm(point - b);
                             });
}

Decisions::Expected Decisions::expected(const Complex& point, double variance) const
{
    if (m_isGrid) {
        const Expected i = m_i.expected(point.real(), variance);
        const Expected q = m_q.expected(point.imag(), variance);
        return {i.square + q.square, {i.ideal.real(), q.ideal.real()}, i.likelihood * q.likelihood};
    }
    double total = 0.0, square = 0.0;
    Complex mean = 0.0;
    const double least = std::norm(point - nearest(point));
    for (const Complex& ideal : m_ideal) {
        const double off = std::norm(point - ideal);
        const double chance = std::exp(0.5 * (least - off) / variance);
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
