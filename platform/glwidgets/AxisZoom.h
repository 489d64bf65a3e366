// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

class AxisHandler;
class QMenu;
class QMouseEvent;
class QWheelEvent;
class QWidget;

/// The user's side of an axis: wheel and drag. Positions are pixels along the axis.
class AxisZoom
{
public:
    explicit AxisZoom(AxisHandler& axis)
        : m_axis(axis)
    {}

    /// One notch zooms by a quarter about the pixel; away from the user is closer.
    void Wheel(int pixel, const QWheelEvent& event);
    void StartDrag(int pixel);
    void Drag(int pixel);
    void EndDrag() { m_isDragging = false; }
    bool IsDragging() const { return m_isDragging; }

private:
    AxisHandler& m_axis;
    bool m_isDragging = false;
    int m_fromPixel = 0;
    double m_start = 0.0; // range when the drag began
    double m_stop = 0.0;
};
