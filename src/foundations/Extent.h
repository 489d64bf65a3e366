// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

/// Smallest and largest sample of a data set for automatic scaling, in single precision. Reversed
/// (min > max) while there is no sample.
struct Extent
{
    float min = 1e35F;
    float max = -1e35F;

    /// A NaN leaves the extent alone.
    void Take(float sample)
    {
        if (sample < min)
            min = sample;
        if (sample > max)
            max = sample;
    }
    /// Leaves 5 % of the extent free on either side.
    void AddMargin()
    {
        constexpr double share = 0.05;
        const auto free = static_cast<float>(static_cast<double>(max - min) * share);
        min -= free;
        max += free;
    }
    /// Includes the range of an axis. An end that is NaN stays NaN.
    void Widen(double start, double stop)
    {
        const auto oldMin = static_cast<float>(start);
        const auto oldMax = static_cast<float>(stop);
        if (!(min < oldMin))
            min = oldMin;
        if (!(oldMax < max))
            max = oldMax;
    }
};
