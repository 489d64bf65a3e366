// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/pipeline/Transport.h"

#include <optional>

/// How a signal is laid out on the time axis. The axis counts in units of T, whose number of
/// samples is the view's baud rate: T is the symbol period, or 1 s, 1 ms, 1 us or 1 ns.
struct TimeScale
{
    enum class Unit { Symbol, Second, Millisecond, Microsecond, Nanosecond };

    /// Samples that one notification may carry, and so a segment at least may have.
    static constexpr double maxBlockLength = Transport::maxPeriodLength;
    /// Segments that a span may need. A diagram keeps 100; some must be left for the one that is
    /// open and for those that are cut shorter than wanted.
    static constexpr double maxSegmentCount = 80.0;

    /// @param sampleRate   Hz, of the signal.
    /// @param length       s, of the signal, where it is known.
    /// @param frameLength  as in SignalSource, in samples of the signal.
    /// @param symbolRate   Bd, where it is known.
    static TimeScale of(double sampleRate, std::optional<double> length,
                        std::optional<double> frameLength, std::optional<double> symbolRate);

    /// Counts in symbols, where they are wanted and the symbol rate is known; else in the longest
    /// part of a second of which a span has a tenth or more.
    void setUnit(double span, bool wantsSymbols);
    double span(double seconds) const { return seconds * sampleRate / samplesPerUnit; }
    double unitSeconds() const { return samplesPerUnit / sampleRate; }

    double sampleRate = 1.0;          ///< Hz
    std::optional<double> symbolRate; ///< Bd
    double samplesPerUnit = 1.0;      ///< samples of T
    Unit unit = Unit::Second;
    double minSpan = 1.0; ///< shortest and longest span that can be shown, s
    double maxSpan = 1.0;
    /// s: two frames, some hundred symbols or some thousand samples, which can be made out.
    double defaultSpan = 1.0;
};
