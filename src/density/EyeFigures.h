// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "density/DensityTypes.h"
#include "density/Figure.h"
#include "density/JitterFit.h"
#include "density/KeptSignal.h"
#include "density/Spread.h"
#include "foundations/Export.h"

#include <vector>

namespace density {

/// What the traces of an eye measure, one trace a symbol with the symbol in its middle. Levels are
/// in the signal's unit, times in symbols. Traces with a bad sample do not count.
///
/// A quarter of the traces chooses the instant of decision, among the samples within half a symbol
/// of the middle: where the worst eye has the best Q; of neighbours that are equally good, as far
/// as chance lets tell, the one in their middle. The others measure, so that the choice does not
/// flatter what is measured.
struct ORVANE_API EyeFigures
{
    static constexpr std::int64_t least = 400; ///< traces; fewer tell nothing
    static constexpr std::size_t mostLevels = 16;

    /// A level at the instant of decision.
    struct Level
    {
        Spread spread;
        double share = 0.0; ///< of the traces
    };
    /// Between two neighbouring levels.
    struct Eye
    {
        /// (high - low) / (sigma high + sigma low), ITU-T O.201.
        Figure q;
        /// Part of the symbols of the two levels that is taken for the other one, at the best
        /// level: 1/2 erfc(Q / sqrt 2) (Bergano, Kerfoot, Davidson, IEEE Photonics Technology
        /// Letters 5 (1993)). Its interval is that of Q. Withheld with q where a level is not
        /// Gaussian: gaussianFit below 0.98, or where the inner tail of 50 traces is further out
        /// than that of its Gaussian by 5 % and what chance explains.
        Figure errorRate;
        double bestLevel = 0.0; ///< where both levels are mistaken equally often
        /// Between the places beyond which the given part of either level lies: the distance of the
        /// means less as many deviations on both sides. Below 0 where closed.
        Figure height;
        /// From the highest sample of the level below to the lowest of the one above.
        Figure innerHeight;
        /// Of the crossings, halfway between the levels, of transitions from one to the other.
        JitterFit jitter;
        Figure totalJitter;           ///< at the given probability, see JitterFit::total
        Figure width;                 ///< 1 - totalJitter; below 0 where closed
        double transitionShare = 0.0; ///< of the traces that start with such a transition
    };

    /// @param probability  at which height, width and total jitter are told; 0 to 0.5, both not.
    static EyeFigures of(const KeptSignal& kept, const TraceShape& shape,
                         double probability = 1e-12);

    /// Error rate of an eye at the level halfway, by its jitter, when it is decided at a time from
    /// the middle of traces on: the bathtub curve. NaN where jitter is withheld.
    double errorRateAt(std::size_t eye, double time) const;

    std::int64_t traceCount = 0; ///< that are whole
    double probability = 1e-12;
    double instant = 0.0;      ///< of decision, symbols from the middle of the traces
    std::vector<Level> levels; ///< from the lowest up; fewer than two: reason
    std::vector<Eye> eyes;     ///< from the lowest up, one fewer than levels
    Withheld reason = Withheld::TooFew;
};

} // namespace density
