// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <vector>

/// Finds by how much lines turn from each to the next one: turned back by it, they sum up best.
class TurnSearch
{
public:
    /// @param step   between turns that are tried, rad: a third of what the lines tell apart.
    /// @param range  largest turn either way, rad.
    TurnSearch(double step, double range);

    /// @param i, q  of the lines, at least one.
    double of(const std::vector<double>& i, const std::vector<double>& q);

private:
    double m_step;
    std::size_t m_count;           // turns that are tried, with one more at either end...
    std::vector<double> m_cosines; // ...filled up to whole vectors...
    std::vector<double> m_sines;
    std::vector<double> m_powers; // ...and those of what the lines sum up to
};
