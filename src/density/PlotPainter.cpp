// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "density/PlotPainter.h"

#include "density/DensityExport.h"
#include "density/PlotState.h"
#include "density/PlotTexts.h"
#include "density/Spread.h"
#include "platform/glbase/axisDefinition.h"
#include "platform/gui/ColorSet.h"

#include <QLocale>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace density {

namespace {

constexpr double gap = 6.0;            // pixels between parts
constexpr double legendWidth = 14.0;   // of the colours
constexpr double histogramPart = 0.12; // of the plot, at its edges
const QColor hitColor(230, 40, 60);
const QColor litColor(255, 255, 255);

QColor color(IColorBase::ECOLOR number) { return ColorSet::Instance()[number]; }

/// Short enough for the legend.
QString countText(double count)
{
    const bool isShort = count >= 10.0 && count < 1e6;
    return QLocale::c().toString(count, isShort ? 'f' : 'g', isShort ? 0 : 3).remove(',');
}

double labelWidth(const QFontMetrics& metrics)
{
    return metrics.horizontalAdvance(QStringLiteral("1.23e+06"));
}

} // namespace

QRectF PlotPainter::placeOf(const QSize& size, const QFontMetrics& metrics)
{
    const double text = metrics.height();
    const double left = labelWidth(metrics) + gap;
    const double right = legendWidth + labelWidth(metrics) + 3.0 * gap;
    // Labels of the X axis, the line of cursors, and that of symbols.
    const double bottom = 3.0 * text + 3.0 * gap;
    const double top = text + 0.5 * gap; // what the axis of levels and the legend count in
    return QRectF(left, top, std::max(1.0, size.width() - left - right),
                  std::max(1.0, size.height() - top - bottom));
}

QColor PlotPainter::groundOf(bool isEye)
{
    return color(isEye ? IColorBase::colEyeBackground : IColorBase::colIQBackground);
}

PlotPainter::PlotPainter(const PlotState& state, QPainter& painter, const QSize& size,
                         const QFontMetrics& metrics)
    : m_state(state)
    , m_painter(painter)
    , m_view(state.view)
{
    m_view.setPlace(placeOf(size, metrics));
}

void PlotPainter::paint(const QSize& size)
{
    m_painter.save();
    paintGround(size);
    paintGridAndLabels();
    m_painter.save();
    m_painter.setClipRect(m_view.place());
    paintCounts();
    paintMask();
    paintDrawing();
    if (!m_state.data.lit.empty())
        paintTrace(m_state.data.lit, groundOf(m_state.shape.has_value()).lightness() < 128
                                         ? litColor
                                         : QColor(Qt::black));
    if (m_state.cursors.isShown) {
        paintHistograms();
        paintCursors();
    }
    m_painter.restore();
    paintLegend();
    paintTexts(size);
    m_painter.restore();
}

void PlotPainter::paintGround(const QSize& size)
{
    m_painter.fillRect(QRect(QPoint(), size), color(IColorBase::colLabelBack));
    m_painter.fillRect(m_view.place(), groundOf(m_state.shape.has_value()));
}

// The picture stands where it was counted: after a zoom, stretched until its own count has come.
void PlotPainter::paintCounts()
{
    if (m_state.image.isNull())
        return;
    const Window& counted = m_state.data.snapshot->window;
    const QRectF target(m_view.toPixel({counted.left, counted.top}),
                        m_view.toPixel({counted.right, counted.bottom}));
    const double ratio = m_painter.device()->devicePixelRatioF();
    m_painter.setRenderHint(QPainter::SmoothPixmapTransform,
                            target.width() * ratio < m_state.image.width());
    m_painter.drawImage(target, m_state.image);
}

