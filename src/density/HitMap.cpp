// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "density/HitMap.h"

#include <algorithm>
#include <limits>

namespace density {

namespace {

std::size_t at(int index) { return static_cast<std::size_t>(index); }

// Of a column and a row, one trace changes a step by 1 at most.
constexpr int mostPending = std::numeric_limits<std::int16_t>::max();

} // namespace

HitMap::HitMap(const GridSize& size)
    : m_size(size)
    , m_steps(size.cellCount() + at(size.columns))
    , m_counts(size.cellCount())
{}

void HitMap::count(const Cells& cells, int sign)
{
    if (m_pending == mostPending)
        settle();
    ++m_pending;
    std::int16_t* const steps = m_steps.data();
    const auto columns = static_cast<std::ptrdiff_t>(m_size.columns);
    const auto add = [&](int column, int row, int change) {
        std::int16_t& step = steps[row * columns + column];
        step = static_cast<std::int16_t>(step + change);
    };
    if (cells.isWhole) {
        const int* const begin = cells.begin.data();
        const int* const end = cells.end.data();
        for (int column = cells.firstColumn; column <= cells.lastColumn; ++column) {
            add(column, begin[column], sign);
            add(column, end[column], -sign);
        }
        return;
    }
    for (const Cells::Run& run : cells.runs) {
        add(run.column, run.begin, sign);
        add(run.column, run.end, -sign);
    }
}

void HitMap::weigh(const Cells& touched, double weight)
{
    m_weights.resize(m_size.cellCount());
    const auto add = [&](int column, int begin, int end) {
        double* const cells = m_weights.data() + column;
        for (int row = begin; row < end; ++row)
            cells[at(row) * at(m_size.columns)] += weight;
    };
    if (touched.isWhole) {
        for (int column = touched.firstColumn; column <= touched.lastColumn; ++column)
            add(column, touched.begin[at(column)], touched.end[at(column)]);
        return;
    }
    for (const Cells::Run& run : touched.runs)
        add(run.column, run.begin, run.end);
}

void HitMap::fade(double factor)
{
    for (double& weight : m_weights)
        weight *= factor;
}

void HitMap::clear()
{
    std::fill(m_steps.begin(), m_steps.end(), std::int16_t{0});
    std::fill(m_counts.begin(), m_counts.end(), 0);
    m_weights.clear();
    m_pending = 0;
}

// From differences to counts.
void HitMap::settle()
{
    if (m_pending == 0)
        return;
    m_pending = 0;
    const std::size_t columns = at(m_size.columns);
    std::vector<std::int32_t> sums(columns);
    for (std::size_t row = 0; row < at(m_size.rows); ++row) {
        const std::int16_t* const steps = m_steps.data() + row * columns;
        std::int64_t* const counts = m_counts.data() + row * columns;
        for (std::size_t column = 0; column < columns; ++column) {
            sums[column] += steps[column];
            counts[column] += sums[column];
        }
    }
    std::fill(m_steps.begin(), m_steps.end(), std::int16_t{0});
}

std::vector<double> HitMap::counts(double factor)
{
    settle();
    std::vector<double> result(m_counts.begin(), m_counts.end());
    for (std::size_t cell = 0; cell < m_weights.size(); ++cell)
        result[cell] += m_weights[cell] * factor;
    return result;
}

} // namespace density
