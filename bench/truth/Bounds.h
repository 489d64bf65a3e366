// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Random.h"

#include <cmath>

/// What chance leaves of an estimate at least, as a deviation.
namespace bounds {

/// A receiver's own errors, such as those of pulses cut off, in dB below the signal: with 36 dB of
/// noise they take away 0.3.
constexpr double floorDb = 47.5;

/// Of the MER of some symbols, dB: that of a mean of squares of complex Gaussian errors.
inline double mer(double count) { return 10.0 / std::log(10.0) / std::sqrt(count); }

/// Part of what known symbols tell of their phase that is left where a receiver has to find out
/// which point each was: Fisher's information of points that are all as likely, by sums over a grid
/// (Rice, Cowley, Moran, Rice, "Cramer-Rao lower bounds for QAM phase and frequency estimation",
/// IEEE Trans. Commun. 49(9), 2001).
/// @param points  of mean power 1.
double phasePart(const std::vector<Complex>& points, double esN0);

/// Of the carrier's frequency, symbol rates (ibid.): where the points are clear the modified bound
/// of D'Andrea, Mengali, Reggiannini, IEEE Trans. Commun. 42, 1994.
/// @param part  see phasePart.
inline double carrier(double count, double esN0, double part = 1.0)
{
    return std::sqrt(6.0 / (4.0 * pi * pi * std::pow(count, 3.0) * esN0 * part));
}

/// Of the symbol rate, ppm: the bound of one symbol's timing, ibid., as the slope of a line through
/// all of them.
inline double clock(double count, double esN0, double rollOff)
{
    const double bandwidth = 1.0 / 12.0 + rollOff * rollOff * (0.25 - 2.0 / (pi * pi));
    const double timing = 1.0 / (8.0 * pi * pi * bandwidth * esN0); // variance
    return 1e6 * std::sqrt(12.0 * timing / std::pow(count, 3.0));
}

} // namespace bounds
