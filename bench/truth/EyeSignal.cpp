// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "EyeSignal.h"

#include <algorithm>
#include <cmath>

double EyeSignal::step(double time) const
{
    switch (edge) {
    case Edge::RaisedCosine:
        return 0.5 + 0.5 * std::sin(pi * std::clamp(time / edgeWidth, -0.5, 0.5));
    case Edge::Gaussian:
        return 0.5 * std::erfc(-time / edgeWidth / std::sqrt(2.0));
    case Edge::Held:
        break;
    }
    return time < 0.0 ? 0.0 : 1.0;
}

double EyeSignal::slope() const
{
    if (edge == Edge::Held)
        return std::numeric_limits<double>::infinity();
    return edge == Edge::Gaussian ? 1.0 / (std::sqrt(2.0 * pi) * edgeWidth) : 0.5 * pi / edgeWidth;
}

double EyeSignal::edgeJitter(double distance) const
{
    // Noise n moves the crossing to where the step is 0.5 - n / distance. The second term of the
    // inverse, expanded, adds as much to the variance: the edges bend away from their tangent.
    const double relative = noise / distance;
    const double bend = (edge == Edge::Gaussian ? 2.0 * pi : 4.0) * relative * relative;
    const double ofNoise = relative / slope();
    return std::sqrt(jitter * jitter + sineJitter * sineJitter + ofNoise * ofNoise * (1.0 + bend));
}

Signal EyeSignal::make(Random& random) const
{
    constexpr std::size_t reach = 4; // symbols over which an edge lasts, and more
    const double period = samplesPerSymbol / (1.0 + clockPpm * 1e-6);
    const double start = random.part();
    const double phase = random.phase();
    const auto size = static_cast<std::size_t>(symbolCount) + 2 * reach + 2;
    std::vector<double> sent(size);
    std::vector<double> edges(size); // time at which a symbol begins
    for (std::size_t k = 0; k < size; ++k) {
        sent[k] =
            isAlternating
                ? (k % 2 > 0 ? levels.back() : levels.front())
                : levels[static_cast<std::size_t>(random.below(static_cast<int>(levels.size())))];
        const auto index = static_cast<double>(k);
        edges[k] = index + jitter * random.gauss() +
                   sineJitter * std::sqrt(2.0) * std::sin(2.0 * pi * index / sinePeriod + phase);
        if (k > 0)
            edges[k] += 0.5 * lag *
                        (sent[k] > sent[k - 1]   ? 1.0
                         : sent[k] < sent[k - 1] ? -1.0
                                                 : 0.0);
    }
    const auto count = static_cast<std::size_t>(period * symbolCount);
    const std::vector<double> added =
        noise > 0.0 ? random.noise(count, noiseBandwidth / period) : std::vector<double>(count);
    Signal signal;
    for (std::size_t n = 0; n < count; ++n) {
        const double time = static_cast<double>(n) / period + start + static_cast<double>(reach);
        const auto here = static_cast<std::size_t>(time);
        double value = sent[here - reach];
        for (std::size_t k = here - reach + 1; k <= here + reach; ++k)
            value += (sent[k] - sent[k - 1]) * step(time - edges[k]);
        signal.emplace_back(value + noise * added[n]);
    }
    return signal;
}
