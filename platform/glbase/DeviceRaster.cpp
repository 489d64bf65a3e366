// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/glbase/DeviceRaster.h"

#include "platform/base/Saturate.h"
#include "platform/glbase/GLStepLine.h"

#include <QPainter>

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
        return std::fmod(reversed ? a2 - a : a - a1, dashPeriod) < dashLength;
    }
};

double DeviceRaster::Scale::Edge(double logical) const
{
    return std::floor(logical * factor + offset + 0.5);
}

DeviceRaster::Span DeviceRaster::Scale::VisibleSpan(double from, double to) const
{
    const double start = Edge(from);
    const double stop = std::max(Edge(to), start + 1.0);
    return {truncateSaturated<int>(start, visible.first, visible.last),
            truncateSaturated<int>(stop, visible.first, visible.last)};
}

DeviceRaster::DeviceRaster(QPainter& painter, const QRect& visible)
    : m_painter(painter)
{
    const QTransform& toDevice = painter.deviceTransform();
    if (toDevice.type() <= QTransform::TxScale && toDevice.m11() > 0.0 && toDevice.m22() > 0.0) {
        m_x = {toDevice.m11(), toDevice.dx()};
        m_y = {toDevice.m22(), toDevice.dy()};
    }
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

QRect DeviceRaster::VisibleDeviceRect() const
{
    return {m_x.visible.first, m_y.visible.first, m_x.visible.last - m_x.visible.first,
            m_y.visible.last - m_y.visible.first};
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

template<typename Put>
void DeviceRaster::Rasterise(const Scale& major, const Scale& minor, const Segment& segment,
                             Put put)
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

    Span stroke{0, 0};
    int strokeStart = extent.first;
    for (int i = extent.first; i < extent.last; ++i) {
        const double a = std::clamp(major.Logical(i + 0.5) - 0.5, segment.a1, segment.a2);
        const double part = isStraight ? 0.0 : (a - segment.a1) / (segment.a2 - segment.a1);
        const Span next = segment.IsDrawnAt(a)
                              ? strokeAt(segment.b1 + part * (segment.b2 - segment.b1))
                              : Span{0, 0};
        if (next == stroke)
            continue;
        put({strokeStart, i}, stroke);
        stroke = next;
        strokeStart = i;
    }
    put({strokeStart, extent.last}, stroke);
}

void DeviceRaster::AddStepLine(const GLStepLine& line)
{
    const std::uint64_t count = line.Levels().size();
    const QRect& dest = line.DestRect();
    if (count == 0 || dest.isEmpty() || line.LineStyle().Style() == lsNone)
        return;

    const auto edge = [](const Scale& scale, double logical) {
        return static_cast<std::int64_t>(scale.Edge(logical));
    };
    const std::int64_t left = edge(m_x, dest.left());
    const std::int64_t right = std::max(edge(m_x, dest.right() + 1.0), left + 1);
    const std::int64_t top = edge(m_y, dest.top());
    const std::int64_t bottom = std::max(edge(m_y, dest.bottom() + 1.0), top + 1);

    // The pen is a rectangle of whole device pixels. A column shows all positions of the pen that
    // reach it: the levels from the one held before the first of them to the last one reached.
    const double lineWidth = std::max(1, line.LineStyle().Width());
    const auto penSize = [lineWidth](const Scale& scale) {
        return std::max<std::int64_t>(1, truncateToPixel(lineWidth * scale.factor + 0.5));
    };
    const std::int64_t penWidth = penSize(m_x);
    const std::int64_t penHeight = std::min(penSize(m_y), bottom - top);
    const std::int64_t penCentre = truncateToPixel((lineWidth - 1.0) / 2.0 * m_x.factor);
    const auto levelAtEndOf = [&](std::int64_t column) -> std::size_t {
        if (column < 0)
            return 0;
        const auto width = static_cast<std::uint64_t>(right - left);
        const std::uint64_t reached =
            (static_cast<std::uint64_t>(column + 1) * count + width - 1) / width;
        return std::min(reached, count) - 1;
    };
    const auto rowOf = [&](int level) {
        const std::int64_t rise = bottom - top - penHeight;
        return top + rise - (level * rise + 127) / 255;
    };

    Span rows{0, 0};
    int rowsStart = m_x.visible.first;
    const Span columns = m_x.VisibleSpan(static_cast<double>(dest.left()), dest.right() + 1.0);
    for (int x = columns.first; x < columns.last; ++x) {
        const std::int64_t column = x - left + penCentre;
        const auto extremes =
            line.ExtremesOf(levelAtEndOf(column - penWidth), levelAtEndOf(column) + 1);
        const Span next{truncateSaturated<int>(static_cast<double>(rowOf(extremes.max)),
                                               m_y.visible.first, m_y.visible.last),
                        truncateSaturated<int>(static_cast<double>(rowOf(extremes.min) + penHeight),
                                               m_y.visible.first, m_y.visible.last)};
        if (next == rows)
            continue;
        AddDeviceRect({rowsStart, x}, rows);
        rows = next;
        rowsStart = x;
    }
    AddDeviceRect({rowsStart, columns.last}, rows);
}

void DeviceRaster::AddDeviceRect(const Span& columns, const Span& rows)
{
    if (columns.first < columns.last && rows.first < rows.last)
        m_rects.emplace_back(QPoint(columns.first, rows.first),
                             QPoint(columns.last - 1, rows.last - 1));
}

void DeviceRaster::Fill(const QColor& color)
{
    if (m_rects.empty())
        return;
    std::vector<QRectF> rects;
    rects.reserve(m_rects.size());
    for (const QRect& rect : m_rects) {
        rects.emplace_back(QPointF(m_x.Logical(rect.left()), m_y.Logical(rect.top())),
                           QPointF(m_x.Logical(rect.right() + 1), m_y.Logical(rect.bottom() + 1)));
    }
    m_rects.clear();

    m_painter.save();
    m_painter.setRenderHint(QPainter::Antialiasing, false);
    m_painter.setPen(Qt::NoPen);
    m_painter.setBrush(color);
    m_painter.drawRects(rects.data(), static_cast<int>(rects.size()));
    m_painter.restore();
}
