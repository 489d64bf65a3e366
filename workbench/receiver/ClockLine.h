// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/receiver/ClockSpectra.h"

#include <cstddef>
#include <vector>

/// A line in the spectra of a part of a signal that may come from a symbol clock, and the evidence
/// against it.
struct ClockLine
{
    /// The strongest line that fits the bandwidth of the part, or the fundamental of that line.
    static ClockLine of(const ClockSpectra& part);

    /// Whether this line shows a symbol rate better than another: it is clearer, or clear and from
    /// a longer part.
    bool isBetterThan(const ClockLine& other) const;
    /// Whether the other parts confirm it: most that have the line agree, none has half or twice
    /// its rate instead, and if its part is short, another one has the line, too.
    /// @param lines  the lines of all parts.
    /// @param whole  duration of the signal, s.
    bool isPlainAmong(const std::vector<ClockLine>& lines, double whole) const;
    /// Probability that noise gives such a line in any of some tries (Scargle, Astrophysical
    /// Journal 263, 1982, equation 14; and the F test of Thomson, Proc. IEEE 70(9), 1982, whichever
    /// is higher).
    double falseAlarm(double tries) const;
    /// Part by which contradicting lines stay below it, 0 to 1.
    double clearness() const;

    double rate = 0.0;          ///< Hz
    double strength = 0.0;      ///< power over that of the noise about it
    double steadiness = 0.0;    ///< F ratio of its parts
    double rivalStrength = 0.0; ///< strength of the strongest line that contradicts it
    double symbolCount = 0.0;
    double duration = 0.0;    ///< of the part, s
    double start = 0.0;       ///< of the part, s
    bool isPlain = false;     ///< nothing else in the part contradicts it
    bool isPeriodic = false;  ///< whether the part is, see ClockSpectra
    std::size_t binCount = 0; ///< number of bins that were searched
};
