// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>
#include <QPointer>

class AxisHandler;
class QMenu;
class QMouseEvent;
class QString;
class QWheelEvent;
class QWidget;

/// The user's side of an axis: wheel, drag and menu. Positions are pixels along the axis.
class AxisZoom
{
public:
    explicit AxisZoom(AxisHandler& axis);
    ~AxisZoom();
    AxisZoom(const AxisZoom&) = delete;
    AxisZoom& operator=(const AxisZoom&) = delete;

    /// One notch zooms by a quarter about the pixel; away from the user is closer. Shift zooms this
    /// axis alone, where it is joined to another.
    void Wheel(int pixel, const QWheelEvent& event);
    void DoubleClick(const QMouseEvent& event);
    void StartDrag(int pixel);
    void Drag(int pixel);
    void EndDrag() { m_isDragging = false; }
    bool IsDragging() const { return m_isDragging; }

    /// Menu with one entry, which returns to the range set by program and is enabled while there is
    /// a zoom. Made at the first call; it goes with its parent or with this object. The entry has
    /// the text of the last call.
    QMenu* ResetMenu(QWidget* parent, const QString& entry);

private:
    AxisHandler& m_axis;
    bool m_isDragging = false;
    int m_fromPixel = 0;
    double m_start = 0.0; // range when the drag began
    double m_stop = 0.0;
    QPointer<QMenu> m_menu;
    QObject m_receiver; // of the menu: ends its connection
};
