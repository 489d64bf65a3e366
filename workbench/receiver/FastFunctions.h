// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/receiver/Vectors.h"
#include "workbench/sources/Constants.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>

/// Functions by as many terms of their series as single numbers have digits. They call nothing and
/// do not branch, so that loops over them become vectors.
namespace fast {

/// The nearest whole number to one of magnitude below 2^22: beyond 2^23 there are no fractions.
ORVANE_WITHIN float wholeOf(float x)
{
    constexpr float least = 12582912.0F; // 2^23 and half of it
    return (x + least) - least;
}
/// The same below 2^51.
ORVANE_WITHIN double wholeOf(double x)
{
    constexpr double least = 6755399441055744.0; // 2^52 and half of it
    return (x + least) - least;
}

/// e^x to 2e-7 of it, for x up to 80; below -80 it goes on as there.
ORVANE_WITHIN float exponential(float x)
{
    constexpr float least = -80.0F;
    constexpr float ln2 = 0.693359375F; // so few digits that its multiples are exact...
    constexpr float rest = -2.12194440e-4F;
    x = std::max(x, least);
    const float power = wholeOf(x * 1.44269504F);
    const float r = (x - power * ln2) - power * rest;
    float sum = 1.0F + r * (1.0F / 7);
    sum = 1.0F + r * (1.0F / 6) * sum;
    sum = 1.0F + r * (1.0F / 5) * sum;
    sum = 1.0F + r * (1.0F / 4) * sum;
    sum = 1.0F + r * (1.0F / 3) * sum;
    sum = 1.0F + r * (1.0F / 2) * sum;
    sum = 1.0F + r * sum;
    const std::int32_t bits = (static_cast<std::int32_t>(power) + 127) * (1 << 23);
    float scale = 0.0F;
    std::memcpy(&scale, &bits, sizeof scale);
    return scale * sum;
}

/// Natural logarithm, to 2e-7 of it or of 1, of a number from 1e-37 on.
ORVANE_WITHIN float logarithm(float x)
{
    constexpr std::int32_t rootOfHalf = 0x3f3504f3; // its bits
    std::int32_t bits = 0;
    std::memcpy(&bits, &x, sizeof bits);
    const std::int32_t power = (bits - rootOfHalf) >> 23;
    bits -= power * (1 << 23);
    float part = 0.0F; // of x, from the root of a half to that of 2
    std::memcpy(&part, &bits, sizeof part);
    const float z = (part - 1.0F) / (part + 1.0F);
    const float y = z * z;
    const float sum = 1.0F + y * (1.0F / 3 + y * (1.0F / 5 + y * (1.0F / 7 + y * (1.0F / 9))));
    return 2.0F * z * sum + static_cast<float>(power) * 0.693147181F;
}

/// Angle of a complex number, rad, to 5e-7; 0 of 0.
ORVANE_WITHIN float angleOf(float real, float imaginary)
{
    const float size = std::sqrt(real * real + imaginary * imaginary);
    constexpr float tiny = 1e-30F;
    // Twice half the angle's tangent, so that the series is short.
    const float half = imaginary / std::max(size + std::abs(real), tiny);
    const float z = half / (1.0F + std::sqrt(1.0F + half * half));
    const float y = z * z;
    float sum = 1.0F / 13 - y * (1.0F / 15 - y * (1.0F / 17));
    sum = 1.0F / 9 - y * (1.0F / 11 - y * sum);
    sum = 1.0F / 5 - y * (1.0F / 7 - y * sum);
    sum = 1.0F - y * (1.0F / 3 - y * sum);
    const float angle = 4.0F * z * sum; // from the I axis
    const float straight = std::copysign(static_cast<float>(pi), imaginary);
    return real < 0.0F ? straight - angle : angle;
}

/// Sine and cosine of an angle of up to an eighth of a turn, to 1e-7.
ORVANE_WITHIN void sineCosine(float angle, float& sine, float& cosine)
{
    const float x = angle * angle;
    cosine =
        1.0F -
        x * 0.5F * (1.0F - x * (1.0F / 12) * (1.0F - x * (1.0F / 30) * (1.0F - x * (1.0F / 56))));
    sine =
        angle *
        (1.0F - x * (1.0F / 6) *
                    (1.0F - x * (1.0F / 20) * (1.0F - x * (1.0F / 42) * (1.0F - x * (1.0F / 72)))));
}

/// A turn by an angle of magnitude below 1e15, rad: what is whole is taken off in double numbers.
ORVANE_WITHIN void turnBy(double angle, float& real, float& imaginary)
{
    const double quarters = angle * (2.0 / pi);
    const double whole = wholeOf(quarters);
    float sine = 0.0F, cosine = 0.0F;
    sineCosine(static_cast<float>((quarters - whole) * (0.5 * pi)), sine, cosine);
    // Which quarter, 0 to 3, in steps that need no whole numbers.
    const auto quarter = static_cast<float>(whole - 4.0 * wholeOf(0.25 * whole)); // -2 to 2
    const bool isOdd = std::abs(quarter) == 1.0F;
    const float along = isOdd ? sine : cosine;
    const float across = isOdd ? cosine : sine;
    const bool isBack = std::abs(quarter) == 2.0F;
    real = (isBack || quarter == 1.0F) ? -along : along;
    imaginary = (isBack || quarter == -1.0F) ? -across : across;
}

} // namespace fast
