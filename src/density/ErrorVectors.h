// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "density/Figure.h"
#include "foundations/Export.h"

#include <complex>
#include <cstddef>
#include <vector>

namespace density {

/// Error vectors of the points of a constellation, each from the nearest ideal point, over all
/// symbols that were added. Memory does not grow with their number. For one thread at a time.
class ORVANE_API ErrorVectors
{
public:
    /// The symbols that are nearest to one ideal point.
    struct Cluster
    {
        std::complex<double> ideal;
        std::complex<double> error; ///< mean: place of the cluster relative to its ideal point
        Figure evm; ///< of its symbols, %, relative to the r.m.s. of all ideal points
    };
    /// What the error vectors amount to.
    struct Figures
    {
        /// r.m.s. of the error vectors over that of the ideal points of the same symbols, %.
        Figure evm;
        /// Power of the same ideal points over that of the errors, dB (modulation error ratio, ETSI
        /// TR 101 290).
        Figure mer;
        std::vector<Cluster> clusters;
    };
    static constexpr std::size_t mostPoints = 4096;
    static constexpr std::int64_t least = 32; ///< symbols; fewer do not tell enough

    /// @param ideal  points of the constellation, as the symbols are scaled. Points that are not
    ///               finite, and those beyond mostPoints, are ignored.
    explicit ErrorVectors(const std::vector<std::complex<double>>& ideal = {});

    /// Adds a symbol, which is ignored when I or Q is not finite.
    void add(float i, float q);
    void clear();
    /// Intervals assume Gaussian errors: with n symbols, that of the error's power is 1 / sqrt n of
    /// it.
    Figures figures() const;

private:
    struct Sums
    {
        std::int64_t count = 0;
        std::complex<double> error;
        double squares = 0.0;
    };
    std::vector<std::complex<double>> m_ideal;
    std::vector<Sums> m_sums;
};

} // namespace density
