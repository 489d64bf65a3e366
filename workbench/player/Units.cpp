// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/player/Units.h"

#include <algorithm>
#include <cmath>

namespace {

struct Prefix
{
    double factor;
    const char* sign;
};

constexpr Prefix multiples[] = {{1e9, "G"}, {1e6, "M"}, {1e3, "k"}, {1.0, ""}};
constexpr Prefix fractions[] = {{1.0, ""}, {1e-3, "m"}, {1e-6, "µ"}, {1e-9, "n"}};

/// The largest prefix that a value reaches; the smallest prefix for smaller values.
template<std::size_t count>
const Prefix& fitting(double value, const Prefix (&prefixes)[count])
{
    const Prefix* best = prefixes;
    while (best + 1 != prefixes + count && std::abs(value) < best->factor)
        ++best;
    return *best;
}

template<std::size_t count>
QString withPrefix(double value, int digits, const Prefix (&prefixes)[count], const QString& unit)
{
    const Prefix& prefix = fitting(value, prefixes);
    return QString::number(value / prefix.factor, 'g', digits) + QChar(0x2009) +
           QString::fromUtf8(prefix.sign) + unit;
}

/// The number at the start of a text without blanks, with a point or a comma.
std::optional<double> numberIn(QString text)
{
    bool isNumber = false;
    const double value = text.replace(QLatin1Char(','), QLatin1Char('.')).toDouble(&isNumber);
    return isNumber && std::isfinite(value) ? std::optional<double>(value) : std::nullopt;
}

std::optional<double> times(double factor, const std::optional<double>& number)
{
    return number ? std::optional<double>(factor * *number) : number;
}

QString withoutBlanks(const QString& text) { return text.simplified().remove(QLatin1Char(' ')); }

} // namespace

QString units::rate(double value, const char* unit)
{
    return withPrefix(value, 6, multiples, QString::fromLatin1(unit));
}

QString units::exactRate(double value, const QString& unit)
{
    return withPrefix(value, 13, multiples, unit);
}

std::optional<double> units::parsedRate(const QString& text, const QString& unit)
{
    QString number = withoutBlanks(text);
    if (number.endsWith(unit, Qt::CaseInsensitive))
        number.chop(unit.size());
    double factor = 1.0;
    for (const Prefix& prefix : multiples) {
        const QString sign = QLatin1String(prefix.sign);
        if (!sign.isEmpty() && number.endsWith(sign, Qt::CaseInsensitive)) {
            number.chop(1);
            factor = prefix.factor;
            break;
        }
    }
    return times(factor, numberIn(number));
}

std::optional<double> units::parsedTime(const QString& text, double unit,
                                        std::optional<double> symbol)
{
    QString number = withoutBlanks(text);
    if (symbol && number.endsWith(QLatin1Char('T'))) {
        number.chop(1);
        return times(*symbol, numberIn(number));
    }
    if (!number.endsWith(QLatin1Char('s')))
        return times(unit, numberIn(number));
    number.chop(1);
    if (number.endsWith(QLatin1Char('u')) || number.endsWith(QChar(0x3bc))) // as on keyboards
        number.back() = QChar(0xb5);
    for (const Prefix& prefix : fractions) {
        const QString sign = QString::fromUtf8(prefix.sign);
        if (!sign.isEmpty() && number.endsWith(sign)) {
            number.chop(1);
            return times(prefix.factor, numberIn(number));
        }
    }
    return numberIn(number);
}

QString units::sign(const TimeScale& scale)
{
    const char* const signs[] = {"T", "s", "ms", "µs", "ns"};
    return QString::fromUtf8(signs[static_cast<int>(scale.unit)]);
}

QString units::duration(double seconds)
{
    return withPrefix(seconds, 4, fractions, QStringLiteral("s"));
}

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
