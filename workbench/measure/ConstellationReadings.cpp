// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/measure/ConstellationReadings.h"

#include "workbench/receiver/Decisions.h"
#include "workbench/sources/Constants.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

using Complex = std::complex<double>;

constexpr std::size_t minPerPoint = 4;
constexpr double surelyApart = 9.0; // spacing of points relative to the noise on an axis
constexpr int softRounds = 12;

/// Mean square error of the points in so much noise that decisions would flatter it: the maximum
/// likelihood estimate of the noise power (Dempster, Laird, Rubin, J. R. Stat. Soc. B 39, 1977),
/// and of the gain.
double likeliestError(const std::vector<Complex>& points, const Decisions& decisions, Complex& gain,
                      double error)
{
    const auto count = static_cast<double>(points.size());
    for (int round = 0; round < softRounds; ++round) {
        double cross = 0.0, square = 0.0, sum = 0.0;
        for (const Complex& point : points) {
            const Complex z = point / gain;
            const Decisions::Expected expected = decisions.expected(z, 0.5 * error);
            sum += expected.square;
            cross += (z * std::conj(expected.ideal)).real();
            // One part of the error is known; the rest is the uncertainty of the point.
            square += std::max(expected.square - std::norm(z - expected.ideal), 0.0) +
                      std::norm(expected.ideal);
        }
        error = sum / count;
        gain *= cross / square;
    }
    return error;
}

double decibels(double powerRatio)
{
    return 10.0 * std::log10(std::max(powerRatio, std::numeric_limits<double>::min()));
}

std::vector<Complex> finiteOf(const std::vector<double>& i, const std::vector<double>& q)
{
    std::vector<Complex> points;
    for (std::size_t k = 0; k < std::min(i.size(), q.size()); ++k) {
        if (std::isfinite(i[k]) && std::isfinite(q[k]))
            points.emplace_back(i[k], q[k]);
    }
    return points;
}

/// Where the ideal I and Q axes lie among the points: least squares of the points from the ideal
/// ones, by the sums of the normal equations.
class Axes
{
public:
    /// Both without their mean.
    void add(Complex ideal, Complex point)
    {
        m_ii += ideal.real() * ideal.real();
        m_qq += ideal.imag() * ideal.imag();
        m_iq += ideal.real() * ideal.imag();
        m_fromI += point * ideal.real();
        m_fromQ += point * ideal.imag();
    }
    /// Imbalance and quadrature error, unless the ideal points lie on one line.
    void tell(ConstellationReadings& readings) const
    {
        const double determinant = m_ii * m_qq - m_iq * m_iq;
        if (!(determinant > 1e-6 * (m_ii + m_qq) * (m_ii + m_qq)))
            return;
        const Complex axisI = (m_fromI * m_qq - m_fromQ * m_iq) / determinant;
        const Complex axisQ = (m_fromQ * m_ii - m_fromI * m_iq) / determinant;
        readings.imbalance = 20.0 * std::log10(std::abs(axisI) / std::abs(axisQ));
        readings.quadratureError = 90.0 - std::abs(std::arg(axisQ * std::conj(axisI))) * 180.0 / pi;
    }

private:
    double m_ii = 0.0, m_qq = 0.0, m_iq = 0.0;
    Complex m_fromI = 0.0, m_fromQ = 0.0;
};

} // namespace

std::optional<ConstellationReadings>
ConstellationReadings::of(const std::vector<double>& i, const std::vector<double>& q,
                          const std::vector<std::complex<double>>& ideal, double fitted)
{
    const std::vector<Complex> points = finiteOf(i, q);
    if (ideal.size() < 2 || points.size() < minPerPoint * ideal.size())
        return std::nullopt;
    const Decisions decisions(ideal);
    const auto start = decisions.gainOf(points);
    if (!start)
        return std::nullopt;
    Complex gain = *start;
    const auto count = static_cast<double>(points.size());
    std::vector<Complex> decided(points.size());
    Complex mean = 0.0; // of the points, where the ideal ones are
    Complex meanIdeal = 0.0;
    for (std::size_t k = 0; k < points.size(); ++k) {
        decided[k] = decisions.nearest(points[k] / gain);
        mean += points[k] / gain / count;
        meanIdeal += decided[k] / count;
    }

    ConstellationReadings readings;
    const Complex offset = mean - meanIdeal;
    double errors = 0.0;
    double largest = 0.0;
    Axes axes;
    for (std::size_t k = 0; k < points.size(); ++k) {
        const Complex point = points[k] / gain;
        const double error = std::norm(point - decided[k]);
        errors += error / count;
        largest = std::max(largest, error);
        axes.add(decided[k] - meanIdeal, point - offset - meanIdeal);
    }
    if (decisions.spacing() < surelyApart * std::sqrt(0.5 * errors))
        errors = likeliestError(points, decisions, gain, errors);
    errors /= 1.0 - fitted;
    const double power = decisions.power();
    readings.count = count;
    readings.evmRms = 100.0 * std::sqrt(errors / power);
    readings.evmPeak = 100.0 * std::sqrt(largest / power);
    readings.mer = -decibels(errors / power);
    readings.offset = offset / std::sqrt(power);
    readings.originOffset = decibels(std::norm(readings.offset));
    axes.tell(readings);
    return readings;
}

void ConstellationReadings::join(const ConstellationReadings& other)
{
    const double part = other.count / (count + other.count);
    const auto mean = [part](const auto& a, const auto& b) { return a + part * (b - a); };
    const auto meanOf = [&](std::optional<double>& a, const std::optional<double>& b) {
        a = a && b ? mean(*a, *b) : std::optional<double>();
    };
    count += other.count;
    evmRms = std::sqrt(mean(evmRms * evmRms, other.evmRms * other.evmRms));
    evmPeak = std::max(evmPeak, other.evmPeak);
    mer = -decibels(1e-4 * evmRms * evmRms);
    offset = mean(offset, other.offset);
    originOffset = decibels(std::norm(offset));
    meanOf(imbalance, other.imbalance);
    meanOf(quadratureError, other.quadratureError);
}
