// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "density/PlotPainter.h"

#include "density/DensityExport.h"
#include "density/PlotFrame.h"
#include "density/PlotState.h"
#include "density/PlotTexts.h"
#include "density/Spread.h"
#include "platform/gui/ColorSet.h"

#include <QLocale>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <optional>

namespace density {

namespace {

constexpr double gap = 6.0;            // pixels between parts
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

/// As many whole words as fit: a number that is cut would be another one.
QString wholeWords(const QString& text, const QFontMetricsF& metrics, double width)
{
    if (metrics.horizontalAdvance(text) <= width)
        return text;
    const QString more = QStringLiteral(" ") + QChar(0x2026);
    auto end = text.size();
    do {
        end = text.lastIndexOf(QLatin1Char(' '), end - 1);
    } while (end > 0 && metrics.horizontalAdvance(text.left(end) + more) > width);
    return end > 0 ? text.left(end) + more : metrics.elidedText(text, Qt::ElideRight, width);
}

} // namespace

PlotPainter::PlotPainter(const PlotState& state, QPainter& painter, const PlotView& view)
    : m_state(state)
    , m_painter(painter)
    , m_view(view)
{}

void PlotPainter::paint(const QSize& size, const QImage& frame, const QRegion& exposed)
{
    const auto isSeen = [&exposed](const QRect& place) {
        return exposed.isEmpty() || exposed.intersects(place);
    };
    m_painter.save();
    const bool isPainted = paintWhole(frame);
    m_painter.save();
    m_painter.setClipRect(m_view.place());
    if (!isPainted)
        paintCounts();
    paintMask();
    paintDrawing();
    if (!m_state.data.lit.empty())
        paintTrace(m_state.data.lit,
                   PlotFrame::groundOf(m_state.shape.has_value()).lightness() < 128
                       ? litColor
                       : QColor(Qt::black));
    if (m_state.cursors.isShown) {
        paintHistograms();
        paintCursors();
    }
    m_painter.restore();
    if (isSeen(legendCountsOf(m_view, size)))
        paintLegendCounts();
    paintTexts(size);
    m_painter.restore();
}

QRect PlotPainter::legendCountsOf(const PlotView& view, const QSize& size)
{
    const QRectF bar = PlotFrame::legendOf(view.place());
    const int left = static_cast<int>(bar.right());
    return {left, 0, size.width() - left, static_cast<int>(std::ceil(bar.bottom() + gap))};
}

QRectF PlotPainter::textOf(int fromBottom, const QSize& size, const QFont& font)
{
    const double height = QFontMetricsF(font).height();
    return {gap, size.height() - fromBottom * (height + 0.5 * gap), size.width() - 2.0 * gap,
            height};
}

QRegion PlotPainter::changedBySymbols(const PlotState& state, const QSize& size, const QFont& font,
                                      const CountRange& before)
{
    if (PlotFrame::keyOf(state, size, state.ratio, font) != state.frameKey)
        return QRect(QPoint(), size);
    QRegion changed = state.view.place().toAlignedRect();
    changed += textOf(1, size, font).toAlignedRect();
    if (state.cursors.isShown)
        changed += textOf(2, size, font).toAlignedRect();
    if (state.data.range.least != before.least || state.data.range.most != before.most)
        changed += legendCountsOf(state.view, size);
    return changed;
}

// In world coordinates that are pixels of the device, from a corner on.
QTransform PlotPainter::toPixels(const QPoint& corner) const
{
    return QTransform::fromTranslate(corner.x(), corner.y()) *
           m_painter.deviceTransform().inverted() * m_painter.worldTransform();
}

// The frame, and the picture where that has its ground: each pixel once, and copied.
// @return whether the picture is painted.
bool PlotPainter::paintWhole(const QImage& frame)
{
    if (frame.isNull())
        return false;
    const QTransform before = m_painter.worldTransform();
    const QPointF origin = m_painter.deviceTransform().map(QPointF());
    m_painter.setWorldTransform(toPixels(origin.toPoint()));
    const QImage& whole = m_state.data.whole;
    const QRect inside = PlotFrame::pixelsOf(m_view.place(), m_state.ratio);
    const bool hasWhole =
        whole.size() == inside.size() && m_state.data.frameKey == m_state.frameKey;
    if (hasWhole) {
        const QRect all = frame.rect();
        for (const QRect& part :
             {QRect(QPoint(0, 0), QPoint(all.right(), inside.top() - 1)),
              QRect(QPoint(0, inside.bottom() + 1), all.bottomRight()),
              QRect(QPoint(0, inside.top()), QPoint(inside.left() - 1, inside.bottom())),
              QRect(QPoint(inside.right() + 1, inside.top()),
                    QPoint(all.right(), inside.bottom()))})
            m_painter.drawImage(part.topLeft(), frame, part);
        m_painter.drawImage(inside.topLeft(), whole);
    } else {
        m_painter.drawImage(0, 0, frame);
    }
    m_painter.setWorldTransform(before);
    return hasWhole;
}

/// Where each cell takes the same number of whole pixels of the device; none elsewhere.
static std::optional<QRect> wholePixelsOf(const QRectF& exact, const QSize& cells)
{
    constexpr double farthest = 1e6; // a zoom may put the last picture anywhere
    if (!(exact.width() < farthest && exact.height() < farthest &&
          std::abs(exact.left()) < farthest && std::abs(exact.top()) < farthest))
        return std::nullopt;
    const QRect pixels = exact.toRect();
    constexpr double tolerance = 0.01; // pixels
    const auto isSame = [](double one, int other) { return std::abs(one - other) < tolerance; };
    const bool isWhole =
        pixels.width() % cells.width() == 0 && pixels.height() % cells.height() == 0 &&
        isSame(exact.left(), pixels.left()) && isSame(exact.top(), pixels.top()) &&
        isSame(exact.width(), pixels.width()) && isSame(exact.height(), pixels.height());
    return isWhole ? std::optional<QRect>(pixels) : std::nullopt;
}

// The picture stands where it was counted: after a zoom, stretched until its own count has come.
// Cells that are pixels of the device, or whole numbers of them, are painted as such.
void PlotPainter::paintCounts()
{
    const QImage& image = m_state.data.image;
    if (image.isNull())
        return;
    const Window& counted = m_state.data.snapshot->window;
    const QRectF target(m_view.toPixel({counted.left, counted.top}),
                        m_view.toPixel({counted.right, counted.bottom}));
    const QTransform device = m_painter.deviceTransform();
    const QRectF exact = device.mapRect(target);
    const std::optional<QRect> pixels = wholePixelsOf(exact, image.size());
    if (!pixels || device.type() > QTransform::TxScale || device.m11() < 0.0 ||
        device.m22() < 0.0) {
        m_painter.setRenderHint(QPainter::SmoothPixmapTransform, exact.width() < image.width());
        m_painter.drawImage(target, image);
        return;
    }
    const QTransform before = m_painter.worldTransform();
    m_painter.setWorldTransform(toPixels(pixels->topLeft()));
    if (pixels->size() == image.size())
        m_painter.drawImage(0, 0, image);
    else
        m_painter.drawImage(QRect(QPoint(), pixels->size()), image);
    m_painter.setWorldTransform(before);
}

void PlotPainter::paintMask()
{
    if (m_state.maskPolygons.empty())
        return;
    m_painter.setRenderHint(QPainter::Antialiasing);
    QColor fill = hitColor;
    fill.setAlpha(60);
    for (const QPolygonF& polygon : m_state.maskPolygons) {
        QPolygonF pixels;
        for (const QPointF& point : polygon)
            pixels << m_view.toPixel(point);
        m_painter.setBrush(fill);
        m_painter.setPen(Qt::NoPen);
        m_painter.drawPolygon(nearPlace().area(pixels));
        m_painter.setPen(hitColor);
        pixels << pixels.front();
        paintLine(pixels);
    }
    for (const std::vector<float>& trace : m_state.data.hits)
        paintTrace(trace, hitColor);
    m_painter.setRenderHint(QPainter::Antialiasing, false);
}

// Farther out than a pen reaches.
Clip PlotPainter::nearPlace() const
{
    constexpr double reach = 10.0; // pixels
    return Clip(m_view.place().adjusted(-reach, -reach, reach, reach));
}

void PlotPainter::paintLine(const QPolygonF& pixels)
{
    for (const QPolygonF& part : nearPlace().line(pixels))
        m_painter.drawPolyline(part);
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
        if (m_view.place().contains(line.back()))
            m_painter.drawRect(QRectF(line.back() - QPointF(2.0, 2.0), QSizeF(4.0, 4.0)));
    }
    if (!line.isEmpty())
        line << m_view.toPixel(m_state.drawing->pointer());
    paintLine(line);
    if (line.size() > 2) {
        m_painter.setPen(QPen(hitColor, 1.0, Qt::DotLine));
        paintLine(QPolygonF() << line.back() << line.front());
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
        const QPointF at =
            m_view.toPixel({static_cast<double>(trace[0]), static_cast<double>(trace[1])});
        if (m_view.place().contains(at))
            m_painter.drawEllipse(at, 5.0, 5.0);
        return;
    }
    QPolygonF line;
    for (std::size_t k = 0; k < trace.size(); ++k)
        line << m_view.toPixel(
            {m_state.shape->timeOf(static_cast<int>(k)), static_cast<double>(trace[k])});
    paintLine(line);
}

