// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/receiver/SingleNumbers.h"

#include "workbench/receiver/Vectors.h"

#include <cmath>

namespace {

/// Whole vectors of them. Compilers make vectors of the larger of two numbers, but not of whether
/// both of two comparisons hold.
ORVANE_WIDEST bool makeVectorsSingle(const double* numbers, std::size_t count, double largest,
                                     float* output)
{
    using Singles = float __attribute__((vector_size(doublesWidth * sizeof(float))));
    Doubles most{}, least{}, nothing{}; // NaN once there is no number
    for (std::size_t k = 0; k < count; k += doublesWidth) {
        Doubles number;
        load(numbers + k, number);
        most = number > most ? number : most;
        least = number < least ? number : least;
        nothing += 0.0 * number;
        store(__builtin_convertvector(number, Singles), output + k);
    }
    bool result = true;
    for (std::size_t k = 0; k < doublesWidth; ++k)
        result = result && most[k] <= largest && least[k] >= -largest && nothing[k] == 0.0;
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

void makeDouble(const float* pairs, std::size_t count, double* first, double* second)
{
    split(pairs, count, first, second);
}
