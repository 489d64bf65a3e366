// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/glwidgets/StandardMeasRuler.h"

#include "platform/glbase/GLFrameWidget.h"
#include "platform/glbase/GLPainter.h"
#include "platform/glbase/IMouseHandler.h"
#include "platform/glwidgets/AxisHandler.h"
#include "platform/glwidgets/CaptionWidget.h"
#include "platform/glwidgets/ScanBufferWidgetBase.h"
#include "platform/glwidgets/YAxisHandler.h"
#include "platform/gui/ColorSet.h"

#include <QMouseEvent>
#include <QPointer>

#include <algorithm>

namespace {

constexpr int lineAlpha = 150; // traces under the lines stay visible

const QString keys[] = {QStringLiteral("ruler1"), QStringLiteral("ruler2")};

/// A value, or a distance, along an axis.
QString textOf(const AxisHandler& axis, double value)
{
    const QString label = axis.XPixelMap()->GetAxisDefinition().LabelWithUnit(value);
    const auto* withUnit = dynamic_cast<const YAxisHandler*>(&axis);
    return (withUnit ? label + QLatin1Char(' ') + withUnit->UnitText() : label).trimmed();
}

/// Width of the widest text of the axis, so that the fields of the caption bar do not move.
int fieldWidth(const AxisHandler& axis)
{
    const double start = axis.GetStartValue();
    const double stop = axis.GetStopValue();
    int width = 0;
    for (const double value : {start, stop, stop - start, start - stop})
        width = std::max(width, int(textOf(axis, value).size()));
    return width;
}

} // namespace

class StandardMeasRuler::Handler : public IMouseHandler
{
public:
    struct Cursor
    {
        double x;
        double y;
    };

    ~Handler() override { QObject::disconnect(m_escape); }

    void Init(const std::shared_ptr<ScanBufferWidgetBase>& plot,
              const std::shared_ptr<AxisHandler>& xAxis, const std::shared_ptr<AxisHandler>& yAxis,
              QWidget* caption)
    {
        Leave();
        m_plot = plot;
        m_xAxis = xAxis;
        m_yAxis = yAxis;
        m_caption = qobject_cast<CaptionWidget*>(caption);
        if (m_caption)
            m_escape = QObject::connect(m_caption, &CaptionWidget::cleared, m_caption,
                                        [this] { Clear(); });
    }
    /// Removes all texts from the plot and the caption.
    void Leave()
    {
        Clear();
        QObject::disconnect(m_escape);
        if (const auto plot = m_plot.lock())
            plot->removeMouseObject(this);
    }
    void Clear()
    {
        m_count = 0;
        Show();
    }
    int Count() const { return m_count; }

    bool mousePress(GLCommonWidget*, QMouseEvent* event) override
    {
        if (event->button() != Qt::LeftButton || !Place(0, event->pos()))
            return false;
        m_pressedAt = event->pos();
        m_isPressed = true;
        m_count = 1;
        Show();
        return true;
    }
    bool mouseMove(GLCommonWidget*, QMouseEvent* event) override
    {
        if (!event->buttons().testFlag(Qt::LeftButton))
            m_isPressed = false;
        if (!m_isPressed)
            return false;
        constexpr int dragDistance = 3; // pixels; a shorter movement is a click
        const bool moved = (event->pos() - m_pressedAt).manhattanLength() >= dragDistance;
        if ((moved || m_count == 2) && Place(1, event->pos())) {
            m_count = 2;
            Show();
        }
        return true;
    }
    bool mouseRelease(GLCommonWidget*, QMouseEvent* event) override
    {
        const bool wasPressed = m_isPressed;
        if (event->button() == Qt::LeftButton)
            m_isPressed = false;
        return wasPressed;
    }
    bool mouseDoubleClick(GLCommonWidget* widget, QMouseEvent* event) override
    {
        return mousePress(widget, event);
    }
    bool wheel(GLCommonWidget*, QWheelEvent*) override { return false; }
    void leave(GLCommonWidget*) override {}
    void attached(GLCommonWidget*) override { m_isPressed = false; }

