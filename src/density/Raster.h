// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "density/DensityTypes.h"
#include "foundations/Export.h"

#include <vector>

namespace density {

/// The cells of a grid that a trace or a point touches, each once.
///
/// A cell has a place, (row + 1) * stride + column. Rows outside of the grid become -1 or rowCount.
///
/// Between two samples a line either rises or falls. Where it crosses the border between two
/// columns, it leaves one and enters the other, so the row at each border says all about such
/// columns, a stretch, and counting writes one number a border. All other columns are spans.
struct Cells
{
    /// Columns [first, last), of which column k goes from border k to k + 1.
    struct Stretch
    {
        int first, last;
        bool isRising;
    };
    /// From a place up to another one in its column.
    struct Span
    {
        int low, high;
    };
    int rowCount = 0;
    int stride = 1;          ///< columns and 1
    std::vector<int> places; ///< of the borders of stretches, of the column to their right
    std::vector<Stretch> stretches;
    std::vector<Span> spans;

    int placeOf(int row, int column) const { return (row + 1) * stride + column; }

    /// Rows [begin, end) of a column; none where they are equal.
    struct Run
    {
        int column, begin, end;
    };
    /// All of them as runs.
    template<class Use> // void(const Run&)
    void forEachRun(const Use& use) const;
};

template<class Use>
void Cells::forEachRun(const Use& use) const
{
    const auto tell = [&](int low, int high) {
        const int begin = low / stride - 1, last = high / stride - 1;
        use(Run{low % stride, begin < 0 ? 0 : begin, last < rowCount ? last + 1 : rowCount});
    };
    for (const Stretch& stretch : stretches) {
        for (int column = stretch.first; column < stretch.last; ++column) {
            const int left = places[static_cast<std::size_t>(column)];
            const int right = places[static_cast<std::size_t>(column) + 1] - 1;
            tell(left < right ? left : right, left < right ? right : left);
        }
    }
    for (const Span& span : spans)
        tell(span.low, span.high);
}

/// Tells which cells of a grid a trace or a point touches. For one thread at a time.
class ORVANE_API Raster
{
public:
    Raster() = default;
    Raster(const Raster&) = delete;
    Raster& operator=(const Raster&) = delete;
    virtual ~Raster();
    /// The cells that a trace or point touches. Valid until the next call.
    /// @param samples  as many as the trace has, or I and Q; only read.
    virtual const Cells& take(const float* samples) = 0;
    /// Whether a trace or point touches a cell, in agreement with take. The result of the last take
    /// stays valid.
    virtual bool touches(const float* samples, int column, int row) const = 0;
};

/// Points, two samples each, I and Q. A point touches one cell; the left and the lower border
/// belong to the cell. A point that is NaN or infinite touches none.
class ORVANE_API PointRaster : public Raster
{
public:
    /// @param window,size  both usable.
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
