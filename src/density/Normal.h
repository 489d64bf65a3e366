// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundations/Export.h"

/// The normal distribution of mean 0 and deviation 1.
namespace density::normal {

/// Probability density at a place.
ORVANE_API double density(double place);
/// Probability of values beyond a place: 1/2 erfc(place / sqrt 2).
ORVANE_API double tail(double place);
/// The place beyond which values have a probability: the inverse of tail, to 1e-12 of it or of 1.
/// @param probability  between 0 and 1. At and beyond these the result is infinite, with the sign
///                     of the limit; for NaN it is NaN.
ORVANE_API double placeOfTail(double probability);

} // namespace density::normal
