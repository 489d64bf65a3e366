// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundations/Extent.h"

#include <cstddef>
#include <vector>

/// The two passes over the samples of a trace, in chunks that the compiler turns into vectors.
namespace quantiser {

/// Smallest and largest of the samples in single precision, without a margin. A NaN replaces the
/// extent, unlike in other diagrams, and the next sample replaces the NaN.
Extent extentOf(const std::vector<double>& samples);
/// The level of each sample: the whole steps by which it is above the lowest one, 0 to 255; 0 for
/// NaN.
/// @param levels  as many as there are samples.
/// @param step    not 0.
void quantise(const std::vector<double>& samples, float lowest, float step, unsigned char* levels);

} // namespace quantiser
