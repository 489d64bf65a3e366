// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "density/Normal.h"

#include <cmath>
#include <limits>

namespace density::normal {

double density(double place) { return std::exp(-0.5 * place * place) / std::sqrt(2.0 * M_PI); }

double tail(double place) { return 0.5 * std::erfc(place / std::sqrt(2.0)); }

double placeOfTail(double probability)
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    if (std::isnan(probability))
        return probability;
    if (probability > 0.5)
        return -placeOfTail(1.0 - probability);
    if (!(probability > 0.0))
        return infinity;
    // A start within 3e-3 (Abramowitz and Stegun, 26.2.22), then Newton's steps of the logarithm,
    // in which the tail is nearly a parabola.
    const double t = std::sqrt(-2.0 * std::log(probability));
    double place = t - (2.30753 + 0.27061 * t) / (1.0 + t * (0.99229 + 0.04481 * t));
    for (int step = 0; step < 4; ++step) {
        const double now = tail(place);
        if (!(now > 0.0))
            break;
        place += std::log(now / probability) * now / density(place);
    }
    return place;
}

} // namespace density::normal
