// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/glwidgets/XAxisWidget.h"

#include "platform/glbase/GLFrameWidget.h"
#include "platform/glbase/GLPainter.h"
#include "platform/glbase/TextWidths.h"
#include "platform/glwidgets/AxisZoom.h"
#include "platform/gui/ColorSet.h"

#include <QApplication>
#include <QFontMetrics>
#include <QMouseEvent>
#include <QPainter>
#include <QResizeEvent>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

namespace {

constexpr int tickLength = 4;
constexpr int labelGap = 2; // between tick mark and label
constexpr int minLabelDistance = 8;
constexpr int padding = 4; // around the read-out

} // namespace

/// State of the user's actions, and the provider of the axis's menu.
struct XAxisWidget::Private : IHasContextMenu
{
    explicit Private(XAxisWidget& axis)
        : zoom(axis)
    {}
    QMenu* getContextMenu(QContextMenuEvent*, GLCommonWidget* widget, int) override
    {
        if (fixedRange)
            return nullptr;
        return zoom.ResetMenu(widget ? widget->GetFrameWidget() : nullptr,
                              XAxisWidget::tr("Reset Zoom"));
    }
    void contextMenuClosed() override {}

    AxisZoom zoom;
    std::optional<int> pointer;                          // column under the pointer
    std::optional<std::pair<double, double>> fixedRange; // shown whatever is set
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

void XAxisWidget::FixShownRange(double start, double stop)
{
    d->zoom.EndDrag();
    d->fixedRange = {start, stop};
    update();
}

void XAxisWidget::ReleaseShownRange()
{
    d->fixedRange.reset();
    update();
}

void XAxisWidget::RequestRepaint()
{
    // All widgets that follow this axis are in the same frame.
    if (GetFrameWidget() && !GetFrameWidget()->IsPaintingPicture())
        GetFrameWidget()->UpdateContent();
    emit si_rangeChanged();
}

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
        , font(target.font())
        , area(target.area())
    {}

    /// Place of a text under a column, moved inside the widget if it fits there.
    QRect TextBox(int column, const QString& text, int sideMargin) const
    {
        const int width = textWidths::of(font, text) + 2 * sideMargin;
        const int left = std::min(column - width / 2, area.right() + 1 - width);
        return {std::max(area.left(), left), tickLength + labelGap, width,
                QFontMetrics(font).height()};
    }

    /// Draws tick marks and as many labels as fit at even distances. Labels at the borders are
    /// drawn if the others leave room; none is drawn in the given area.
    void DrawTicks(const axisDefinition& axis, const QRect& taken, const QColor& color)
    {
        const std::vector<Label> labels = Labels(axis);
        std::int64_t every = 1;
        for (std::size_t i = 0; !Fit(labels, every); ++i)
            every = i % 3 == 1 ? every / 2 * 5 : every * 2; // 1, 2, 5, 10 and so on

        painter.setPen(QPen(color));
        std::vector<QRect> drawn;
        for (const bool atBorder : {false, true}) {
            for (const Label& label : labels) {
                painter.drawVLine(label.column, 0, tickLength - 1, color);
                const bool isApart =
                    std::none_of(drawn.begin(), drawn.end(),
                                 [&label](const QRect& box) { return label.IsNear(box); });
                if (label.index % every != 0 || label.isAtBorder != atBorder || !isApart ||
                    label.box.intersects(taken) || label.box.width() > area.width())
                    continue;
                painter.drawText(label.box, Qt::AlignCenter, label.text);
                drawn.push_back(label.box);
            }
        }
    }

    GLPainter& painter;
    QFont font;
    QRect area;

private:
    struct Label
    {
        std::int64_t index; // of the tick, counted from 0 of the axis
        int column;
        QString text;
        QRect box;
        bool isAtBorder; // moved to stay inside

        bool IsNear(const QRect& other) const
        {
            return box.adjusted(-minLabelDistance, 0, minLabelDistance, 0).intersects(other);
        }
    };

    std::vector<Label> Labels(const axisDefinition& axis) const
    {
        const std::vector<axisDefinition::Tick>& ticks = axis.GetTicks();
        const double step = ticks.size() > 1 ? std::abs(ticks[1].value - ticks[0].value) : 1.0;
        std::vector<Label> labels;
        for (const axisDefinition::Tick& tick : ticks) {
            if (tick.pixel < area.left() || tick.pixel > area.right())
                continue;
            const QString text = axis.Label(tick.value);
            const QRect box = TextBox(tick.pixel, text, 1);
            const std::int64_t index = ticks.size() > 1 ? std::llround(tick.value / step) : 0;
            labels.push_back(
                {index, tick.pixel, text, box, box.left() != tick.pixel - box.width() / 2});
        }
        return labels;
    }

    /// Whether labels at every n-th tick do not overlap, those at the borders left aside.
    static bool Fit(const std::vector<Label>& labels, std::int64_t every)
    {
        const Label* previous = nullptr;
        for (const Label& label : labels) {
            if (label.index % every != 0 || label.isAtBorder)
                continue;
            if (previous && label.IsNear(previous->box))
                return false;
            previous = &label;
        }
        return true;
    }
};

} // namespace

void XAxisWidget::paintEvent(QPaintEvent* event)
{
    GLPainter painter(GetFrameWidget());
    if (!painter.isActive())
        return;
    const axisDefinition& own = XPixelMap()->GetAxisDefinition();
    std::optional<axisDefinition> fixed;
    if (d->fixedRange && *d->fixedRange != std::pair(own.GetStart(), own.GetStop())) {
        fixed = own;
        fixed->SetRange(d->fixedRange->first, d->fixedRange->second);
    }
    const axisDefinition& axis = fixed ? *fixed : own;
    ColorSet& colors = ColorSet::Instance();
    const QColor text = colors[IColorBase::colLabel];
    Picture picture(painter);
    painter.fillRect(picture.area, colors[IColorBase::colBackground]);

    if (d->pointer && axis.IsUsable() && !GetFrameWidget()->IsPaintingPicture()) {
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
    if (event->button() == Qt::LeftButton && !d->fixedRange)
        d->zoom.DoubleClick(*event);
}

void XAxisWidget::mouseMoveEvent(QMouseEvent* event)
{
    if (!event->buttons().testFlag(Qt::LeftButton))
        d->zoom.EndDrag();
    d->zoom.Drag(event->pos().x());
    d->pointer = event->pos().x();
    update();
}

void XAxisWidget::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton && !d->fixedRange)
        d->zoom.StartDrag(event->pos().x());
}

void XAxisWidget::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        d->zoom.EndDrag();
}

void XAxisWidget::wheelEvent(QWheelEvent* event)
{
    event->setAccepted(!d->fixedRange);
    if (!d->fixedRange)
        d->zoom.Wheel(event->position().toPoint().x(), *event);
}

void XAxisWidget::leaveEvent(QEvent*)
{
    d->pointer.reset();
    update();
}
