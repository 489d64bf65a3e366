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

/// The symbol rate of a signal, estimated from its samples alone, and its confidence.
///
/// The squared envelope of a signal with symbols is periodic in the mean, however random the
/// symbols are: its spectrum has a line at the symbol rate. So has that of the squared derivative,
/// which also shows the edges of rectangular symbols. Both are computed from the whitened signal,
/// where the line is clearest (Gardner, "Exploitation of spectral redundancy in cyclostationary
/// signals", IEEE SP Magazine 8(2), 1991). Lines of the signal itself, such as carriers and hum,
/// are levelled first, and only rates that fit the bandwidth are considered. Parts of many lengths
/// are examined, so that a burst is found in noise.
///
/// The phase of the line gives the rate, to some millionths where the line keeps its phase over a
/// few thousand symbols (least squares of the phases of 16 pieces). Half bits also have a clock:
/// see Code.
///
/// It needs some hundred symbols; frequency modulated signals must be demodulated before.
struct SymbolRateEstimate
{
    Q_DECLARE_TR_FUNCTIONS(SymbolRateEstimate)
public:
    enum class Verdict {
        None,   ///< no line that is clearer than those of noise
        Unsure, ///< a line that is not clear, or one of several: look at the eye
        Sure
    };
    using Code = HalfBits::Code;
    using Signal = SampledSignal;
    /// Called repeatedly with the part that is done for one place, 0 to 1; returning false ends the
    /// estimate. May be empty.
    using GoOn = std::function<bool(double part)>;

    static constexpr std::size_t maxSampleCount = 1 << 18; ///< examined at a time
    static constexpr double minSure = 0.95;
    static constexpr double minSymbolCount = 100.0; ///< fewer do not make it sure

    /// Estimates from at most the middle maxSampleCount samples of a signal. A sample that is not
    /// finite counts as 0. The verdict is None for a bad sample rate, and when progress ended it.
    static SymbolRateEstimate of(const Signal& signal, const GoOn& goOn = {});

    /// The signal of a source after the stages of a receiver that do not need the symbol rate:
    /// shifted, filtered and demodulated. Reads from a sample on, and moves the source back to its
    /// position.
    /// @param channel   which exists.
    /// @param settings  the symbol rate is ignored; invalid settings count as off.
    static Signal signalOf(SignalSource& source, const ChannelChoice& channel,
                           const ReceiverSettings& settings, std::int64_t from);
    /// Other places to examine in a recording when an estimate was not sure: where most signal is,
    /// in its middle and at its end, if these are elsewhere. Each is the first of maxSampleCount
    /// samples. Empty for a source that is live or not longer.
    static std::vector<std::int64_t> otherPlaces(SignalSource& source, const ChannelChoice& channel,
                                                 std::int64_t first);
    /// Estimates from the start of a source and, when that is not sure, from its otherPlaces;
    /// returns the surest estimate. From a live source it takes, and removes, the samples of the
    /// next seconds.
    static SymbolRateEstimate ofSource(SignalSource& source, const ChannelChoice& channel,
                                       const ReceiverSettings& settings, const GoOn& goOn = {});

    /// Whether to use the estimate: one that the user asked for also when it is unsure, else only
    /// when it is sure.
    bool isToBeTaken(bool isAsked) const
    {
        return verdict == Verdict::Sure || (isAsked && verdict == Verdict::Unsure);
    }
    /// Whether the verdict is surer, or equal with more confidence.
    bool isBetterThan(const SymbolRateEstimate& other) const;
    /// The result and, when it is not sure, what to do.
    Message message() const;

    double symbolRate = 0.0; ///< Bd; 0 without a line
    /// Confidence, 0 to 1: the probability that noise gives no line so strong anywhere in the
    /// examined samples (Scargle, Astrophysical Journal 263, 1982, equation 14; and the F test of
    /// Thomson, Proc. IEEE 70(9), 1982, whichever is lower), times the part by which contradicting
    /// lines stay below it. Halved when the signal contradicts it: fewer symbols than
    /// minSymbolCount, a bandwidth that does not fit, an empty middle of the band, lines of the
    /// signal itself, a half or a quarter of the sample rate, periodic data, parts that disagree.
    double confidence = 0.0;
    Verdict verdict = Verdict::None;
    Code code = Code::Plain;
    /// Bd, the less likely of the two rates of such a code: of a Manchester code that of its bits,
    /// because the eye opens at half bits; of pulses that of half bits.
    std::optional<double> otherRate;
};
