// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/receiver/FourierTransforms.h"

#include <complex>
#include <optional>
#include <vector>

/// Looks for a carrier among symbols whose modulation is undone: raised to the power that does so
/// they give a line at a multiple of the carrier's offset, which noise does not (Rife and Boorstyn,
/// "Single-tone parameter estimation from discrete-time observations", IEEE Trans. Inf. Theory
/// 20(5), 1974).
class CarrierSearch
{
public:
    struct Line
    {
        double turn;  ///< rad a symbol, from -pi to pi
        double phase; ///< rad, of the first symbol
    };

    /// @param symbols  undone, at least 2.
    /// @param range    of the turn, part of a whole one either way, up to 0.5.
    /// @return none where noise may have made the strongest line.
    std::optional<Line> lineOf(const std::vector<std::complex<double>>& symbols, double range);

private:
    FourierTransforms m_transforms;
};
