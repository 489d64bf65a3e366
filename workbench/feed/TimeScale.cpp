// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/feed/TimeScale.h"

#include <algorithm>

namespace {

constexpr double usualSampleCount = 3200.0; // shown at first, without frames...
constexpr double fewSymbols = 80.0;         // ...but no fewer symbols
constexpr double manySymbols = 400.0;       // ...and no more
constexpr double mostSeconds = 4.0;         // shown at first, so that the picture fills soon...
constexpr double fewSampleCount = 200.0;    // ...but at least this
constexpr double frameCount = 2.0;          // shown of a signal with frames
constexpr double minSampleCount = 16.0;     // fewer do not make a picture

} // namespace

TimeScale TimeScale::of(double sampleRate, std::optional<double> length,
                        std::optional<double> frameLength, std::optional<double> symbolRate)
{
    TimeScale scale;
    scale.sampleRate = sampleRate;
    scale.symbolRate = symbolRate;
    scale.minSpan = minSampleCount / sampleRate;
    scale.maxSpan = maxSegmentCount * frameLength.value_or(maxBlockLength) / sampleRate;

    double span =
        std::min(usualSampleCount / sampleRate, std::max(mostSeconds, fewSampleCount / sampleRate));
    if (frameLength)
        span = frameCount * *frameLength / sampleRate;
    else if (symbolRate)
        span = std::clamp(span, fewSymbols / *symbolRate, manySymbols / *symbolRate);
    if (length)
        span = std::min(span, *length);
    scale.defaultSpan = std::clamp(span, scale.minSpan, scale.maxSpan);
    scale.setUnit(scale.defaultSpan, true);
    return scale;
}

void TimeScale::setUnit(double span, bool wantsSymbols)
{
    if (symbolRate && wantsSymbols) {
        unit = Unit::Symbol;
        samplesPerUnit = sampleRate / *symbolRate;
        return;
    }
    struct
    {
        Unit unit;
        double seconds;
    } constexpr units[] = {{Unit::Second, 1.0},
                           {Unit::Millisecond, 1e-3},
                           {Unit::Microsecond, 1e-6},
                           {Unit::Nanosecond, 1e-9}};
    for (const auto& candidate : units) {
        unit = candidate.unit;
        samplesPerUnit = sampleRate * candidate.seconds;
        if (span / candidate.seconds >= 0.1)
            break;
    }
}
