// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/glbase/AxisLabelBoxes.h"

#include "platform/glbase/TextWidths.h"

#include <QFontMetrics>

#include <algorithm>

std::vector<AxisLabelBox> axisLabelBoxes(const axisDefinition& axis,
                                         const std::vector<axisDefinition::Tick>& ticks,
                                         const QFont& font, const QRect& area, bool atRight)
{
    constexpr int tickLength = AxisLabelBox::tickLength;
    const QFontMetrics metrics(font);
    const int height = metrics.height();
    std::vector<AxisLabelBox> result;
    QRect previous;
    for (const axisDefinition::Tick& tick : ticks) {
        // The start of a range may lie one row below the last: it has no line, but its label fits.
        if (tick.pixel < area.top() || tick.pixel > area.bottom() + 1)
            continue;
        const int markX = atRight ? area.right() + 1 - tickLength : area.left();
        AxisLabelBox label{QRect(markX, tick.pixel, tickLength, 1), {}, axis.Label(tick.value)};
        const int width = textWidths::of(font, metrics, label.text) + 2 * AxisLabelBox::margin;
        QRect box(atRight ? markX - width : markX + tickLength, tick.pixel - height / 2, width,
                  height);
        box.moveTop(std::max(area.top(), std::min(box.top(), area.bottom() + 1 - height)));
        if (height <= area.height() && box.left() >= area.left() && box.right() <= area.right() &&
            !box.intersects(previous)) {
            label.box = box;
            previous = box;
        }
        result.push_back(label);
    }
    return result;
}
