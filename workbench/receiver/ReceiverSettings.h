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
    /// Measuring filters; matched ones, or such that open an eye.
    enum class Filter { RootRaisedCosine, RaisedCosine, Gaussian, Boxcar, HalfSine };

    static constexpr int samplesPerSymbol = 8; ///< after resampling
    /// Samples of the signal that a symbol must have before it.
    static constexpr double minSamplesPerSymbol = 2.0;
    static constexpr double maxSamplesPerSymbol = 1e5;
    /// Of the sample rate: filters of narrower channels would all be alike.
    static constexpr double minChannel = 1e-4;
    static constexpr double minRollOff = 0.01;
    static constexpr double maxRollOff = 1.0;
    static constexpr double usualRollOff = 0.35;
    static constexpr double minSquelch = -150.0;
    static constexpr double maxSquelch = 60.0; ///< samples may exceed their full scale

    /// Names of the filters, in order.
    static QStringList filterNames();
    static std::optional<Filter> filterOf(const QString& name);
    /// The filter that counts: a roll-off alone means a root raised cosine.
    std::optional<Filter> usedFilter() const
    {
        return filter || !rollOff ? filter : std::optional(Filter::RootRaisedCosine);
    }

    /// Whether a signal of a sample rate, Hz, can be received so; where it is off, any can.
    Result<void> check(double sampleRate) const;
    bool operator==(const ReceiverSettings& other) const;
    bool operator!=(const ReceiverSettings& other) const { return !(*this == other); }

    bool isOn = false;               ///< else the signal passes as it is
    bool removesDc = false;          ///< takes off what is at 0 Hz
    double shift = 0.0;              ///< Hz, added to every frequency
    std::optional<double> bandwidth; ///< Hz, of the channel's filter, both sides of 0
    std::optional<double> squelch;   ///< dB of full scale; what is below is silenced
    /// Silences stretches without symbols at any level: noise may be louder than bursts.
    bool hasAutoSquelch = false;
    Demodulation demodulation = Demodulation::Linear;
    std::optional<double> symbolRate; ///< Bd; none: no resampling, nor what follows
    bool hasGainControl = true;
    std::optional<Filter> filter;
    std::optional<double> rollOff; ///< of the filter; of a Gaussian one its BT
    bool hasTimingRecovery = true;
    std::optional<Modulation> modulation; ///< of the recovered carrier; linear only
    /// Bits between start and stop bit of an asynchronous serial line, 5 to 9, whose characters may
    /// be out of step with one another; off only, with a symbol rate.
    std::optional<int> characterBits;
};