    void drawOverlay(GLCommonWidget* widget, GLPainter& painter) override
    {
        const auto xAxis = m_xAxis.lock();
        const auto yAxis = m_yAxis.lock();
        if (!xAxis || !yAxis)
            return;
        const QRect area = widget->rect();
        QColor color = ColorSet::Instance()[IColorBase::colLabel];
        color.setAlpha(lineAlpha);
        for (int i = 0; i < m_count; ++i) {
            const QPoint at(xAxis->ValueToPixel(m_cursors[i].x),
                            yAxis->ValueToPixel(m_cursors[i].y));
            painter.drawVLine(at.x(), area.top(), area.bottom(), color);
            painter.drawHLine(area.left(), area.right(), at.y(), color);
            // Move the texts to the cursors; the plot draws them after this.
            if (const auto plot = m_plot.lock())
                plot->TextRects()->set(keys[i], Fields(i, false).join(QLatin1Char('\n')), at);
        }
    }

private:
    bool Place(int index, const QPoint& position)
    {
        const auto plot = m_plot.lock();
        const auto xAxis = m_xAxis.lock();
        const auto yAxis = m_yAxis.lock();
        if (!plot || !xAxis || !yAxis || !xAxis->XPixelMap()->GetAxisDefinition().IsUsable() ||
            !yAxis->XPixelMap()->GetAxisDefinition().IsUsable())
            return false;
        const QRect area = plot->rect();
        const int column = qBound(area.left(), position.x(), area.right());
        const int row = qBound(area.top(), position.y(), area.bottom());
        m_cursors[index] = {xAxis->PixelToValue(column), yAxis->PixelToValue(row)};
        return true;
    }

    /// Text of a cursor: its position, and for the second one its distance from the first. Empty
    /// without axes. Aligned texts have fields of constant width, numbers to the right.
    QStringList Fields(int index, bool isAligned) const
    {
        const auto xAxis = m_xAxis.lock();
        const auto yAxis = m_yAxis.lock();
        if (index < 0 || !xAxis || !yAxis)
            return {};
        const auto text = [isAligned](const AxisHandler& axis, double value) {
            return textOf(axis, value).rightJustified(isAligned ? fieldWidth(axis) : 0);
        };
        const auto x = [&](double value) { return text(*xAxis, value); };
        const auto y = [&](double value) { return text(*yAxis, value); };
        const Cursor& cursor = m_cursors[index];
        QStringList fields{QLatin1String("x ") + x(cursor.x), QLatin1String("y ") + y(cursor.y)};
        if (index == 1) {
            fields << QLatin1String("dx ") + x(cursor.x - m_cursors[0].x)
                   << QLatin1String("dy ") + y(cursor.y - m_cursors[0].y);
        }
        return fields;
    }

    void Show()
    {
        if (m_caption)
            m_caption->setReadout(Fields(m_count - 1, true).join(QLatin1String("  ")));
        const auto plot = m_plot.lock();
        if (!plot)
            return;
        for (int i = m_count; i < 2; ++i)
            plot->TextRects()->remove(keys[i]);
        plot->update();
    }

    std::weak_ptr<ScanBufferWidgetBase> m_plot;
    std::weak_ptr<AxisHandler> m_xAxis;
    std::weak_ptr<AxisHandler> m_yAxis;
    QPointer<CaptionWidget> m_caption;
    QMetaObject::Connection m_escape;
    Cursor m_cursors[2] = {};
    int m_count = 0;
    QPoint m_pressedAt;
    bool m_isPressed = false;
};

StandardMeasRuler::StandardMeasRuler()
    : m_handler(std::make_shared<Handler>())
{}

StandardMeasRuler::~StandardMeasRuler() { m_handler->Leave(); }

void StandardMeasRuler::init(const std::shared_ptr<ScanBufferWidgetBase>& plot,
                             const std::shared_ptr<AxisHandler>& xAxis,
                             const std::shared_ptr<AxisHandler>& yAxis, QWidget* caption)
{
    m_handler->Init(plot, xAxis, yAxis, caption);
    if (plot)
        plot->addMouseObject(std::weak_ptr<IMouseHandler>(m_handler), GLCommonWidget::zoRuler);
}

void StandardMeasRuler::clear() { m_handler->Clear(); }

int StandardMeasRuler::CursorCount() const { return m_handler->Count(); }
