// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "density/DensityTypes.h"
#include "density/Figure.h"
#include "density/KeptSignal.h"
#include "foundations/Export.h"

#include <vector>

namespace density {

/// Statistics of numbers, such as the levels at an instant or the crossings of a level.
struct ORVANE_API Spread
{
    static constexpr std::int64_t least = 32; ///< numbers; fewer tell nothing

    /// @param values  in any order; values that are not finite do not count. Results have their
    ///                unit.
    static Spread of(std::vector<double> values);

    /// Deviations: sigma / sqrt n of the mean, sigma sqrt((kurtosis - 1) / 4n) of sigma
    /// (Kenney and Keeping, Mathematics of Statistics, part 2, 7.8).
    Figure mean, sigma;
    /// From the smallest to the largest value. It does not estimate anything, so that its interval
    /// is the value itself.
    Figure peakToPeak;
    /// How well a Gaussian of this mean and sigma fits, at best 1: the squared correlation of the
    /// sorted values with those expected of it (Shapiro and Francia, J. Amer. Statist. Assoc. 67
    /// (1972)). Of an even spread 0.95, of two values 0.64. No interval.
    Figure gaussianFit;
    double lowest = 0.0, highest = 0.0;
};

/// A part of the plane of time and level. Along a vertical band times are within [left, right] and
/// levels are what is spread; along a horizontal one levels are within [bottom, top], and times.
struct Band
{
    enum class Direction { Vertical, Horizontal };
    Direction direction = Direction::Vertical;
    double start = 0.0; ///< left, symbols, or bottom, level
    double stop = 0.0;  ///< right or top, not below the start
};

/// What the kept traces show along a band: of a vertical one the levels of samples in it or, of a
/// trace without one, that of its line at the band's middle; of a horizontal one the times when
/// lines cross its middle. A line that only touches the level does not cross it.
ORVANE_API std::vector<double> valuesAlong(const KeptSignal& kept, const TraceShape& shape,
                                           const Band& band);

/// Sums of the counts of cells with their middle in a band: of a vertical one for each row, of a
/// horizontal one for each column.
ORVANE_API std::vector<double> countsAlong(const Snapshot& snapshot, const Band& band);

} // namespace density
