// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "density/Raster.h"

#include <cstddef>
#include <vector>

namespace density {

/// Tells which cells of a grid a trace touches. A trace is the line through its samples: in each
/// column it touches the rows from its lowest point there to its highest, the column's borders
/// included. A bad sample, NaN or infinite, breaks the line; a sample without a good neighbour is a
/// point.
///
/// Rows of samples are computed in double precision; a sample that is more than 1e12 rows outside
/// counts as 1e12 rows outside.
class ORVANE_API TraceRaster : public Raster
{
public:
    /// @param shape,window,size  each usable.
    TraceRaster(const TraceShape& shape, const Window& window, const GridSize& size);

    const Cells& take(const float* trace) override;
    bool touches(const float* trace, int column, int row) const override;

    /// Number of samples that are NaN or infinite.
    static std::size_t badSamplesOf(const float* samples, std::size_t count);

private:
    struct Piece // of a segment between neighbouring samples: the borders of columns on it
    {
        int sample, firstBorder, lastBorder;
    };
    struct Kink // a column between two pieces, with the samples [first, last) strictly inside
    {
        int column, firstSample, lastSample;
    };
    struct Geometry;

    double rowOf(float level) const;
    double positionOf(int border) const { return m_positions[static_cast<std::size_t>(border)]; }
    double rowAt(const float* trace, double position) const;
    void placeColumns(const Window& window);
    void placePieces();
    void takeWhole(const float* trace);
    void takeParts(const float* trace);
    void addSpans(const float* trace, int firstSample, int lastSample);
    Cells::Span columnOf(const float* trace, int column, int firstSample, int lastSample) const;

    TraceShape m_shape;
    GridSize m_size;
    double m_bottom, m_rowsPerLevel;
    std::vector<double> m_positions;      // of borders of columns, in samples
    std::vector<double> m_fractions;      // likewise, from the sample before
    int m_firstColumn, m_lastColumn = -1; // that traces touch
    std::vector<Piece> m_pieces;
    std::vector<Kink> m_kinks;
    int m_firstEnd = 0; // border at or beyond the last sample

    // Of the trace that was taken.
    Cells m_cells;              // without a bad sample: of these columns always, whose rows change
    Cells m_parts;              // with one
    std::vector<double> m_rows; // of samples
};

} // namespace density
