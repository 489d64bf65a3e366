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

/// Zoom and pan of an axis by wheel, drag and menu. Positions are pixels along the axis.
class AxisZoom
{
public:
    explicit AxisZoom(AxisHandler& axis);
    ~AxisZoom();
    AxisZoom(const AxisZoom&) = delete;
    AxisZoom& operator=(const AxisZoom&) = delete;

    /// Zooms by a quarter a notch about the pixel; away from the user is closer. With Shift, a
    /// partner of the axis keeps its range.
    void Wheel(int pixel, const QWheelEvent& event);
    void DoubleClick(const QMouseEvent& event);
    void StartDrag(int pixel);
    void Drag(int pixel);
    void EndDrag() { m_isDragging = false; }
    bool IsDragging() const { return m_isDragging; }

    /// Menu with one entry, which resets the zoom and is enabled while there is one. Created by the
    /// first call, deleted with its parent or with this object. The entry has the text of the last
    /// call.
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
