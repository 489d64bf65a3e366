// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/glbase/GLLineStyle.h"

#include <QRect>

#include <cstddef>
#include <vector>

enum eStepLineStyle : int {
    slStep = 0, ///< Each level is held until the next one.
};

/// A sequence of levels 0 to 255 drawn as a step line: the levels spread evenly over the width of
/// the destination rectangle, level 0 at its bottom edge, level 255 at its top.
///
/// In a rectangle of W x H device pixels, level i of n starts in column trunc(i * W / n) and is
/// held up to the column in which the next one starts, where a vertical stroke joins the two; level
/// l stands in row H - 1 - round(l * (H - 1) / 255). With more levels than columns, a column thus
/// shows one stroke over all levels that start in it and the one before them, so that the trace
/// never breaks. A wider pen, or a device pixel ratio above 1, lets the strokes grow to the right
/// and downwards, inside the rectangle. Lines of any style but lsNone are drawn solid.
///
/// The levels are copied and prepared once (extremes over blocks), so that drawing costs by the
/// pixels covered, not by the levels. Holds no GL objects. Storage is kept from one SetData to the
/// next.
class ORVANE_PLATFORM_API GLStepLine
{
public:
    /// Smallest and largest of some levels.
    struct Extremes
    {
        unsigned char min;
        unsigned char max;
    };

    void SetStepLineStyle(eStepLineStyle style) { m_stepStyle = style; }
    void SetLineStyle(const GLLineStyle& style) { m_lineStyle = style; }
    /// Rectangle in the pixel frame of the widget that draws; may reach outside of it. A width or
    /// height of 0 or less draws nothing and leaves a null rectangle.
    void SetDestRect(int left, int top, int width, int height);
    /// Takes a copy of count levels. A null pointer or a count of 0 empties the line.
    void SetData(const unsigned char* levels, std::size_t count);

    eStepLineStyle StepLineStyle() const { return m_stepStyle; }
    const GLLineStyle& LineStyle() const { return m_lineStyle; }
    const QRect& DestRect() const { return m_destRect; }
    const std::vector<unsigned char>& Levels() const { return m_levels; }
    /// Smallest and largest of the levels [first, last), 0 <= first < last <= Levels().size().
    /// Costs by the logarithm of the count.
    Extremes ExtremesOf(std::size_t first, std::size_t last) const;
    /// Has the processor fetch what ExtremesOf reads for a range that begins or ends at a level.
    void Expect(std::size_t level) const;

private:
    void BuildPyramid();

    eStepLineStyle m_stepStyle = slStep;
    GLLineStyle m_lineStyle;
    QRect m_destRect;
    std::vector<unsigned char> m_levels;
    std::vector<Extremes> m_blocks;         // all layers of the pyramid, finest first
    std::vector<std::size_t> m_layerStarts; // index in m_blocks at which each layer starts
};
