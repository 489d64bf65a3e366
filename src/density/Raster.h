// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "density/DensityTypes.h"
#include "foundations/Export.h"

#include <vector>

namespace density {

/// The cells of a grid that a trace or a point touches. None is named twice.
///
/// A place is (row + 1) * stride + column, of a row within [-1, rowCount]: one of these where it is
/// outside.
///
/// Between two samples, a line either rises or falls, and a border between two columns there is
/// where it leaves the one and enters the other: all that there is to tell of such columns is the
/// row at each border, so that counting writes one number a border. Other columns are spans.
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
