// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/feed/LevelRange.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double leastUsed = 0.5; // part of the range

} // namespace

void LevelExtremes::add(double level)
{
    if (!std::isfinite(level))
        return;
    lowest = std::min(lowest, level);
    highest = std::max(highest, level);
}

void LevelExtremes::add(const LevelExtremes& other)
{
    lowest = std::min(lowest, other.lowest);
    highest = std::max(highest, other.highest);
}

void LevelRange::fix(double lowest, double highest)
{
    m_isFollowing = false;
    m_isNew = false;
    set(lowest, highest);
}

void LevelRange::follow()
{
    m_isFollowing = true;
    m_isNew = true;
}

bool LevelRange::take(const LevelExtremes& levels, double elapsed)
{
    if (!m_isFollowing || !levels.isSignal())
        return false;
    const double margin = m_margin * (levels.highest - levels.lowest);
    const double lowest = levels.lowest - margin;
    const double highest = levels.highest + margin;
    if (m_isNew)
        return set(lowest, highest);
    if (levels.lowest < m_lowest || levels.highest > m_highest)
        return set(std::min(lowest, m_lowest), std::max(highest, m_highest));
    const bool isLoose = highest - lowest < leastUsed * (m_highest - m_lowest);
    m_freeTime = isLoose ? m_freeTime + elapsed : 0.0;
    return m_freeTime >= shrinkDelay && set(lowest, highest);
}

bool LevelRange::set(double lowest, double highest)
{
    m_isNew = false;
    m_freeTime = 0.0;
    m_lowest = lowest;
    m_highest = highest;
    return true;
}
