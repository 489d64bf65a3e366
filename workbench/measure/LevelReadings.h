// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <optional>

/// What the samples of a real signal measure. What is not finite does not count.
struct LevelReadings
{
    /// @param sampleRate  Hz, > 0.
    /// @return none where there are no finite samples.
    static std::optional<LevelReadings> of(const double* samples, std::size_t count,
                                           double sampleRate);

    double mean = 0.0;
    double lowest = 0.0;
    double highest = 0.0;
    double rms = 0.0;   ///< of the whole, the mean included
    double acRms = 0.0; ///< about the mean
    /// Hz, of a periodic signal: whole periods between rising crossings, interpolated between
    /// samples, of the middle between its two levels (mid reference level, IEEE Std 181): the means
    /// of what is above and of what is below it, so that pulses may be short and clicks do not
    /// count. A crossing counts once the signal has been a fifth of the levels' distance below and
    /// gets as far above. None where the periods differ by more than a tenth (r.m.s.) or are fewer
    /// than three.
    std::optional<double> frequency;

    double peakToPeak() const { return highest - lowest; }
};
