// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <complex>
#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

/// Which point of a modulation was meant by a measured one.
class Decisions
{
public:
    using Complex = std::complex<double>;

    /// @param ideal  points of the modulation, at least two different ones.
    explicit Decisions(const std::vector<Complex>& ideal);

    /// The ideal point that is nearest.
    Complex nearest(const Complex& point) const;
    /// What noise of a variance on each axis lets expect of a point that it may have brought near
    /// another one than was meant.
    struct Expected
    {
        double square;     ///< of what it is off
        Complex ideal;     ///< that was meant, in the mean
        double likelihood; ///< sum over the ideal points, where one that is met has 1
    };
    Expected expected(const Complex& point, double variance) const;
    std::size_t count() const { return m_ideal.size(); }
    /// Distance of the closest points.
    double spacing() const { return m_spacing; }
    /// Mean power of the points.
    double power() const { return m_power; }

    /// Gain and turn with which the ideal points lie on measured ones, by least squares; what is
    /// added to all points does not count. None where the points tell nothing.
    std::optional<Complex> gainOf(const std::vector<Complex>& points) const;
    /// The same of a part of the points, against the gain of the whole: near 1.
    double gainOf(const Complex* points, std::size_t count, const Complex& whole) const;

private:
    /// Different values of the points on an axis.
    class Axis
    {
    public:
        explicit Axis(std::vector<double> values);
        std::size_t count() const { return m_levels.size(); }
        double nearest(double value) const;
        /// Sums over the levels, each with its chance to have been meant against the nearest one's.
        struct Chances
        {
            double total, square, mean; ///< of 1, of the square of what it is off, of the level
            double exponent;            ///< of the nearest one's likelihood, negative
        };
        Chances chances(double value, double variance) const;

    private:
        std::vector<double> m_levels;
        std::vector<double> m_bounds; // between neighbours
    };

    std::vector<Complex> m_ideal;
    Axis m_i;
    Axis m_q;
    bool m_isGrid = false; // each axis is decided by itself
    double m_spacing = 0.0;
    double m_power = 0.0;
};
