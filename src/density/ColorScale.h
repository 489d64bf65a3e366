// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundations/Export.h"

#include <QColor>

namespace density {

/// Colours that grow evenly lighter, also to the colour-blind.
enum class ColorScale {
    Viridis, ///< van der Walt and Smith, public domain (CC0); here by a polynomial of degree 6
    Cividis, ///< Nunez, Anderton, Renslow, PLOS ONE 13(7) (2018): between blue and yellow only
    Inferno  ///< van der Walt and Smith, public domain (CC0); likewise a polynomial
};
constexpr int colorScaleCount = 3;

/// @param part  0 of the darkest to 1 of the lightest; what is beyond is that end, NaN is 0.
ORVANE_API QRgb colorOf(ColorScale scale, double part);

/// How counts become colours.
struct ColorMapping
{
    ColorScale scale = ColorScale::Viridis;
    bool isLogarithmic = true;
    bool isDarkGround = true; ///< the more, the lighter; else the more, the darker

    bool operator!=(const ColorMapping& other) const
    {
        return scale != other.scale || isLogarithmic != other.isLogarithmic ||
               isDarkGround != other.isDarkGround;
    }
    /// Part of the way from the fewest to the most, 0 to 1, of a count above 0: of the logarithm
    /// from least to most, or evenly from 0.
    /// @param least,most  counts above 0 in the picture.
    ORVANE_API double partOf(double count, double least, double most) const;
    /// The colour at a part. The end next to the ground is left out, so that one hit is seen.
    ORVANE_API QRgb colorAt(double part) const;
};

} // namespace density
