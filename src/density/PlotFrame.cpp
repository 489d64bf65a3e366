// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "density/PlotFrame.h"

#include "density/PlotState.h"
#include "density/PlotTexts.h"
#include "platform/glbase/axisDefinition.h"
#include "platform/gui/ColorSet.h"

#include <QDataStream>
#include <QIODevice>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace density {

namespace {

constexpr double gap = 6.0;           // pixels between parts
constexpr double legendWidth = 14.0;  // of the colours
constexpr double mostCells = 2 << 20; // 1920 x 1080

QColor color(IColorBase::ECOLOR number) { return ColorSet::Instance()[number]; }

double labelWidth(const QFontMetrics& metrics)
{
    return metrics.horizontalAdvance(QStringLiteral("1.23e+06"));
}

/// Pixels of the device to a cell, in both directions.
int pixelsToCell(double width, double height)
{
    int pixels = 1;
    while (width * height > mostCells * pixels * pixels)
        ++pixels;
    return pixels;
}

} // namespace

QRectF PlotFrame::placeOf(const QSize& size, const QFontMetrics& metrics, double ratio)
{
    const double text = metrics.height();
    // What the axis of levels and the legend count in is above; below are labels of the X axis, the
    // line of cursors, and that of symbols.
    const double left = std::ceil((labelWidth(metrics) + gap) * ratio);
    const double top = std::ceil((text + 0.5 * gap) * ratio);
    const double right = legendWidth + labelWidth(metrics) + 3.0 * gap;
    const double bottom = 3.0 * text + 3.0 * gap;
    const double width = std::max(1.0, std::floor((size.width() - right) * ratio) - left);
    const double height = std::max(1.0, std::floor((size.height() - bottom) * ratio) - top);
    const int pixels = pixelsToCell(width, height);
    const auto whole = [&](double length) { return std::floor(length / pixels) * pixels / ratio; };
    return {left / ratio, top / ratio, whole(width), whole(height)};
}

GridSize PlotFrame::gridOf(const QRectF& place, double ratio)
{
    const double width = place.width() * ratio;
    const double height = place.height() * ratio;
    const int pixels = pixelsToCell(width, height);
    return {static_cast<int>(std::lround(width / pixels)),
            static_cast<int>(std::lround(height / pixels))};
}

QRect PlotFrame::pixelsOf(const QRectF& place, double ratio)
{
    return QRectF(place.topLeft() * ratio, place.size() * ratio).toRect();
}

QRectF PlotFrame::legendOf(const QRectF& place)
{
    return {place.right() + gap, place.top(), legendWidth, place.height()};
}

QColor PlotFrame::groundOf(bool isEye)
{
    return color(isEye ? IColorBase::colEyeBackground : IColorBase::colIQBackground);
}

QByteArray PlotFrame::keyOf(const PlotState& state, const QSize& size, double ratio,
                            const QFont& font)
{
    QByteArray key;
    QDataStream stream(&key, QIODevice::WriteOnly);
    const Window shown = state.view.window();
    stream << size << ratio << font << shown.left << shown.right << shown.bottom << shown.top
           << state.unit << state.symbolRate << static_cast<int>(state.timeUnit)
           << static_cast<int>(state.colors.scale) << state.colors.isDarkGround
           << groundOf(state.shape.has_value()) << color(IColorBase::colLabelBack)
           << color(IColorBase::colGrid) << color(IColorBase::colLabel);
    return key;
}

PlotFrame::PlotFrame(const PlotState& state, QPainter& painter, const PlotView& view)
    : m_state(state)
    , m_painter(painter)
    , m_view(view)
    , m_pixel(1.0 / std::max(painter.device()->devicePixelRatioF(), 1.0))
{}

void PlotFrame::paint(const QSize& size)
{
    m_painter.save();
    m_painter.fillRect(QRect(QPoint(), size), color(IColorBase::colLabelBack));
    m_painter.fillRect(m_view.place(), groundOf(m_state.shape.has_value()));
    paintX();
    paintY();
    const QRectF& place = m_view.place();
    for (const double y : {place.top() - m_pixel, place.bottom()})
        fillPixels({place.left() - m_pixel, y, place.width() + 2.0 * m_pixel, 0.0},
                   color(IColorBase::colLabel));
    for (const double x : {place.left() - m_pixel, place.right()})
        fillPixels({x, place.top(), 0.0, place.height()}, color(IColorBase::colLabel));
    paintLegend();
    m_painter.restore();
}

