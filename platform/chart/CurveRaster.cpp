// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/chart/CurveRaster.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace {

/// More could overlap in one pixel than a count holds.
constexpr std::size_t mostSegments = std::numeric_limits<std::uint16_t>::max();

/// The pixel edge nearest to a coordinate that is not negative.
int edge(double coordinate)
{
    constexpr double half = 0.5;
    return static_cast<int>(coordinate + half);
}

QRgb* line(QImage& image, int row) { return reinterpret_cast<QRgb*>(image.scanLine(row)); }

const QRgb* line(const QImage& image, int row)
{
    return reinterpret_cast<const QRgb*>(image.constScanLine(row));
}

} // namespace

void CurveRaster::StartAfresh(const ChartPicture::Curve& curve, double ratio,
                              const QImage& backdrop, QImage& picture)
{
    m_curve = curve;
    m_ratio = ratio;
    m_size = backdrop.size();
    m_lineWidth = std::max(1, static_cast<int>(std::lround(curve.lineWidth * ratio)));
    m_shift = 0.5 * (m_lineWidth - 1);
    SetClip(curve.area, m_size);
    m_points.clear();
    AppendPoints(curve, std::min(curve.xData->Size(), curve.yData->Size()));

    const auto width = static_cast<std::size_t>(m_size.width());
    const std::size_t size = width * (static_cast<std::size_t>(m_size.height()) + 1);
    // A run of pixels in a column is noted where it begins and where it ends; the sums of these
    // notes down the columns are the counts. A round has no more segments than a count can hold.
    const std::size_t segments = m_points.empty() ? 0 : m_points.size() - 1;
    std::size_t done = 0;
    do {
        const std::size_t end = std::min(segments, done + mostSegments);
        m_counts.assign(size, 0);
        Count* counts = m_counts.data();
        const auto note = [counts, width](int column, int first, int last) {
            Count* at = counts + column;
            ++at[static_cast<std::size_t>(first) * width];
            --at[static_cast<std::size_t>(last) * width];
        };
        for (std::size_t i = done; i < end; ++i)
            Trace(m_points[i], m_points[i + 1], note);
        Light(done == 0 ? backdrop : picture, picture);
        done = end;
    } while (done < segments);
    if (segments > mostSegments)
        m_curve.reset(); // the counts are those of the last round
}

bool CurveRaster::CanFollow(const ChartPicture::Curve& curve, double ratio, const QSize& size) const
{
    if (!m_curve || ratio != m_ratio || size != m_size || !curve.IsContinuationOf(*m_curve))
        return false;
    const std::uint64_t left = curve.yState.first - m_curve->yState.first;
    const std::uint64_t entered = curve.yState.end - m_curve->yState.end;
    return left <= m_points.size() / 2 && entered <= m_points.size() / 2 &&
           curve.yData->Size() <= mostSegments;
}

void CurveRaster::Follow(const ChartPicture::Curve& curve, const QImage& backdrop, QImage& picture)
{
    const auto left = static_cast<std::size_t>(curve.yState.first - m_curve->yState.first);
    const auto entered = static_cast<std::size_t>(curve.yState.end - m_curve->yState.end);
    m_curve = curve;

    const auto width = static_cast<std::size_t>(m_size.width());
    const auto stride = static_cast<std::size_t>(picture.bytesPerLine()) / sizeof(QRgb);
    const auto backdropStride = static_cast<std::size_t>(backdrop.bytesPerLine()) / sizeof(QRgb);
    QRgb* const pixels = line(picture, 0);
    const QRgb* const ground = line(backdrop, 0);
    Count* const counts = m_counts.data();
    const QRgb color = curve.color;

    const auto add = [=](int column, int first, int last) {
        const auto x = static_cast<std::size_t>(column);
        for (auto row = static_cast<std::size_t>(first); row < static_cast<std::size_t>(last);
             ++row) {
            if (counts[row * width + x]++ == 0)
                pixels[row * stride + x] = color;
        }
    };
    const auto remove = [=](int column, int first, int last) {
        const auto x = static_cast<std::size_t>(column);
        for (auto row = static_cast<std::size_t>(first); row < static_cast<std::size_t>(last);
             ++row) {
            if (--counts[row * width + x] == 0)
                pixels[row * stride + x] = ground[row * backdropStride + x];
        }
    };

    const std::size_t old = m_points.size();
    AppendPoints(curve, entered);
    for (std::size_t i = std::max<std::size_t>(old, 1); i < m_points.size(); ++i)
        Trace(m_points[i - 1], m_points[i], add);
    for (std::size_t i = 0; i < left && i + 1 < m_points.size(); ++i)
        Trace(m_points[i], m_points[i + 1], remove);
    m_points.erase(m_points.begin(), m_points.begin() + static_cast<std::ptrdiff_t>(left));
}

std::vector<QPolygonF> CurveRaster::Lines(const ChartPicture::Curve& curve)
{
    CurveRaster raster;
    const QRect& area = curve.area;
    raster.SetClip(area, QSize(area.left() + area.width(), area.top() + area.height()));
    raster.AppendPoints(curve, std::min(curve.xData->Size(), curve.yData->Size()));
    std::vector<QPolygonF> lines;
    for (std::size_t i = 1; i < raster.m_points.size(); ++i) {
        Point from = raster.m_points[i - 1];
        Point to = raster.m_points[i];
        if (!raster.Clip(from, to))
            continue;
        const QPointF start(from.x, from.y);
        if (lines.empty() || lines.back().last() != start)
            lines.emplace_back(QVector<QPointF>{start});
        lines.back() << QPointF(to.x, to.y);
    }
    return lines;
}

