// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/player/Figures.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double most = 999.0; // of numbers without a prefix
constexpr int leastPower = -4; // of 1000 that has a prefix
const QString prefixes = QString::fromUtf8("pnµm kMGT");

/// The power of ten of a number after rounding to some digits.
int exponentOf(double value, int digits)
{
    return QString::number(value, 'e', digits - 1).section(QLatin1Char('e'), 1).toInt();
}

/// The power of 1000 whose prefix fits a power of ten.
int powerOf(int exponent)
{
    const int power = static_cast<int>(std::floor(exponent / 3.0));
    return std::clamp(power, leastPower, leastPower + int(prefixes.size()) - 1);
}

QString prefixOf(int power)
{
    return power == 0 ? QString() : QString(prefixes[power - leastPower]);
}

QString joined(double value, int decimals, const QString& unit)
{
    QString text = QString::number(value, 'f', std::max(decimals, 0));
    if (value < 0.0 && text.toDouble() == 0.0)
        text.remove(0, 1); // no minus sign before a rounded 0
    return unit.isEmpty() ? text : text + QChar(0x2009) + unit;
}

QString withPrefix(std::optional<double> value, int digits, const QString& unit)
{
    if (!value || !std::isfinite(*value))
        return QString();
    const int exponent = exponentOf(*value, digits);
    const int power = powerOf(exponent);
    return joined(*value / std::pow(1000.0, power), digits - 1 - (exponent - 3 * power),
                  prefixOf(power) + unit);
}

QString beyond(double value, const QString& unit)
{
    return QLatin1String(value > 0.0 ? "> " : "< ") + joined(std::copysign(most, value), 0, unit);
}

} // namespace

QString figures::fixed(std::optional<double> value, int decimals, const QString& unit)
{
    if (!value || !std::isfinite(*value))
        return QString();
    return std::abs(*value) > most ? beyond(*value, unit) : joined(*value, decimals, unit);
}

QString figures::frequency(std::optional<double> hertz)
{
    return withPrefix(hertz, 6, QStringLiteral("Hz"));
}

QString figures::duration(std::optional<double> seconds)
{
    return withPrefix(seconds, 4, QStringLiteral("s"));
}

QString figures::offset(std::optional<double> hertz)
{
    if (!hertz || !std::isfinite(*hertz))
        return QString();
    const int power = std::max(powerOf(exponentOf(*hertz, 4)), 0);
    return joined(*hertz / std::pow(1000.0, power), power == 0 ? 1 : 3,
                  prefixOf(power) + QLatin1String("Hz"));
}

QString figures::measured(std::optional<double> value, std::optional<double> deviation,
                          const QString& unit)
{
    if (!value || !std::isfinite(*value))
        return QString();
    if (!deviation || !(*deviation > 0.0) || !std::isfinite(*deviation))
        return unit == QLatin1String("Hz") ? offset(value) : fixed(value, 1, unit);
    const bool hasPrefix = unit == QLatin1String("Hz");
    const int power =
        hasPrefix ? std::max(powerOf(exponentOf(std::max(std::abs(*value), *deviation), 4)), 0) : 0;
    const double scale = std::pow(1000.0, power);
    const int decimals = std::clamp(1 - exponentOf(*deviation / scale, 2), 0, 6);
    return joined(*value / scale, decimals, QString()) + QStringLiteral(" ± ") +
           joined(*deviation / scale, decimals, prefixOf(power) + unit);
}

QString figures::stretch(double from, double to)
{
    constexpr int digits = 4; // of the distance
    const int power =
        std::min(powerOf(exponentOf(std::max(std::abs(from), std::abs(to)), digits)), 0);
    const double scale = std::pow(1000.0, power);
    const int decimals = std::clamp(digits - 1 - exponentOf((to - from) / scale, digits), 0, 9);
    return QCoreApplication::translate("Readings", "%1 to %2")
        .arg(joined(from / scale, decimals, QString()),
             joined(to / scale, decimals, prefixOf(power) + QLatin1Char('s')));
}

figures::Levels::Levels(double largest, int digits, const QString& unit)
{
    if (!(largest > 0.0) || !std::isfinite(largest))
        largest = 1.0;
    const int exponent = exponentOf(largest, digits);
    const int power = exponent == -1 || exponent == 3 ? 0 : powerOf(exponent);
    m_unit = std::pow(1000.0, power);
    m_sign = prefixOf(power) + unit;
    m_decimals = digits - 1 - std::max(exponent - 3 * power, 0);
}

QString figures::Levels::text(double level) const
{
    if (!std::isfinite(level))
        return QString();
    const double value = level / m_unit;
    const bool isBeyond = std::abs(value) > 100.0 * most; // the largest is below 10 times
    return isBeyond ? beyond(value, m_sign) : joined(value, m_decimals, m_sign);
}