void PlotPainter::paintCursors()
{
    const QRectF& place = m_view.place();
    for (int k = 0; k < Cursors::Count; ++k) {
        const double value = m_state.cursors.places[static_cast<std::size_t>(k)];
        const QPointF at = m_view.toPixel({value, value});
        m_painter.setPen(
            QPen(color(IColorBase::colLabel), k == m_state.cursors.selected ? 1.6 : 0.8,
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
        paintLine(line);
    }
}

void PlotPainter::paintLegendCounts()
{
    const QRectF bar = PlotFrame::legendOf(m_view.place());
    const CountRange& range = m_state.data.range;
    if (!(range.most > 0.0))
        return;
    m_painter.setPen(color(IColorBase::colLabel));
    constexpr int labels = 5;
    const double height = QFontMetricsF(m_painter.font()).height();
    for (int k = 0; k < labels; ++k) {
        const double part = static_cast<double>(k) / (labels - 1);
        const double count = m_state.data.colors.isLogarithmic
                                 ? range.least * std::pow(range.most / range.least, part)
                                 : part * range.most;
        const double at = bar.bottom() - part * (bar.height() - height) - height;
        m_painter.drawText(QPointF(bar.right() + 4.0, at + 0.8 * height), countText(count));
    }
}

void PlotPainter::paintTexts(const QSize& size)
{
    m_painter.setPen(color(IColorBase::colLabel));
    const auto line = [&](int fromBottom, const QString& text) {
        const QRectF place = textOf(fromBottom, size, m_painter.font());
        m_painter.drawText(place, Qt::AlignLeft | Qt::AlignVCenter,
                           wholeWords(text, QFontMetricsF(m_painter.font()), place.width()));
    };
    line(1, PlotTexts(m_state).symbols());
    if (m_state.drawing)
        line(2, PlotTexts::drawing());
    else if (m_state.cursors.isShown)
        line(2, PlotTexts(m_state).cursors());
}

} // namespace density
