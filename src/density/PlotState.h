// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "density/ColorScale.h"
#include "density/CountingThread.h"
#include "density/CursorSnap.h"
#include "density/MaskDrawing.h"
#include "density/PlotData.h"
#include "density/PlotView.h"

#include <QByteArray>
#include <QImage>
#include <QPoint>
#include <QPointer>
#include <QRubberBand>
#include <QThreadPool>
#include <QTimer>

#include <array>
#include <memory>
#include <optional>

namespace density {

/// Two cursors each way, by value.
struct Cursors
{
    enum Index { FirstX, SecondX, FirstY, SecondY, Count, None = -1 };
    std::array<double, Count> places{};
    int selected = FirstX;
    bool isShown = false;

    static bool isX(int index) { return index < FirstY; }
};

/// A mask and what it is placed by, see Mask::placed.
struct PlacedMask
{
    Mask mask;
    double instant = 0.0, low = 0.0, high = 1.0;
};

/// All that a density plot holds.
struct PlotState
{
    explicit PlotState(const Counter::Settings& settings)
        : shape(settings.shape)
        , view(!settings.shape)
        , counting(std::make_unique<CountingThread>(settings))
    {}

    std::optional<TraceShape> shape; // none: a constellation
    PlotView view;
    PlotData data;
    ColorMapping colors;
    QImage frame; // what PlotFrame painted
    QByteArray frameKey;
    QImage ground; // of the plot, in the frame
    Window groundWindow;
    Cursors cursors;
    CursorSnap snap;               // as far as found
    std::int64_t snapSymbols = -1; // of which it was found; -1: none
    bool isSnapAsked = false;
    std::optional<PlacedMask> mask;
    std::vector<QPolygonF> maskPolygons; // as they are tested
    std::optional<MaskDrawing> drawing;  // of a polygon for the mask
    std::optional<std::int64_t> litSymbol;
    QString unit;
    double symbolRate = 0.0;
    TimeUnit timeUnit = TimeUnit::Symbols;
    bool hasHome = false;
    double ratio = 1.0;       // pixels of the device to a logical one
    bool followsSize = false; // cells are pixels of the device
    bool isPaused = false;

    bool isFitAsked = false;              // see DensityPlot::fitCells
    bool isAsked = false;                 // for a count that has not come
    std::int64_t asked = 0, answered = 0; // numbers of the newest count
    bool isStale = false;                 // something changed since
    bool isFedElsewhere = false;
    QTimer timer;
    QTimer resized; // since which the size has not changed

    enum class Drag { None, Maybe, Pan, Band, Cursor };
    Drag drag = Drag::None;
    QPoint pressedAt;
    QPointer<QRubberBand> band;

    std::unique_ptr<CountingThread> counting;
    QThreadPool workers;
};

} // namespace density
