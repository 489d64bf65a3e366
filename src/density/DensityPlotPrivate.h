// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "density/DensityPlot.h"
#include "density/PlotView.h"

#include <QImage>
#include <QPointer>
#include <QRubberBand>
#include <QTimer>

#include <array>

namespace density {

/// What the counting thread hands to the GUI thread.
struct PlotData
{
    SnapshotPtr snapshot;
    std::optional<MaskTest::Result> mask;
    std::vector<std::vector<float>> hits; // traces that touched the mask, the newest first
    std::vector<float> lit;               // a trace or a point; empty: none
};

/// Two cursors each way, by value.
struct Cursors
{
    enum Index { FirstX, SecondX, FirstY, SecondY, Count, None = -1 };
    std::array<double, Count> places{};
    int selected = FirstX;
    bool isShown = false;

    static bool isX(int index) { return index < FirstY; }
};

struct DensityPlot::Private
{
    Private(Kind plotKind, const Counter::Settings& settings)
        : kind(plotKind)
        , shape(settings.shape)
        , view(plotKind == Kind::Constellation)
        , counting(std::make_unique<CountingThread>(settings))
    {}
    /// What the legend, the labels and the line of text leave of a size.
    static QRectF placeOf(const QSize& size, const QFontMetrics& metrics);

    Kind kind;
    std::optional<TraceShape> shape;
    PlotView view;
    PlotData data;
    QImage image; // of the snapshot
    ColorMapping colors;
    Cursors cursors;
    std::vector<QPolygonF> mask;
    std::optional<std::int64_t> litSymbol;
    QString unit;
    double symbolRate = 0.0;
    bool hasHome = false;
    bool isPaused = false;

    bool isAsked = false; // for a count that has not come
    bool isStale = false; // something changed since
    bool isFedElsewhere = false;
    QTimer timer;

    enum class Drag { None, Maybe, Pan, Band, Cursor };
    Drag drag = Drag::None;
    QPoint pressedAt;
    QPointer<QRubberBand> band;

    // The last one, so that the thread ends before what it hands over to goes.
    std::unique_ptr<CountingThread> counting;
};

/// Draws a plot.
struct PlotPainter
{
    const DensityPlot::Private& d;
    QPainter& painter;
    PlotView view;

    PlotPainter(const DensityPlot::Private& plot, QPainter& target, const QSize& size,
                const QFontMetrics& metrics);
    void paint(const QSize& size);
    static QColor groundOf(DensityPlot::Kind kind);

private:
    void paintGround(const QSize& size);
    void paintCounts();
    void paintGridAndLabels();
    void paintMask();
    void paintTrace(const std::vector<float>& trace, const QColor& color);
    void paintCursors();
    void paintHistograms();
    void paintLegend();
    void paintTexts(const QSize& size);
    QString cursorText() const;
    QString symbolText() const;
};

} // namespace density
