// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "density/DensityTypes.h"

#include <cstdint>
#include <limits>
#include <optional>
#include <vector>

/// Finds the window in which a density is counted from what comes: it grows with what the first
/// symbols reach, as long as all of them are kept and none is lost by counting them anew, and stays
/// then. Any one thread.
class HomeFinder
{
public:
    /// @param isEye  traces over two symbols; else points, in a square about 0.
    explicit HomeFinder(bool isEye)
        : m_isEye(isEye)
    {}

    /// @param symbolCount  that the samples are of.
    /// @return a new window, where one is needed.
    std::optional<density::Window> take(const std::vector<float>& samples,
                                        std::int64_t symbolCount);

private:
    bool m_isEye;
    std::int64_t m_count = 0;
    float m_low = std::numeric_limits<float>::infinity();
    float m_high = -std::numeric_limits<float>::infinity();
    std::optional<density::Window> m_home;
};
