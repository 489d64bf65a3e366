// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

/// What the traces of an eye diagram measure: two levels, three (of duobinary and bipolar codes)
/// and four are told apart, and each eye between two of them is measured by itself.
struct EyeReadings
{
    /// One eye. Times are parts of a symbol period (unit intervals), levels those of the samples.
    struct Eye
    {
        /// Means of the levels below and above, at the instant of decision.
        double lowLevel = 0.0;
        double highLevel = 0.0;
        /// Standard deviations about them: noise of the zero and of the one level, with all that
        /// spreads them (IEC 61280-2-2).
        double lowSigma = 0.0;
        double highSigma = 0.0;
        /// (high - 3 sigma) - (low + 3 sigma), the usual statistical eye height; below 0 where
        /// closed.
        double height = 0.0;
        /// Lowest sample of the level above less highest one of the level below.
        double innerHeight = 0.0;
        /// Height against the distance of the levels, %; 0 where closed.
        double opening = 0.0;
        /// (high - low) / (sigma high + sigma low), the Q factor of ITU-T O.201.
        double q = 0.0;
        /// From the crossings on the left to those on the right of the decision; not below 0. Of
        /// two levels 3 sigma inside of their means on both sides. Of more levels, whose
        /// transitions cross at several times, inside of all but the nearest 2 %. None where a
        /// trace is shorter than two symbols, or few cross.
        std::optional<double> width;
        /// Of the crossings about their clock (see crossingClock), at the crossing level, of
        /// transitions from one level of the eye to the other: r.m.s., and from the earliest to the
        /// latest.
        std::optional<double> jitterRms;
        std::optional<double> jitterPeak;
        /// Where mean rising and mean falling traces cross, % of the way from low to high: 50
        /// where marks and spaces last equally long (crossing percentage, IEC 61280-2-2).
        std::optional<double> crossing;
        /// When they do (crossing time, ibid.), from the instant of decision on: -0.5 where the
        /// decision is in the middle of the eye.
        std::optional<double> crossingTime;
    };

    /// When the middle of a trace is.
    struct Instant
    {
        std::int64_t run = 0; ///< of traces without a gap
        double symbol = 0.0;  ///< number in the run
        double late = 0.0;    ///< symbols, by which it is later than that number of symbol periods
    };

    static constexpr std::size_t minTraceCount = 32; ///< fewer tell nothing
    static constexpr std::size_t maxLevelCount = 4;

    /// @param samples      of the traces, one after the other.
    /// @param traceLength  samples of each, symbols times an even number plus 1: a trace ends with
    ///                     the sample that the next one starts with, and the middle of a symbol is
    ///                     in its middle.
    /// @param symbolCount  of a trace.
    /// @param nearest      of each trace the sample of the signal that is nearest to its middle, or
    ///                     none. Where these differ less from their levels than what was
    ///                     interpolated, they count: interpolation rings where a signal is not
    ///                     limited to half its sample rate; samples beside the middle of others
    ///                     spread more.
    /// @param instants     of each trace, or none: then jitter is against the middles of the
    /// traces.
    /// @return none where the traces are too few, or no levels can be told apart.
    static std::optional<EyeReadings> of(const std::vector<double>& samples,
                                         std::size_t traceLength, int symbolCount,
                                         const std::vector<double>& nearest = {},
                                         const std::vector<Instant>& instants = {});

    /// From the lowest up: one fewer than levels.
    std::vector<Eye> eyes;

    int levelCount() const { return static_cast<int>(eyes.size()) + 1; }
};
