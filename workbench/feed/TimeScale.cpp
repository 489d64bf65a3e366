// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/feed/TimeScale.h"

#include <algorithm>

namespace {

constexpr double recordingSpan = 2.0;    // s, shown of a signal without frames
constexpr double frameCount = 2.0;       // shown of a signal with frames
constexpr double minSampleCount = 16.0;  // fewer do not make a picture
constexpr double fewSampleCount = 200.0; // shown at least of a slow signal

} // namespace

TimeScale TimeScale::of(double sampleRate, std::optional<double> length,
                        std::optional<double> frameLength, std::optional<double> symbolRate)
{
    TimeScale scale;
    scale.sampleRate = sampleRate;
    scale.minSpan = minSampleCount / sampleRate;
    scale.maxSpan = maxSegmentCount * frameLength.value_or(maxBlockLength) / sampleRate;

    double span = std::max(recordingSpan, fewSampleCount / sampleRate);
    if (frameLength)
        span = frameCount * *frameLength / sampleRate;
    if (length)
        span = std::min(span, *length);
    scale.defaultSpan = std::clamp(span, scale.minSpan, scale.maxSpan);

    if (symbolRate) {
        scale.unit = Unit::Symbol;
        scale.samplesPerUnit = scale.sampleRate / *symbolRate;
        return scale;
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
        scale.unit = candidate.unit;
        scale.samplesPerUnit = scale.sampleRate * candidate.seconds;
        if (scale.defaultSpan / candidate.seconds >= 100.0)
            break;
    }
    return scale;
}
