// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

/// The clock relative to which jitter is measured: the constant clock that fits the crossings of
/// each run best or, where they wander from it by more than chance, a clock that follows wander
/// slower than the symbol rate / 1667, as a receiver's does (golden phase-locked loop of INCITS
/// TR-35, "Methodologies for Jitter and Signal Quality Specification"). It looks ahead as far as
/// back, so that it does not lag, and its own noise is that of some hundred crossings.
namespace crossingClock {

struct Crossing
{
    std::int64_t run = 0; ///< of symbols without a gap
    double symbol = 0.0;  ///< number in the run
    /// Symbols, by which the crossing is later than that number of symbol periods.
    double time = 0.0;
};

/// How much later than the clock crossings come, symbols.
struct Offsets
{
    std::vector<double> values;  ///< one for each crossing
    std::size_t fittedCount = 0; ///< number of parameters of the clocks
};

/// @param crossings  run by run, in order.
Offsets offsetsOf(const std::vector<Crossing>& crossings);

} // namespace crossingClock
