// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/pipeline/Transport.h"

#include <optional>

/// Scale of the time axis. Its unit is T, and the number of samples in T is the view's baud rate: T
/// is the symbol period, or 1 s, 1 ms, 1 us or 1 ns.
struct TimeScale
{
    enum class Unit { Symbol, Second, Millisecond, Microsecond, Nanosecond };

    /// Largest number of samples in a notification; a segment may have as many.
    static constexpr double maxBlockLength = Transport::maxPeriodLength;
    /// Largest number of segments in a span. A diagram keeps 100; the rest is for the open segment
    /// and for segments that are cut shorter than wanted.
    static constexpr double maxSegmentCount = 80.0;

    /// @param sampleRate   Hz, of the signal.
    /// @param length       s, of the signal, where it is known.
    /// @param frameLength  as in SignalSource, in samples of the signal.
    /// @param symbolRate   Bd, where it is known.
    static TimeScale of(double sampleRate, std::optional<double> length,
                        std::optional<double> frameLength, std::optional<double> symbolRate);

    /// Chooses the unit: symbols, if wanted and the symbol rate is known; otherwise the longest of
    /// the units of time of which a span has a tenth or more.
    void setUnit(double span, bool wantsSymbols);
    double span(double seconds) const { return seconds * sampleRate / samplesPerUnit; }
    double unitSeconds() const { return samplesPerUnit / sampleRate; }

    double sampleRate = 1.0;          ///< Hz
    std::optional<double> symbolRate; ///< Bd
    double samplesPerUnit = 1.0;      ///< samples of T
    Unit unit = Unit::Second;
    double minSpan = 1.0; ///< shortest and longest span that can be shown, s
    double maxSpan = 1.0;
    /// Default span, s: two frames, some hundred symbols or some thousand samples, which can be
    /// told apart.
    double defaultSpan = 1.0;
};
