// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <QImage>

#include <algorithm>
#include <cstdlib>

/// How pictures differ.
struct Difference
{
    int most;   ///< Of a channel.
    double odd; ///< Part of the pixels in which it is more than 1.
};

inline Difference difference(const QImage& one, const QImage& other)
{
    EXPECT_EQ(one.size(), other.size());
    Difference result{0, 0.0};
    const QRect area = one.rect() & other.rect();
    for (int i = 0; i < area.width() * area.height(); ++i) {
        const QRgb a = one.pixel(i % area.width(), i / area.width());
        const QRgb b = other.pixel(i % area.width(), i / area.width());
        const int most = std::max({std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)),
                                   std::abs(qBlue(a) - qBlue(b))});
        result.most = std::max(result.most, most);
        result.odd += most > 1 ? 1.0 / (area.width() * area.height()) : 0.0;
    }
    return result;
}
