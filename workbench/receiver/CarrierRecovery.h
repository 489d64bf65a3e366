// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/receiver/LiquidHandle.h"
#include "workbench/receiver/ReceiverStage.h"

struct modemcf_s;
struct nco_crcf_s;

/// Turns the points of a modulation to where they belong, up to the turns that the modulation
/// cannot tell apart, and brings them to a mean power of 1.
///
/// While it searches, it looks at windows of symbols: raised to the power that undoes the
/// modulation they give a line at a multiple of the carrier's offset, which noise does not (Rife
/// and Boorstyn, "Single-tone parameter estimation from discrete-time observations", IEEE Trans.
/// Inf. Theory 20(5), 1974). From the line a loop starts at the window's first symbol, and follows
/// by decisions until these are no better than guesses.
class CarrierRecovery : public ReceiverStage
{
public:
    CarrierRecovery();

    BasebandFormat configure(const ReceiverSettings& settings,
                             const BasebandFormat& format) override;
    void process(BasebandBlock& block) override;
    void finish(BasebandBlock& block) override;
    void reset() override;
    StageReport report() const override;

private:
    using Sample = std::complex<float>;

    std::size_t windowLength() const
    {
        return m_windowSymbols * ReceiverSettings::samplesPerSymbol;
    }
    bool acquire();
    void track(Sample sample, std::vector<Sample>& output);
    void passOn(std::size_t count, std::vector<Sample>& output);
    Sample turnBack(Sample sample);
    void followSymbol(Sample symbol);

    bool m_isOn = false;
    double m_symbolRate = 1.0;
    unsigned m_power = 2;         // that undoes the modulation
    double m_target = 0.0;        // rad, angle of the points raised to it
    double m_spacing = 1.0;       // of the closest points, squared
    double m_meanSquare = 1.0;    // of the points' powers
    bool m_hasAmplitudes = false; // points are not on one circle
    std::size_t m_windowSymbols = 256;
    double m_smoothing = 0.01; // of what is measured, a symbol
    LiquidHandle<modemcf_s*> m_modem{nullptr, nullptr};
    LiquidHandle<nco_crcf_s*> m_carrier;
    std::vector<Sample> m_waiting; // samples, from a symbol on, while searching
    std::int64_t m_number = 0;     // of the next sample to the loop
    Sample m_phasor = 1.0F;        // the carrier's, backwards
    Sample m_step = 1.0F;          // of it from sample to sample
    bool m_isTracking = false;
    double m_gain = 1.0;
    double m_meanPower = 1.0;
    double m_quality = 0.0;    // 1 for perfect decisions, 0 for guesses
    double m_offset = 0.0;     // carrier, rad a symbol
    double m_phaseError = 0.0; // mean square, rad^2
};
