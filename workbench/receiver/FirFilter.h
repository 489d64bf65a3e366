// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <complex>
#include <vector>

/// A filter of complex samples with real taps. It gives the numbers that liquid-dsp's gives, whose
/// additions wait for one another, several times as fast.
class FirFilter
{
public:
    /// @param taps   the impulse response, at least one.
    /// @param scale  of what comes out.
    explicit FirFilter(const std::vector<float>& taps, float scale = 1.0F);

    /// Filters the next samples in place: what comes out is delayed by half the taps.
    void process(std::vector<std::complex<float>>& samples);
    /// What came before was 0.
    void reset();

private:
    std::vector<float> m_taps; // the last one first
    float m_scale;
    std::vector<std::complex<float>> m_line; // the newest samples, less than the taps by one
};
