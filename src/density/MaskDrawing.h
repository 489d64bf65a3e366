// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "density/Mask.h"

#include <QPointF>

#include <optional>
#include <vector>

namespace density {

/// A polygon of a mask that is drawn by hand, corner by corner, in the plane of time and level.
class MaskDrawing
{
public:
    /// One corner more; the last one again, and more than a mask may have, are ignored.
    void add(const QPointF& corner);
    /// Takes the last corner back.
    void takeBack();
    void setPointer(const QPointF& pointer) { m_pointer = pointer; }

    const std::vector<QPointF>& corners() const { return m_corners; }
    const QPointF& pointer() const { return m_pointer; }
    /// A mask with the polygon added, in the mask's units; none where that cannot be used.
    /// @param instant,low,high  see Mask::placed.
    std::optional<Mask> addedTo(const Mask& mask, double instant, double low, double high) const;

private:
    std::vector<QPointF> m_corners;
    QPointF m_pointer;
};

} // namespace density
