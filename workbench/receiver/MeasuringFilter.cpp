// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/receiver/MeasuringFilter.h"

#include "workbench/sources/Constants.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include <liquid/liquid.h>

namespace {

using Filter = ReceiverSettings::Filter;

constexpr unsigned gaussianReach = 2; // symbols to either side

/// Symbols to either side after which a raised cosine's tail is 60 dB down.
unsigned reachOf(double rollOff)
{
    return static_cast<unsigned>(std::clamp(std::ceil(4.0 / rollOff), 8.0, 24.0));
}

} // namespace

std::vector<float> measuringFilter::tapsOf(const ReceiverSettings& settings, int perSymbol)
{
    const auto filter = settings.usedFilter();
    if (!filter)
        return {};
    const auto length = static_cast<unsigned>(perSymbol);
    const double rollOff = settings.rollOff.value_or(ReceiverSettings::usualRollOff);
    const auto part = static_cast<float>(rollOff);
    std::vector<float> taps;
    if (*filter == Filter::RootRaisedCosine || *filter == Filter::RaisedCosine) {
        const unsigned reach = reachOf(rollOff);
        taps.resize(2 * std::size_t{length} * reach + 1);
        if (*filter == Filter::RootRaisedCosine)
            liquid_firdes_rrcos(length, reach, part, 0.0F, taps.data());
        else
            liquid_firdes_rcos(length, reach, part, 0.0F, taps.data());
    } else if (*filter == Filter::Gaussian) {
        taps.resize(2 * std::size_t{length} * gaussianReach + 1);
        liquid_firdes_gmsktx(length, gaussianReach, part, 0.0F, taps.data());
    } else { // a symbol long: of an even number of samples, both ends count half
        taps.resize(length % 2 == 0 ? length + 1 : length);
        for (std::size_t k = 0; k < taps.size(); ++k) {
            const double place =
                static_cast<double>(k) - 0.5 * static_cast<double>(taps.size() - 1);
            const bool isHalf = length % 2 == 0 && (k == 0 || k + 1 == taps.size());
            taps[k] = *filter == Filter::Boxcar
                          ? (isHalf ? 0.5F : 1.0F)
                          : static_cast<float>(std::cos(pi * place / perSymbol));
        }
    }
    const float sum = std::accumulate(taps.begin(), taps.end(), 0.0F);
    for (float& tap : taps)
        tap /= sum;
    return taps;
}

int measuringFilter::edgeOf(const ReceiverSettings& settings)
{
    const auto filter = settings.usedFilter();
    if (!filter)
        return 0;
    if (*filter != Filter::RootRaisedCosine && *filter != Filter::RaisedCosine)
        return 1;
    const double rollOff = settings.rollOff.value_or(ReceiverSettings::usualRollOff);
    return static_cast<int>(std::clamp(std::ceil(2.0 / rollOff), 4.0, 12.0));
}