void PlotPainter::paintGridAndLabels()
{
    const QRectF& place = m_view.place();
    const Window shown = m_view.window();
    const QFontMetricsF metrics(m_painter.font());
    const QPen grid(color(IColorBase::colGrid));
    const QPen label(color(IColorBase::colLabel));
    const TimeScale time = timeScaleOf(m_state, std::max(std::abs(shown.left), shown.right));
    axisDefinition x(axisDefinition::Orientation::Horizontal);
    x.SetRange(shown.left * time.perSymbol, shown.right * time.perSymbol);
    x.SetLength(static_cast<int>(place.width()));
    double free = -1e9; // where the next label may start
    for (const axisDefinition::Tick& tick : x.GetTicks()) {
        const double at = m_view.toPixel({tick.value / time.perSymbol, 0.0}).x();
        m_painter.setPen(grid);
        m_painter.drawLine(QPointF(at, place.top()), QPointF(at, place.bottom()));
        const QString text = x.Label(tick.value);
        const double width = metrics.horizontalAdvance(text);
        if (at - 0.5 * width < free)
            continue;
        free = at + 0.5 * width + gap;
        m_painter.setPen(label);
        m_painter.drawText(
            QRectF(at - 0.5 * width - 1.0, place.bottom() + 2.0, width + 2.0, metrics.height()),
            Qt::AlignCenter, text);
    }
    axisDefinition y(axisDefinition::Orientation::Vertical);
    y.SetRange(shown.bottom, shown.top);
    y.SetLength(static_cast<int>(place.height()));
    for (const axisDefinition::Tick& tick : y.GetTicks()) {
        const double at = m_view.toPixel({0.0, tick.value}).y();
        m_painter.setPen(grid);
        m_painter.drawLine(QPointF(place.left(), at), QPointF(place.right(), at));
        m_painter.setPen(label);
        m_painter.drawText(
            QRectF(0.0, at - 0.5 * metrics.height(), place.left() - 3.0, metrics.height()),
            Qt::AlignRight | Qt::AlignVCenter, y.Label(tick.value));
    }
    m_painter.setPen(label);
    m_painter.drawRect(place);
    m_painter.drawText(QPointF(place.right() + gap, place.bottom() + 2.0 + metrics.ascent()),
                       m_state.shape ? time.unit : m_state.unit);
    m_painter.drawText(QRectF(0.0, 0.0, place.left() - 3.0, metrics.height()), Qt::AlignRight,
                       m_state.unit);
    m_painter.drawText(QPointF(place.right() + gap, metrics.ascent()), tr("Count"));
}

void PlotPainter::paintMask()
{
    if (m_state.maskPolygons.empty())
        return;
    m_painter.setRenderHint(QPainter::Antialiasing);
    QColor fill = hitColor;
    fill.setAlpha(60);
    m_painter.setBrush(fill);
    m_painter.setPen(hitColor);
    for (const QPolygonF& polygon : m_state.maskPolygons) {
        QPolygonF pixels;
        for (const QPointF& point : polygon)
            pixels << m_view.toPixel(point);
        m_painter.drawPolygon(pixels);
    }
    for (const std::vector<float>& trace : m_state.data.hits)
        paintTrace(trace, hitColor);
    m_painter.setRenderHint(QPainter::Antialiasing, false);
}

// The polygon that is drawn, up to the pointer.
void PlotPainter::paintDrawing()
{
    if (!m_state.drawing)
        return;
    m_painter.setRenderHint(QPainter::Antialiasing);
    m_painter.setBrush(Qt::NoBrush);
    m_painter.setPen(QPen(hitColor, 1.5));
    QPolygonF line;
    for (const QPointF& corner : m_state.drawing->corners()) {
        line << m_view.toPixel(corner);
        m_painter.drawRect(QRectF(line.back() - QPointF(2.0, 2.0), QSizeF(4.0, 4.0)));
    }
    if (!line.isEmpty())
        line << m_view.toPixel(m_state.drawing->pointer());
    m_painter.drawPolyline(line);
    if (line.size() > 2) {
        m_painter.setPen(QPen(hitColor, 1.0, Qt::DotLine));
        m_painter.drawLine(line.back(), line.front());
    }
    m_painter.setRenderHint(QPainter::Antialiasing, false);
}

// A trace, or a point, over the picture; bad samples break its line.
void PlotPainter::paintTrace(const std::vector<float>& trace, const QColor& traceColor)
{
    m_painter.setRenderHint(QPainter::Antialiasing);
    m_painter.setPen(QPen(traceColor, 1.5));
    m_painter.setBrush(Qt::NoBrush);
    if (!m_state.shape) {
        const QPointF at(static_cast<double>(trace[0]), static_cast<double>(trace[1]));
        m_painter.drawEllipse(m_view.toPixel(at), 5.0, 5.0);
        return;
    }
    QPolygonF line;
    for (std::size_t k = 0; k < trace.size(); ++k) {
        if (std::isfinite(trace[k])) {
            // A painter takes no numbers far beyond its picture.
            constexpr double farthest = 1e5;
            const QPointF at = m_view.toPixel(
                {m_state.shape->timeOf(static_cast<int>(k)), static_cast<double>(trace[k])});
            line << QPointF(std::clamp(at.x(), -farthest, farthest),
                            std::clamp(at.y(), -farthest, farthest));
        }
        if (!std::isfinite(trace[k]) || k + 1 == trace.size()) {
            m_painter.drawPolyline(line);
            line.clear();
        }
    }
}

