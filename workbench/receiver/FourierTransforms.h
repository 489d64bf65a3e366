// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <complex>
#include <cstddef>
#include <map>
#include <utility>
#include <vector>

struct fftw_plan_s;

/// Discrete Fourier transforms of any length; plans are kept for lengths that come again. For one
/// thread; each may have its own.
class FourierTransforms
{
public:
    FourierTransforms() = default;
    ~FourierTransforms();
    FourierTransforms(const FourierTransforms&) = delete;
    FourierTransforms& operator=(const FourierTransforms&) = delete;

    /// In place, not scaled: back and forth gives the values times their number. At least one.
    void forward(std::vector<std::complex<double>>& values);
    void backward(std::vector<std::complex<double>>& values);

private:
    void run(std::vector<std::complex<double>>& values, int direction);

    std::map<std::pair<std::size_t, int>, fftw_plan_s*> m_plans; // by length and direction
};
