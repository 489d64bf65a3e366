// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/receiver/ReceiverSettings.h"

#include <vector>

/// The filter that makes the symbols of a received signal measurable.
namespace measuringFilter {

/// Taps at a whole number of samples of a symbol, an odd number of them, symmetric; their sum is 1.
/// Empty where the settings have no filter.
std::vector<float> tapsOf(const ReceiverSettings& settings, int perSymbol);
/// Number of symbols at a cut-off end of a signal whose filtered samples are useless; 0 without a
/// filter.
int edgeOf(const ReceiverSettings& settings);

} // namespace measuringFilter
