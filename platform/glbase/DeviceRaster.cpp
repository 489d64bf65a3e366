// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/glbase/DeviceRaster.h"

#include "platform/base/Saturate.h"
#include "platform/glbase/PixelTarget.h"
#include "platform/glbase/StrokeRuns.h"

#include <QPaintEngine>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>
#include <cstdint>

/// A segment that runs forward along its major direction (a) and moves by no more than as much
/// along the minor one (b); logical coordinates of pixels.
struct DeviceRaster::Segment
{
    double a1;
    double b1;
    double a2;
    double b2;
    bool reversed; ///< The segment was given from (a2, b2) to (a1, b1).
    double width;
    double dashLength; ///< Painted part of each period of a dashed line; 0 for a solid one.
    double dashPeriod;

    bool IsDrawnAt(double a) const
    {
        if (dashLength == 0.0)
            return true;
        // A pixel reaches half a unit to either side of its coordinate.
        return std::fmod((reversed ? a2 - a : a - a1) + 0.5, dashPeriod) < dashLength;
    }
};

namespace {

/// Like std::floor, for which older processors need a function call.
double flooredFast(double value)
{
    constexpr double largest = 4503599627370496.0; // 2^52: from here on all doubles are whole
    if (!(std::abs(value) < largest))
        return std::floor(value);
    const auto whole = static_cast<double>(static_cast<std::int64_t>(value));
    return whole > value ? whole - 1.0 : whole;
}

} // namespace

double DeviceRaster::Scale::Edge(double logical) const
{
    // The excess keeps a half on its side, however the transform was rounded.
    return flooredFast(logical * factor + offset + 0.5 + 1e-6);
}

DeviceRaster::Span DeviceRaster::Scale::VisibleSpan(double from, double to) const
{
    const double start = Edge(from);
    const double stop = std::max(Edge(to), start + 1.0);
    return {truncateSaturated<int>(start, visible.first, visible.last),
            truncateSaturated<int>(stop, visible.first, visible.last)};
}

bool DeviceRaster::IsVector(const QPainter& painter)
{
    const QPaintEngine* engine = painter.paintEngine();
    return engine && (engine->type() == QPaintEngine::SVG || engine->type() == QPaintEngine::Pdf);
}

DeviceRaster::DeviceRaster(QPainter& painter, const QRect& visible)
    : m_painter(&painter)
    , m_pixels(nullptr)
    , m_isVector(IsVector(painter))
{
    SetScales(painter.deviceTransform());
    if (m_isVector) {
        constexpr double fineness = 4.0;
        m_x = m_y = {fineness, 0.0};
    }
    SetVisible(visible);
}

DeviceRaster::DeviceRaster(PixelTarget& pixels, const QPoint& origin, const QRect& visible)
    : m_painter(nullptr)
    , m_pixels(&pixels)
    , m_isVector(false)
{
    QTransform toDevice = pixels.ToDevice();
    PixelTarget::FreeRegisters();
    SetScales(toDevice.translate(origin.x(), origin.y()));
    SetVisible(visible);
    pixels.strokes.clear();
    m_rects.swap(pixels.rects);
}

DeviceRaster::~DeviceRaster()
{
    m_rects.clear();
    if (m_pixels)
        m_rects.swap(m_pixels->rects);
}

void DeviceRaster::SetScales(const QTransform& toDevice)
{
    if (toDevice.type() <= QTransform::TxScale && toDevice.m11() > 0.0 && toDevice.m22() > 0.0) {
        m_x = {toDevice.m11(), toDevice.dx()};
        m_y = {toDevice.m22(), toDevice.dy()};
    }
}

void DeviceRaster::SetVisible(const QRect& visible)
{
    const auto devicePixels = [](const Scale& scale, int start, int extent) {
        return Span{truncateToPixel(scale.Edge(start)),
                    truncateToPixel(scale.Edge(static_cast<double>(start) + extent))};
    };
    m_x.visible = devicePixels(m_x, visible.left(), visible.width());
    m_y.visible = devicePixels(m_y, visible.top(), visible.height());
}

