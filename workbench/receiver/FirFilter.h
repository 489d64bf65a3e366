// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <complex>
#include <vector>

/// A filter of complex samples with real taps. Gives the same numbers as that of liquid-dsp several
/// times as fast, because its additions do not depend on one another.
class FirFilter
{
public:
    /// @param taps   the impulse response, at least one.
    /// @param scale  of what comes out.
    explicit FirFilter(const std::vector<float>& taps, float scale = 1.0F);

    /// Filters the next samples in place; the output is delayed by half the number of taps.
    void process(std::vector<std::complex<float>>& samples);
    /// Forgets the signal: earlier samples count as 0.
    void reset();

private:
    std::vector<float> m_taps; // the last one first
    float m_scale;
    std::vector<std::complex<float>> m_line; // the newest samples, one fewer than taps
};
