// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/receiver/Interpolation.h"

#include "workbench/sources/Constants.h"

#include <algorithm>
#include <cmath>

#include <liquid/liquid.h>

namespace {

constexpr std::size_t phaseCount = 512;
constexpr double windowShape = 7.0; // of Kaiser, about 70 dB

std::vector<float> table()
{
    constexpr auto width = static_cast<std::size_t>(2 * Interpolation::reach);
    std::vector<float> weights((phaseCount + 1) * width);
    for (std::size_t phase = 0; phase <= phaseCount; ++phase) {
        const double part = static_cast<double>(phase) / phaseCount;
        double sum = 0.0;
        std::vector<double> row(width);
        for (std::size_t k = 0; k < width; ++k) {
            const double t =
                static_cast<double>(k) - static_cast<double>(Interpolation::reach) + 1.0 - part;
            const double sine = std::abs(t) < 1e-9 ? 1.0 : std::sin(pi * t) / (pi * t);
            const double edge = t / static_cast<double>(Interpolation::reach);
            const auto shape =
                static_cast<float>(windowShape * std::sqrt(std::max(1.0 - edge * edge, 0.0)));
            row[k] = sine * double{liquid_besseli0f(shape)};
            sum += row[k];
        }
        for (std::size_t k = 0; k < width; ++k)
            weights[phase * width + k] = static_cast<float>(row[k] / sum);
    }
    return weights;
}

} // namespace

const float* Interpolation::weightsOf(double part)
{
    static const std::vector<float> weights = table();
    const auto phase = static_cast<std::size_t>(std::lround(part * phaseCount));
    return &weights[std::min(phase, phaseCount) * static_cast<std::size_t>(2 * reach)];
}
