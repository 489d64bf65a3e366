// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <vector>

/// Slope of a quantity over time, for example of a phase, from several stretches, which share one
/// slope but have different starts.
class Regression
{
public:
    struct Slope
    {
        double value = 0.0;
        /// Standard deviation of the slope, from the scatter of the points around the lines. Errors
        /// may be correlated over up to a sixteenth of a stretch (method of batch means: Law,
        /// "Simulation Modeling and Analysis", chapter 9). None when there are fewer than 4 points.
        std::optional<double> deviation;
    };

    /// Begins a new stretch with the next point.
    void startStretch();
    /// Adds a point. Beyond a million points, neighbours are joined to their means: two, then
    /// four...
    /// @param weight  > 0: the inverse of the variance, up to a factor.
    void add(double time, double value, double weight = 1.0);
    std::size_t count() const { return m_count; }
    /// The slope by least squares; none when no stretch has two points.
    std::optional<Slope> slope() const;
    /// Joins each stretch to the one before when it continues its line, up to a multiple of an
    /// ambiguity, as after a phase was found anew.
    void join(double ambiguity);

private:
    struct Point
    {
        double time, value, weight;
    };

    static Point mean(const Point& a, const Point& b);
    double scatterAbout(double slope) const;
    void thin();

    std::vector<std::vector<Point>> m_stretches;
    std::size_t m_count = 0;
    std::size_t m_mostKept = std::size_t{1} << 20;
    std::size_t m_kept = 0;   // points of the stretches that are kept, each the mean of...
    std::size_t m_each = 1;   // ...so many, of which...
    std::size_t m_inLast = 0; // ...the last one has so many so far
};
