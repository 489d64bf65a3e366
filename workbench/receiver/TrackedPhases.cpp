// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/receiver/TrackedPhases.h"

#include <algorithm>

namespace {

constexpr double faintPower = 0.1; // of the power of points: a symbol that is not followed
constexpr double faintMean = 0.4;  // of it: the mean of symbols at the edge of a burst
constexpr int rampSymbols = 3;     // of a burst
constexpr double mostOdds = 9.0;   // logarithm: a carrier is lost once in e^9 symbols

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
    m_past = 0;
    m_odds = 0.0;
}

bool TrackedPhases::isHeard(double power) { return power > faintPower; }

void TrackedPhases::advance()
{
    m_odds = std::clamp(m_odds + symbol().evidence, -mostOdds, mostOdds);
    if (m_past < m_reach)
        ++m_past;
    else
        m_symbols.pop_front();
}

bool TrackedPhases::isHeld() const
{
    double after = 0.0;
    for (std::size_t k = std::min(m_past + m_reach, m_symbols.size() - 1); k > m_past; --k)
        after = std::clamp(after + m_symbols[k].evidence, -mostOdds, mostOdds);
    return m_odds + symbol().evidence + after >= 0.0;
}

bool TrackedPhases::isFaint() const
{
    const auto count = static_cast<int>(m_symbols.size());
    const auto powerAt = [&](int k) {
        return k >= 0 && k < count ? m_symbols[static_cast<std::size_t>(k)].power : 0.0;
    };
    const int first = static_cast<int>(m_past) - m_about - rampSymbols;
    const int length = 2 * m_about + 1;
    double sum = 0.0;
    for (int k = first; k < first + length; ++k)
        sum += powerAt(k);
    for (int k = first; sum >= faintMean * length; ++k) {
        if (k == first + 2 * rampSymbols)
            return false;
        sum += powerAt(k + length) - powerAt(k);
    }
    return true;
}

TrackedPhases::Smoothed TrackedPhases::smoothed(double usualSlope) const
{
    const std::size_t first = m_past - std::min(m_past, m_reach);
    const std::size_t last = std::min(m_past + m_reach, m_symbols.size() - 1);
    const double phase = symbol().phase;
    double s0 = 0.0, s1 = 0.0, s2 = 0.0, e0 = 0.0, e1 = 0.0, quality = 0.0, count = 0.0;
    auto tracked = m_symbols.begin() + static_cast<std::ptrdiff_t>(first);
    for (std::size_t k = first; k <= last; ++k, ++tracked) {
        const Symbol& t = *tracked;
        if (!isHeard(t.power))
            continue;
        const double x = static_cast<double>(k) - static_cast<double>(m_past);
        const double y = t.phase + t.error - phase;
        s0 += t.weight;
        s1 += t.weight * x;
        s2 += t.weight * x * x;
        e0 += t.weight * y;
        e1 += t.weight * x * y;
        quality += t.quality;
        count += 1.0;
    }
    Smoothed result{phase, usualSlope, 0.0};
    if (!(s0 > 0.0))
        return result;
    const double determinant = s0 * s2 - s1 * s1;
    const bool isLine = determinant > 1e-9 * s0 * s0;
    result.slope = isLine ? (s0 * e1 - s1 * e0) / determinant : 0.0;
    result.phase += isLine ? (s2 * e0 - s1 * e1) / determinant : e0 / s0;
    result.quality = quality / count;
    return result;
}
