// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <complex>
#include <vector>

/// Consecutive samples of one signal.
struct SampledSignal
{
    std::vector<std::complex<double>> samples;
    bool isComplex = false;  ///< otherwise imaginary parts are ignored
    double sampleRate = 1.0; ///< Hz
};
