// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/glwidgets/XAxisWidget.h"

#include "platform/glbase/GLFrameWidget.h"
#include "platform/glbase/GLPainter.h"
#include "platform/glwidgets/AxisZoom.h"
#include "platform/gui/ColorSet.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QFontMetrics>
#include <QMenu>
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

/// Offers the axis's own menu to the widget.
class XAxisWidget::Menu : public IHasContextMenu
{
public:
    explicit Menu(XAxisWidget& axis)
        : m_axis(axis)
    {}
    ~Menu() override { delete m_menu; }
    QMenu* getContextMenu(QContextMenuEvent*, GLCommonWidget* widget, int) override
    {
        if (!m_menu) {
            m_menu = new QMenu(widget ? widget->GetFrameWidget() : nullptr);
            m_menu->addAction(XAxisWidget::tr("Reset Zoom"), &m_axis,
                              [this] { m_axis.ResetZoom(); });
        }
        m_menu->actions().front()->setEnabled(m_axis.IsZoomed());
        return m_menu;
    }
    void contextMenuClosed() override {}

private:
    XAxisWidget& m_axis;
    QPointer<QMenu> m_menu;
};

struct XAxisWidget::Private
{
    explicit Private(XAxisWidget& axis)
        : zoom(axis)
        , menu(std::make_shared<Menu>(axis))
    {}
    AxisZoom zoom;
    std::shared_ptr<Menu> menu;
    std::optional<int> pointer; // column under the pointer
};

XAxisWidget::XAxisWidget(const char* name, GLLayout* layout)
    : GLCommonWidget(name ? name : "", layout)
    , AxisHandler(axisDefinition::Orientation::Horizontal)
    , d(std::make_unique<Private>(*this))
{
    addContextMenu(std::weak_ptr<IHasContextMenu>(d->menu), zoAxis);
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

void XAxisWidget::paintEvent(QPaintEvent* event)
{
    GLPainter painter(GetFrameWidget());
    if (!painter.painter())
        return;
    const QRect area = rect();
    const axisDefinition& axis = XPixelMap()->GetAxisDefinition();
    const QFontMetrics metrics(painter.painter()->font());
    ColorSet& colors = ColorSet::Instance();
    const QColor text = colors[IColorBase::colLabel];
    painter.fillRect(area, colors[IColorBase::colBackground]);

    const auto labelBox = [&](int column, const QString& label) {
        const int width = metrics.horizontalAdvance(label);
        QRect box(column - width / 2, tickLength + labelGap, width, metrics.height());
        box.moveLeft(std::max(area.left() + 1, std::min(box.left(), area.right() - width)));
        return box;
    };

    // Where a label may not lie: under the read-out, and under the label drawn before it.
    QRect readoutBox;
    QString readout;
    if (d->pointer && axis.IsUsable()) {
        readout = axis.LabelWithUnit(axis.PixelToValue(*d->pointer));
        readoutBox = labelBox(*d->pointer, readout).adjusted(-padding, 0, padding, 0);
        readoutBox.moveLeft(std::max(
            area.left(), std::min(readoutBox.left(), area.right() + 1 - readoutBox.width())));
    }
    painter.setPen(QPen(text));
    QRect previous;
    for (const axisDefinition::Tick& tick : axis.GetTicks()) {
        if (tick.pixel < area.left() || tick.pixel > area.right())
            continue;
        painter.drawVLine(tick.pixel, 0, tickLength - 1, text);
        const QRect box = labelBox(tick.pixel, axis.Label(tick.value));
        const QRect clear = box.adjusted(-minLabelDistance, 0, minLabelDistance, 0);
        if (box.width() >= area.width() || clear.intersects(previous) || box.intersects(readoutBox))
            continue;
        painter.drawText(box, Qt::AlignCenter, axis.Label(tick.value));
        previous = box;
    }
    if (!readout.isEmpty()) {
        painter.fillRect(readoutBox, colors[IColorBase::colGrid]);
        painter.drawVLine(*d->pointer, 0, readoutBox.top() - 1, colors[IColorBase::colTimeMarker]);
        painter.drawText(readoutBox, Qt::AlignCenter, readout);
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
