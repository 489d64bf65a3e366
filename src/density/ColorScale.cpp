// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "density/ColorScale.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace density {

namespace {

using Rgb = std::array<double, 3>;
using Polynomial = std::array<Rgb, 7>; // from the constant on

constexpr Polynomial viridis{{{0.27772733, 0.00540734, 0.33409981},
                              {0.10509304, 1.40461353, 1.38459016},
                              {-0.33086183, 0.21484756, 0.09509516},
                              {-4.63423050, -5.79910097, -19.33244096},
                              {6.22826994, 14.17993337, 56.69055260},
                              {4.77638500, -13.74514538, -65.35303263},
                              {-5.43545586, 4.64585261, 26.31243525}}};
constexpr Polynomial inferno{{{0.00021894, 0.00165100, -0.01948090},
                              {0.10651342, 0.56395644, 3.93271239},
                              {11.60249308, -3.97285397, -15.94239411},
                              {-41.70399613, 17.43639888, 44.35414520},
                              {77.16293570, -33.40235894, -81.80730926},
                              {-71.31942824, 32.62606426, 73.20951986},
                              {25.13112622, -12.24266895, -23.07032500}}};
constexpr std::array<QRgb, 10> cividis{0x00224e, 0x123570, 0x3b496c, 0x575d6d, 0x707173,
                                       0x8a8678, 0xa59c74, 0xc3b369, 0xe1cc55, 0xfee838};

QRgb colorOf(const Polynomial& polynomial, double part)
{
    std::array<int, 3> channels{};
    for (std::size_t channel = 0; channel < 3; ++channel) {
        double value = 0.0;
        for (std::size_t power = polynomial.size(); power-- > 0;)
            value = value * part + polynomial[power][channel];
        channels[channel] = static_cast<int>(std::lround(255.0 * std::clamp(value, 0.0, 1.0)));
    }
    return qRgb(channels[0], channels[1], channels[2]);
}

QRgb between(QRgb first, QRgb second, double part)
{
    const auto mix = [part](int one, int other) {
        return static_cast<int>(std::lround(one + part * (other - one)));
    };
    return qRgb(mix(qRed(first), qRed(second)), mix(qGreen(first), qGreen(second)),
                mix(qBlue(first), qBlue(second)));
}

} // namespace

QRgb colorOf(ColorScale scale, double part)
{
    const double place = part > 0.0 ? std::min(part, 1.0) : 0.0;
    switch (scale) {
    case ColorScale::Viridis:
        return colorOf(viridis, place);
    case ColorScale::Inferno:
        return colorOf(inferno, place);
    case ColorScale::Cividis:
        break;
    }
    const double step = place * static_cast<double>(cividis.size() - 1);
    const auto index = std::min(static_cast<std::size_t>(step), cividis.size() - 2);
    return between(cividis[index], cividis[index + 1], step - static_cast<double>(index));
}

double ColorMapping::partOf(double count, double least, double most) const
{
    if (!(count > 0.0) || !(most > 0.0))
        return 0.0;
    if (!isLogarithmic)
        return std::min(count / most, 1.0);
    if (!(most > least) || !(least > 0.0))
        return 1.0;
    return std::clamp(std::log(count / least) / std::log(most / least), 0.0, 1.0);
}

QRgb ColorMapping::colorAt(double part) const
{
    constexpr double leftOut = 0.2;
    const double place = leftOut + (1.0 - leftOut) * std::clamp(part, 0.0, 1.0);
    return colorOf(scale, isDarkGround ? place : 1.0 - place);
}

} // namespace density
