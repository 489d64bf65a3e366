// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "density/Raster.h"
#include "foundations/Export.h"

#include <cstdint>
#include <vector>

namespace density {

/// Counts of the cells of a grid. A trace counts once in each cell that it touches.
///
/// Of a column that a trace runs through, only the first row and the row after the last matter, as
/// +1 and -1 of a difference between rows: as cheap for a steep edge as for a flat top. Where a
/// line passes from one column to the next, the end of the one and the begin of the other are one
/// number, in a table of rising lines or one of falling ones. All three tables are 16-bit and go
/// into 64-bit counts before they could overflow, so that nothing overflows before 2^63 traces,
/// which is 292,000 years at 1 MBd. A trace with a weight is added to each of its cells instead.
///
/// Memory: 14 bytes a cell; 8 more once it fades. For one thread at a time.
class ORVANE_API HitMap
{
public:
    /// @param size  usable; the largest grid takes 1.5 GB.
    explicit HitMap(const GridSize& size);

    /// Counts a trace or a point, +1, or takes it away again, -1.
    /// @param cells  from a raster of this grid.
    void count(const Cells& cells, int sign);
    /// Counts a trace or a point with a weight, > 0 and finite.
    void weigh(const Cells& touched, double weight);
    /// Multiplies all weights, not the counts, by a factor of at least 0.
    void fade(double factor);
    void clear();

    /// Counts and weights of all cells, row by row from the bottom.
    /// @param factor  multiplies the weights in the result.
    std::vector<double> counts(double factor = 1.0);

    const GridSize& size() const { return m_size; }

private:
    using Table = std::vector<std::int16_t>;
    void settle();

    GridSize m_size;
    // By the places of Cells: differences to the row below, and borders that lines pass.
    Table m_steps, m_rising, m_falling;
    std::vector<std::int64_t> m_counts;
    std::vector<double> m_weights; // empty: none
    int m_pending = 0;             // traces and points in the steps
};

} // namespace density
