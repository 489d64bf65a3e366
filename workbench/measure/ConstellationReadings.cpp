// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/measure/ConstellationReadings.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <set>
#include <utility>

namespace {

using Complex = std::complex<double>;

constexpr double pi = 3.14159265358979323846;
constexpr int rounds = 4; // of deciding and fitting
constexpr std::size_t minPerPoint = 4;

double meanPower(const std::vector<Complex>& points)
{
    double sum = 0.0;
    for (const Complex& point : points)
        sum += std::norm(point);
    return sum / static_cast<double>(points.size());
}

/// The ideal point that is nearest to a measured one.
class Decision
{
public:
    explicit Decision(const std::vector<Complex>& ideal)
        : m_ideal(ideal)
        , m_i(ideal, [](const Complex& point) { return point.real(); })
        , m_q(ideal, [](const Complex& point) { return point.imag(); })
    {
        const auto isLess = [](const Complex& a, const Complex& b) {
            return std::make_pair(a.real(), a.imag()) < std::make_pair(b.real(), b.imag());
        };
        const std::set<Complex, decltype(isLess)> points(ideal.begin(), ideal.end(), isLess);
        m_isGrid = points.size() == m_i.count() * m_q.count();
    }

    Complex operator()(const Complex& point) const
    {
        if (m_isGrid) // as of square modulations: each axis by itself
            return {m_i.nearest(point.real()), m_q.nearest(point.imag())};
        return *std::min_element(m_ideal.begin(), m_ideal.end(),
                                 [&](const Complex& a, const Complex& b) {
                                     return std::norm(point - a) < std::norm(point - b);
                                 });
    }

private:
    /// Different values of the points on an axis.
    class Axis
    {
    public:
        template<class Value>
        Axis(const std::vector<Complex>& ideal, Value value)
        {
            std::set<double> levels;
            for (const Complex& point : ideal)
                levels.insert(value(point));
            m_levels.assign(levels.begin(), levels.end());
            for (std::size_t k = 1; k < m_levels.size(); ++k)
                m_bounds.push_back(0.5 * (m_levels[k - 1] + m_levels[k]));
        }
        std::size_t count() const { return m_levels.size(); }
        double nearest(double value) const
        {
            const auto bound = std::upper_bound(m_bounds.begin(), m_bounds.end(), value);
            return m_levels[static_cast<std::size_t>(bound - m_bounds.begin())];
        }

    private:
        std::vector<double> m_levels;
        std::vector<double> m_bounds; // between neighbours
    };

    const std::vector<Complex>& m_ideal;
    Axis m_i;
    Axis m_q;
    bool m_isGrid = false;
};

} // namespace

std::optional<ConstellationReadings>
ConstellationReadings::of(const std::vector<double>& i, const std::vector<double>& q,
                          const std::vector<std::complex<double>>& ideal)
{
    std::vector<Complex> points;
    for (std::size_t k = 0; k < std::min(i.size(), q.size()); ++k) {
        if (std::isfinite(i[k]) && std::isfinite(q[k]))
            points.emplace_back(i[k], q[k]);
    }
    if (ideal.size() < 2 || points.size() < minPerPoint * ideal.size())
        return std::nullopt;
    const double power = meanPower(points);
    const double idealPower = meanPower(ideal);
    if (!(power > 0.0) || !std::isfinite(power) || !(idealPower > 0.0))
        return std::nullopt;

    const auto count = static_cast<double>(points.size());
    const Decision nearest(ideal);
    Complex gain = std::sqrt(power / idealPower);
    std::vector<Complex> decided(points.size());
    Complex mean = 0.0; // of the points, where the ideal ones are
    Complex meanIdeal = 0.0;
    for (int round = 0; round < rounds; ++round) {
        Complex cross = 0.0;
        double decidedPower = 0.0;
        bool isAsBefore = round > 0;
        mean = 0.0;
        meanIdeal = 0.0;
        for (std::size_t k = 0; k < points.size(); ++k) {
            const Complex before = std::exchange(decided[k], nearest(points[k] / gain));
            isAsBefore = isAsBefore && decided[k] == before;
            mean += points[k] / count;
            meanIdeal += decided[k] / count;
        }
        if (isAsBefore)
            break; // so is the gain
        for (std::size_t k = 0; k < points.size(); ++k) {
            cross += (points[k] - mean) * std::conj(decided[k] - meanIdeal);
            decidedPower += std::norm(decided[k] - meanIdeal);
        }
        if (!(decidedPower > 0.0) || !(std::abs(cross) > 0.0))
            return std::nullopt;
        gain = cross / decidedPower;
    }

    ConstellationReadings readings;
    const Complex offset = mean / gain - meanIdeal;
    double errors = 0.0;
    double largest = 0.0;
    // Least squares of the points' I and Q from the ideal ones': sums of the normal equations.
    double ii = 0.0, qq = 0.0, iq = 0.0;
    Complex fromI = 0.0, fromQ = 0.0;
    for (std::size_t k = 0; k < points.size(); ++k) {
        const Complex point = points[k] / gain;
        const double error = std::norm(point - decided[k]);
        errors += error;
        largest = std::max(largest, error);
        const Complex d = decided[k] - meanIdeal;
        const Complex y = point - offset - meanIdeal;
        ii += d.real() * d.real();
        qq += d.imag() * d.imag();
        iq += d.real() * d.imag();
        fromI += y * d.real();
        fromQ += y * d.imag();
    }
    readings.evmRms = 100.0 * std::sqrt(errors / count / idealPower);
    readings.evmPeak = 100.0 * std::sqrt(largest / idealPower);
    constexpr double least = std::numeric_limits<double>::min();
    readings.mer = -10.0 * std::log10(std::max(errors / count / idealPower, least));
    readings.originOffset = 10.0 * std::log10(std::max(std::norm(offset) / idealPower, least));
    const double determinant = ii * qq - iq * iq;
    if (determinant > 1e-6 * (ii + qq) * (ii + qq)) {
        const Complex axisI = (fromI * qq - fromQ * iq) / determinant;
        const Complex axisQ = (fromQ * ii - fromI * iq) / determinant;
        readings.imbalance = 20.0 * std::log10(std::abs(axisI) / std::abs(axisQ));
        readings.quadratureError = 90.0 - std::abs(std::arg(axisQ * std::conj(axisI))) * 180.0 / pi;
    }
    return readings;
}
