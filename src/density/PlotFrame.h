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

/// Of a density plot what stays while symbols come: ground, grid, labels, and the colours of the
/// legend. And where everything is.
class PlotFrame
{
    Q_DECLARE_TR_FUNCTIONS(density::PlotFrame)
public:
    /// @param view  with its place in the size that is painted.
    PlotFrame(const PlotState& state, QPainter& painter, const PlotView& view);
    void paint(const QSize& size);
    /// Of all that the picture depends on: where it is another, the picture may be, too.
    static QByteArray keyOf(const PlotState& state, const QSize& size, double ratio,
                            const QFont& font);

    static QColor groundOf(bool isEye);
    /// What the legend, the labels and the lines of text leave of a size: whole cells.
    /// @param ratio  pixels of the device to a logical one.
    static QRectF placeOf(const QSize& size, const QFontMetrics& metrics, double ratio);
    /// The cells of a place: each a pixel of the device or, where those are too many, a square of
    /// them.
    static GridSize gridOf(const QRectF& place, double ratio);
    /// A place in pixels of the device.
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
