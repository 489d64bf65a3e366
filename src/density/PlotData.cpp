// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "density/PlotData.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace density {

static constexpr std::size_t mostHitTraces = 50; // of a mask, drawn

PlotData dataOf(Counter& counter, const PlotRequest& request)
{
    PlotData data;
    data.snapshot = counter.snapshot();
    data.range = rangeOf(*data.snapshot);
    data.colors = request.colors;
    data.image = toImage(*data.snapshot, request.colors);
    if (request.groundWindow == data.snapshot->window &&
        request.ground.size() == data.image.size()) {
        data.whole = request.ground;
        data.frameKey = request.frameKey;
        QPainter(&data.whole).drawImage(0, 0, data.image);
    }
    const std::optional<std::int64_t>& litSymbol = request.litSymbol;
    data.errors = counter.errorVectors().figures();
    const KeptSignal& kept = counter.kept();
    std::vector<std::int64_t> wanted;
    if (const MaskTest* test = counter.maskTest()) {
        data.mask = test->result();
        wanted = data.mask->newestHits;
        wanted.resize(std::min(wanted.size(), mostHitTraces));
    }
    if (wanted.empty() && !litSymbol)
        return data;
    const auto samplesAt = [&](std::size_t age) {
        return std::vector<float>(kept.at(age), kept.at(age) + kept.length());
    };
    // Hits come in the order of the kept symbols.
    auto next = wanted.begin();
    for (std::size_t age = 0; age < kept.count(); ++age) {
        const std::int64_t symbol = kept.symbolAt(age);
        if (next != wanted.end() && symbol == *next) {
            data.hits.push_back(samplesAt(age));
            ++next;
        }
        if (symbol == litSymbol && data.lit.empty())
            data.lit = samplesAt(age);
    }
    return data;
}

std::optional<Window> reachOf(const std::optional<TraceShape>& shape, const float* samples,
                              std::size_t count)
{
    float low = std::numeric_limits<float>::infinity(), high = -low;
    for (std::size_t k = 0; k < count; ++k) {
        if (std::isfinite(samples[k])) {
            low = std::min(low, samples[k]);
            high = std::max(high, samples[k]);
        }
    }
    if (!(low <= high))
        return std::nullopt;
    const auto bottom = static_cast<double>(low), top = static_cast<double>(high);
    // A flat line has its own size to spare, and 0 has a unit.
    const double extent = top > bottom ? top - bottom : top != 0.0 ? std::abs(top) : 1.0;
    Window window;
    if (shape) {
        window = {-0.5 * shape->symbolCount, 0.5 * shape->symbolCount, bottom - 0.1 * extent,
                  top + 0.1 * extent};
    } else {
        const double reach = 1.1 * std::max(std::abs(bottom), std::abs(top));
        window = reach > 0.0 ? Window{-reach, reach, -reach, reach} : Window{};
    }
    return window.isUsable() ? std::optional<Window>(window) : std::nullopt;
}

} // namespace density
