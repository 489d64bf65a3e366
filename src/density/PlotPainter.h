// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "density/Clip.h"
#include "density/DensityExport.h"
#include "density/PlotView.h"

#include <QColor>
#include <QFont>
#include <QImage>
#include <QRect>
#include <QRegion>
#include <QSize>
#include <QTransform>

#include <vector>

class QPainter;

namespace density {

struct PlotState;

/// Paints the part of a density plot that changes while symbols come, over its frame.
class PlotPainter
{
public:
    /// @param view  with its place in the size that is painted.
    PlotPainter(const PlotState& state, QPainter& painter, const PlotView& view);
    /// @param frame    the frame in device pixels, painted first; null when it is there already.
    /// @param exposed  outside of which nothing has to be painted; empty for all of it.
    void paint(const QSize& size, const QImage& frame, const QRegion& exposed = {});
    /// Where the picture is another one since new symbols came.
    /// @param before  the counts that were seen till then.
    static QRegion changedBySymbols(const PlotState& state, const QSize& size, const QFont& font,
                                    const CountRange& before);

private:
    bool paintWhole(const QImage& frame);
    void paintCounts();
    QTransform toPixels(const QPoint& corner) const;
    Clip nearPlace() const;
    void paintLine(const QPolygonF& pixels);
    void paintMask();
    void paintDrawing();
    void paintTrace(const std::vector<float>& trace, const QColor& color);
    void paintCursors();
    void paintHistograms();
    void paintLegendCounts();
    void paintTexts(const QSize& size);
    static QRect legendCountsOf(const PlotView& view, const QSize& size);
    static QRectF textOf(int fromBottom, const QSize& size, const QFont& font);

    const PlotState& m_state;
    QPainter& m_painter;
    const PlotView& m_view;
};

} // namespace density
