// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <limits>

/// Lowest and highest of some levels; values that are not finite do not count.
struct LevelExtremes
{
    void add(double level);
    void add(const double* levels, std::size_t count);
    void add(const LevelExtremes& other);
    /// Whether there are two different levels; an axis cannot be fitted to silence.
    bool isSignal() const { return lowest < highest; }

    double lowest = std::numeric_limits<double>::infinity();
    double highest = -std::numeric_limits<double>::infinity();
};

/// The range of an axis that follows the shown levels without jumping at small changes: levels
/// beyond the range widen it at once; it shrinks when the levels have left more than half of it
/// free for a while.
class LevelRange
{
public:
    static constexpr double shrinkDelay = 3.0; ///< s, before it shrinks

    /// @param margin  kept free above and below, as a part of the levels' distance.
    explicit LevelRange(double margin)
        : m_margin(margin)
    {}

    double lowest() const { return m_lowest; }
    double highest() const { return m_highest; }
    /// Fixes the range from now on.
    void fix(double lowest, double highest);
    /// Fits the range to the next levels, and follows them from then on.
    void follow();
    /// Whether it waits for levels to which it can be fitted.
    bool isNew() const { return m_isNew; }
    /// @param elapsed  s since levels were taken last.
    /// @return whether the range changed.
    bool take(const LevelExtremes& levels, double elapsed);

private:
    bool set(double lowest, double highest);

    double m_margin;
    double m_lowest = -1.0;
    double m_highest = 1.0;
    bool m_isFollowing = false;
    bool m_isNew = false;
    double m_freeTime = 0.0; // s, how long too much of it was free
};
