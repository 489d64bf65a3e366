// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "density/PlotView.h"

#include <QColor>
#include <QImage>
#include <QTransform>

#include <vector>

class QPainter;

namespace density {

struct PlotState;

/// Paints what comes with the symbols into a density plot, over its frame.
class PlotPainter
{
public:
    /// @param view  with its place in the size that is painted.
    PlotPainter(const PlotState& state, QPainter& painter, const PlotView& view);
    /// @param frame  in pixels of the device, on which that is painted; null where it is already.
    void paint(const QSize& size, const QImage& frame);

private:
    bool paintWhole(const QImage& frame);
    void paintCounts();
    QTransform toPixels(const QPoint& corner) const;
    QPointF nearPixel(const QPointF& value) const;
    void paintMask();
    void paintDrawing();
    void paintTrace(const std::vector<float>& trace, const QColor& color);
    void paintCursors();
    void paintHistograms();
    void paintLegendCounts();
    void paintTexts(const QSize& size);

    const PlotState& m_state;
    QPainter& m_painter;
    const PlotView& m_view;
};

} // namespace density
