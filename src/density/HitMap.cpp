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
    , m_steps(at(size.rows + 3) * at(size.columns + 1))
    , m_rising(m_steps.size())
    , m_falling(m_steps.size())
    , m_counts(size.cellCount())
{}

void HitMap::count(const Cells& cells, int sign)
{
    if (m_pending == mostPending)
        settle();
    ++m_pending;
    const std::ptrdiff_t stride = m_size.columns + 1;
    const auto add = [](std::int16_t& number, int change) {
        number = static_cast<std::int16_t>(number + change);
    };
    std::int16_t* const steps = m_steps.data();
    const int* const places = cells.places.data();
    for (const Cells::Stretch& stretch : cells.stretches) {
        // Where the first column begins or ends, and the last one.
        const int first = places[stretch.first];
        const int last = places[stretch.last] - 1;
        add(steps[stretch.isRising ? first : first + stride], stretch.isRising ? sign : -sign);
        add(steps[stretch.isRising ? last + stride : last], stretch.isRising ? -sign : sign);
        std::int16_t* const passed = stretch.isRising ? m_rising.data() : m_falling.data();
        for (int border = stretch.first + 1; border < stretch.last; ++border)
            add(passed[places[border]], sign);
    }
    for (const Cells::Span& span : cells.spans) {
        add(steps[span.low], sign);
        add(steps[span.high + stride], -sign);
    }
}

void HitMap::weigh(const Cells& touched, double weight)
{
    m_weights.resize(m_size.cellCount());
    touched.forEachRun([&](const Cells::Run& run) {
        double* const cells = m_weights.data() + run.column;
        for (int row = run.begin; row < run.end; ++row)
            cells[at(row) * at(m_size.columns)] += weight;
    });
}

void HitMap::fade(double factor)
{
    for (double& weight : m_weights)
        weight *= factor;
}

void HitMap::clear()
{
    for (Table* table : {&m_steps, &m_rising, &m_falling})
        std::fill(table->begin(), table->end(), std::int16_t{0});
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
    const std::size_t columns = at(m_size.columns), stride = columns + 1;
    // What is below the grid ends or begins in its first row.
    std::vector<std::int32_t> sums(columns);
    for (std::size_t column = 0; column < columns; ++column)
        sums[column] = m_steps[column] + m_rising[column] + m_falling[column + 1];
    for (std::size_t row = 0; row < at(m_size.rows); ++row) {
        const std::size_t place = (row + 1) * stride;
        const std::int16_t* const steps = m_steps.data() + place;
        const std::int16_t* const rising = m_rising.data() + place;
        const std::int16_t* const falling = m_falling.data() + place;
        const std::int16_t* const risingBelow = rising - stride + 1;
        const std::int16_t* const fallingBelow = falling - stride;
        std::int64_t* const counts = m_counts.data() + row * columns;
        for (std::size_t column = 0; column < columns; ++column) {
            sums[column] += steps[column] + rising[column] - risingBelow[column] +
                            falling[column + 1] - fallingBelow[column];
            counts[column] += sums[column];
        }
    }
    for (Table* table : {&m_steps, &m_rising, &m_falling})
        std::fill(table->begin(), table->end(), std::int16_t{0});
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
