// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "density/Mask.h"

#include <QPointF>

#include <optional>
#include <vector>

namespace density {

/// A polygon that the user draws for a mask, corner by corner, in the plane of time and level.
class MaskDrawing
{
public:
    /// Adds a corner. Ignores the last corner again, and more corners than a mask may have.
    void add(const QPointF& corner);
    /// Takes the last corner back.
    void takeBack();
    void setPointer(const QPointF& pointer) { m_pointer = pointer; }

    const std::vector<QPointF>& corners() const { return m_corners; }
    const QPointF& pointer() const { return m_pointer; }
    /// The mask with the polygon added, in the mask's units; none when the result is not usable.
    /// @param instant,low,high  see Mask::placed.
    std::optional<Mask> addedTo(const Mask& mask, double instant, double low, double high) const;

private:
    std::vector<QPointF> m_corners;
    QPointF m_pointer;
};

} // namespace density
