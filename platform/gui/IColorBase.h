// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/base/Export.h"

#include <QColor>

/// Source of colours by number.
class ORVANE_PLATFORM_API IColorBase
{
public:
    /// Numbers of the colours in use. Any other number is valid too.
    enum ECOLOR : int {
        colBackgroundEnd = 3,    ///< Default background, second colour.
        colBackground = 120,     ///< Default background, first colour; caption and axis ground.
        colGrid = 121,           ///< Grid lines.
        colLabel = 131,          ///< Label text.
        colLabelBack = 132,      ///< Ground behind label text.
        colTimeTrace = 133,      ///< Time diagram: traces.
        colTimeMarker = 134,     ///< Time diagram: start markers of traces.
        colTimeBackground = 135, ///< Time diagram: background gradient, first colour.
        colTimeBackgroundEnd = 136,
        colEyeTrace = 137,      ///< Eye diagram: traces.
        colEyeBackground = 138, ///< Eye diagram: background gradient, first colour.
        colEyeBackgroundEnd = 139,
        colIQPoint = 140,      ///< IQ diagram: points.
        colIQBackground = 141, ///< IQ diagram: background gradient, first colour.
        colIQBackgroundEnd = 142,
    };

    virtual ~IColorBase();
    /// The colour behind a number; the reference is valid for any number and stays valid.
    virtual QColor& operator[](ECOLOR number) = 0;
};
