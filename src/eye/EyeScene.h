// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/chart/CChartDisplay.h"
#include "platform/chart/ChartObjects.h"

#include <QSize>

#include <cstddef>

class XAxisWidget;

/// The chart scene of an eye diagram: named objects for ground, grid, labels and curve.
namespace eyeScene {

/// The object of a name; null when there is none of this type.
template<class T>
OndoChartDisplay::CSmartPtr<T> object(const OndoChartDisplay::CChartDisplay& display,
                                      const char* name)
{
    return OndoChartDisplay::CSmartPtr<T>(display.FindBaseObject(name));
}

/// Fills an empty display.
/// @param capacity  number of samples that the curve keeps.
void build(OndoChartDisplay::CChartDisplay& display, std::size_t capacity);
/// Sets how many samples the curve keeps, the newest.
void setCapacity(OndoChartDisplay::CChartDisplay& display, std::size_t capacity);

/// State of the diagram that a paint needs.
struct Look
{
    QSize size;
    bool showGrid;
    double xSpan;
};
/// Updates size, colours, font, range and grid before a paint.
void update(OndoChartDisplay::CChartDisplay& display, const Look& look, const XAxisWidget& xAxis);

} // namespace eyeScene
