// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "density/ColorScale.h"
#include "density/Counter.h"
#include "density/DensityExport.h"
#include "density/MaskTest.h"

#include <QByteArray>
#include <QImage>

#include <optional>
#include <vector>

namespace density {

/// What the counting thread hands to the GUI thread.
struct PlotData
{
    SnapshotPtr snapshot;
    CountRange range;
    ColorMapping colors;
    QImage image;        // of the snapshot, in these colours
    QImage whole;        // the same on its ground; null where that is that of another window
    QByteArray frameKey; // of the ground
    std::optional<MaskTest::Result> mask;
    std::vector<std::vector<float>> hits; // traces that touched the mask, the newest first
    std::vector<float> lit;               // a trace or a point; empty: none
    ErrorVectors::Figures errors;
};

/// What the GUI thread asks for.
struct PlotRequest
{
    ColorMapping colors;
    std::optional<std::int64_t> litSymbol; // whose trace or point is wanted
    QImage ground;                         // of the frame, where cells are pixels; may be null
    Window groundWindow;
    QByteArray frameKey;
};
PlotData dataOf(Counter& counter, const PlotRequest& request);

/// What samples reach, with a tenth to spare; none without a good one.
std::optional<Window> reachOf(const std::optional<TraceShape>& shape, const float* samples,
                              std::size_t count);

} // namespace density
