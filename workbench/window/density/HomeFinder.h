// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "density/DensityTypes.h"

#include <cstdint>
#include <limits>
#include <optional>
#include <vector>

/// Finds the window in which a density is counted. It grows with the extent of the first symbols
/// while all of them are kept, so that counting anew loses none, and then stays. For one thread at
/// a time.
class HomeFinder
{
public:
    /// @param isEye  whether samples are traces over two symbols; otherwise they are points, shown
    ///               in a square about 0.
    explicit HomeFinder(bool isEye)
        : m_isEye(isEye)
    {}

    /// Takes traces or points.
    /// @param symbolCount  number of their symbols.
    /// @return the new window; none when the last one still fits.
    std::optional<density::Window> take(const std::vector<float>& samples,
                                        std::int64_t symbolCount);

private:
    bool m_isEye;
    std::int64_t m_count = 0;
    float m_low = std::numeric_limits<float>::infinity();
    float m_high = -std::numeric_limits<float>::infinity();
    std::optional<density::Window> m_home;
};
