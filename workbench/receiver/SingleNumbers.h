// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>

/// Makes numbers single.
/// @param largest  finite as a single number, too.
/// @return whether each is a number of this magnitude at most; if not, the output tells nothing.
bool makeSingle(const double* numbers, std::size_t count, double largest, float* output);

/// Whether each is a number of this magnitude at most.
/// @param largest  finite.
bool areWithin(const float* numbers, std::size_t count, float largest);

/// Makes the first numbers of pairs double, and the second ones.
void makeDouble(const float* pairs, std::size_t count, double* first, double* second);
