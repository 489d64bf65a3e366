// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QCoreApplication>
#include <QString>

#include <optional>

/// Figures of read-outs: a value that changes keeps the places of its digits. What is no finite
/// number, or not known, has an empty text.
namespace figures {

/// With so many decimals, and a unit where there is one: "-26.0 dB". Beyond 999 only that it is:
/// "> 999 dB".
QString fixed(std::optional<double> value, int decimals, const QString& unit = QString());
/// Six digits with the prefix that fits: "1.20000 kHz".
QString frequency(std::optional<double> hertz);
/// Four digits with the prefix that fits: "779.2 µs".
QString duration(std::optional<double> seconds);
/// To tenths of Hz, or thousandths of kHz, MHz or GHz: "-93.125 kHz".
QString offset(std::optional<double> hertz);
/// A value and its deviation, with two digits of that and as many of the value, and the prefix that
/// fits: "-93.125 ± 0.012 kHz". Without a deviation as fixed, to a tenth.
QString measured(std::optional<double> value, std::optional<double> deviation, const QString& unit);
/// From one time to another, with the digits that tell them apart: "0.2500 to 0.5000 s".
QString stretch(double from, double to);

/// Levels that are read together: all have the prefix and the decimals of the largest one, so that
/// one about 0 does not run through the prefixes.
class Levels
{
public:
    /// @param largest  of their magnitudes; 0 and what is not finite count as 1.
    /// @param digits   of that one, at least 3; fewer between 0.1 and 1, which need no prefix.
    /// @param unit     of the levels; empty: none.
    Levels(double largest, int digits, const QString& unit = QString());

    QString text(double level) const;

private:
    double m_unit = 1.0; // of the prefix
    QString m_sign;      // prefix and unit
    int m_decimals = 0;
};

} // namespace figures
