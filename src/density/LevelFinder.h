// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

namespace density {

/// Finds the levels of a signal at one instant, however unevenly they are spaced: clusters of
/// values, separated by places with less than half the density of the smaller cluster. Clusters of
/// less than 2 % of the values join their neighbours.
///
/// @param sorted  values, at least 32.
/// @return bounds between neighbouring levels, in order: one fewer than levels.
std::vector<double> boundsOfLevels(const std::vector<double>& sorted);

} // namespace density
