// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "density/DensityTypes.h"
#include "foundations/Export.h"

#include <vector>

namespace density {

/// The cells of a grid that a trace or a point touches. None is named twice.
struct Cells
{
    /// Rows [begin, end) of a column.
    struct Run
    {
        int column, begin, end;
    };
    /// Whether they are a run in each of neighbouring columns: then they are in begin and end, else
    /// in runs.
    bool isWhole = false;
    int firstColumn = 0, lastColumn = -1; ///< of begin and end, which have an entry a column
    std::vector<int> begin, end;
    std::vector<Run> runs;
};

/// Tells which cells of a grid something touches that is made of so many samples. Any one thread.
class ORVANE_API Raster
{
public:
    Raster() = default;
    Raster(const Raster&) = delete;
    Raster& operator=(const Raster&) = delete;
    virtual ~Raster();
    /// The cells of what the samples tell, which are only read. Valid until the next call.
    virtual const Cells& take(const float* samples) = 0;
    /// Whether it touches a cell: just what take says. Leaves what was taken alone.
    virtual bool touches(const float* samples, int column, int row) const = 0;
};

/// Points of I and Q, two samples each: a point is in one cell, of whose borders the left and the
/// lower are its own. One that is NaN or infinite is in none.
class ORVANE_API PointRaster : public Raster
{
public:
    /// Both have to be usable.
    PointRaster(const Window& window, const GridSize& size);

    const Cells& take(const float* point) override;
    bool touches(const float* point, int column, int row) const override;

private:
    bool find(const float* point, int& column, int& row) const;

    Window m_window;
    GridSize m_size;
    Cells m_cells;
};

} // namespace density
