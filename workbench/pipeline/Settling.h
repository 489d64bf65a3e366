// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/receiver/SignalBlock.h"
#include "workbench/sources/SignalFacts.h"

/// Symbols in which filters, timing and carrier of a receiver settle.
constexpr double settlingSymbols = 4096.0;

/// Duration of these symbols, s; 0 for a signal whose symbol clock is known.
inline double settlingTime(const SignalFacts& source, const SignalFormat& format)
{
    return source.firstSymbol ? 0.0 : settlingSymbols * format.samplesPerSymbol / format.sampleRate;
}
