// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "density/PlotView.h"

#include <QColor>
#include <QCoreApplication>
#include <QFontMetrics>

#include <vector>

class QPainter;

namespace density {

struct PlotState;

/// Draws a density plot.
class PlotPainter
{
    Q_DECLARE_TR_FUNCTIONS(density::PlotPainter)
public:
    PlotPainter(const PlotState& state, QPainter& painter, const QSize& size,
                const QFontMetrics& metrics);
    void paint(const QSize& size);

    static QColor groundOf(bool isEye);
    /// What the legend, the labels and the lines of text leave of a size.
    static QRectF placeOf(const QSize& size, const QFontMetrics& metrics);

private:
    void paintGround(const QSize& size);
    void paintCounts();
    void paintGridAndLabels();
    void paintMask();
    void paintDrawing();
    void paintTrace(const std::vector<float>& trace, const QColor& color);
    void paintCursors();
    void paintHistograms();
    void paintLegend();
    void paintTexts(const QSize& size);

    const PlotState& m_state;
    QPainter& m_painter;
    PlotView m_view;
};

} // namespace density
