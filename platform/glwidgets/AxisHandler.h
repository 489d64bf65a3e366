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

    /// Which axes the user zooms: this one and the one joined to it, or this one alone.
    enum class Zooms { Joined, Alone };
    /// Joins the zooms of two axes of one picture whose units are the same: a zoom of either takes
    /// the other along, about its middle, and so does undoing it. Keeps neither alive.
    static void JoinZooms(const std::shared_ptr<AxisHandler>& one,
                          const std::shared_ptr<AxisHandler>& other);

    /// User's zoom by a factor (below 1: closer) about the value at a pixel. Nothing on an axis
    /// that is not usable, or when the result would not be usable, of either.
    void ZoomAt(int pixel, double factor, Zooms zooms = Zooms::Joined);
    /// User's pan: the values move with the pointer from one pixel to the other, starting from the
    /// range given (the one at the start of the drag).
    void PanFrom(double start, double stop, int fromPixel, int toPixel);
    void ResetZoom(Zooms zooms = Zooms::Joined);
    bool IsZoomed() const;

protected:
    /// The range changed: ask for a repaint of whatever shows it.
    virtual void RequestRepaint() = 0;

private:
    struct Range
    {
        double start;
        double stop;
    };
    double Middle() const;
    Range ZoomedAbout(double value, double factor) const;
    std::shared_ptr<AxisHandler> Partner(Zooms zooms) const;
    void Apply(double start, double stop);

    std::shared_ptr<values::PixelMap> m_pixelMap;
    double m_programStart = -1.0;
    double m_programStop = 1.0;
    std::weak_ptr<AxisHandler> m_partner; // whose zoom is joined
};
