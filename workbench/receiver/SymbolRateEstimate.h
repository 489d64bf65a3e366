// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/receiver/HalfBits.h"
#include "workbench/receiver/ReceiverSettings.h"
#include "workbench/sources/ChannelChoice.h"
#include "workbench/sources/SignalSource.h"

#include <QCoreApplication>
#include <QString>

#include <cstddef>
#include <functional>
#include <optional>

/// The symbol rate of a signal, from its samples alone, and how sure that is.
///
/// The squared envelope of a signal with symbols repeats itself with them, however random they are:
/// its spectrum has a line at the symbol rate. So has that of the squared derivative, which sees
/// the edges of rectangular symbols, too. Both are taken of the whitened signal, where the line is
/// clearest (Gardner, "Exploitation of spectral redundancy in cyclostationary signals", IEEE SP
/// Magazine 8(2), 1991). Lines of the signal itself, such as carriers and hum, are levelled first,
/// and only rates are looked for that fit the bandwidth. Parts of many lengths are looked at, so
/// that a burst is found among noise.
///
/// The phase of the line gives the rate, to some millionths where it keeps it over a few thousand
/// symbols (least squares of the phases of 16 pieces). Halves of bits have a clock, too: see Code.
///
/// It takes some hundred symbols; frequency modulated signals must be demodulated before.
struct SymbolRateEstimate
{
    Q_DECLARE_TR_FUNCTIONS(SymbolRateEstimate)
public:
    enum class Verdict {
        None,   ///< no line that noise would not give, too
        Unsure, ///< a line, but not a clear one, or one of several: look at the eye
        Sure
    };
    using Code = HalfBits::Code;
    using Signal = SampledSignal;
    /// Called now and then with the part done of one place, 0 to 1; false ends the estimate. May be
    /// empty.
    using GoOn = std::function<bool(double part)>;

    static constexpr std::size_t maxSampleCount = 1 << 18; ///< looked at at a time
    static constexpr double minSure = 0.95;
    static constexpr double minSymbolCount = 100.0; ///< with which it can be sure

    /// Of a signal as it is; at most its middle maxSampleCount samples. What is not finite counts
    /// as 0. None for a bad sample rate, and where it was ended.
    static SymbolRateEstimate of(const Signal& signal, const GoOn& goOn = {});

    /// What a receiver makes of a source before it needs the symbol rate: shifted, filtered and
    /// demodulated. Reads from a sample on, and moves back to where the source was.
    /// @param channel   which exists.
    /// @param settings  their symbol rate does not count; with a flaw they count as off.
    static Signal signalOf(SignalSource& source, const ChannelChoice& channel,
                           const ReceiverSettings& settings, std::int64_t from);
    /// Where to look in a recording when its samples from one on were not sure: where most signal
    /// is, in its middle and at its end, as far as that is elsewhere. First samples of
    /// maxSampleCount; none of a source that is live or not longer.
    static std::vector<std::int64_t> otherPlaces(SignalSource& source, const ChannelChoice& channel,
                                                 std::int64_t first);
    /// Of a source: of its start, and where that is not sure of its otherPlaces; the surest.
    /// Of a live one: of what comes in the next seconds, which is gone then.
    static SymbolRateEstimate ofSource(SignalSource& source, const ChannelChoice& channel,
                                       const ReceiverSettings& settings, const GoOn& goOn = {});

    /// Whether to take it: what was asked for also where it is unsure, else only what is sure.
    bool isToBeTaken(bool isAsked) const
    {
        return verdict == Verdict::Sure || (isAsked && verdict == Verdict::Unsure);
    }
    /// Surer, or as sure with more confidence.
    bool isBetterThan(const SymbolRateEstimate& other) const;
    /// The result, and what to do where it is not sure: one sentence.
    Message message() const;

    double symbolRate = 0.0; ///< Bd; 0 without a line
    /// 0 to 1: the probability that noise gives no line so strong anywhere in what was looked at
    /// (Scargle, Astrophysical Journal 263, 1982, equation 14; and the F test of Thomson, Proc.
    /// IEEE 70(9), 1982, whichever says less), times the part by which the strongest line that
    /// contradicts it stays below it. Halved where the signal speaks against it: fewer symbols than
    /// minSymbolCount, a bandwidth that does not fit, an empty middle of the band, lines of its
    /// own, a half or a quarter of the sample rate, what repeats itself, parts that disagree.
    double confidence = 0.0;
    Verdict verdict = Verdict::None;
    Code code = Code::Plain;
    /// Bd; of the two rates of such a code the less likely one: of a Manchester code that of its
    /// bits, for the eye opens at its half bits; of pulses that of half bits.
    std::optional<double> otherRate;
};
