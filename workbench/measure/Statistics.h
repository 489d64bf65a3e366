// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

/// Mean, deviation and extremes of values that come one by one.
class Statistics
{
public:
    void add(double value)
    {
        ++m_count;
        const double step = value - m_mean;
        m_mean += step / static_cast<double>(m_count);
        m_squares += step * (value - m_mean);
        m_lowest = std::min(m_lowest, value);
        m_highest = std::max(m_highest, value);
    }

    std::size_t count() const { return m_count; }
    double mean() const { return m_mean; }
    /// Standard deviation of the values, not an estimate of one that they are drawn from.
    double deviation() const
    {
        return m_count > 0 ? std::sqrt(std::max(m_squares, 0.0) / static_cast<double>(m_count))
                           : 0.0;
    }
    double lowest() const { return m_lowest; }
    double highest() const { return m_highest; }
    double range() const { return m_count > 0 ? m_highest - m_lowest : 0.0; }

private:
    std::size_t m_count = 0;
    double m_mean = 0.0;
    double m_squares = 0.0; // sum about the mean (Welford, Technometrics 4(3), 1962)
    double m_lowest = std::numeric_limits<double>::infinity();
    double m_highest = -std::numeric_limits<double>::infinity();
};
