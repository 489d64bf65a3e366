// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/feed/TimeScale.h"

#include <QString>

#include <optional>

/// Quantities as text, with a decimal point whatever the locale, like the labels of the diagrams.
namespace units {

/// Up to six digits with k, M or G: "48 kHz", "44.1 kHz"; `unit` is Hz or Bd.
QString rate(double value, const char* unit);
/// All digits that a value has, with k, M or G: "9.570046 kBd".
QString exactRate(double value, const QString& unit);
/// Reads such a text; prefix and unit may be missing, and the decimal point may be a comma.
std::optional<double> parsedRate(const QString& text, const QString& unit);
/// Reads a time, s, such as "5ms", "0,1 s" or "400 T".
/// @param unit    s, of a number without a unit.
/// @param symbol  s, of the symbol period T, if known.
std::optional<double> parsedTime(const QString& text, double unit, std::optional<double> symbol);
/// Unit of a time axis: "T", of symbols, or "ms".
QString sign(const TimeScale& scale);
/// A position in a signal of a length: minutes, seconds and milliseconds, "0:12.345"; in a signal
/// shorter than a second with its prefix and four digits, "7.50 ms" in 20 ms. So the width of the
/// text does not change with the position.
QString time(double seconds, double length);
/// Up to four digits with the prefix that fits: "833.3 µs".
QString duration(double seconds);

} // namespace units
