// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/gui/ColorSet.h"

#include <QMatrix4x4>

#include <gtest/gtest.h>

#include <cmath>

namespace {

using Scheme = ColorSet::Scheme;

/// Rows of a matrix that takes linear sRGB to CIE XYZ.
constexpr float ToXyz[] = {0.4124564f, 0.3575761f, 0.1804375f, 0.2126729f, 0.7151522f,
                           0.0721750f, 0.0193339f, 0.1191920f, 0.9503041f};

/// Nobody's, and the three full colour blindnesses in linear RGB:
/// Machado, Oliveira, Fernandes, IEEE TVCG 15 (2009), table 1.
constexpr float Eyes[][9] = {{1, 0, 0, 0, 1, 0, 0, 0, 1},
                             {0.152286f, 1.052583f, -0.204868f, 0.114503f, 0.786281f, 0.099216f,
                              -0.003882f, -0.048116f, 1.051998f},
                             {0.367322f, 0.860646f, -0.227968f, 0.280085f, 0.672501f, 0.047413f,
                              -0.011820f, 0.042940f, 0.968881f},
                             {1.255528f, -0.076749f, -0.178779f, -0.078411f, 0.930809f, 0.147602f,
                              0.004733f, 0.691367f, 0.303900f}};

QVector3D mapped(const float* matrix, const QVector3D& v)
{
    return QMatrix4x4(QMatrix3x3(matrix)).mapVector(v);
}

/// XYZ relative to D65 white of a default colour, as the given eyes see it.
QVector3D seen(Scheme scheme, int number, const float* eyes)
{
    const QColor color = ColorSet::DefaultColor(scheme, IColorBase::ECOLOR(number));
    QVector3D rgb(float(color.redF()), float(color.greenF()), float(color.blueF()));
    for (int i = 0; i < 3; ++i) // IEC 61966-2-1
        rgb[i] = rgb[i] <= 0.04045f ? rgb[i] / 12.92f : std::pow((rgb[i] + 0.055f) / 1.055f, 2.4f);
    rgb = mapped(eyes, rgb);
    for (int i = 0; i < 3; ++i)
        rgb[i] = qBound(0.0f, rgb[i], 1.0f);
    return mapped(ToXyz, rgb) / QVector3D(0.95047f, 1, 1.08883f);
}

QVector3D lab(QVector3D xyz)
{
    for (int i = 0; i < 3; ++i)
        xyz[i] = xyz[i] > 216.0f / 24389 ? std::cbrt(xyz[i]) : (24389.0f / 27 * xyz[i] + 16) / 116;
    return {116 * xyz[1] - 16, 500 * (xyz[0] - xyz[1]), 200 * (xyz[1] - xyz[2])};
}

TEST(Colors, StandOutFromTheirGroundAndFromEachOtherForEverybody)
{
    // Colour, its grounds, and the least and most WCAG 2 contrast.
    const std::tuple<int, std::vector<int>, float, float> rules[] = {
        {131, {132, 135, 136, 138, 139, 141, 142, 120, 3}, 7, 21},
        {133, {135, 136}, 4.5f, 21},
        {134, {135, 136}, 4.5f, 21},
        {137, {138, 139}, 4.5f, 21},
        {140, {141, 142}, 4.5f, 21},
        {121, {135, 136, 138, 139, 141, 142}, 1.3f, 2}};
    constexpr int signs[] = {133, 134, 137, 140};
    constexpr float Distinct = 20; // CIELAB units; 2.3 is just noticeable
    for (const Scheme scheme : {Scheme::Dark, Scheme::Light}) {
        for (const auto& [front, grounds, least, most] : rules) {
            for (const int ground : grounds) {
                const float ratio = (seen(scheme, front, Eyes[0]).y() + 0.05f) /
                                    (seen(scheme, ground, Eyes[0]).y() + 0.05f);
                EXPECT_GE(std::max(ratio, 1 / ratio), least) << front << '/' << ground;
                EXPECT_LE(std::max(ratio, 1 / ratio), most) << front << '/' << ground;
            }
        }
        for (const float* eyes : Eyes)
            for (const int a : signs)
                for (const int b : signs) {
                    const auto way = lab(seen(scheme, a, eyes)) - lab(seen(scheme, b, eyes));
                    EXPECT_TRUE(a == b || way.length() >= Distinct) << a << '/' << b;
                }
    }
}

} // namespace
