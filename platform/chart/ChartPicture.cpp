// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/chart/ChartPicture.h"

#include "platform/base/AxisPixel.h"
#include "platform/base/Saturate.h"

#include <cmath>

bool ChartAxis::IsUsable() const
{
    return length >= 2 && std::isfinite(Factor()) && std::isfinite(Centre()) && Factor() != 0.0;
}

int ChartAxis::Pixel(double value) const
{
    const int offset = truncateToPixel(axisPixel(value, start, stop, length));
    return vertical ? first + length - 1 - offset : first + offset;
}

double ChartAxis::Factor() const
{
    const double factor = (length - 1) / (stop - start);
    return vertical ? -factor : factor;
}

double ChartAxis::Centre() const { return first + 0.5 - (vertical ? stop : start) * Factor(); }

bool ChartAxis::operator==(const ChartAxis& other) const
{
    return start == other.start && stop == other.stop && first == other.first &&
           length == other.length && vertical == other.vertical;
}

bool ChartPicture::Fill::operator==(const Fill& other) const
{
    return rect == other.rect && from == other.from && to == other.to;
}

bool ChartPicture::Text::operator==(const Text& other) const
{
    return rect == other.rect && text == other.text && font == other.font && color == other.color;
}

bool ChartPicture::Curve::IsContinuationOf(const Curve& earlier) const
{
    return x == earlier.x && y == earlier.y && area == earlier.area && color == earlier.color &&
           lineWidth == earlier.lineWidth && xData == earlier.xData && yData == earlier.yData &&
           xState.generation == earlier.xState.generation &&
           yState.generation == earlier.yState.generation &&
           xState.end - earlier.xState.end == yState.end - earlier.yState.end &&
           xState.first - earlier.xState.first == yState.first - earlier.yState.first &&
           xState.end - xState.first == yState.end - yState.first;
}

bool ChartPicture::Curve::operator==(const Curve& other) const
{
    return IsContinuationOf(other) && xState == other.xState && yState == other.yState;
}
