// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QCoreApplication>
#include <QString>

#include <optional>

/// Figures of read-outs: a changing value keeps the places of its digits. A value that is not
/// finite, or not known, has an empty text.
namespace figures {

/// A number with fixed decimals and a unit, if there is one: "-26.0 dB". Beyond 999: "> 999 dB".
QString fixed(std::optional<double> value, int decimals, const QString& unit = QString());
/// Six digits with the prefix that fits: "1.20000 kHz".
QString frequency(std::optional<double> hertz);
/// Four digits with the prefix that fits: "779.2 µs".
QString duration(std::optional<double> seconds);
/// To tenths of Hz, or thousandths of kHz, MHz or GHz: "-93.125 kHz".
QString offset(std::optional<double> hertz);
/// A value and its deviation, both to two digits of the deviation, and the prefix that fits:
/// "-93.125 ± 0.012 kHz". Without a deviation like fixed, to a tenth.
QString measured(std::optional<double> value, std::optional<double> deviation, const QString& unit);
/// A stretch of time with the digits that tell both ends apart: "0.2500 to 0.5000 s".
QString stretch(double from, double to);

/// Levels that are read together: all have the prefix and the decimals of the largest one, so that
/// a level near 0 does not change its prefix all the time.
class Levels
{
public:
    /// @param largest  largest magnitude; 0 and values that are not finite count as 1.
    /// @param digits   of the largest one, at least 3; fewer between 0.1 and 1, which need no
    ///                 prefix.
    /// @param unit     of the levels; empty: none.
    Levels(double largest, int digits, const QString& unit = QString());

    QString text(double level) const;

private:
    double m_unit = 1.0; // of the prefix
    QString m_sign;      // prefix and unit
    int m_decimals = 0;
};

} // namespace figures
