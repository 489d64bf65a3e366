// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <complex>
#include <vector>

/// Samples of one signal in a row.
struct SampledSignal
{
    std::vector<std::complex<double>> samples;
    bool isComplex = false;  ///< else imaginary parts do not count
    double sampleRate = 1.0; ///< Hz
};