// Appends the newest points of a curve.
void CurveRaster::AppendPoints(const ChartPicture::Curve& curve, std::size_t count)
{
    const double xFactor = curve.x.Factor() * m_ratio;
    const double xCentre = curve.x.Centre() * m_ratio;
    const double yFactor = curve.y.Factor() * m_ratio;
    const double yCentre = curve.y.Centre() * m_ratio;
    const std::size_t size = std::min(curve.xData->Size(), curve.yData->Size());
    m_points.reserve(m_points.size() + count);
    for (std::size_t i = size - count; i < size; ++i)
        m_points.push_back(
            {xCentre + xFactor * curve.xData->At(i), yCentre + yFactor * curve.yData->At(i)});
}

void CurveRaster::SetClip(const QRect& area, const QSize& size)
{
    // A coordinate right below an edge still belongs to the pixel before it.
    constexpr double below = 1.0 / 1024;
    const auto clamped = [](double value, int most) {
        return std::max(0.0, std::min(value, static_cast<double>(most)));
    };
    m_left = clamped(area.left() * m_ratio, size.width());
    m_top = clamped(area.top() * m_ratio, size.height());
    m_right =
        clamped((area.left() + static_cast<double>(area.width())) * m_ratio, size.width()) - below;
    m_bottom =
        clamped((area.top() + static_cast<double>(area.height())) * m_ratio, size.height()) - below;
}

// Cuts a segment to the clip (by the bounds of its parameter, after Liang and Barsky); false when
// nothing is left of it.
bool CurveRaster::Clip(Point& from, Point& to) const
{
    const double dx = to.x - from.x;
    const double dy = to.y - from.y;
    if (!std::isfinite(dx) || !std::isfinite(dy))
        return false;
    const auto isInside = [this](const Point& point) {
        return point.x >= m_left && point.x <= m_right && point.y >= m_top && point.y <= m_bottom;
    };
    if (isInside(from) && isInside(to))
        return true;
    double enter = 0.0;
    double leave = 1.0;
    const auto cut = [&enter, &leave](double distance, double direction) {
        // Inside is where distance + t * direction >= 0.
        if (direction > 0.0)
            enter = std::max(enter, -distance / direction);
        else if (direction < 0.0)
            leave = std::min(leave, -distance / direction);
        else if (distance < 0.0)
            leave = -1.0;
    };
    cut(from.x - m_left, dx);
    cut(m_right - from.x, -dx);
    cut(from.y - m_top, dy);
    cut(m_bottom - from.y, -dy);
    if (!(enter <= leave))
        return false;
    const Point start = from;
    const auto at = [&](double t) {
        return Point{std::max(m_left, std::min(start.x + t * dx, m_right)),
                     std::max(m_top, std::min(start.y + t * dy, m_bottom))};
    };
    from = at(enter);
    to = at(leave);
    return true;
}

// Puts the pixels of a segment as runs in columns: put(column, first row, row after the last).
template<class Put>
void CurveRaster::Trace(Point from, Point to, const Put& put) const
{
    if (!Clip(from, to))
        return;
    if (to.x < from.x)
        std::swap(from, to);
    if (std::abs(to.y - from.y) > to.x - from.x)
        TraceSteep(from, to, put);
    else
        TraceFlat(from, to, put);
}

template<class Put>
void CurveRaster::TraceSteep(const Point& from, const Point& to, const Put& put) const
{
    const double fromX = from.x - m_shift;
    const double toX = to.x - m_shift;
    const int lastColumn = static_cast<int>(std::floor(toX));
    const double slope = (to.y - from.y) / (toX - fromX); // not used where it is infinite
    int row = edge(from.y);
    for (int column = static_cast<int>(std::floor(fromX)); column <= lastColumn; ++column) {
        const int nextRow = edge(column == lastColumn ? to.y : to.y - (toX - (column + 1)) * slope);
        if (row != nextRow) {
            const int first = std::min(row, nextRow);
            const int last = std::max(row, nextRow);
            const int begin = std::max(column, 0);
            const int end = std::min(column + m_lineWidth, m_size.width());
            for (int x = begin; x < end; ++x)
                put(x, first, last);
        }
        row = nextRow;
    }
}

template<class Put>
void CurveRaster::TraceFlat(const Point& from, const Point& to, const Put& put) const
{
    const int firstColumn = edge(from.x);
    const int lastColumn = edge(to.x);
    if (firstColumn == lastColumn)
        return;
    const double slope = (to.y - from.y) / (to.x - from.x);
    // Never negative, so that the conversion rounds down.
    const double fromY = from.y - m_shift + m_lineWidth;
    for (int column = firstColumn; column < lastColumn; ++column) {
        const int row = static_cast<int>(fromY + (column + 0.5 - from.x) * slope) - m_lineWidth;
        put(column, std::max(row, 0), std::min(row + m_lineWidth, m_size.height()));
    }
}

// Sums the notes to counts, and draws the pixels that have one over the backdrop, which may be the
// picture itself.
void CurveRaster::Light(const QImage& backdrop, QImage& picture)
{
    const int width = m_size.width();
    if (picture.size() != m_size || picture.format() != backdrop.format())
        picture = QImage(m_size, backdrop.format());
    m_running.assign(static_cast<std::size_t>(width), 0);
    Count* running = m_running.data();
    const QRgb color = m_curve->color;
    for (int row = 0; row < m_size.height(); ++row) {
        Count* counts = m_counts.data() + static_cast<std::ptrdiff_t>(row) * width;
        const QRgb* ground = line(backdrop, row);
        QRgb* pixels = line(picture, row);
        for (int x = 0; x < width; ++x) {
            const auto count = static_cast<Count>(running[x] + counts[x]);
            // Read even where it is not needed, so that there is no branch.
            const QRgb behind = ground[x];
            running[x] = count;
            counts[x] = count;
            pixels[x] = count ? color : behind;
        }
    }
}
