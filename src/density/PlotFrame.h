// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "density/DensityTypes.h"
#include "density/PlotView.h"

#include <QByteArray>
#include <QColor>
#include <QCoreApplication>
#include <QFontMetrics>

class QPainter;

namespace density {

struct PlotState;

/// The part of a density plot that does not change while symbols come: ground, grid, labels, and
/// the colours of the legend. It also says where each part of the plot is.
class PlotFrame
{
    Q_DECLARE_TR_FUNCTIONS(density::PlotFrame)
public:
    /// @param view  with its place in the size that is painted.
    PlotFrame(const PlotState& state, QPainter& painter, const PlotView& view);
    void paint(const QSize& size);
    /// A key of all that the picture depends on: pictures of one key are the same.
    static QByteArray keyOf(const PlotState& state, const QSize& size, double ratio,
                            const QFont& font);

    static QColor groundOf(bool isEye);
    /// The place of the counts in a size, beside legend, labels and lines of text.
    /// @param ratio  device pixels to a logical pixel, of which the place has whole ones.
    static QRectF placeOf(const QSize& size, const QFontMetrics& metrics, double ratio);
    /// The cells of a place: device pixels or, where those are too many, squares of them.
    static GridSize gridOf(const QRectF& place, double ratio);
    /// A place in device pixels.
    static QRect pixelsOf(const QRectF& place, double ratio);
    static QRectF legendOf(const QRectF& place);

private:
    void fillPixels(const QRectF& rect, const QColor& fill);
    QString titleOf(const char* axis) const;
    void paintX();
    void paintY();
    void paintLegend();

    const PlotState& m_state;
    QPainter& m_painter;
    const PlotView& m_view;
    const double m_pixel; // of the device
};

} // namespace density
