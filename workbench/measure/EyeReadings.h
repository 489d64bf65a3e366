// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

/// Figures of the traces of an eye diagram: two, three (of duobinary and bipolar codes) or four
/// levels are found, and each eye between two of them is measured separately.
struct EyeReadings
{
    /// One eye. Times are parts of a symbol period (unit intervals), levels those of the samples.
    struct Eye
    {
        /// Means of the levels below and above, at the instant of decision.
        double lowLevel = 0.0;
        double highLevel = 0.0;
        /// Standard deviations around them: noise of the zero and of the one level, whatever its
        /// cause (IEC 61280-2-2).
        double lowSigma = 0.0;
        double highSigma = 0.0;
        /// (high - 3 sigma) - (low + 3 sigma), the usual statistical eye height; below 0 where
        /// closed.
        double height = 0.0;
        /// Lowest sample of the level above minus highest sample of the level below.
        double innerHeight = 0.0;
        /// Height relative to the distance of the levels, %; 0 where closed.
        double opening = 0.0;
        /// (high - low) / (sigma high + sigma low), the Q factor of ITU-T O.201.
        double q = 0.0;
        /// Distance between the crossings left and right of the decision; not below 0. With two
        /// levels, 3 sigma inside of the means on both sides. With more levels, whose transitions
        /// cross at several times, inside of all but the nearest 2 %. None when a trace is shorter
        /// than two symbols, or few cross.
        std::optional<double> width;
        /// Jitter of the crossings of transitions between the levels of the eye, at the crossing
        /// level, around their clock (see crossingClock): r.m.s., and from the earliest to the
        /// latest.
        std::optional<double> jitterRms;
        std::optional<double> jitterPeak;
        /// Level at which the mean rising and the mean falling trace cross, in % from low to high:
        /// 50 when marks and spaces last equally long (crossing percentage, IEC 61280-2-2).
        std::optional<double> crossing;
        /// Time of that crossing (crossing time, ibid.) relative to the instant of decision: -0.5
        /// when the decision is in the middle of the eye.
        std::optional<double> crossingTime;
    };

    /// Time of the middle of a trace.
    struct Instant
    {
        std::int64_t run = 0; ///< of traces without a gap
        double symbol = 0.0;  ///< number in the run
        /// Symbols, by which the middle is later than that number of symbol periods.
        double late = 0.0;
    };

    static constexpr std::size_t minTraceCount = 32; ///< fewer do not tell enough
    static constexpr std::size_t maxLevelCount = 4;

    /// @param samples      of the traces, one after the other.
    /// @param traceLength  samples of each, symbols times an even number plus 1: a trace ends with
    ///                     the sample that the next one starts with, and the middle of a symbol is
    ///                     in its middle.
    /// @param symbolCount  of a trace.
    /// @param nearest      of each trace the sample of the signal nearest to its middle; empty for
    ///                     none. They are used when they spread less around their levels than the
    ///                     interpolated values: interpolation rings when a signal is not limited to
    ///                     half its sample rate; in other signals, samples beside the middle spread
    ///                     more.
    /// @param instants     of each trace; empty: jitter is relative to the middles of the traces.
    /// @return none when there are too few traces, or no levels can be told apart.
    static std::optional<EyeReadings> of(const std::vector<double>& samples,
                                         std::size_t traceLength, int symbolCount,
                                         const std::vector<double>& nearest = {},
                                         const std::vector<Instant>& instants = {});

    /// From the lowest up: one fewer than levels.
    std::vector<Eye> eyes;

    int levelCount() const { return static_cast<int>(eyes.size()) + 1; }
};
