// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

/// The clock that jitter is measured against: the constant one that suits the crossings of each run
/// best, or, where they wander from it by more than chance, one that follows what is slower than
/// the symbol rate / 1667, as a receiver's does (golden phase-locked loop of INCITS TR-35,
/// "Methodologies for Jitter and Signal Quality Specification"). It looks ahead as far as behind,
/// so it lags nothing and its own noise is that of some hundred crossings.
namespace crossingClock {

struct Crossing
{
    std::int64_t run = 0; ///< of symbols without a gap
    double symbol = 0.0;  ///< number in the run
    double time = 0.0;    ///< symbols, by which it is later than that number of symbol periods
};

/// By how much crossings come later than the clock, symbols.
struct Offsets
{
    std::vector<double> values;  ///< one of each crossing
    std::size_t fittedCount = 0; ///< numbers that the clocks were fitted by
};

/// @param crossings  run by run, in order.
Offsets offsetsOf(const std::vector<Crossing>& crossings);

} // namespace crossingClock
