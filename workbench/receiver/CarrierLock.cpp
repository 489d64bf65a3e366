// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/receiver/CarrierLock.h"

#include "workbench/receiver/FastFunctions.h"

#include <algorithm>
#include <cmath>

namespace {

// Noise at first, as a part of the square of the points' spacing.
constexpr double startPart = 0.125;
constexpr double leastNoise = 1e-4;          // less comes from the loop itself
constexpr double mostNoise = 0.5;            // likewise: with more, points tell nothing
constexpr double learning = 1.0 / 64;        // weight of a symbol in the noise
constexpr float outliers = 1e-3F;            // part of the symbols, which tell nothing
constexpr float negligible = 9.3576230e-14F; // likelihood, e^-30
constexpr std::size_t together = Decisions::together;

/// Normal density about 0.
ORVANE_WIDEST void addNormal(const float* i, const float* q, float scale, float power, float* sums)
{
    const float slope = -1.0F / power;
    for (std::size_t k = 0; k < together; ++k)
        sums[k] += scale * fast::exponential(slope * (i[k] * i[k] + q[k] * q[k]));
}

/// Rice's density of the radius, at any angle; exp(-x) I0(x) is about 1 / sqrt(1 + 2 pi x).
ORVANE_WIDEST void addCircle(const float* i, const float* q, float circle, float count, float noise,
                             float* sums)
{
    const float scale = 1.0F / noise;
    const float spread = 4.0F * static_cast<float>(pi) * circle * scale;
    for (std::size_t k = 0; k < together; ++k) {
        const float radius = std::sqrt(i[k] * i[k] + q[k] * q[k]);
        const float off = radius - circle;
        sums[k] +=
            count * fast::exponential(-scale * off * off) / std::sqrt(1.0F + radius * spread);
    }
}

ORVANE_WIDEST void compare(const float* held, const float* lost, float* evidence)
{
    for (std::size_t k = 0; k < together; ++k)
        evidence[k] = fast::logarithm(held[k] / (lost[k] + negligible) + outliers);
}

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

/// Likelihoods of symbols whose carrier is lost, as Decisions::Expected tells those of a held one.
void CarrierLock::findLost(const float* i, const float* q, float* lost) const
{
    const auto noise = static_cast<float>(m_noise);
    if (m_isOffset) { // I and Q mix with samples between symbols, nearly normally distributed
        const auto count = static_cast<float>(m_decisions.count());
        const float power = static_cast<float>(m_decisions.power()) + noise;
        addNormal(i, q, count * noise / power, power, lost);
        return;
    }
    for (const auto& [circle, count] : m_circles)
        addCircle(i, q, static_cast<float>(circle), static_cast<float>(count), noise, lost);
}

void CarrierLock::evidence(const float* i, const float* q, const bool* areHeard, std::size_t count,
                           float* evidence)
{
    float held[together], squares[together], lost[together] = {};
    m_decisions.expected(i, q, static_cast<float>(0.5 * m_noise), squares, held);
    findLost(i, q, lost);
    compare(held, lost, evidence);
    for (std::size_t k = 0; k < count; ++k) {
        if (areHeard[k])
            m_noise = std::clamp(m_noise + learning * (double{squares[k]} - m_noise), leastNoise,
                                 mostNoise);
    }
}
