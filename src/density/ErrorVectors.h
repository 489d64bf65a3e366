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
    /// Intervals: with n symbols whose errors are Gaussian, the error's power deviates by 1 /
    /// sqrt n of itself; where errors of neighbours are alike, as those of a wandering phase, by as
    /// much more as the means of blocks of up to a sixteenth of the symbols do (Flyvbjerg,
    /// Petersen, "Error estimates on averages of correlated data", J. Chem. Phys. 91, 1989).
    Figures figures() const;

private:
    struct Sums
    {
        std::int64_t count = 0;
        std::complex<double> error;
        double squares = 0.0;
    };
    static constexpr std::size_t mostBlocks = 128;

    void addToBlock(double square);
    double deviation(double power, double count) const;

    std::vector<std::complex<double>> m_ideal;
    std::vector<Sums> m_sums;
    // Sums of squares of blocks of symbols that follow one another, and of the last, begun one.
    std::vector<double> m_blocks;
    std::int64_t m_blockLength = 1;
    std::int64_t m_begun = 0; // symbols
    double m_begunSquares = 0.0;
};

} // namespace density
