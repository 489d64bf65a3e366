// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cmath>
#include <vector>

/// The strongest line of a spectrum.
struct SpectralPeak
{
    /// @param powers  of at least 2 bins; the second half has the negative frequencies.
    static SpectralPeak of(const std::vector<double>& powers)
    {
        const auto size = powers.size();
        const auto amplitude = [&](std::size_t bin) { return std::sqrt(powers[bin % size]); };
        const auto best = static_cast<std::size_t>(std::max_element(powers.begin(), powers.end()) -
                                                   powers.begin());
        // The top of the parabola through the highest bin and its neighbours.
        const double left = amplitude(best + size - 1);
        const double right = amplitude(best + 1);
        const double bend = left - 2.0 * amplitude(best) + right;
        const double part = bend < 0.0 ? 0.5 * (left - right) / bend : 0.0;
        const double place = static_cast<double>(best) + part;
        return {powers[best], best >= size / 2 ? place - static_cast<double>(size) : place};
    }

    double strength = 0.0; ///< power
    double place = 0.0;    ///< bins; negative frequencies are below 0
};
