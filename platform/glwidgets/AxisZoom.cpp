// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/glwidgets/AxisZoom.h"

#include "platform/glwidgets/AxisHandler.h"

#include <QMenu>
#include <QMouseEvent>
#include <QWheelEvent>

#include <cmath>

AxisZoom::AxisZoom(AxisHandler& axis)
    : m_axis(axis)
{}

AxisZoom::~AxisZoom() { delete m_menu; }

namespace {

AxisHandler::Zooms zoomsOf(const QInputEvent& event)
{
    return event.modifiers().testFlag(Qt::ShiftModifier) ? AxisHandler::Zooms::Alone
                                                         : AxisHandler::Zooms::Joined;
}

} // namespace

void AxisZoom::Wheel(int pixel, const QWheelEvent& event)
{
    constexpr double notch = 120.0; // Qt's eighths of a degree for one notch
    constexpr double zoomPerNotch = 1.25;
    // Some systems turn the wheel sideways while Shift is down.
    const QPoint delta = event.angleDelta();
    const int turned = delta.y() != 0 ? delta.y() : delta.x();
    m_axis.ZoomAt(pixel, std::pow(zoomPerNotch, -(turned / notch)), zoomsOf(event));
}

void AxisZoom::DoubleClick(const QMouseEvent& event) { m_axis.ResetZoom(zoomsOf(event)); }

void AxisZoom::StartDrag(int pixel)
{
    m_isDragging = true;
    m_fromPixel = pixel;
    m_start = m_axis.GetStartValue();
    m_stop = m_axis.GetStopValue();
}

void AxisZoom::Drag(int pixel)
{
    if (m_isDragging)
        m_axis.PanFrom(m_start, m_stop, m_fromPixel, pixel);
}

QMenu* AxisZoom::ResetMenu(QWidget* parent, const QString& entry)
{
    if (!m_menu) {
        m_menu = new QMenu(parent);
        // Later, because an observer of the axis may destroy it and the menu's parent, which must
        // not happen while the menu runs its own entry.
        QObject::connect(
            m_menu->addAction(QString()), &QAction::triggered, &m_receiver,
            [this] { m_axis.ResetZoom(); }, Qt::QueuedConnection);
    }
    m_menu->actions().front()->setText(entry);
    m_menu->actions().front()->setEnabled(m_axis.IsZoomed());
    return m_menu;
}
