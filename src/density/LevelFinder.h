// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

namespace density {

/// Tells the levels of a signal apart at one instant, however unevenly they are spaced: heaps of
/// values that the least dense places between them, less than half as dense as the lower heap,
/// separate. Heaps of less than 2 % of the values join their neighbours.
///
/// @param sorted  values, at least 32.
/// @return bounds between neighbouring levels, in order: one fewer than levels.
std::vector<double> boundsOfLevels(const std::vector<double>& sorted);

} // namespace density
