// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/receiver/FourierTransforms.h"

#include <complex>
#include <optional>
#include <vector>

/// Looks for a carrier among symbols without their modulation: raised to the power that removes it,
/// symbols give a line at a multiple of the carrier's offset, which noise does not (Rife and
/// Boorstyn, "Single-tone parameter estimation from discrete-time observations", IEEE Trans. Inf.
/// Theory 20(5), 1974).
class CarrierSearch
{
public:
    struct Line
    {
        double turn;  ///< rad a symbol, from -pi to pi
        double phase; ///< rad, of the first symbol
    };

    /// @param symbols  without their modulation, at least 2.
    /// @param range    largest turn from symbol to symbol, either way, in whole turns, up to 0.5.
    /// @return none when noise may have made the strongest line.
    std::optional<Line> lineOf(const std::vector<std::complex<double>>& symbols, double range);

private:
    FourierTransforms m_transforms;
};