QRectF DeviceRaster::Snapped(const QRectF& rect) const
{
    return QRectF(
        QPointF(m_x.Logical(m_x.Edge(rect.left())), m_y.Logical(m_y.Edge(rect.top()))),
        QPointF(m_x.Logical(m_x.Edge(rect.right())), m_y.Logical(m_y.Edge(rect.bottom()))));
}

void DeviceRaster::ClipToVisible(Qt::ClipOperation operation)
{
    // The GL engine rounds clips outwards, the raster engine to the nearest pixel. Slightly inside
    // of the edges both take the same pixels.
    constexpr double inside = 1e-3;
    const QRectF clip(
        QPointF(m_x.Logical(m_x.visible.first + inside), m_y.Logical(m_y.visible.first + inside)),
        QPointF(m_x.Logical(m_x.visible.last - inside), m_y.Logical(m_y.visible.last - inside)));
    m_painter->setClipRect(clip, operation);
}

QRect DeviceRaster::VisibleDeviceRect() const
{
    return {m_x.visible.first, m_y.visible.first, m_x.visible.last - m_x.visible.first,
            m_y.visible.last - m_y.visible.first};
}

void DeviceRaster::AddPoint(double x, double y)
{
    if (m_isVector) {
        AddSquare(x, y);
        return;
    }
    const double column = m_x.Point(x);
    const double row = m_y.Point(y);
    if (!m_x.Sees(column) || !m_y.Sees(row))
        return;
    const int i = static_cast<int>(column);
    const int j = static_cast<int>(row);
    AddDeviceRect({i, i + 1}, {j, j + 1});
}

void DeviceRaster::AddSquare(double x, double y)
{
    if (m_x.Sees(m_x.Point(x)) && m_y.Sees(m_y.Point(y)))
        AddDeviceRect(m_x.VisibleSpan(x, x + 1.0), m_y.VisibleSpan(y, y + 1.0));
}

void DeviceRaster::AddLine(const QLineF& line, const GLLineStyle& style)
{
    const bool isFinite = std::isfinite(line.x1()) && std::isfinite(line.y1()) &&
                          std::isfinite(line.x2()) && std::isfinite(line.y2());
    if (!isFinite || style.Style() == lsNone)
        return;

    const bool isSteep = std::abs(line.dy()) >= std::abs(line.dx());
    Segment segment{};
    if (isSteep)
        segment = {line.y1(), line.x1(), line.y2(), line.x2(), false, 0.0, 0.0, 0.0};
    else
        segment = {line.x1(), line.y1(), line.x2(), line.y2(), false, 0.0, 0.0, 0.0};
    if (segment.a1 > segment.a2) {
        std::swap(segment.a1, segment.a2);
        std::swap(segment.b1, segment.b2);
        segment.reversed = true;
    }
    segment.width = std::max(1, style.Width());
    if (style.Style() != lsSolid) {
        segment.dashLength = segment.width * (style.Style() == lsDash ? 4.0 : 1.0);
        segment.dashPeriod = segment.width * (style.Style() == lsDash ? 7.0 : 3.0);
    }

    if (isSteep) {
        Rasterise(m_y, m_x, segment,
                  [this](const Span& rows, const Span& columns) { AddDeviceRect(columns, rows); });
    } else {
        Rasterise(m_x, m_y, segment,
                  [this](const Span& columns, const Span& rows) { AddDeviceRect(columns, rows); });
    }
}

/// Joins like StrokeRuns, for strokes that only ever move one way: looks at a few of the equal ones
/// only, first where one is expected to end.
/// @param length  expected; half of it for the first stroke.
template<typename StrokeIn, typename Put>
void DeviceRaster::PutRuns(const Span& extent, const StrokeIn& strokeIn, double length,
                           const Put& put)
{
    double expected = extent.first + length / 2.0;
    for (int start = extent.first; start < extent.last;) {
        const Span stroke = strokeIn(start);
        int last = start; // with this stroke
        int end = extent.last;
        const auto isSame = [&](int place) { return strokeIn(place) == stroke; };
        const auto guess = truncateSaturated<int>(expected, start, end);
        if (guess > start && guess < end)
            (isSame(guess) ? last : end) = guess;
        const bool isBefore = end == guess;
        for (int step = 1; isBefore && end - step > last; step *= 2) {
            const int place = end - step;
            (isSame(place) ? last : end) = place;
        }
        for (int step = 1; last + step < end; step *= 2) {
            const int place = last + step;
            (isSame(place) ? last : end) = place;
        }
        while (end - last > 1) {
            const int middle = last + (end - last) / 2;
            (isSame(middle) ? last : end) = middle;
        }
        put(Span{start, end}, stroke);
        start = end;
        expected = start + length;
    }
}

