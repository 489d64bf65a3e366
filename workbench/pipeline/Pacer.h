// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

/// Divides time into periods of equal length and counts those that have passed. It has no clock of
/// its own: times are milliseconds since any moment, and never go back.
class Pacer
{
public:
    /// @param rate        periods a second, > 0.
    /// @param maxCatchUp  periods that may be handled at a time; later ones are dropped, so that a
    ///                    program that was held up does not have to catch up with all of them.
    Pacer(double rate, std::int64_t maxCatchUp);

    /// Starts the first period.
    void start(std::int64_t nowMs);
    /// Number of periods that ended since start or the last call, without those that are dropped.
    std::int64_t takeDue(std::int64_t nowMs);
    /// Time at which the next period ends.
    std::int64_t nextMs() const;

private:
    double m_rate;
    std::int64_t m_maxCatchUp;
    std::int64_t m_startMs = 0;
    std::int64_t m_taken = 0; // periods since start
};
