// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/glwidgets/YAxisHandler.h"

#include "platform/glbase/AxisLabelBoxes.h"
#include "platform/glbase/GLCommonWidget.h"
#include "platform/glbase/GLFrameWidget.h"
#include "platform/glbase/GLPainter.h"
#include "platform/glbase/KeptPixels.h"
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
#include <utility>
#include <vector>

namespace {

constexpr int minStripWidth = 44;

} // namespace

namespace {

/// All that the labels look like.
struct Look
{
    std::vector<AxisLabelBox> labels;
    QFont font;
    QColor text;
    QColor ground;

    bool operator==(const Look& other) const
    {
        return labels == other.labels && font == other.font && text == other.text &&
               ground == other.ground;
    }
    void Draw(GLPainter& painter) const
    {
        painter.save();
        painter.setPen(QPen(text));
        for (const AxisLabelBox& label : labels) {
            painter.drawHLine(label.mark.left(), label.mark.right(), label.mark.top(), text);
            if (label.box.isEmpty())
                continue;
            painter.fillRect(label.box, ground);
            painter.drawText(label.box, Qt::AlignCenter, label.text);
        }
        painter.restore();
    }
};

} // namespace

struct YAxisHandler::Private
{
    explicit Private(YAxisHandler& axis)
        : zoom(axis)
    {}
    QPointer<GLCommonWidget> widget;
    AxisZoom zoom;
    Look look; // as drawn last
    KeptPixels pixels;
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
                                    AxisLabelBox::extraWidth);
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
    if (event->button() != Qt::LeftButton || event->pos().x() >= StripWidth())
        return false;
    d->zoom.StartDrag(event->pos().y());
    return true;
}

bool YAxisHandler::mouseMove(GLCommonWidget*, QMouseEvent* event)
{
    if (!event->buttons().testFlag(Qt::LeftButton))
        d->zoom.EndDrag();
    d->zoom.Drag(event->pos().y());
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
    if (event->button() != Qt::LeftButton || event->pos().x() >= StripWidth())
        return false;
    d->zoom.DoubleClick(*event);
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
    if (!painter.isActive())
        return;
    const axisDefinition& axis = XPixelMap()->GetAxisDefinition();
    ColorSet& colors = ColorSet::Instance();
    Look look{axisLabelBoxes(axis, axis.GetTicks(), painter.font(), widget->rect()), painter.font(),
              colors[IColorBase::colLabel], colors[IColorBase::colLabelBack]};
    look.ground.setAlpha(AxisLabelBox::groundAlpha);
    if (!(look == d->look)) {
        d->look = std::move(look);
        d->pixels.Forget();
    }
    std::vector<QRect> places;
    constexpr int beyond = 2; // for glyphs larger than their advance
    for (const AxisLabelBox& label : d->look.labels)
        places.push_back((label.mark | label.box).adjusted(-beyond, -beyond, beyond, beyond));
    painter.drawKept(d->pixels, places, [&] { d->look.Draw(painter); });
}

void YAxisHandler::RequestRepaint()
{
    if (d->widget)
        d->widget->update();
}
