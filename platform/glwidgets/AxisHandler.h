// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/base/Observable.h"
#include "platform/glwidgets/PixelMap.h"

#include <memory>

/// The visible range of an axis. Ranges are kept as given: reversed, empty, huge or NaN; nothing is
/// swapped, clamped or rejected. Every real change of the range notifies observers with ccContent
/// and asks for one repaint; setting what is set already does nothing.
///
/// A range set by program is remembered; the user's zoom and pan change the visible range only, and
/// ResetZoom returns to the last range set by program.
class ORVANE_PLATFORM_API AxisHandler : public Observable
{
public:
    /// The range starts as -1 to 1.
    explicit AxisHandler(axisDefinition::Orientation orientation);
    ~AxisHandler() override;

    double GetStartValue() const;
    double GetStopValue() const;
    void SetStartValue(double start);
    void SetStopValue(double stop);
    void SetRange(double start, double stop);

    /// See axisDefinition for the mapping.
    double PixelToValue(int pixel) const;
    int ValueToPixel(double value) const;
    /// The axis's pixel map (of either orientation); never null, the same for the axis's life.
    std::shared_ptr<values::PixelMap> XPixelMap() const;
    /// Length of the axis in logical pixels.
    void SetLength(int pixels);

    /// User's zoom by a factor (below 1: closer) about the value at a pixel. Nothing on an axis
    /// that is not usable, or when the result would not be usable.
    void ZoomAt(int pixel, double factor);
    /// User's pan: the values move with the pointer from one pixel to the other, starting from the
    /// range given (the one at the start of the drag).
    void PanFrom(double start, double stop, int fromPixel, int toPixel);
    void ResetZoom();
    bool IsZoomed() const;

protected:
    /// The range changed: ask for a repaint of whatever shows it.
    virtual void RequestRepaint() = 0;

private:
    void Apply(double start, double stop);

    std::shared_ptr<values::PixelMap> m_pixelMap;
    double m_programStart = -1.0;
    double m_programStop = 1.0;
};
