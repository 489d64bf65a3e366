// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

/// How many pixels a value lies from the start of an axis, in the order of computing that all
/// pictures share; truncated toward zero it is the pixel.
/// @param length  of the axis in pixels.
/// @return  NaN or an infinity on an axis without extent.
constexpr double axisPixel(double value, double start, double stop, int length)
{
    return (length - 1) * (value - start) / (stop - start);
}
