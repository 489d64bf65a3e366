// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/receiver/SingleNumbers.h"

#include "workbench/receiver/Vectors.h"

#include <cmath>
#include <cstdint>
#include <limits>

namespace {

/// Whole vectors of them. Read as an integer, the bits of a number without its sign grow with it,
/// and those of what is no number are above all: the largest less them is negative where one is
/// beyond. Compilers make no vectors of whether both of two comparisons hold.
ORVANE_WIDEST bool makeVectorsSingle(const double* numbers, std::size_t count, double largest,
                                     float* output)
{
    using Singles = float __attribute__((vector_size(doublesWidth * sizeof(float))));
    using Words = std::int64_t __attribute__((vector_size(sizeof(Doubles))));
    constexpr std::int64_t magnitude = std::numeric_limits<std::int64_t>::max();
    std::int64_t most = 0;
    std::memcpy(&most, &largest, sizeof most);
    Words areLarge{};
    for (std::size_t k = 0; k < count; k += doublesWidth) {
        Doubles number;
        Words bits;
        load(numbers + k, number);
        load(numbers + k, bits);
        areLarge |= most - (bits & magnitude);
        store(__builtin_convertvector(number, Singles), output + k);
    }
    bool result = true;
    for (std::size_t k = 0; k < doublesWidth; ++k)
        result = result && areLarge[k] >= 0;
    return result;
}

/// The same, without making anything of them.
ORVANE_WIDEST bool areVectorsWithin(const float* numbers, std::size_t count, float largest)
{
    using Words = std::int32_t __attribute__((vector_size(sizeof(Floats))));
    constexpr std::int32_t magnitude = std::numeric_limits<std::int32_t>::max();
    std::int32_t most = 0;
    std::memcpy(&most, &largest, sizeof most);
    Words areLarge{};
    for (std::size_t k = 0; k < count; k += floatsWidth) {
        Words bits;
        load(numbers + k, bits);
        areLarge |= most - (bits & magnitude);
    }
    bool result = true;
    for (std::size_t k = 0; k < floatsWidth; ++k)
        result = result && areLarge[k] >= 0;
    return result;
}

ORVANE_WIDEST void split(const float* __restrict pairs, std::size_t count, double* __restrict first,
                         double* __restrict second)
{
    for (std::size_t k = 0; k < count; ++k) {
        first[k] = double{pairs[2 * k]};
        second[k] = double{pairs[2 * k + 1]};
    }
}

} // namespace

bool makeSingle(const double* numbers, std::size_t count, double largest, float* output)
{
    const std::size_t whole = count / doublesWidth * doublesWidth;
    bool areSmall = makeVectorsSingle(numbers, whole, largest, output);
    for (std::size_t k = whole; k < count; ++k) {
        areSmall = areSmall && std::abs(numbers[k]) <= largest;
        output[k] = areSmall ? static_cast<float>(numbers[k]) : 0.0F;
    }
    return areSmall;
}

bool areWithin(const float* numbers, std::size_t count, float largest)
{
    const std::size_t whole = count / floatsWidth * floatsWidth;
    bool result = areVectorsWithin(numbers, whole, largest);
    for (std::size_t k = whole; k < count; ++k)
        result = result && std::abs(numbers[k]) <= largest;
    return result;
}

void makeDouble(const float* pairs, std::size_t count, double* first, double* second)
{
    split(pairs, count, first, second);
}
