// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "Bounds.h"

#include <algorithm>

double bounds::phasePart(const std::vector<Complex>& points, double esN0)
{
    const double noise = 1.0 / esN0; // of both axes
    double spacing = 2.0, size = 0.0;
    for (const Complex& point : points) {
        size = std::max({size, std::abs(point.real()), std::abs(point.imag())});
        for (const Complex& other : points) {
            if (&other != &point)
                spacing = std::min(spacing, std::abs(point - other));
        }
    }
    const double sigma = std::sqrt(0.5 * noise);
    if (spacing > 12.0 * sigma) // one decision in a thousand million is wrong
        return 1.0;
    const double step = sigma / 3.0;
    const int reach = static_cast<int>(size / step) + 18;
    double information = 0.0;
    for (int i = -reach; i <= reach; ++i) {
        for (int q = -reach; q <= reach; ++q) {
            const Complex received(i * step, q * step);
            double total = 0.0;
            Complex meant = 0.0;
            for (const Complex& point : points) {
                const double chance = std::exp(-std::norm(received - point) / noise);
                total += chance;
                meant += chance * point;
            }
            if (!(total > 0.0))
                continue;
            const double score = 2.0 / noise * (received * std::conj(meant / total)).imag();
            information += score * score * total;
        }
    }
    information *= step * step / (pi * noise * static_cast<double>(points.size()));
    return std::min(information * noise / 2.0, 1.0);
}
