// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <limits>

/// Floating point to integer, defined for every input: truncates toward zero, clamps to
/// [lowest, highest], and maps NaN to 0 (clamped like any other value). A plain cast is
/// undefined for NaN and for values outside the integer's range.
/// Integer is at most 32 bits wide, so that its limits are exact as doubles.
template<typename Integer>
constexpr Integer truncateSaturated(double value,
                                    Integer lowest = std::numeric_limits<Integer>::lowest(),
                                    Integer highest = std::numeric_limits<Integer>::max())
{
    static_assert(sizeof(Integer) <= 4, "limits of wider integers are not exact as doubles");
    if (value != value)
        value = 0.0;
    if (!(value > static_cast<double>(lowest)))
        return lowest;
    if (!(value < static_cast<double>(highest)))
        return highest;
    return static_cast<Integer>(value);
}

/// A pixel coordinate: like truncateSaturated, within +-1e9, so that sums and differences of two
/// of them, or with a widget's size, stay inside an int.
constexpr int truncateToPixel(double value)
{
    return truncateSaturated<int>(value, -1'000'000'000, 1'000'000'000);
}
