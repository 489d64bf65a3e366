// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "density/Figure.h"
#include "foundations/Export.h"

#include <complex>
#include <cstddef>
#include <vector>

namespace density {

/// Error vectors of the points of a constellation, from each to the nearest of the points that it
/// should have, over all symbols that were ever added. Memory does not grow.
class ORVANE_API ErrorVectors
{
public:
    struct Cluster
    {
        std::complex<double> ideal;
        std::complex<double> error; ///< mean: place of the cluster relative to its ideal point
        Figure evm; ///< of its symbols, %, relative to the r.m.s. of all ideal points
    };
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

    /// @param ideal  points of the constellation, as the symbols are scaled; those that are not
    ///               finite, and beyond the most, are ignored.
    explicit ErrorVectors(const std::vector<std::complex<double>>& ideal = {});

    /// Adds a symbol; one that is not finite is ignored.
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
