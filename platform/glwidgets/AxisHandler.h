// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/base/Observable.h"
#include "platform/glwidgets/PixelMap.h"

#include <memory>

/// The visible range of an axis. Any range is taken as it is: reversed, empty, huge or NaN. Each
/// change notifies observers with ccContent and asks for one repaint; setting the same range again
/// does nothing.
///
/// The user's zoom and pan change the visible range only. ResetZoom returns to the last range set
/// by program.
class ORVANE_PLATFORM_API AxisHandler : public Observable
{
public:
    /// The range starts as -1 to 1.
    explicit AxisHandler(axisDefinition::Orientation orientation);
    ~AxisHandler() override;

    ///@{
    /// One end of the visible range, with the user's zoom.
    double GetStartValue() const;
    double GetStopValue() const;
    ///@}
    ///@{
    /// Sets one end, or both ends at once, as the range to which ResetZoom returns.
    void SetStartValue(double start);
    void SetStopValue(double stop);
    void SetRange(double start, double stop);
    ///@}

    ///@{
    /// Maps values to pixels and back, see axisDefinition.
    double PixelToValue(int pixel) const;
    int ValueToPixel(double value) const;
    ///@}
    /// The axis's pixel map, of either orientation. Never null; the same object for the life of the
    /// axis.
    std::shared_ptr<values::PixelMap> XPixelMap() const;
    /// Length of the axis in logical pixels.
    void SetLength(int pixels);

    /// Which axes a zoom changes: this one and its partner (see JoinZooms), or this one alone.
    enum class Zooms { Joined, Alone };
    /// Joins the zooms of two axes with the same unit: a zoom of one also zooms the other, about
    /// its middle, and so does a reset. Keeps no axis alive.
    static void JoinZooms(const std::shared_ptr<AxisHandler>& one,
                          const std::shared_ptr<AxisHandler>& other);

    /// Zooms by a factor (below 1: closer) about the value at a pixel. Does nothing when the axis,
    /// or the new range of either axis, is not usable.
    void ZoomAt(int pixel, double factor, Zooms zooms = Zooms::Joined);
    /// Pans: moves the values with the pointer from one pixel to another. start and stop are the
    /// range at the start of the drag.
    void PanFrom(double start, double stop, int fromPixel, int toPixel);
    /// Returns to the range that was set last by program.
    void ResetZoom(Zooms zooms = Zooms::Joined);
    /// Whether the user's zoom or pan is in effect.
    bool IsZoomed() const;

protected:
    /// Called when the range changed: request a repaint of the widgets that show it.
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
