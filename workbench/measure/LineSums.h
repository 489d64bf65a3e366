// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <vector>

/// Sums for a straight line through points, by least squares.
struct LineSums
{
    void add(double x, double y, double weight = 1.0)
    {
        n += weight;
        sx += weight * x;
        sy += weight * y;
        sxx += weight * x * x;
        sxy += weight * x * y;
    }
    /// Value of the line at a place; there must be points.
    double at(double x) const
    {
        const double determinant = n * sxx - sx * sx;
        const double slope = determinant > 1e-9 * n * sxx ? (n * sxy - sx * sy) / determinant : 0.0;
        return sy / n + slope * (x - sx / n);
    }
    double n = 0.0, sx = 0.0, sy = 0.0, sxx = 0.0, sxy = 0.0;
};

/// For each point the value of the line through the points around it.
/// @param places   ascending, preferably around 0; as many as values.
/// @param weights  > 0, as many as values; empty: all 1.
/// @param reach    number of points on either side.
inline std::vector<double> slidingLine(const std::vector<double>& places,
                                       const std::vector<double>& values,
                                       const std::vector<double>& weights, double reach)
{
    std::vector<double> result;
    LineSums line;
    std::size_t begin = 0, end = 0;
    const auto weightOf = [&weights](std::size_t k) { return weights.empty() ? 1.0 : weights[k]; };
    for (const double place : places) {
        for (; end < places.size() && places[end] <= place + reach; ++end)
            line.add(places[end], values[end], weightOf(end));
        for (; places[begin] < place - reach; ++begin)
            line.add(places[begin], values[begin], -weightOf(begin));
        result.push_back(line.at(place));
    }
    return result;
}
