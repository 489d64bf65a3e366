// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/glbase/GLLineStyle.h"

#include <QLineF>

#include <vector>

/// Line segments of one style, in the pixel frame of the widget that draws them. Coordinates that
/// are not finite drop the segment when it is drawn; huge ones are clipped.
class ORVANE_PLATFORM_API GLLines
{
public:
    void SetLineStyle(const GLLineStyle& style) { m_style = style; }
    void AddLine(float x1, float y1, float x2, float y2);
    /// Removes the segments; the style and the storage stay.
    void Clear() { m_lines.clear(); }

    const GLLineStyle& LineStyle() const { return m_style; }
    const std::vector<QLineF>& Lines() const { return m_lines; }

private:
    GLLineStyle m_style;
    std::vector<QLineF> m_lines;
};
