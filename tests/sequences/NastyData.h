// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cfloat>
#include <climits>
#include <cmath>
#include <cstddef>
#include <cstdint>

// Numbers, lengths and data that a host should not give, but might.

template<class T, std::size_t size>
T pick(const T (&values)[size], std::uint8_t number)
{
    return values[number % size];
}

inline double nastyNumber(std::uint8_t number)
{
    constexpr double values[] = {0.0,       1.0,    -1.0,         0.5,      100.0,    -100.0,
                                 3.0,       1000.0, -0.0,         1e-300,   1e300,    -1e300,
                                 1e35,      5e-324, DBL_MAX,      -DBL_MAX, INFINITY, NAN,
                                 -INFINITY, 1e9,    2147483648.0, 1e19,     1e-9,     -7.0};
    return pick(values, number);
}

inline int nastyLength(std::uint8_t number)
{
    constexpr int values[] = {0, 1, 2, 3, 7, 100, 400, 1000, 1999, 8192, -1, INT_MAX, INT_MIN};
    return pick(values, number);
}

/// Of a list or a data set.
template<class Container>
Container nastyData(std::uint8_t lengthNumber, std::uint8_t content)
{
    constexpr int lengths[] = {4, 0, 1, 2, 3, 5, 64, 100, 1001, 5000};
    Container data;
    const int length = pick(lengths, lengthNumber);
    for (int i = 0; i < length; ++i) {
        double value = content % 3 == 0 ? nastyNumber(static_cast<std::uint8_t>(content / 3 + i))
                                        : std::sin(i * 0.1) * (content % 7);
        if (content % 3 == 2) // as markers are
            value = i % (1 + content / 3) == 0 ? 1 + content / 3 : 0;
        data.push_back(static_cast<typename Container::value_type>(value));
    }
    return data;
}
