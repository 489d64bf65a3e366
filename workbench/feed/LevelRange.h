// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <limits>

/// The lowest and the highest of some levels; what is not finite does not count.
struct LevelExtremes
{
    void add(double level);
    void add(const double* levels, std::size_t count);
    void add(const LevelExtremes& other);
    /// Whether there are two levels that differ: silence has none that an axis could be fitted to.
    bool isSignal() const { return lowest < highest; }

    double lowest = std::numeric_limits<double>::infinity();
    double highest = -std::numeric_limits<double>::infinity();
};

/// The range of an axis that follows the levels that are shown, without a jump where they change
/// but a little: what exceeds the range widens it at once; it shrinks once the levels have left
/// more than half of it free for a while.
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
    /// Stays so from now on.
    void fix(double lowest, double highest);
    /// Fits the next levels, and follows.
    void follow();
    /// Whether it waits for levels to fit.
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
    double m_freeTime = 0.0; // s for which too much of it was free
};
