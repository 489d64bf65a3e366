// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "density/Clip.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace density {

namespace {

/// How far points are inside of the four edges of a rectangle.
std::array<double, 4> depths(const QPointF& point, const QRectF& rect)
{
    return {point.x() - rect.left(), rect.right() - point.x(), point.y() - rect.top(),
            rect.bottom() - point.y()};
}

bool isFinite(const QPointF& point) { return std::isfinite(point.x()) && std::isfinite(point.y()); }

QPointF between(const QPointF& from, const QPointF& to, double part)
{
    return from * (1.0 - part) + to * part;
}

} // namespace

std::vector<QPolygonF> Clip::line(const QPolygonF& points) const
{
    std::vector<QPolygonF> parts;
    bool isOpen = false; // the last part ends with the last point
    for (int k = 0; k + 1 < points.size(); ++k) {
        const QPointF& from = points[k];
        const QPointF& to = points[k + 1];
        double start = 0.0;
        double end = isFinite(from) && isFinite(to) ? 1.0 : -1.0;
        const auto before = depths(from, m_inside);
        const auto after = depths(to, m_inside);
        for (std::size_t edge = 0; edge < before.size() && start <= end; ++edge) {
            const double crossing = before[edge] / (before[edge] - after[edge]);
            if (before[edge] < 0.0 && after[edge] < 0.0)
                end = -1.0;
            else if (before[edge] < 0.0)
                start = std::max(start, crossing);
            else if (after[edge] < 0.0)
                end = std::min(end, crossing);
        }
        const bool isSeen = start <= end;
        if (isSeen && !(isOpen && start == 0.0))
            parts.push_back(QPolygonF() << (start == 0.0 ? from : between(from, to, start)));
        if (isSeen)
            parts.back() << (end == 1.0 ? to : between(from, to, end));
        isOpen = isSeen && end == 1.0;
    }
    return parts;
}

QPolygonF Clip::area(const QPolygonF& corners) const
{
    if (!std::all_of(corners.begin(), corners.end(), isFinite))
        return {};
    QPolygonF area = corners;
    for (std::size_t edge = 0; edge < 4; ++edge) {
        QPolygonF rest;
        for (int k = 0; k < area.size(); ++k) {
            const QPointF& from = area[k];
            const QPointF& to = area[(k + 1) % area.size()];
            const double before = depths(from, m_inside)[edge];
            const double after = depths(to, m_inside)[edge];
            if (before >= 0.0)
                rest << from;
            if ((before < 0.0) != (after < 0.0))
                rest << between(from, to, before / (before - after));
        }
        area = rest;
    }
    return area;
}

} // namespace density
