// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <optional>
#include <vector>

/// Speeds of playing: seconds of signal played in a second, in steps of 1, 2 and 5.
namespace speeds {

/// All speeds from the lowest to the fastest. At the lowest, 0.1 or less, even a short signal lasts
/// ten seconds or more.
/// @param length  s, of the signal; none where it has no known end.
std::vector<double> of(std::optional<double> length);
/// Whether a signal is too short to be followed at the usual speed.
bool isShort(std::optional<double> length);
/// "0.5x", or "20 µs/s" where it is far below 1.
QString text(double speed);

} // namespace speeds
