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

    m_counts.clear();
    m_runs.Clear(m_size, m_lineWidth);
    if (m_lineWidth > PixelRuns::thickest) {
        const auto add = [this](int column, int first, int end) { m_runs.Add(column, first, end); };
        for (std::size_t i = 1; i < m_points.size(); ++i)
            Trace(m_points[i - 1], m_points[i], add);
    } else {
        AddRuns();
    }
    if (picture.size() != m_size || picture.format() != backdrop.format())
        picture = QImage(m_size, backdrop.format());
    m_runs.Draw(curve.color, backdrop, picture);
}

// Counts the segments over each pixel.
void CurveRaster::CountSegments()
{
    const auto width = static_cast<std::size_t>(m_size.width());
    const auto height = static_cast<std::size_t>(m_size.height());
    // A run of pixels in a column is noted where it begins and where it ends; the sums of these
    // notes down the columns are the counts.
    m_counts.assign(width * (height + 1), 0);
    Count* const counts = m_counts.data();
    const auto note = [counts, width](int column, int first, int last) {
        Count* at = counts + column;
        ++at[static_cast<std::size_t>(first) * width];
        --at[static_cast<std::size_t>(last) * width];
    };
    for (std::size_t i = 1; i < m_points.size(); ++i)
        Trace(m_points[i - 1], m_points[i], note);
    for (std::size_t i = width; i < width * height; ++i)
        counts[i] = static_cast<Count>(counts[i] + counts[i - width]);
}

bool CurveRaster::CanFollow(const ChartPicture::Curve& curve, double ratio, const QSize& size) const
{
    if (!m_curve || ratio != m_ratio || size != m_size || !curve.IsContinuationOf(*m_curve))
        return false;
    const std::uint64_t left = curve.yState.first - m_curve->yState.first;
    const std::uint64_t entered = curve.yState.end - m_curve->yState.end;
    // Values come before others go.
    return left <= m_points.size() / 2 && entered <= m_points.size() / 2 &&
           m_points.size() + entered <= mostSegments;
}

void CurveRaster::Follow(const ChartPicture::Curve& curve, const QImage& backdrop, QImage& picture)
{
    const auto left = static_cast<std::size_t>(curve.yState.first - m_curve->yState.first);
    const auto entered = static_cast<std::size_t>(curve.yState.end - m_curve->yState.end);
    m_curve = curve;
    if (m_counts.empty())
        CountSegments();

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
    m_points.resize(m_points.size() + count);
    Point* point = m_points.data() + (m_points.size() - count);
    for (std::size_t i = size - count; i < size;) {
        const auto x = curve.xData->Part(i);
        const auto y = curve.yData->Part(i);
        const std::size_t length = std::min({x.count, y.count, size - i});
        for (std::size_t k = 0; k < length; ++k)
            *point++ = {xCentre + xFactor * x.values[k], yCentre + yFactor * y.values[k]};
        i += length;
    }
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
    if (IsInside(from) && IsInside(to))
        return true;
    const double dx = to.x - from.x;
    const double dy = to.y - from.y;
    if (!std::isfinite(dx) || !std::isfinite(dy))
        return false;
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

void CurveRaster::AddRuns()
{
    bool wasInside = false;
    for (std::size_t i = 0; i < m_points.size(); ++i) {
        const bool isInside = IsInside(m_points[i]);
        const bool isWhole = wasInside && isInside;
        wasInside = isInside;
        if (i == 0)
            continue;
        Point from = m_points[i - 1];
        Point to = m_points[i];
        if (!isWhole) {
            // Copies, so that points that need no cut stay in the processor.
            Point cutFrom = from;
            Point cutTo = to;
            if (!Clip(cutFrom, cutTo))
                continue;
            from = cutFrom;
            to = cutTo;
        }
        AddRuns(from, to);
    }
}

// Adds a clipped segment. The same pixels as by Trace, several columns at once.
inline void CurveRaster::AddRuns(Point from, Point to)
{
    if (to.x < from.x)
        std::swap(from, to);
    const double dx = to.x - from.x;
    const double dy = to.y - from.y;
    if (std::abs(dy) > dx) {
        const double fromX = from.x - m_shift;
        const double toX = to.x - m_shift;
        const int firstColumn = static_cast<int>(std::floor(fromX));
        const int lastColumn = static_cast<int>(std::floor(toX));
        const double slope = firstColumn == lastColumn ? 0.0 : dy / (toX - fromX);
        m_runs.Add(
            PixelRuns::Steep{toX, to.y, slope, firstColumn, lastColumn, edge(from.y), edge(to.y)});
    } else {
        const int firstColumn = edge(from.x);
        const int lastColumn = edge(to.x) - 1;
        if (firstColumn <= lastColumn)
            m_runs.Add(PixelRuns::Flat{from.x, from.y - m_shift + m_lineWidth, dy / dx, firstColumn,
                                       lastColumn});
    }
}
