// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/receiver/Decisions.h"
#include "workbench/receiver/FourierTransforms.h"
#include "workbench/receiver/ModulationTable.h"
#include "workbench/receiver/ReceiverStage.h"

#include <deque>

/// Turns the points of a modulation to where they belong, up to the turns that the modulation
/// cannot tell apart; their size stays. What was taken off the carrier before is told by the phases
/// of the symbols that come in; those that go out have all of it.
///
/// While it searches, it looks at windows of symbols: raised to the power that undoes the
/// modulation they give a line at a multiple of the carrier's offset, which noise does not (Rife
/// and Boorstyn, "Single-tone parameter estimation from discrete-time observations", IEEE Trans.
/// Inf. Theory 20(5), 1974). From the line a loop starts at the window's first symbol, and follows
/// by decisions until these are no better than guesses. What the loop lags and shakes is taken out
/// afterwards: symbols wait until those around them tell their phase, by a straight line through
/// the phases of as many before as after (Moeneclaey and de Jonghe, IEEE Trans. Commun. 42(2),
/// 1994, on feed-forward phase estimation).
class CarrierRecovery : public ReceiverStage
{
public:
    BasebandFormat configure(const ReceiverSettings& settings,
                             const BasebandFormat& format) override;
    void process(BasebandBlock& block) override;
    void finish(BasebandBlock& block) override;
    void reset() override;
    StageReport report() const override;

    bool isOn() const { return m_modulation != nullptr; }
    bool isTracking() const { return m_isTracking; }
    /// See SignalFormat: a phase for each of as many symbols as smooth it, of two numbers each.
    double fittedPart() const { return isOn() ? 0.5 / (2.0 * double(m_reach) + 1.0) : 0.0; }
    /// Size of the points: that of points of mean power 1; 0 before any.
    double amplitude() const { return m_emittedAmplitude; }

private:
    using Complex = std::complex<double>;
    struct Tracked
    {
        double phase;   ///< of the loop, rad
        double error;   ///< of the symbol against it, rad
        double weight;  ///< how much that counts
        double quality; ///< 1: on the point; 0: as good as a guess
        double power;   ///< against that of the points
    };

    struct Smoothed
    {
        double phase, slope, quality;
    };

    Smoothed smoothedAt(std::size_t here) const;
    bool acquire(std::size_t count);
    void track();
    void searchOn(bool isEnding, BasebandBlock& output);
    void putOutTracked(bool isEnding, BasebandBlock& output);
    void putOut(double phase, double slope, SymbolState state, BasebandBlock& output);
    Complex sampleAt(std::size_t index, std::size_t offset) const;
    Complex undone(std::size_t index, double amplitude) const;
    Complex turnOf(std::size_t index) const;
    bool isFaint(std::size_t tracked) const;
    std::size_t waitingCount() const { return m_waiting.symbols.size() - m_head; }
    void dropHead();
    void letGo(BasebandBlock& output);
    double stepAt(std::size_t index) const;
    void settle(std::size_t index, BasebandBlock& output);

    const Modulation* m_modulation = nullptr;
    std::size_t m_perSymbol = 1;
    double m_symbolRate = 1.0;
    std::size_t m_reach = 1;  // symbols that smooth a phase, on either side
    double m_phaseStep = 0.0; // of the loop, for an error of 1 rad...
    double m_frequencyStep = 0.0;
    std::vector<Decisions> m_decisions; // one, or none
    double m_meanSquare = 1.0;          // of the points' powers
    Complex m_fourthPower;              // mean of the points'
    FourierTransforms m_transforms;

    BasebandBlock m_waiting;       // symbols and samples, of which...
    std::size_t m_head = 0;        // ...so many symbols, with their samples, were put out...
    std::size_t m_used = 0;        // ...and so many more were tracked
    std::deque<Tracked> m_tracked; // the newest of them, and some before the waiting ones
    std::size_t m_past = 0;        // of those
    std::int64_t m_number = 0;     // of the next symbol to be put out
    bool m_isTracking = false;
    double m_phase = 0.0;     // of the next symbol to be tracked, rad
    double m_frequency = 0.0; // rad a symbol
    double m_amplitude = 1.0;
    double m_strongest = 0.0; // amplitude so far
    double m_emittedAmplitude = 0.0;
    double m_quality = 0.0;
    std::size_t m_coasted = 0; // symbols in a row that were too faint to be followed
    double m_lastPhase = 0.0;  // put out last
    double m_offset = 0.0;     // frequency put out last, rad a symbol
    double m_phaseError = 0.0; // mean square, rad^2
};
