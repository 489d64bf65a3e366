// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "density/Raster.h"

namespace density {

Raster::~Raster() = default;

PointRaster::PointRaster(const Window& window, const GridSize& size)
    : m_window(window)
    , m_size(size)
{
    m_cells.rowCount = size.rows;
    m_cells.stride = size.columns + 1;
}

bool PointRaster::find(const float* point, int& column, int& row) const
{
    const double x = (static_cast<double>(point[0]) - m_window.left) *
                     (static_cast<double>(m_size.columns) / m_window.width());
    const double y = (static_cast<double>(point[1]) - m_window.bottom) *
                     (static_cast<double>(m_size.rows) / m_window.height());
    // What is no number is not inside.
    if (!(x >= 0.0 && x < m_size.columns && y >= 0.0 && y < m_size.rows))
        return false;
    column = static_cast<int>(x);
    row = static_cast<int>(y);
    return true;
}

const Cells& PointRaster::take(const float* point)
{
    int column = 0, row = 0;
    m_cells.spans.clear();
    if (find(point, column, row))
        m_cells.spans.push_back({m_cells.placeOf(row, column), m_cells.placeOf(row, column)});
    return m_cells;
}

bool PointRaster::touches(const float* point, int column, int row) const
{
    int foundColumn = 0, foundRow = 0;
    return find(point, foundColumn, foundRow) && foundColumn == column && foundRow == row;
}

} // namespace density
