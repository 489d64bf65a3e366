// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <complex>
#include <cstddef>
#include <vector>

/// A filter of complex samples with real taps. Gives the same numbers as that of liquid-dsp several
/// times as fast, because its additions do not depend on one another.
class FirFilter
{
public:
    /// @param taps   the impulse response, at least one.
    /// @param scale  of what comes out.
    /// @param every  so many samples, from the first one on, one comes out: 1 or 2.
    explicit FirFilter(const std::vector<float>& taps, float scale = 1.0F, std::size_t every = 1);

    /// Filters the next samples in place; the output is delayed by half the number of taps.
    void process(std::vector<std::complex<float>>& samples);
    /// Forgets the signal: earlier samples count as 0.
    void reset();

private:
    void spread(const std::complex<float>* samples, float* copies) const;

    std::vector<float> m_taps; // the last one first
    float m_scale;
    std::size_t m_every;
    std::size_t m_skip = 0;                  // samples before the next one that comes out
    std::vector<std::complex<float>> m_line; // first the newest samples, one fewer than taps
    std::size_t m_length;                    // numbers of a copy of what some outputs need
    std::vector<std::size_t> m_places;       // of what each tap takes, in the copies
    std::vector<float> m_copies;
};
