// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/glbase/axisDefinition.h"

#include <QRect>
#include <QString>

#include <vector>

class QFont;

/// Place of a tick's label inside a plot, in logical pixels.
struct AxisLabelBox
{
    static constexpr int tickLength = 4;
    static constexpr int margin = 4; ///< Left and right of the text.
    /// Width of a box beside its text.
    static constexpr int extraWidth = tickLength + 2 * margin;
    static constexpr int groundAlpha = 170; ///< Traces behind the labels stay visible.

    QRect mark; ///< The tick at the border of the plot, one pixel high.
    QRect box;  ///< Ground of the text; empty when there is no room for it.
    QString text;

    bool operator==(const AxisLabelBox& other) const
    {
        return mark == other.mark && box == other.box && text == other.text;
    }
};

/// Places the labels of a vertical axis along the left or right border of a plot. Ticks outside the
/// plot get none, except one in the row just below it.
/// @param axis  gives the texts.
/// @param ticks  from start to stop.
std::vector<AxisLabelBox> axisLabelBoxes(const axisDefinition& axis,
                                         const std::vector<axisDefinition::Tick>& ticks,
                                         const QFont& font, const QRect& area,
                                         bool atRight = false);
