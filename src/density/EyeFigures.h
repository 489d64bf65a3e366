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

/// Figures of the traces of an eye, one trace for each symbol, with the symbol in its middle.
/// Levels are in the signal's unit, times in symbols. Traces with a bad sample do not count.
///
/// A quarter of the traces determines the instant of decision: among the samples within half a
/// symbol of the middle, the one at which the worst eye has the best Q; where neighbours are
/// equally good, as far as chance can tell, the one in the middle of them. The figures come from
/// the other traces, so that this choice does not flatter them.
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
        /// Error rate between the two levels at the best threshold: 1/2 erfc(Q / sqrt 2) (Bergano,
        /// Kerfoot, Davidson, IEEE Photonics Technology Letters 5 (1993)). Its interval is that of
        /// Q. Withheld with q where a level is not Gaussian: gaussianFit below 0.98, or where the
        /// inner tail of 50 traces is further out than that of its Gaussian by 5 % and what chance
        /// explains.
        Figure errorRate;
        double bestLevel = 0.0; ///< threshold at which both levels are mistaken equally often
        /// Height at the given probability: the distance between the levels beyond which that part
        /// of either level lies. Below 0 when closed.
        Figure height;
        /// From the highest sample of the level below to the lowest of the one above.
        Figure innerHeight;
        /// Jitter of transitions between the two levels, at the crossings halfway between them.
        JitterFit jitter;
        Figure totalJitter;           ///< at the given probability, see JitterFit::total
        Figure width;                 ///< 1 - totalJitter; below 0 where closed
        double transitionShare = 0.0; ///< of the traces that start with such a transition
    };

    /// @param probability  of height, width and total jitter; between 0 and 0.5, both excluded.
    static EyeFigures of(const KeptSignal& kept, const TraceShape& shape,
                         double probability = 1e-12);

    /// The bathtub curve: error rate of an eye due to its jitter, decided halfway between the
    /// levels at a time from the middle of the traces. NaN when the jitter is withheld.
    double errorRateAt(std::size_t eye, double time) const;

    std::int64_t traceCount = 0; ///< that are whole
    double probability = 1e-12;
    double instant = 0.0;      ///< of decision, symbols from the middle of the traces
    std::vector<Level> levels; ///< from the lowest up; fewer than two: reason
    std::vector<Eye> eyes;     ///< from the lowest up, one fewer than levels
    Withheld reason = Withheld::TooFew;
};

} // namespace density
