// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/receiver/ClockSpectra.h"

#include <cstddef>
#include <vector>

/// A line that a symbol clock may have left in the spectra of a part of a signal, and what speaks
/// against it.
struct ClockLine
{
    /// The strongest one that fits the part's bandwidth, or that whose multiple it is.
    static ClockLine of(const ClockSpectra& part);

    /// Whether it shows a symbol rate better than another: it is clearer, or clear and longer.
    bool isBetterThan(const ClockLine& other) const;
    /// Whether the other parts leave it as plain as it looked in its own: most that have it agree,
    /// none has its half or double instead, and where the part is short another one has it, too.
    /// @param lines  of all parts.
    /// @param whole  duration of the signal, s.
    bool isPlainAmong(const std::vector<ClockLine>& lines, double whole) const;
    /// Probability that noise gives such a line in any of some tries (Scargle, Astrophysical
    /// Journal 263, 1982, equation 14; and the F test of Thomson, Proc. IEEE 70(9), 1982, whichever
    /// is higher).
    double falseAlarm(double tries) const;
    /// Part by which what contradicts it stays below it, 0 to 1.
    double clearness() const;

    double rate = 0.0;          ///< Hz
    double strength = 0.0;      ///< power over that of the noise about it
    double steadiness = 0.0;    ///< F ratio of its parts
    double rivalStrength = 0.0; ///< of the strongest line that contradicts it
    double symbolCount = 0.0;
    double duration = 0.0;    ///< of the part, s
    double start = 0.0;       ///< of the part, s
    bool isPlain = false;     ///< nothing else about the part speaks against it
    bool isPeriodic = false;  ///< the part is, see ClockSpectra
    std::size_t binCount = 0; ///< in which it was looked for
};