// Whole pixels of the device, so that all lines are as wide; one wide where the size is 0.
void PlotFrame::fillPixels(const QRectF& rect, const QColor& fill)
{
    const auto whole = [this](double length) { return std::round(length / m_pixel) * m_pixel; };
    const double left = whole(rect.left()), top = whole(rect.top());
    m_painter.fillRect(QRectF(left, top, std::max(whole(rect.right()) - left, m_pixel),
                              std::max(whole(rect.bottom()) - top, m_pixel)),
                       fill);
}

void PlotFrame::paintX()
{
    const QRectF& place = m_view.place();
    const Window shown = m_view.window();
    const QFontMetricsF metrics(m_painter.font());
    const TimeScale time = timeScaleOf(m_state, std::max(std::abs(shown.left), shown.right));
    axisDefinition x(axisDefinition::Orientation::Horizontal);
    x.SetRange(shown.left * time.perSymbol, shown.right * time.perSymbol);
    x.SetLength(static_cast<int>(place.width()));
    double free = -1e9; // where the next label may start
    for (const axisDefinition::Tick& tick : x.GetTicks()) {
        const double at = m_view.toPixel({tick.value / time.perSymbol, 0.0}).x();
        fillPixels({at, place.top(), 0.0, place.height()}, color(IColorBase::colGrid));
        const QString text = x.Label(tick.value);
        const double width = metrics.horizontalAdvance(text);
        if (at - 0.5 * width < free)
            continue;
        free = at + 0.5 * width + gap;
        m_painter.setPen(color(IColorBase::colLabel));
        m_painter.drawText(
            QRectF(at - 0.5 * width - 1.0, place.bottom() + 2.0, width + 2.0, metrics.height()),
            Qt::AlignCenter, text);
    }
    m_painter.setPen(color(IColorBase::colLabel));
    m_painter.drawText(
        QPointF(std::max(place.right() + gap, free), place.bottom() + 2.0 + metrics.ascent()),
        m_state.shape ? time.unit : titleOf("I"));
}

void PlotFrame::paintY()
{
    const QRectF& place = m_view.place();
    const Window shown = m_view.window();
    const QFontMetricsF metrics(m_painter.font());
    const double height = metrics.height();
    const double room = place.left() - 3.0;
    axisDefinition y(axisDefinition::Orientation::Vertical);
    y.SetRange(shown.bottom, shown.top);
    y.SetLength(static_cast<int>(place.height()));
    const std::vector<axisDefinition::Tick>& ticks = y.GetTicks();
    double widest = room;
    for (const axisDefinition::Tick& tick : ticks)
        widest = std::max(widest, metrics.horizontalAdvance(y.Label(tick.value)));
    // Many digits after a deep zoom: a number that is cut would be another one.
    const QFont usual = m_painter.font();
    QFont fitting = usual;
    if (widest > room)
        fitting.setPixelSize(
            std::max(1, static_cast<int>(QFontInfo(usual).pixelSize() * room / widest)));
    m_painter.setFont(fitting);
    for (const axisDefinition::Tick& tick : ticks) {
        const double at = m_view.toPixel({0.0, tick.value}).y();
        fillPixels({place.left(), at, place.width(), 0.0}, color(IColorBase::colGrid));
        m_painter.setPen(color(IColorBase::colLabel));
        m_painter.drawText(QRectF(0.0, at - 0.5 * height, room, height),
                           Qt::AlignRight | Qt::AlignVCenter, y.Label(tick.value));
    }
    m_painter.setFont(usual);
    m_painter.setPen(color(IColorBase::colLabel));
    m_painter.drawText(QRectF(0.0, 0.0, room, height), Qt::AlignRight,
                       m_state.shape ? m_state.unit : titleOf("Q"));
}

QString PlotFrame::titleOf(const char* axis) const
{
    const QString name = QString::fromLatin1(axis);
    return m_state.unit.isEmpty() ? name : name + QStringLiteral(" / ") + m_state.unit;
}

void PlotFrame::paintLegend()
{
    const QRectF bar = legendOf(m_view.place());
    const int steps = std::max(2, static_cast<int>(bar.height()));
    for (int k = 0; k < steps; ++k) {
        const double part = 1.0 - (k + 0.5) / steps;
        m_painter.fillRect(QRectF(bar.left(), bar.top() + bar.height() * k / steps, bar.width(),
                                  bar.height() / steps + 0.5),
                           QColor::fromRgb(m_state.colors.colorAt(part)));
    }
    m_painter.setPen(color(IColorBase::colLabel));
    m_painter.drawText(QPointF(bar.left(), QFontMetricsF(m_painter.font()).ascent()), tr("Count"));
}

} // namespace density
