// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "density/Raster.h"

#include <vector>

namespace density {

/// Which cells of a grid a trace touches. A trace is the line through its samples: in each column
/// it touches the rows from its lowest point there to its highest, the column's borders included. A
/// bad sample, NaN or infinite, breaks the line; a sample without a good neighbour is a point.
///
/// Rows of samples are computed in double precision; one that is more than 1e12 rows off counts as
/// that far off.
class ORVANE_API TraceRaster : public Raster
{
public:
    /// All three have to be usable.
    TraceRaster(const TraceShape& shape, const Window& window, const GridSize& size);

    const Cells& take(const float* trace) override;
    bool touches(const float* trace, int column, int row) const override;

private:
    struct Piece // of a segment between neighbouring samples: the borders of columns on it
    {
        int sample, firstBorder, lastBorder;
    };
    struct Inner // a sample strictly inside of a column
    {
        int sample, column;
    };

    double rowOf(float level) const;
    double positionOf(int border) const { return m_positions[static_cast<std::size_t>(border)]; }
    double rowAt(const float* trace, double position) const;
    void placeColumns(const Window& window);
    void takeWhole(const float* trace);
    void takeParts(const float* trace);
    void addRuns(const float* trace, int firstSample, int lastSample);
    Cells::Run columnOf(const float* trace, int column, int firstSample, int lastSample) const;

    TraceShape m_shape;
    GridSize m_size;
    double m_bottom, m_rowsPerLevel;
    std::vector<double> m_positions; // of borders of columns, in samples
    std::vector<double> m_fractions; // likewise, from the sample before
    std::vector<Piece> m_pieces;
    std::vector<Inner> m_inner;
    int m_firstEnd = 0; // border at or beyond the last sample

    // Of the trace that was taken.
    Cells m_cells;
    std::vector<double> m_rows;    // of samples
    std::vector<double> m_borders; // rows at borders of columns
};

} // namespace density
