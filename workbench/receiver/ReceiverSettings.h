// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/sources/ModulationKind.h"
#include "workbench/sources/Result.h"

#include <QCoreApplication>
#include <QStringList>

#include <optional>

/// Settings of a receiver, stage by stage. A stage that is not set passes the signal on.
struct ReceiverSettings
{
    Q_DECLARE_TR_FUNCTIONS(ReceiverSettings)
public:
    enum class Demodulation {
        Linear, ///< I and Q as they are: phase and amplitude modulation
        Fm,     ///< frequency: FSK, GMSK, C4FM
        Am      ///< envelope: OOK, ASK
    };
    using Modulation = ModulationKind;
    /// Measuring filters: matched filters, and filters that open an eye.
    enum class Filter { RootRaisedCosine, RaisedCosine, Gaussian, Boxcar, HalfSine };

    static constexpr int samplesPerSymbol = 8; ///< of a received signal
    /// Where the band is narrow enough for it: after a matched filter, and of an input with no
    /// more.
    static constexpr int fewSamplesPerSymbol = 4;
    /// Range of samples per symbol before resampling.
    static constexpr double minSamplesPerSymbol = 2.0;
    static constexpr double maxSamplesPerSymbol = 1e5;
    /// Narrowest channel, as a part of the sample rate: filters of narrower channels would all be
    /// alike.
    static constexpr double minChannel = 1e-4;
    static constexpr double minRollOff = 0.01;
    static constexpr double maxRollOff = 1.0;
    static constexpr double usualRollOff = 0.35;
    static constexpr double minSquelch = -150.0;
    static constexpr double maxSquelch = 60.0; ///< samples may exceed full scale

    /// Names of the filters, in order.
    static QStringList filterNames();
    static std::optional<Filter> filterOf(const QString& name);
    /// The filter that is used: a roll-off alone means a root raised cosine.
    std::optional<Filter> usedFilter() const
    {
        return filter || !rollOff ? filter : std::optional(Filter::RootRaisedCosine);
    }

    /// Whether few samples of a symbol hold all of what passes the filter: it is a raised cosine,
    /// and symbol timing makes more of them afterwards.
    bool isNarrow() const
    {
        const std::optional<Filter> used = usedFilter();
        return demodulation == Demodulation::Linear && hasTimingRecovery &&
               (used == Filter::RootRaisedCosine || used == Filter::RaisedCosine);
    }

    /// Checks that a signal of a sample rate, Hz, can be received with these settings; always true
    /// when the receiver is off.
    Result<void> check(double sampleRate) const;
    bool operator==(const ReceiverSettings& other) const;
    bool operator!=(const ReceiverSettings& other) const { return !(*this == other); }

    bool isOn = false;               ///< otherwise the signal passes unchanged
    bool removesDc = false;          ///< removes the mean, at 0 Hz
    double shift = 0.0;              ///< Hz, added to every frequency
    std::optional<double> bandwidth; ///< Hz, of the channel filter, both sides of 0
    std::optional<double> squelch;   ///< dB of full scale; weaker stretches are silenced
    /// Silences stretches without symbols at any level: noise may be louder than bursts.
    bool hasAutoSquelch = false;
    Demodulation demodulation = Demodulation::Linear;
    std::optional<double> symbolRate; ///< Bd; none: neither resampling nor later stages
    bool hasGainControl = true;
    std::optional<Filter> filter;
    std::optional<double> rollOff; ///< of the filter; BT of a Gaussian one
    bool hasTimingRecovery = true;
    std::optional<Modulation> modulation; ///< of the recovered carrier; linear only
    /// Bits between start and stop bit of an asynchronous serial line, 5 to 9, whose characters may
    /// be out of step with one another. Counts only when the receiver is off and the symbol rate is
    /// known.
    std::optional<int> characterBits;
};
