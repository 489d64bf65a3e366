// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QPolygonF>
#include <QRectF>

#include <vector>

namespace density {

/// Cuts off what lies outside of a rectangle. After a deep zoom, ends of lines lie millions of
/// pixels away: a painter takes seconds for such a line, and to move its ends would turn it.
class Clip
{
public:
    explicit Clip(const QRectF& inside)
        : m_inside(inside)
    {}
    /// The parts of an open line that lie inside; points that are not finite break it.
    std::vector<QPolygonF> line(const QPolygonF& points) const;
    /// The part of an area that lies inside; empty where there is none, and for corners that are
    /// not finite. An area of several parts stays one, joined along the edge of the rectangle.
    QPolygonF area(const QPolygonF& corners) const;

private:
    QRectF m_inside;
};

} // namespace density
