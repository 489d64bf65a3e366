// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <vector>

/// Slope of a quantity over time, such as of a phase, from stretches that each have a beginning of
/// their own: all have one slope, each its own start.
class Regression
{
public:
    struct Slope
    {
        double value = 0.0;
        /// Standard deviation of the value, from how the points scatter about the lines. Points of
        /// up to a sixteenth of a stretch may have errors in common (method of batch means: Law,
        /// "Simulation Modeling and Analysis", chapter 9). None where points are fewer than 4.
        std::optional<double> deviation;
    };

    /// The next point belongs to another stretch.
    void startStretch();
    /// Of more than a million points neighbours become their means, twos, then fours...
    /// @param weight  > 0: the inverse of the variance, up to a factor.
    void add(double time, double value, double weight = 1.0);
    std::size_t count() const { return m_count; }
    /// Least squares; none where there are no two points in a stretch.
    std::optional<Slope> slope() const;
    /// Makes one stretch of those that go on where the ones before them point to, up to a multiple
    /// of an ambiguity, such as that of a phase that was found anew.
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
    std::size_t m_kept = 0;   // points of the stretches, each the mean of...
    std::size_t m_each = 1;   // ...so many, of which...
    std::size_t m_inLast = 0; // ...the last one has so many yet
};
