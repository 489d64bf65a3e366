// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/receiver/Vectors.h"

#include <complex>
#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

/// Decides which point of a modulation was sent.
class Decisions
{
public:
    using Complex = std::complex<double>;

    /// @param ideal  points of the modulation, at least two different ones.
    explicit Decisions(const std::vector<Complex>& ideal);

    /// The ideal point that is nearest.
    Complex nearest(const Complex& point) const
    {
        return m_isGrid ? Complex(m_i.nearest(point.real()), m_q.nearest(point.imag()))
                        : nearestOfAll(point);
    }
    /// Expectation for a measured point in noise of a variance on each axis, when several points
    /// may have been sent.
    struct Expected
    {
        double square;     ///< mean square distance from the point that was sent
        Complex ideal;     ///< mean of the points that may have been sent
        double likelihood; ///< sum over the ideal points; an exact hit has 1
    };
    Expected expected(const Complex& point, double variance) const;
    /// The same of some points at once, in single numbers.
    static constexpr std::size_t together = floatsWidth;
    void expected(const float* i, const float* q, float variance, float* squares,
                  float* likelihoods) const;
    std::size_t count() const { return m_ideal.size(); }
    /// Distance of the closest points.
    double spacing() const { return m_spacing; }
    /// Mean power of the points.
    double power() const { return m_power; }

    /// Gain and turn that bring the ideal points onto measured ones, by least squares; an offset of
    /// all points does not count. None when the points tell nothing.
    std::optional<Complex> gainOf(const std::vector<Complex>& points) const;
    /// The same for a part of the points, relative to the gain of all points: near 1.
    double gainOf(const Complex* points, std::size_t count, const Complex& whole) const;

private:
    /// The different values of the points on an axis.
    class Axis
    {
    public:
        explicit Axis(std::vector<double> values);
        std::size_t count() const { return m_levels.size(); }
        double nearest(double value) const
        {
            std::size_t index = 0; // there are few bounds: to look at all is faster than to search
            for (const double bound : m_bounds)
                index += value >= bound ? 1 : 0;
            return m_levels[index];
        }
        const std::vector<float>& singleLevels() const { return m_singleLevels; }
        /// Sums over the levels, each with its chance to have been meant against the nearest one's.
        struct Chances
        {
            double total, square, mean; ///< of 1, of the square of what it is off, of the level
            double exponent;            ///< of the nearest one's likelihood, negative
        };
        Chances chances(double value, double variance) const;

    private:
        std::vector<double> m_levels;
        std::vector<float> m_singleLevels;
        std::vector<double> m_bounds; // between neighbours
    };

    Complex nearestOfAll(const Complex& point) const;

    std::vector<Complex> m_ideal;
    std::vector<float> m_idealI, m_idealQ;
    Axis m_i;
    Axis m_q;
    bool m_isGrid = false; // each axis is decided by itself
    double m_spacing = 0.0;
    double m_power = 0.0;
};
