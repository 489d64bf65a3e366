// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/feed/TimeScale.h"

#include <algorithm>

namespace {

constexpr double recordingSpan = 2.0;    // s, shown of a signal without frames
constexpr double frameCount = 2.0;       // shown of a signal with frames
constexpr double minSampleCount = 16.0;  // fewer do not make a picture
constexpr double fewSampleCount = 200.0; // shown at least of a slow signal

} // namespace

TimeScale TimeScale::of(const SignalSource& source, std::optional<double> symbolRate)
{
    TimeScale scale;
    scale.sampleRate = source.sampleRate();
    scale.minSpan = minSampleCount / scale.sampleRate;
    scale.maxSpan =
        maxSegmentCount * source.frameLength().value_or(maxBlockLength) / scale.sampleRate;

    double span = std::max(recordingSpan, fewSampleCount / scale.sampleRate);
    if (const auto frameLength = source.frameLength())
        span = frameCount * *frameLength / scale.sampleRate;
    if (const auto count = source.sampleCount())
        span = std::min(span, static_cast<double>(*count) / scale.sampleRate);
    scale.defaultSpan = std::clamp(span, scale.minSpan, scale.maxSpan);

    if (!symbolRate)
        symbolRate = source.symbolRate();
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
