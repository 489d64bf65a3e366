// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "FrequencySignal.h"

#include <algorithm>

namespace {

double normal(double x) { return 0.5 * std::erfc(-x / std::sqrt(2.0)); }

/// Integral of normal.
double ramp(double x) { return x * normal(x) + std::exp(-0.5 * x * x) / std::sqrt(2.0 * pi); }

} // namespace

double FrequencySignal::sigma() const
{
    return std::sqrt(std::log(2.0)) / (2.0 * pi * bandwidthTime);
}

double FrequencySignal::share() const
{
    return bandwidthTime > 0.0 ? 2.0 * normal(0.5 / sigma()) - 1.0 : 1.0;
}

double FrequencySignal::integral(double time) const
{
    if (bandwidthTime <= 0.0)
        return std::clamp(time + 0.5, 0.0, 1.0);
    return sigma() * (ramp((time + 0.5) / sigma()) - ramp((time - 0.5) / sigma()));
}

Signal FrequencySignal::make(Random& random) const
{
    constexpr std::size_t reach = 4; // symbols over which a pulse lasts, and more
    const double period = samplesPerSymbol / (1.0 + clockPpm * 1e-6);
    const double start = random.part();
    const double turn = random.phase();
    const double noise = std::sqrt(samplesPerSymbol * std::pow(10.0, -snr / 10.0));
    std::vector<double> sent;
    std::vector<double> sums = {0.0}; // of the symbols before
    const auto size = static_cast<std::size_t>(symbolCount) + 2 * reach + 2;
    for (std::size_t k = 0; k < size; ++k) {
        sent.push_back(2.0 * random.below(levelCount) / (levelCount - 1.0) - 1.0);
        sums.push_back(sums.back() + sent.back());
    }
    Signal signal;
    for (int n = 0; n < static_cast<int>(period * symbolCount); ++n) {
        const double time = n / period + start + static_cast<double>(reach);
        const auto first = static_cast<std::size_t>(time) - reach;
        double integrated = sums[first];
        for (std::size_t k = first; k <= first + 2 * reach; ++k)
            integrated += sent[k] * integral(time - static_cast<double>(k));
        const double cycles =
            offset * n / samplesPerSymbol + deviation * integrated * period / samplesPerSymbol;
        signal.push_back(std::polar(1.0, turn + 2.0 * pi * cycles) + noise * random.complexGauss());
    }
    return signal;
}
