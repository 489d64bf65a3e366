// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "density/ErrorVectors.h"
#include "density/EyeFigures.h"

#include <optional>
#include <vector>

namespace density {

/// The places that cursors snap to, in order, each once.
struct CursorSnap
{
    /// Places of an eye: the best instant and the crossings of neighbouring levels on either side;
    /// the levels, and halfway between them. What was not found is left out.
    static CursorSnap of(const EyeFigures& figures);
    /// Places of a constellation: the middle of each cluster.
    static CursorSnap of(const ErrorVectors::Figures& figures);

    /// The nearest place; none within reach.
    static std::optional<double> nearest(const std::vector<double>& places, double to,
                                         double reach);
    /// The next place above, or below; after the last one comes the first.
    static std::optional<double> next(const std::vector<double>& places, double from,
                                      bool isUpward);

    std::vector<double> x, y;
};

} // namespace density
