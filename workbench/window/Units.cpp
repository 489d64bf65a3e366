// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/Units.h"

#include <algorithm>
#include <cmath>

namespace {

struct Prefix
{
    double factor;
    const char* sign;
};

constexpr Prefix fractions[] = {{1.0, ""}, {1e-3, "m"}, {1e-6, "µ"}, {1e-9, "n"}};

/// The largest prefix that a value reaches; the last one for smaller values.
template<std::size_t count>
const Prefix& fitting(double value, const Prefix (&prefixes)[count])
{
    const Prefix* best = prefixes;
    while (best + 1 != prefixes + count && std::abs(value) < best->factor)
        ++best;
    return *best;
}

template<std::size_t count>
QString withPrefix(double value, int digits, const Prefix (&prefixes)[count], const char* unit)
{
    const Prefix& prefix = fitting(value, prefixes);
    return QString::number(value / prefix.factor, 'g', digits) + QChar(0x2009) +
           QString::fromUtf8(prefix.sign) + QString::fromLatin1(unit);
}

} // namespace

QString units::rate(double value, const char* unit)
{
    static constexpr Prefix prefixes[] = {{1e9, "G"}, {1e6, "M"}, {1e3, "k"}, {1.0, ""}};
    return withPrefix(value, 6, prefixes, unit);
}

QString units::duration(double seconds) { return withPrefix(seconds, 4, fractions, "s"); }

QString units::time(double seconds, double length)
{
    if (length < 1.0) {
        const Prefix& prefix = fitting(length, fractions);
        const int wholeDigits =
            std::clamp(static_cast<int>(std::floor(std::log10(length / prefix.factor))) + 1, 1, 4);
        return QString::number(seconds / prefix.factor, 'f', 4 - wholeDigits) + QChar(0x2009) +
               QString::fromUtf8(prefix.sign) + QLatin1Char('s');
    }
    const auto ms = static_cast<qint64>(std::llround(seconds * 1000.0));
    return QStringLiteral("%1:%2.%3")
        .arg(ms / 60000)
        .arg(ms / 1000 % 60, 2, 10, QLatin1Char('0'))
        .arg(ms % 1000, 3, 10, QLatin1Char('0'));
}
