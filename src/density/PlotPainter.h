// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "density/PlotView.h"

#include <QColor>

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
    void paint(const QSize& size);

private:
    void paintCounts();
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
