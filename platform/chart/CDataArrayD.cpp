// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/chart/CDataArrayD.h"

#include <algorithm>
#include <limits>

namespace OndoChartDisplay {

void CDataArrayD::Append(const double* values, std::size_t count)
{
    m_end += count;
    if (m_mode != modeKeepNewest) {
        m_values.insert(m_values.end(), values, values + count);
        return;
    }
    if (count > m_capacity) {
        values += count - m_capacity;
        count = m_capacity;
    }
    const std::size_t room = std::min(count, m_capacity - m_values.size());
    if (room > 0) {
        Straighten();
        m_values.insert(m_values.end(), values, values + room);
    }
    for (std::size_t done = room; done < count;) {
        const std::size_t part = std::min(count - done, m_values.size() - m_oldest);
        std::copy_n(values + done, part, m_values.data() + m_oldest);
        done += part;
        m_oldest = m_oldest + part == m_values.size() ? 0 : m_oldest + part;
    }
}

void CDataArrayD::Replace(const double* values, std::size_t count)
{
    std::vector<double> contents(values, values + count);
    m_values.swap(contents);
    m_oldest = 0;
    m_end = count;
    ++m_generation;
    DropExcess();
}

void CDataArrayD::SetMode(int mode)
{
    m_mode = mode;
    Straighten();
    DropExcess();
}

void CDataArrayD::SetCapacity(std::size_t capacity)
{
    m_capacity = capacity;
    Straighten();
    DropExcess();
}

double CDataArrayD::At(std::size_t index) const
{
    if (index >= m_values.size())
        return std::numeric_limits<double>::quiet_NaN();
    const std::size_t untilWrap = m_values.size() - m_oldest;
    return m_values[index < untilWrap ? m_oldest + index : index - untilWrap];
}

CDataArrayD::Stretch CDataArrayD::Part(std::size_t index) const
{
    const std::size_t untilWrap = m_values.size() - m_oldest;
    if (index < untilWrap)
        return {m_values.data() + m_oldest + index, untilWrap - index};
    return {m_values.data() + (index - untilWrap), m_values.size() - index};
}

std::vector<double> CDataArrayD::Values() const
{
    std::vector<double> result(m_values);
    std::rotate(result.begin(), result.begin() + static_cast<std::ptrdiff_t>(m_oldest),
                result.end());
    return result;
}

CDataArrayD::State CDataArrayD::GetState() const
{
    return {m_generation, m_end - m_values.size(), m_end};
}

void CDataArrayD::Straighten()
{
    std::rotate(m_values.begin(), m_values.begin() + static_cast<std::ptrdiff_t>(m_oldest),
                m_values.end());
    m_oldest = 0;
}

// The contents begin with the oldest value here.
void CDataArrayD::DropExcess()
{
    if (m_mode == modeKeepNewest && m_values.size() > m_capacity)
        m_values.erase(m_values.begin(), m_values.end() - static_cast<std::ptrdiff_t>(m_capacity));
}

} // namespace OndoChartDisplay
