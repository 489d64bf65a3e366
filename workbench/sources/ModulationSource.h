// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/sources/ModulationKind.h"
#include "workbench/sources/SignalSource.h"

#include <QCoreApplication>

#include <memory>

struct ModulationSettings
{
    static constexpr double minSnrDb = 0.0;
    static constexpr double maxSnrDb = 60.0;
    static constexpr double maxPhaseNoise = 0.02;
    static constexpr double maxCarrierError = 0.02;

    ModulationKind modulation = ModulationKind::Qpsk; ///< one that is built in
    double sampleRate = 48000.0; ///< Hz, > 0; there are ModulationSource::samplesPerSymbol
    double snrDb = 28.0;         ///< energy of a symbol against the noise's spectral density
    double carrierOffset = 1e-3; ///< cycles a symbol
    double phaseNoise = 2e-3;    ///< rad, r.m.s. step of the carrier's phase from symbol to symbol
    double carrierError = 0.0;   ///< cycles a symbol, part of the offset that the receiver leaves
    double clockOffset = 2e-5;   ///< of the transmitter's symbol clock, relative
    std::uint32_t seed = 20260801;

    /// Modulation error ratio of many symbols, dB, without a carrier error and as long as decisions
    /// are right: noise, and what the recovery of the carrier leaves of the phase's walk. A loop
    /// of the second order and the gain K a symbol leaves step^2 / (2 K), rad^2 (Gardner,
    /// "Phaselock Techniques", noise through 1 - H). That goes on for hundreds of symbols, so that
    /// a few thousand may have 1 dB less.
    double merDb() const;
};

/// Endless random symbols of a linear modulation as a receiver has them: sent with root raised
/// cosine pulses over a channel with noise, an offset and noise of the carrier's phase and an
/// offset of the symbols' clock; received by matched filter, recovery of the symbols' clock and of
/// the carrier. The receiver has locked before the first sample, with the help of a preamble, to
/// one of the phases that the scheme cannot tell apart; that takes some hundredths of a second, of
/// the first read. Symbol k lies at sample k times samplesPerSymbol.
class ModulationSource : public SignalSource
{
    Q_DECLARE_TR_FUNCTIONS(ModulationSource)
public:
    static constexpr int samplesPerSymbol = 8;

    explicit ModulationSource(const ModulationSettings& settings);
    ~ModulationSource() override;

    const ModulationSettings& settings() const { return m_settings; }
    /// These act on the symbols that are sent from now on.
    void setSnr(double decibels);
    void setPhaseNoise(double rms);
    void setCarrierError(double cyclesPerSymbol);

    std::optional<std::int64_t> sampleCount() const override { return std::nullopt; }
    std::int64_t position() const override { return m_position; }
    std::size_t read(std::vector<double>& block, std::size_t count) override;
    /// At 0 the signal starts anew; elsewhere it goes on as if nothing had been left out.
    bool seek(std::int64_t position) override;

private:
    struct Transmitter;
    struct Channel;
    struct Receiver;

    void start();
    void changeNoise();
    void runSymbol();
    void skip(std::size_t count);

    ModulationSettings m_settings;
    std::int64_t m_position = 0;
    double m_phase = 0.0; // of the carrier's error, rad
    std::unique_ptr<Transmitter> m_transmitter;
    std::unique_ptr<Channel> m_channel;
    std::unique_ptr<Receiver> m_receiver; // null until the signal starts, when it is read
};
