// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/density/HomeFinder.h"

#include "density/Counter.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double spare = 0.15; // of what is reached, to either side

} // namespace

std::optional<density::Window> HomeFinder::take(const std::vector<float>& samples,
                                                std::int64_t symbolCount)
{
    // Of those kept: it takes some more symbols until a home is set.
    constexpr auto most = static_cast<std::int64_t>(density::Counter::leastKept) / 2;
    if (m_count + symbolCount > most && m_home)
        return std::nullopt;
    m_count += symbolCount;
    for (const float sample : samples) {
        if (std::isfinite(sample)) {
            m_low = std::min(m_low, sample);
            m_high = std::max(m_high, sample);
        }
    }
    const auto low = static_cast<double>(m_low), high = static_cast<double>(m_high);
    if (!(low <= high) || (m_home && low >= m_home->bottom && high <= m_home->top))
        return std::nullopt;
    const double size = std::max(std::abs(low), std::abs(high));
    const double extent = high > low ? high - low : size > 0.0 ? size : 1.0;
    density::Window home{-1.0, 1.0, low - spare * extent, high + spare * extent};
    if (!m_isEye) {
        const double reach = size > 0.0 ? (1.0 + spare) * size : 1.0;
        home = {-reach, reach, -reach, reach};
    }
    if (!home.isUsable())
        return std::nullopt;
    m_home = home;
    return home;
}
