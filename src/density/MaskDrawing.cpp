// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "density/MaskDrawing.h"

namespace density {

void MaskDrawing::add(const QPointF& corner)
{
    m_pointer = corner;
    const bool isAgain = !m_corners.empty() && m_corners.back() == corner;
    if (!isAgain && m_corners.size() < Mask::mostPoints)
        m_corners.push_back(corner);
}

void MaskDrawing::takeBack()
{
    if (!m_corners.empty())
        m_corners.pop_back();
}

std::optional<Mask> MaskDrawing::addedTo(const Mask& mask, double instant, double low,
                                         double high) const
{
    Mask result = mask;
    QPolygonF polygon;
    for (const QPointF& corner : m_corners)
        polygon << mask.pointAt(corner, instant, low, high);
    result.polygons.push_back(polygon);
    return result.isUsable() ? std::optional<Mask>(result) : std::nullopt;
}

} // namespace density
