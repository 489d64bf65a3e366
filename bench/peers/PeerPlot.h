// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QRgb>
#include <QVector>

#include <memory>
#include <vector>

class QImage;
class QWidget;

/// What a plotting library shall draw.
struct PeerSignal
{
    enum class Kind {
        Series, ///< One line, X ascends.
        Traces, ///< Several lines.
        Points,
    };
    struct Trace
    {
        QVector<double> x;
        QVector<double> y;
    };
    Kind kind = Kind::Series;
    std::vector<Trace> traces;
    double xMin = 0.0;
    double xMax = 1.0;
    double yMin = -1.0;
    double yMax = 1.0;
    QRgb ground = 0xff000000U;
    QRgb groundEnd = 0xff000000U;
    QRgb grid = 0xff404040U;
    QRgb trace = 0xffffffffU;
};

/// A plot by another library, set as its manual recommends for speed: no antialiasing, pens of one
/// pixel, points thinned out to pixels, sorted data not sorted again. It paints grounds and grids
/// like ours and, into a picture, no labels.
class PeerPlot
{
public:
    PeerPlot() = default;
    virtual ~PeerPlot() = default;
    PeerPlot(const PeerPlot&) = delete;
    PeerPlot& operator=(const PeerPlot&) = delete;

    virtual void setYRange(double min, double max) = 0;
    virtual void paint(QImage& picture) = 0;
    /// The plot with its axes, to be shown; lives as long as this.
    virtual QWidget& window() = 0;
    /// Asks the window to paint everything anew.
    virtual void replot() = 0;
};

/// Null where the library was not there when this was built.
/// @param isBuffered  whether points go into a picture first, which pays for many.
std::unique_ptr<PeerPlot> makeQwtPlot(const PeerSignal& signal, bool isBuffered = false);
std::unique_ptr<PeerPlot> makeCustomPlot(const PeerSignal& signal);
