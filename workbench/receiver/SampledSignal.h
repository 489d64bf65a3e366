// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <complex>
#include <vector>

/// Appends samples of other memory. The vector's own insert copies them one by one.
inline void appendSamples(std::vector<std::complex<float>>& to, const std::complex<float>* from,
                          std::size_t count)
{
    const std::size_t before = to.size();
    to.resize(before + count);
    std::copy_n(from, count, to.data() + before);
}

/// Consecutive samples of one signal.
struct SampledSignal
{
    std::vector<std::complex<double>> samples;
    bool isComplex = false;  ///< otherwise imaginary parts are ignored
    double sampleRate = 1.0; ///< Hz
};
