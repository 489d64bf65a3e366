// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstddef>
#include <cstring>
#include <utility>
#include <vector>

/// Four numbers that processors add and multiply at once.
using Quad = float __attribute__((vector_size(16)));

inline Quad quadAt(const float* values)
{
    Quad quad;
    std::memcpy(&quad, values, sizeof quad);
    return quad;
}

/// Sums of taps times values: sum n is that of taps[k] times the four numbers from
/// values[n * hop + k * stride] on. Each sum adds in the order of the taps; they are taken side by
/// side because one alone would wait for each of its additions.
template<std::size_t... n>
std::array<Quad, sizeof...(n)> weightedSums(std::index_sequence<n...>,
                                            const std::vector<float>& taps, const float* values,
                                            std::size_t hop, std::size_t stride)
{
    std::array<Quad, sizeof...(n)> sums{};
    for (const float tap : taps) {
        ((sums[n] += tap * quadAt(values + n * hop)), ...);
        values += stride;
    }
    return sums;
}
