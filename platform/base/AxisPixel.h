// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

/// Distance of a value from the start of an axis, in pixels, computed in the order of operations
/// that all pictures share; truncated toward zero it is the pixel.
/// @param length  of the axis in pixels.
/// @return  NaN or an infinity on an axis without extent.
constexpr double axisPixel(double value, double start, double stop, int length)
{
    return (length - 1) * (value - start) / (stop - start);
}
