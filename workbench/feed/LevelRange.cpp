// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/feed/LevelRange.h"

#include "workbench/receiver/Vectors.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double leastUsed = 0.5; // part of the range that levels use before it shrinks

/// The lowest and the highest at each place of whole vectors.
ORVANE_WIDEST void extremesOf(const double* levels, std::size_t count, Doubles& lowest,
                              Doubles& highest)
{
    for (std::size_t k = 0; k < count; k += doublesWidth) {
        Doubles level;
        load(levels + k, level);
        level += 0.0 * level; // NaN, which is neither, where it is not finite
        lowest = level < lowest ? level : lowest;
        highest = level > highest ? level : highest;
    }
}

} // namespace

void LevelExtremes::add(double level)
{
    if (!std::isfinite(level))
        return;
    lowest = std::min(lowest, level);
    highest = std::max(highest, level);
}

void LevelExtremes::add(const double* levels, std::size_t count)
{
    const std::size_t whole = count / doublesWidth * doublesWidth;
    Doubles least, most;
    for (std::size_t k = 0; k < doublesWidth; ++k) {
        least[k] = lowest;
        most[k] = highest;
    }
    extremesOf(levels, whole, least, most);
    for (std::size_t k = 0; k < doublesWidth; ++k) {
        lowest = std::min(lowest, least[k]);
        highest = std::max(highest, most[k]);
    }
    for (std::size_t k = whole; k < count; ++k)
        add(levels[k]);
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