void PlotPainter::paintCursors()
{
    const QRectF& place = m_view.place();
    for (int k = 0; k < Cursors::Count; ++k) {
        const double value = m_state.cursors.places[static_cast<std::size_t>(k)];
        const QPointF at = m_view.toPixel({value, value});
        m_painter.setPen(
            QPen(color(IColorBase::colLabel), k == m_state.cursors.selected ? 2.0 : 1.0,
                 k == Cursors::FirstX || k == Cursors::FirstY ? Qt::SolidLine : Qt::DashLine));
        if (Cursors::isX(k))
            m_painter.drawLine(QPointF(at.x(), place.top()), QPointF(at.x(), place.bottom()));
        else
            m_painter.drawLine(QPointF(place.left(), at.y()), QPointF(place.right(), at.y()));
    }
}

// At the left edge the levels between the upright cursors, at the lower one the times between the
// others.
void PlotPainter::paintHistograms()
{
    if (!m_state.data.snapshot)
        return;
    const Window& counted = m_state.data.snapshot->window;
    const QRectF& place = m_view.place();
    m_painter.setPen(QPen(color(IColorBase::colLabel), 1.0));
    for (const bool isVertical : {true, false}) {
        const std::size_t first = isVertical ? Cursors::FirstX : Cursors::FirstY;
        const auto ends =
            std::minmax(m_state.cursors.places[first], m_state.cursors.places[first + 1]);
        const std::vector<double> sums =
            countsAlong(*m_state.data.snapshot,
                        {isVertical ? Band::Direction::Vertical : Band::Direction::Horizontal,
                         ends.first, ends.second});
        const double most = *std::max_element(sums.begin(), sums.end());
        QPolygonF line;
        for (std::size_t k = 0; k < sums.size() && most > 0.0; ++k) {
            const double part = (static_cast<double>(k) + 0.5) / static_cast<double>(sums.size());
            const QPointF at = m_view.toPixel(
                {counted.left + part * counted.width(), counted.bottom + part * counted.height()});
            const double size = histogramPart * sums[k] / most;
            line << (isVertical ? QPointF(place.left() + size * place.width(), at.y())
                                : QPointF(at.x(), place.bottom() - size * place.height()));
        }
        m_painter.drawPolyline(line);
    }
}

void PlotPainter::paintLegend()
{
    const QRectF& place = m_view.place();
    const QRectF bar(place.right() + gap, place.top(), legendWidth, place.height());
    const int steps = std::max(2, static_cast<int>(bar.height()));
    for (int k = 0; k < steps; ++k) {
        const double part = 1.0 - (k + 0.5) / steps;
        m_painter.fillRect(QRectF(bar.left(), bar.top() + bar.height() * k / steps, bar.width(),
                                  bar.height() / steps + 0.5),
                           QColor::fromRgb(m_state.colors.colorAt(part)));
    }
    m_painter.setPen(color(IColorBase::colLabel));
    const CountRange range = m_state.data.snapshot ? rangeOf(*m_state.data.snapshot) : CountRange();
    if (!(range.most > 0.0))
        return;
    constexpr int labels = 5;
    const double height = QFontMetricsF(m_painter.font()).height();
    for (int k = 0; k < labels; ++k) {
        const double part = static_cast<double>(k) / (labels - 1);
        const double count = m_state.colors.isLogarithmic
                                 ? range.least * std::pow(range.most / range.least, part)
                                 : part * range.most;
        const double at = bar.bottom() - part * (bar.height() - height) - height;
        m_painter.drawText(QPointF(bar.right() + 4.0, at + 0.8 * height), countText(count));
    }
}

void PlotPainter::paintTexts(const QSize& size)
{
    const double height = QFontMetricsF(m_painter.font()).height();
    m_painter.setPen(color(IColorBase::colLabel));
    const auto line = [&](int fromBottom, const QString& text) {
        m_painter.drawText(QRectF(gap, size.height() - fromBottom * (height + 0.5 * gap),
                                  size.width() - 2.0 * gap, height),
                           Qt::AlignLeft | Qt::AlignVCenter, text);
    };
    line(1, PlotTexts(m_state).symbols());
    if (m_state.cursors.isShown)
        line(2, PlotTexts(m_state).cursors());
}

} // namespace density
