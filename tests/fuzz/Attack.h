// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <optional>

class Bytes;

/// What fuzz targets do with an input: they end the program where something does not fit together.
using Attack = void(Bytes& input);
Attack attackDensity, attackFeed, attackMask, attackPlot, attackPublisher, attackReceiver,
    attackStream;

/// Takes an input apart. At its end all is 0.
class Bytes
{
public:
    Bytes(const void* bytes, std::size_t count)
        : m_next(static_cast<const char*>(bytes))
        , m_left(count)
    {}
    bool isEmpty() const { return m_left == 0; }
    template<class T>
    T take()
    {
        T value{};
        const std::size_t count = std::min(sizeof value, m_left);
        if (count > 0)
            std::memcpy(&value, m_next, count);
        m_next += count;
        m_left -= count;
        return value;
    }
    unsigned below(unsigned count) { return take<std::uint8_t>() % count; }
    bool flag() { return below(2) == 1; }
    template<class T, std::size_t size>
    T oneOf(const T (&values)[size])
    {
        return values[below(size)];
    }
    /// Any number at all, odd ones more often.
    double number()
    {
        constexpr double odd[] = {0.0,   -0.0,   5e-324, 1e-300,  1e-9,     1e-3,      0.5,  1.0,
                                  -1.0,  2.0,    1e3,    -1e6,    1e12,     1e19,      1e35, -1e39,
                                  1e300, -1e300, 1e308,  DBL_MAX, INFINITY, -INFINITY, NAN};
        return flag() ? oneOf(odd) : take<double>();
    }
    std::optional<double> maybe() { return flag() ? std::optional(number()) : std::nullopt; }

private:
    const char* m_next;
    std::size_t m_left;
};

inline void require(bool isTrue, const char* what)
{
    if (isTrue)
        return;
    std::fprintf(stderr, "it does not fit together: %s\n", what);
    std::abort();
}
