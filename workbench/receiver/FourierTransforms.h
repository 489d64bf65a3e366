// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <complex>
#include <cstddef>
#include <map>
#include <utility>
#include <vector>

struct fftw_plan_s;

/// Discrete Fourier transforms of any length; keeps the plan of each length. For one thread; each
/// thread may have an object of its own.
class FourierTransforms
{
public:
    FourierTransforms() = default;
    ~FourierTransforms();
    FourierTransforms(const FourierTransforms&) = delete;
    FourierTransforms& operator=(const FourierTransforms&) = delete;

    /// Transforms at least one value in place, without scaling: forward and back gives the values
    /// times their number.
    void forward(std::vector<std::complex<double>>& values);
    void backward(std::vector<std::complex<double>>& values);

private:
    void run(std::vector<std::complex<double>>& values, int direction);

    std::map<std::pair<std::size_t, int>, fftw_plan_s*> m_plans; // by length and direction
};
