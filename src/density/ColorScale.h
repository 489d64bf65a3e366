// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundations/Export.h"

#include <QColor>

namespace density {

/// Colour scales of evenly rising lightness, also to the colour-blind.
enum class ColorScale {
    Viridis, ///< van der Walt and Smith, public domain (CC0); here by a polynomial of degree 6
    Cividis, ///< Nunez, Anderton, Renslow, PLOS ONE 13(7) (2018): between blue and yellow only
    Inferno  ///< van der Walt and Smith, public domain (CC0); likewise a polynomial
};
constexpr int colorScaleCount = 3;

/// @param part  from 0, the darkest, to 1, the lightest; clamped, NaN counts as 0.
ORVANE_API QRgb colorOf(ColorScale scale, double part);

/// Mapping of counts to colours.
struct ColorMapping
{
    ColorScale scale = ColorScale::Viridis;
    bool isLogarithmic = true;
    bool isDarkGround = true; ///< more counts are lighter; else darker

    bool operator!=(const ColorMapping& other) const
    {
        return scale != other.scale || isLogarithmic != other.isLogarithmic ||
               isDarkGround != other.isDarkGround;
    }
    /// Place of a count above 0 on the scale, 0 to 1: logarithmic from least to most, or linear
    /// from 0.
    /// @param least,most  counts above 0 in the picture.
    ORVANE_API double partOf(double count, double least, double most) const;
    /// The colour at a place on the scale. The end next to the ground is left out, so that a single
    /// hit can be seen.
    ORVANE_API QRgb colorAt(double part) const;
};

} // namespace density
