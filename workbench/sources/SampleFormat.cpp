// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/sources/SampleFormat.h"

#include <QRegularExpression>
#include <QtEndian>

#include <cmath>
#include <type_traits>

namespace {

template<class T>
void convertAs(bool isBigEndian, const char* bytes, std::size_t count, double* values)
{
    double middle = 0.0;
    double fullScale = 1.0;
    if constexpr (std::is_unsigned_v<T>)
        middle = fullScale = (std::exp2(8.0 * sizeof(T)) - 1.0) / 2.0;
    else if constexpr (std::is_integral_v<T>)
        fullScale = std::exp2(8.0 * sizeof(T) - 1.0);
    for (std::size_t i = 0; i < count; ++i, bytes += sizeof(T)) {
        const T number = isBigEndian ? qFromBigEndian<T>(bytes) : qFromLittleEndian<T>(bytes);
        values[i] = (static_cast<double>(number) - middle) / fullScale;
    }
}

} // namespace

std::optional<SampleFormat> SampleFormat::parse(const QString& name)
{
    static const QRegularExpression pattern(
        QStringLiteral("^([cr]?)(?:(f)|([is])|u)(8|16|32|64)(?:_le|(_be))?$"));
    const QRegularExpressionMatch match = pattern.match(name);
    SampleFormat format;
    format.isComplex = match.captured(1) == QLatin1String("c");
    format.bits = match.captured(4).toUInt();
    format.isBigEndian = !match.captured(5).isEmpty();
    if (match.captured(2).isEmpty())
        format.kind = match.captured(3).isEmpty() ? Kind::Unsigned : Kind::Signed;
    if (!match.hasMatch() || (format.kind == Kind::Float && format.bits < 32))
        return std::nullopt;
    return format;
}

std::optional<SampleFormat> SampleFormat::ofEnding(const QString& ending)
{
    const QString name = ending.toLower();
    for (const char* alias : {"fc32", "cfile", "iq"}) {
        if (name == QLatin1String(alias))
            return parse(QStringLiteral("cf32"));
    }
    if (name == QLatin1String("c16") || name == QLatin1String("c8"))
        return parse(QStringLiteral("cs") + name.mid(1));
    if (name == QLatin1String("rf64")) // is a kind of WAV file
        return std::nullopt;
    return parse(name);
}

QString SampleFormat::name() const
{
    const QLatin1Char kinds[] = {QLatin1Char('f'), QLatin1Char('i'), QLatin1Char('u')};
    QString result = QString(QLatin1Char(isComplex ? 'c' : 'r')) + kinds[static_cast<int>(kind)] +
                     QString::number(bits);
    if (bits > 8)
        result += QLatin1String(isBigEndian ? "_be" : "_le");
    return result;
}

void SampleFormat::convert(const char* bytes, std::size_t count, double* values) const
{
    using Converter = void (*)(bool, const char*, std::size_t, double*);
    constexpr Converter converters[3][4] = {
        {nullptr, nullptr, convertAs<float>, convertAs<double>},
        {convertAs<qint8>, convertAs<qint16>, convertAs<qint32>, convertAs<qint64>},
        {convertAs<quint8>, convertAs<quint16>, convertAs<quint32>, convertAs<quint64>}};
    const int size = bits == 8 ? 0 : bits == 16 ? 1 : bits == 32 ? 2 : 3;
    converters[static_cast<int>(kind)][size](isBigEndian, bytes, count, values);
}
