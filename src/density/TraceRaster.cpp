// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "density/TraceRaster.h"

#include <algorithm>

namespace density {

namespace {

std::size_t at(int index) { return static_cast<std::size_t>(index); }

// Beyond, a line is as good as vertical, and its slope still is a number.
constexpr double farthestRow = 1e12;

#if defined(__GNUC__) && defined(__x86_64__)
#define ORVANE_HAS_AVX2_VARIANT
#define ORVANE_INLINE inline __attribute__((always_inline))
#else
#define ORVANE_INLINE inline
#endif

/// The row of a lowest point, and the one after that of a highest: equal outside of the grid, whose
/// upper border is not its own. Without branches, so that a loop does several columns at once.
ORVANE_INLINE int beginOf(double row, double top)
{
    const double inside = row > 0.0 ? row : 0.0;
    return static_cast<int>(inside < top ? inside : top);
}
ORVANE_INLINE int endOf(double row, double top)
{
    const double inside = row > 0.0 ? row : 0.0;
    const int last = static_cast<int>(inside < top - 1.0 ? inside : top - 1.0);
    return last + static_cast<int>(row >= 0.0 ? 1.0 : 0.0);
}

/// The rows [begin, end) of columns from the rows at their borders.
ORVANE_INLINE void cutColumns(const double* borders, int columnCount, double top, int* begins,
                              int* ends)
{
    for (int column = 0; column < columnCount; ++column) {
        const double left = borders[column];
        const double right = borders[column + 1];
        begins[column] = beginOf(left < right ? left : right, top);
        ends[column] = endOf(left < right ? right : left, top);
    }
}

#ifdef ORVANE_HAS_AVX2_VARIANT
// SSE2 has no conversion that the compiler could use for several columns at once. The same numbers.
__attribute__((target("avx2"))) void cutColumnsByAvx2(const double* borders, int columnCount,
                                                      double top, int* begins, int* ends)
{
    cutColumns(borders, columnCount, top, begins, ends);
}
#endif

void cut(const double* borders, int columnCount, double top, int* begins, int* ends)
{
#ifdef ORVANE_HAS_AVX2_VARIANT
    static const bool hasAvx2 = __builtin_cpu_supports("avx2");
    if (hasAvx2)
        return cutColumnsByAvx2(borders, columnCount, top, begins, ends);
#endif
    cutColumns(borders, columnCount, top, begins, ends);
}

} // namespace

TraceRaster::TraceRaster(const TraceShape& shape, const Window& window, const GridSize& size)
    : m_shape(shape)
    , m_size(size)
    , m_bottom(window.bottom)
    , m_rowsPerLevel(size.rows / window.height())
    , m_rows(at(shape.sampleCount))
    , m_borders(at(size.columns + 1))
{
    m_cells.begin.resize(at(size.columns));
    m_cells.end.resize(at(size.columns));
    placeColumns(window);
}

// Where columns begin and end on traces, which is the same for all of them.
void TraceRaster::placeColumns(const Window& window)
{
    const double last = m_shape.sampleCount - 1;
    for (int border = 0; border <= m_size.columns; ++border) {
        const double time =
            window.left + window.width() * (static_cast<double>(border) / m_size.columns);
        m_positions.push_back((time - m_shape.timeOf(0)) * m_shape.samplesPerSymbol());
    }
    m_cells.firstColumn = m_size.columns;
    for (int column = 0; column < m_size.columns; ++column) {
        const double right = positionOf(column + 1);
        if (right < 0.0 || positionOf(column) > last)
            continue;
        m_cells.firstColumn = std::min(m_cells.firstColumn, column);
        m_cells.lastColumn = column;
        int sample = static_cast<int>(std::max(positionOf(column), 0.0));
        for (; sample < m_shape.sampleCount && sample < right; ++sample) {
            if (sample > positionOf(column))
                m_inner.push_back({sample, column});
        }
    }
    for (int border = 0; border <= m_size.columns; ++border) {
        const double position = std::clamp(positionOf(border), 0.0, last);
        const int sample = std::min(static_cast<int>(position), m_shape.sampleCount - 2);
        m_fractions.push_back(position - sample);
        if (border < m_cells.firstColumn || border > m_cells.lastColumn + 1)
            continue;
        if (m_pieces.empty() || m_pieces.back().sample != sample)
            m_pieces.push_back({sample, border, border});
        m_pieces.back().lastBorder = border;
        if (position < last)
            m_firstEnd = border + 1;
    }
    m_firstEnd = std::max(m_firstEnd, m_cells.firstColumn);
}

double TraceRaster::rowOf(float level) const
{
    const double row = (static_cast<double>(level) - m_bottom) * m_rowsPerLevel;
    return std::clamp(row, -farthestRow, farthestRow);
}

const Cells& TraceRaster::take(const float* trace)
{
    m_cells.isWhole = std::all_of(trace, trace + m_shape.sampleCount,
                                  [](float sample) { return std::isfinite(sample); });
    if (m_cells.isWhole)
        takeWhole(trace);
    else
        takeParts(trace);
    return m_cells;
}

void TraceRaster::takeWhole(const float* trace)
{
    for (int k = 0; k < m_shape.sampleCount; ++k)
        m_rows[at(k)] = rowOf(trace[k]);
    const double* const fractions = m_fractions.data();
    double* const borders = m_borders.data();
    for (const Piece& piece : m_pieces) {
        const double row = m_rows[at(piece.sample)];
        const double slope = m_rows[at(piece.sample) + 1] - row;
        for (int border = piece.firstBorder; border <= piece.lastBorder; ++border)
            borders[border] = row + fractions[border] * slope;
    }
    // Exactly there, which the sum above need not be.
    for (int border = m_firstEnd; border <= m_cells.lastColumn + 1; ++border)
        borders[border] = m_rows.back();
    const double top = m_size.rows;
    std::vector<int>& begins = m_cells.begin;
    std::vector<int>& ends = m_cells.end;
    const int first = m_cells.firstColumn;
    const int columnCount = m_cells.lastColumn + 1 - first;
    if (columnCount <= 0)
        return;
    cut(&borders[first], columnCount, top, &begins[at(first)], &ends[at(first)]);
    for (const Inner& inner : m_inner) {
        const double row = m_rows[at(inner.sample)];
        int& begin = begins[at(inner.column)];
        int& end = ends[at(inner.column)];
        begin = std::min(begin, beginOf(row, top));
        end = std::max(end, endOf(row, top));
    }
}

// Each stretch of good samples by itself.
void TraceRaster::takeParts(const float* trace)
{
    std::vector<Cells::Run>& runs = m_cells.runs;
    runs.clear();
    for (int k = 0; k < m_shape.sampleCount; ++k) {
        if (!std::isfinite(trace[k]))
            continue;
        const int first = k;
        while (k + 1 < m_shape.sampleCount && std::isfinite(trace[k + 1]))
            ++k;
        addRuns(trace, first, k);
    }
    // Stretches may share a column.
    std::sort(runs.begin(), runs.end(), [](const Cells::Run& one, const Cells::Run& other) {
        return one.column != other.column ? one.column < other.column : one.begin < other.begin;
    });
    std::size_t kept = 0;
    for (std::size_t k = 1; k < runs.size(); ++k) {
        if (runs[k].column == runs[kept].column && runs[k].begin <= runs[kept].end)
            runs[kept].end = std::max(runs[kept].end, runs[k].end);
        else
            runs[++kept] = runs[k];
    }
    runs.resize(runs.empty() ? 0 : kept + 1);
}

double TraceRaster::rowAt(const float* trace, double position) const
{
    const int sample = static_cast<int>(position);
    const double row = rowOf(trace[sample]);
    const double fraction = position - sample;
    // A stretch may end with this sample.
    return fraction == 0.0 ? row : row + fraction * (rowOf(trace[sample + 1]) - row);
}

// The rows of a column that the samples from first to last touch.
Cells::Run TraceRaster::columnOf(const float* trace, int column, int firstSample,
                                 int lastSample) const
{
    const double left = std::max<double>(positionOf(column), firstSample);
    const double right = std::min<double>(positionOf(column + 1), lastSample);
    if (left > right)
        return {column, 0, 0};
    double low = rowAt(trace, left);
    double high = low;
    const auto include = [&](double row) {
        low = std::min(low, row);
        high = std::max(high, row);
    };
    include(rowAt(trace, right));
    for (int k = static_cast<int>(std::ceil(left)); k < right; ++k)
        include(rowOf(trace[k]));
    return {column, beginOf(low, m_size.rows), endOf(high, m_size.rows)};
}

void TraceRaster::addRuns(const float* trace, int firstSample, int lastSample)
{
    for (int column = m_cells.firstColumn; column <= m_cells.lastColumn; ++column) {
        if (positionOf(column + 1) < firstSample)
            continue;
        if (positionOf(column) > lastSample)
            break;
        const Cells::Run run = columnOf(trace, column, firstSample, lastSample);
        if (run.begin < run.end)
            m_cells.runs.push_back(run);
    }
}

bool TraceRaster::touches(const float* trace, int column, int row) const
{
    if (column < m_cells.firstColumn || column > m_cells.lastColumn)
        return false;
    for (int k = 0; k < m_shape.sampleCount; ++k) {
        if (!std::isfinite(trace[k]))
            continue;
        const int first = k;
        while (k + 1 < m_shape.sampleCount && std::isfinite(trace[k + 1]))
            ++k;
        const Cells::Run run = columnOf(trace, column, first, k);
        if (run.begin <= row && row < run.end)
            return true;
    }
    return false;
}

} // namespace density
