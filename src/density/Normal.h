// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundations/Export.h"

/// The normal distribution of mean 0 and deviation 1.
namespace density::normal {

/// Density at a place.
ORVANE_API double density(double place);
/// Probability of what lies beyond a place: 1/2 erfc(place / sqrt 2).
ORVANE_API double tail(double place);
/// The place beyond which so much lies; the inverse of tail, to 1e-12 of it or of 1.
/// @param probability  0 to 1, both not: else infinite with the sign that the limit has; NaN of
/// NaN.
ORVANE_API double placeOfTail(double probability);

} // namespace density::normal
