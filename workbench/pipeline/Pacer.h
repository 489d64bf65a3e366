// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

/// Divides time into periods of equal length and says how many of them have passed. It has no
/// clock: times are milliseconds since any moment, and do not run backwards.
class Pacer
{
public:
    /// @param rate        periods a second, > 0.
    /// @param maxCatchUp  periods that may be dealt with at a time; what is late beyond it is given
    ///                    up, so that a program that was held up does not choke on arrears.
    Pacer(double rate, std::int64_t maxCatchUp);

    /// Starts the first period.
    void start(std::int64_t nowMs);
    /// The periods that ended since start or the last call, without those that are given up.
    std::int64_t takeDue(std::int64_t nowMs);
    /// When the next period ends.
    std::int64_t nextMs() const;

private:
    double m_rate;
    std::int64_t m_maxCatchUp;
    std::int64_t m_startMs = 0;
    std::int64_t m_taken = 0; // periods since start
};
