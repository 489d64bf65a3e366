// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <vector>

/// What the samples of a real signal measure. What is not finite does not count.
struct LevelReadings
{
    /// @param sampleRate  Hz, > 0.
    /// @return none where there are no finite samples.
    static std::optional<LevelReadings> of(const std::vector<double>& samples, double sampleRate);

    double mean = 0.0;
    double lowest = 0.0;
    double highest = 0.0;
    double rms = 0.0;   ///< of the whole, the mean included
    double acRms = 0.0; ///< about the mean
    /// Hz, of a periodic signal: whole periods between the rising crossings of the mean, which are
    /// interpolated between samples; a crossing counts once the signal has been 0.3 acRms below
    /// the mean and gets as far above. None where the periods differ by more than a tenth (r.m.s.)
    /// or are fewer than three.
    std::optional<double> frequency;

    double peakToPeak() const { return highest - lowest; }
};
