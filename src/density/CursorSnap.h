// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "density/ErrorVectors.h"
#include "density/EyeFigures.h"

#include <optional>
#include <vector>

namespace density {

/// Where cursors snap to, in order, each place once.
struct CursorSnap
{
    /// Of an eye the best instant and the crossings on either side, from neighbour to neighbour of
    /// levels; levels, and halfway between them. What was not found is left out.
    static CursorSnap of(const EyeFigures& figures);
    /// Of a constellation the middle of each cluster.
    static CursorSnap of(const ErrorVectors::Figures& figures);

    /// The nearest of the places within reach.
    static std::optional<double> nearest(const std::vector<double>& places, double to,
                                         double reach);
    /// The next place above, or below; from the last one back to the first.
    static std::optional<double> next(const std::vector<double>& places, double from,
                                      bool isUpward);

    std::vector<double> x, y;
};

} // namespace density
