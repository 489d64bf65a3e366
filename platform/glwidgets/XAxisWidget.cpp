// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/glwidgets/XAxisWidget.h"

#include "platform/glbase/GLFrameWidget.h"
#include "platform/glbase/GLPainter.h"
#include "platform/glwidgets/AxisZoom.h"
#include "platform/gui/ColorSet.h"

#include <QApplication>
#include <QFontMetrics>
#include <QMouseEvent>
#include <QPainter>
#include <QResizeEvent>
#include <QWheelEvent>

#include <algorithm>
#include <optional>

namespace {

constexpr int tickLength = 4;
constexpr int labelGap = 2; // between tick mark and label
constexpr int minLabelDistance = 8;
constexpr int padding = 4; // around the read-out

} // namespace

/// What the axis keeps of its user; offers its menu to the widget.
struct XAxisWidget::Private : IHasContextMenu
{
    explicit Private(XAxisWidget& axis)
        : zoom(axis)
    {}
    QMenu* getContextMenu(QContextMenuEvent*, GLCommonWidget* widget, int) override
    {
        return zoom.ResetMenu(widget ? widget->GetFrameWidget() : nullptr,
                              XAxisWidget::tr("Reset Zoom"));
    }
    void contextMenuClosed() override {}

    AxisZoom zoom;
    std::optional<int> pointer; // column under the pointer
};

XAxisWidget::XAxisWidget(const char* name, GLLayout* layout)
    : GLCommonWidget(name ? name : "", layout)
    , AxisHandler(axisDefinition::Orientation::Horizontal)
    , d(std::make_shared<Private>(*this))
{
    addContextMenu(std::weak_ptr<IHasContextMenu>(d), zoAxis);
}

XAxisWidget::~XAxisWidget() = default;

int XAxisWidget::FixedHeight() const
{
    return tickLength + 2 * labelGap + QFontMetrics(QApplication::font()).height() + padding;
}

void XAxisWidget::RequestRepaint() { update(); }

void XAxisWidget::resizeEvent(QResizeEvent* event)
{
    GLCommonWidget::resizeEvent(event);
    SetLength(event->size().width());
}

namespace {

/// One painting of an X axis.
struct Picture
{
    explicit Picture(GLPainter& target)
        : painter(target)
        , metrics(target.painter()->font())
        , area(target.area())
    {}

    /// Place of a text under a column, inside the widget where it fits.
    QRect TextBox(int column, const QString& text, int sideMargin) const
    {
        const int width = metrics.horizontalAdvance(text) + 2 * sideMargin;
        const int left = std::min(column - width / 2, area.right() + 1 - width);
        return {std::max(area.left(), left), tickLength + labelGap, width, metrics.height()};
    }

    /// Tick marks with labels; none where it would come too near to the one before or to the area
    /// given.
    void DrawTicks(const axisDefinition& axis, const QRect& taken, const QColor& color)
    {
        painter.setPen(QPen(color));
        QRect previous;
        for (const axisDefinition::Tick& tick : axis.GetTicks()) {
            if (tick.pixel < area.left() || tick.pixel > area.right())
                continue;
            painter.drawVLine(tick.pixel, 0, tickLength - 1, color);
            const QString label = axis.Label(tick.value);
            const QRect box = TextBox(tick.pixel, label, 1);
            const QRect apart = box.adjusted(-minLabelDistance, 0, minLabelDistance, 0);
            if (box.width() > area.width() || apart.intersects(previous) || box.intersects(taken))
                continue;
            painter.drawText(box, Qt::AlignCenter, label);
            previous = box;
        }
    }

    GLPainter& painter;
    QFontMetrics metrics;
    QRect area;
};

} // namespace

void XAxisWidget::paintEvent(QPaintEvent* event)
{
    GLPainter painter(GetFrameWidget());
    if (!painter.painter())
        return;
    const axisDefinition& axis = XPixelMap()->GetAxisDefinition();
    ColorSet& colors = ColorSet::Instance();
    const QColor text = colors[IColorBase::colLabel];
    Picture picture(painter);
    painter.fillRect(picture.area, colors[IColorBase::colBackground]);

    if (d->pointer && axis.IsUsable()) {
        const QString readout = axis.LabelWithUnit(axis.PixelToValue(*d->pointer));
        const QRect box = picture.TextBox(*d->pointer, readout, padding);
        picture.DrawTicks(axis, box, text);
        painter.fillRect(box, colors[IColorBase::colGrid]);
        painter.drawVLine(*d->pointer, 0, box.top() - 1, colors[IColorBase::colTimeMarker]);
        painter.drawText(box, Qt::AlignCenter, readout);
    } else {
        picture.DrawTicks(axis, QRect(), text);
    }
    GLCommonWidget::paintEvent(event);
}

void XAxisWidget::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        ResetZoom();
}

void XAxisWidget::mouseMoveEvent(QMouseEvent* event)
{
    if (!event->buttons().testFlag(Qt::LeftButton))
        d->zoom.EndDrag();
    d->zoom.Drag(event->x());
    d->pointer = event->x();
    update();
}

void XAxisWidget::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        d->zoom.StartDrag(event->x());
}

void XAxisWidget::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        d->zoom.EndDrag();
}

void XAxisWidget::wheelEvent(QWheelEvent* event)
{
    d->zoom.Wheel(event->position().toPoint().x(), *event);
    event->accept();
}

void XAxisWidget::leaveEvent(QEvent*)
{
    d->pointer.reset();
    update();
}
