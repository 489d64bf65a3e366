// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <complex>

/// The product of numbers that are finite: the operator's would look whether it is one.
template<class Number>
inline std::complex<Number> product(const std::complex<Number>& a, const std::complex<Number>& b)
{
    return {a.real() * b.real() - a.imag() * b.imag(), a.real() * b.imag() + a.imag() * b.real()};
}
