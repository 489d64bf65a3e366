// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/glwidgets/YAxisHandler.h"

#include "platform/glbase/GLCommonWidget.h"
#include "platform/glbase/GLFrameWidget.h"
#include "platform/glbase/GLPainter.h"
#include "platform/glwidgets/AxisZoom.h"
#include "platform/gui/ColorSet.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QFontMetrics>
#include <QMouseEvent>
#include <QPainter>
#include <QResizeEvent>
#include <QWheelEvent>

#include <algorithm>

namespace {

constexpr int minStripWidth = 44;
constexpr int labelMargin = 4;
constexpr int tickLength = 4;
constexpr int groundAlpha = 170; // traces behind the labels stay visible

} // namespace

struct YAxisHandler::Private
{
    explicit Private(YAxisHandler& axis)
        : zoom(axis)
    {}
    QPointer<GLCommonWidget> widget;
    AxisZoom zoom;
};

YAxisHandler::YAxisHandler(int)
    : AxisHandler(axisDefinition::Orientation::Vertical)
    , d(std::make_unique<Private>(*this))
{}

YAxisHandler::~YAxisHandler() = default;

void YAxisHandler::SetRange(double start, double stop, short) { SetRange(start, stop); }

void YAxisHandler::resizeEvent(QResizeEvent* event) { SetLength(event->size().height()); }

int YAxisHandler::StripWidth() const
{
    const QFontMetrics metrics(QApplication::font());
    const axisDefinition& axis = XPixelMap()->GetAxisDefinition();
    int width = minStripWidth;
    for (const axisDefinition::Tick& tick : axis.GetTicks())
        width = std::max(width, metrics.horizontalAdvance(axis.Label(tick.value)) +
                                    2 * labelMargin + tickLength);
    return width;
}

void YAxisHandler::SetUnitText(QString unit) { m_unitText = std::move(unit); }

QMenu* YAxisHandler::getContextMenu(QContextMenuEvent* event, GLCommonWidget* widget, int)
{
    if (!event || event->x() >= StripWidth())
        return nullptr;
    const GLCommonWidget* host = widget ? widget : d->widget.data();
    return d->zoom.ResetMenu(host ? host->GetFrameWidget() : nullptr,
                             QCoreApplication::translate("YAxisHandler", "Reset Zoom"));
}

void YAxisHandler::contextMenuClosed() {}

bool YAxisHandler::mousePress(GLCommonWidget*, QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || event->x() >= StripWidth())
        return false;
    d->zoom.StartDrag(event->y());
    return true;
}

bool YAxisHandler::mouseMove(GLCommonWidget*, QMouseEvent* event)
{
    if (!event->buttons().testFlag(Qt::LeftButton))
        d->zoom.EndDrag();
    d->zoom.Drag(event->y());
    return d->zoom.IsDragging();
}

bool YAxisHandler::mouseRelease(GLCommonWidget*, QMouseEvent* event)
{
    const bool wasDragging = d->zoom.IsDragging();
    if (event->button() == Qt::LeftButton)
        d->zoom.EndDrag();
    return wasDragging;
}

bool YAxisHandler::mouseDoubleClick(GLCommonWidget*, QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || event->x() >= StripWidth())
        return false;
    ResetZoom();
    return true;
}

bool YAxisHandler::wheel(GLCommonWidget*, QWheelEvent* event)
{
    if (event->position().x() >= StripWidth())
        return false;
    d->zoom.Wheel(event->position().toPoint().y(), *event);
    return true;
}

void YAxisHandler::leave(GLCommonWidget*) {}

void YAxisHandler::attached(GLCommonWidget* widget)
{
    d->widget = widget;
    d->zoom.EndDrag();
    if (widget)
        SetLength(widget->rect().height());
}

void YAxisHandler::drawOverlay(GLCommonWidget* widget, GLPainter& painter)
{
    if (!painter.painter())
        return;
    const axisDefinition& axis = XPixelMap()->GetAxisDefinition();
    const QFontMetrics metrics(painter.painter()->font());
    const int height = metrics.height();
    const QRect area = widget->rect();
    ColorSet& colors = ColorSet::Instance();
    QColor ground = colors[IColorBase::colLabelBack];
    ground.setAlpha(groundAlpha);

    painter.save();
    painter.setPen(QPen(colors[IColorBase::colLabel]));
    QRect previous;
    for (const axisDefinition::Tick& tick : axis.GetTicks()) {
        // The start of the range lies one row below the last: it has no line, but its label fits.
        if (tick.pixel < area.top() || tick.pixel > area.bottom() + 1)
            continue;
        const QString label = axis.Label(tick.value);
        const int width = metrics.horizontalAdvance(label);
        QRect box(tickLength, tick.pixel - height / 2, width + 2 * labelMargin, height);
        box.moveTop(std::max(area.top(), std::min(box.top(), area.bottom() + 1 - height)));
        painter.drawHLine(area.left(), tickLength - 1, tick.pixel, colors[IColorBase::colLabel]);
        if (box.height() > area.height() || box.right() > area.right() || box.intersects(previous))
            continue;
        painter.fillRect(box, ground);
        painter.drawText(box, Qt::AlignCenter, label);
        previous = box;
    }
    painter.restore();
}

void YAxisHandler::RequestRepaint()
{
    if (d->widget)
        d->widget->update();
}
