// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cmath>
#include <cstddef>
#include <vector>

/// The signal between its samples, as far as it is limited to less than half the sample rate: a sum
/// of its neighbours, weighted with a windowed sine cardinal.
class Interpolation
{
public:
    static constexpr std::ptrdiff_t reach = 8; ///< samples on either side

    /// @param value  returns the sample of an index; also of indices as far outside as reach.
    template<class Value>
    static auto at(double position, const Value& value)
    {
        const auto whole = static_cast<std::ptrdiff_t>(std::floor(position));
        const float* weights = weightsOf(position - static_cast<double>(whole));
        auto sum = value(whole - reach + 1) * weights[0];
        for (std::ptrdiff_t k = 1; k < 2 * reach; ++k)
            sum += value(whole - reach + 1 + k) * weights[k];
        return sum;
    }

private:
    /// Weights of the samples about a place between two, 0 to 1.
    static const float* weightsOf(double part);
};
