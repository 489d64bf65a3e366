// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cmath>
#include <complex>
#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

using Complex = std::complex<double>;
using Signal = std::vector<Complex>; ///< samples; a real signal has imaginary parts of 0

constexpr double pi = 3.14159265358979323846;

/// Random numbers of one trial of one case: the same for the same name and trial.
class Random
{
public:
    Random(const std::string& name, int trial);

    int below(int count); ///< 0 to count - 1
    double phase();       ///< 0 to 2 pi
    double part();        ///< 0 to 1
    double gauss();       ///< mean 0, deviation 1
    /// Independent real and imaginary parts, mean power 1.
    Complex complexGauss() { return Complex(gauss(), gauss()) * std::sqrt(0.5); }
    /// Gaussian noise of deviation 1, flat up to a bandwidth and nothing above.
    /// @param bandwidth  in sample rates; from 0.5 on the noise is white.
    std::vector<double> noise(std::size_t count, double bandwidth);

private:
    std::mt19937_64 m_engine;
    std::normal_distribution<double> m_normal;
};
