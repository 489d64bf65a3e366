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
/// What a text like that means; prefix and unit may be missing, the decimal point be a comma.
std::optional<double> parsedRate(const QString& text, const QString& unit);
/// What a text such as "5ms", "0,1 s" or "400 T" means, s.
/// @param unit    s, of a number alone.
/// @param symbol  s, of the symbol T, where that is known.
std::optional<double> parsedTime(const QString& text, double unit, std::optional<double> symbol);
/// Of what a time axis counts: "T", of symbols, or "ms".
QString sign(const TimeScale& scale);
/// A place in a signal of some length: minutes, seconds and milliseconds, "0:12.345", or where it
/// is shorter than a second with its prefix and four digits: "7.50 ms" in 20 ms, so that a text
/// does not change its width with the place.
QString time(double seconds, double length);
/// Up to four digits with the prefix that fits: "833.3 µs".
QString duration(double seconds);

} // namespace units