template<typename Put>
void DeviceRaster::Rasterise(const Scale& major, const Scale& minor, const Segment& segment,
                             const Put& put)
{
    const Span extent = major.VisibleSpan(segment.a1, segment.a2 + 1.0);
    const auto strokeAt = [&](double b) {
        // The line's own pixel is the middle; the larger half of an even width comes after it.
        const double start = b - (segment.width - 1.0) / 2.0;
        return minor.VisibleSpan(start, start + segment.width);
    };
    const bool isStraight = segment.b1 == segment.b2;
    if (isStraight && segment.dashLength == 0.0) {
        put(extent, strokeAt(segment.b1));
        return;
    }

    const auto strokeIn = [&](int i) {
        const double a = std::clamp(major.Logical(i + 0.5) - 0.5, segment.a1, segment.a2);
        const double part = isStraight ? 0.0 : (a - segment.a1) / (segment.a2 - segment.a1);
        return segment.IsDrawnAt(a) ? strokeAt(segment.b1 + part * (segment.b2 - segment.b1))
                                    : Span{0, 0};
    };
    if (segment.dashLength == 0.0) {
        const double steps = std::abs(segment.b2 - segment.b1) * minor.factor;
        PutRuns(extent, strokeIn, (segment.a2 - segment.a1) * major.factor / steps, put);
        return;
    }
    StrokeRuns<Span, Put> runs(put, extent.first);
    for (int i = extent.first; i < extent.last; ++i)
        runs.Next(i, strokeIn(i));
    runs.Next(extent.last, {0, 0});
}

void DeviceRaster::AddDeviceRect(const Span& columns, const Span& rows)
{
    if (columns.first < columns.last && rows.first < rows.last)
        m_rects.emplace_back(QPoint(columns.first, rows.first),
                             QPoint(columns.last - 1, rows.last - 1));
}

QRectF DeviceRaster::LogicalRect(const QRect& deviceRect) const
{
    return QRectF(
        QPointF(m_x.Logical(deviceRect.left()), m_y.Logical(deviceRect.top())),
        QPointF(m_x.Logical(deviceRect.right() + 1), m_y.Logical(deviceRect.bottom() + 1)));
}

void DeviceRaster::Fill(const QColor& color)
{
    if (m_pixels && !m_pixels->strokes.empty()) {
        m_pixels->FillColumns(m_strokesLeft, m_pixels->strokes, color.rgb());
        m_pixels->strokes.clear();
    }
    if (m_rects.empty())
        return;
    if (m_pixels) {
        for (const QRect& rect : m_rects)
            m_pixels->Fill(rect, color.rgb());
        m_rects.clear();
        return;
    }
    std::vector<QRectF> rects;
    rects.reserve(m_rects.size());
    for (const QRect& rect : m_rects)
        rects.push_back(LogicalRect(rect));
    m_rects.clear();

    if (m_isVector) {
        // As one area, so that no seams show between neighbours.
        QPainterPath area;
        area.setFillRule(Qt::WindingFill);
        for (const QRectF& rect : rects)
            area.addRect(rect);
        m_painter->fillPath(area, color);
        return;
    }
    // Measured with software GL, 19 to 2000 rectangles: raw GL quads are up to twice as fast, but
    // only for thousands; lines, polylines and paths are slower, and no two engines round them
    // alike.
    m_painter->save();
    m_painter->setRenderHint(QPainter::Antialiasing, false);
    m_painter->setPen(Qt::NoPen);
    m_painter->setBrush(color);
    m_painter->drawRects(rects.data(), static_cast<int>(rects.size()));
    m_painter->restore();
}
