// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/receiver/CarrierLock.h"

#include "workbench/sources/Constants.h"

#include <algorithm>
#include <cmath>

namespace {

// Noise at first, as a part of the square of the points' spacing.
constexpr double startPart = 0.125;
constexpr double leastNoise = 1e-4;   // less comes from the loop itself
constexpr double mostNoise = 0.5;     // likewise: with more, points tell nothing
constexpr double learning = 1.0 / 64; // weight of a symbol in the noise
constexpr double outliers = 1e-3;     // part of the symbols, which tell nothing
constexpr double negligible = 30.0;   // logarithm of a likelihood

} // namespace

CarrierLock::CarrierLock(const Modulation& modulation)
    : m_decisions(modulation.points)
    , m_isOffset(modulation.isOffset)
    , m_noise(startPart * modulation.spacing * modulation.spacing)
{
    for (const auto& point : modulation.points) {
        const double radius = std::abs(point);
        const auto same = std::find_if(m_circles.begin(), m_circles.end(), [=](const auto& circle) {
            return std::abs(circle.first - radius) < 1e-3;
        });
        if (same != m_circles.end())
            same->second += 1.0;
        else
            m_circles.emplace_back(radius, 1.0);
    }
}

/// Likelihood of a symbol whose carrier is lost, as Decisions::Expected tells that of a held one.
double CarrierLock::lostLikelihood(double radius) const
{
    if (m_isOffset) { // I and Q mix with samples between symbols, nearly normally distributed
        const auto count = static_cast<double>(m_decisions.count());
        const double power = m_decisions.power() + m_noise;
        return count * m_noise / power * std::exp(-radius * radius / power);
    }
    // Rice's density of the radius, at any angle; exp(-x) I0(x) is about 1 / sqrt(1 + 2 pi x).
    double sum = 0.0;
    for (const auto& [circle, count] : m_circles) {
        const double exponent = (radius - circle) * (radius - circle) / m_noise;
        if (exponent < negligible)
            sum += count * double{std::exp(static_cast<float>(-exponent))} /
                   std::sqrt(1.0 + 4.0 * pi * radius * circle / m_noise);
    }
    return sum;
}

double CarrierLock::evidence(const std::complex<double>& symbol)
{
    const Decisions::Expected held = m_decisions.expected(symbol, 0.5 * m_noise);
    static const double least = std::exp(-negligible);
    const double lost = lostLikelihood(std::sqrt(std::norm(symbol))) + least;
    m_noise = std::clamp(m_noise + learning * (held.square - m_noise), leastNoise, mostNoise);
    // Single numbers tell enough of a likelihood, and cost half.
    return double{std::log(static_cast<float>(held.likelihood / lost + outliers))};
}
