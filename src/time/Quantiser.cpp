// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "time/Quantiser.h"

#include "platform/base/Saturate.h"

#include <algorithm>

namespace {

constexpr std::size_t chunkLength = 32;

/// Calls work(index of the first sample) for chunks that cover all samples; the last chunk may
/// overlap the one before. There must be at least one chunk of samples.
template<class Work>
void forEachChunk(std::size_t count, const Work& work)
{
    std::size_t index = 0;
    for (; index + chunkLength <= count; index += chunkLength)
        work(index);
    if (index < count)
        work(count - chunkLength);
}

/// Independent extents: of the first samples of all chunks, of the second ones, and so on.
struct Lanes
{
    explicit Lanes(const double* samples)
    {
        for (std::size_t i = 0; i < chunkLength; ++i)
            low[i] = high[i] = static_cast<float>(samples[i]);
    }
    void take(const double* samples)
    {
        for (std::size_t i = 0; i < chunkLength; ++i) {
            const auto sample = static_cast<float>(samples[i]);
            low[i] = sample < low[i] ? sample : low[i];
            high[i] = sample > high[i] ? sample : high[i];
            nanCount[i] += sample != sample ? 1 : 0;
        }
    }
    /// Joins the second half of the lanes to the first, and so on, to the first lane.
    template<std::size_t count = chunkLength / 2>
    void fold()
    {
        for (std::size_t i = 0; i < count; ++i) {
            low[i] = low[i + count] < low[i] ? low[i + count] : low[i];
            high[i] = high[i + count] > high[i] ? high[i + count] : high[i];
            nanCount[i] += nanCount[i + count];
        }
        if constexpr (count > 1)
            fold<count / 2>();
    }
    float low[chunkLength];
    float high[chunkLength];
    int nanCount[chunkLength] = {};
};

void take(Extent& extent, float low, float high)
{
    if (!(low >= extent.min))
        extent.min = low;
    if (!(extent.max >= high))
        extent.max = high;
}

} // namespace

Extent quantiser::extentOf(const std::vector<double>& samples)
{
    Extent extent;
    if (samples.size() >= chunkLength) {
        Lanes lanes(samples.data());
        forEachChunk(samples.size(), [&](std::size_t index) { lanes.take(&samples[index]); });
        lanes.fold();
        if (lanes.nanCount[0] == 0) {
            take(extent, lanes.low[0], lanes.high[0]);
            return extent;
        }
    }
    for (const double value : samples)
        take(extent, static_cast<float>(value), static_cast<float>(value));
    return extent;
}

void quantiser::quantise(const std::vector<double>& samples, float lowest, float step,
                         unsigned char* levels)
{
    if (samples.size() < chunkLength) {
        for (const double sample : samples)
            *levels++ = truncateSaturated<unsigned char>(
                static_cast<double>((static_cast<float>(sample) - lowest) / step));
        return;
    }
    forEachChunk(samples.size(), [&](std::size_t index) {
        const double* chunk = &samples[index];
        unsigned char result[chunkLength];
        for (std::size_t i = 0; i < chunkLength; ++i) {
            constexpr float highest = 255.0F;
            float level = (static_cast<float>(chunk[i]) - lowest) / step;
            level = level > 0.0F ? level : 0.0F; // NaN, too
            level = level < highest ? level : highest;
            result[i] = static_cast<unsigned char>(static_cast<int>(level));
        }
        std::copy_n(result, chunkLength, levels + index);
    });
}
