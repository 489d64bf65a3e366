// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/receiver/CarrierLoop.h"
#include "workbench/receiver/CarrierSearch.h"
#include "workbench/receiver/ReceiverStage.h"

/// Turns the points of a modulation to their places, up to the turns that the modulation cannot
/// tell apart; their size stays. The phases of the incoming symbols tell what earlier stages took
/// off the carrier; those of the outgoing symbols include all of it.
///
/// The search looks at windows of symbols (CarrierSearch). Where there is a carrier, a
/// decision-directed loop starts at the window's first symbol and follows until its decisions are
/// no better than guesses. Symbols wait until those around them tell their phase and whether the
/// carrier is held there (TrackedPhases, CarrierLock). Where it is lost, the search starts anew.
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
    bool isTracking() const { return !m_loop.empty() && m_loop.front().isTracking(); }
    /// See SignalFormat: each phase is smoothed over so many symbols of two numbers each.
    double fittedPart() const { return isOn() ? 0.5 / (2.0 * double(m_reach) + 1.0) : 0.0; }
    /// Amplitude of the points relative to points with a mean power of 1; 0 before the first point.
    double amplitude() const { return m_emittedAmplitude; }

private:
    using Complex = std::complex<double>;
    bool acquire(std::size_t count);
    void track();
    void searchOn(bool isEnding);
    void putOutTracked(bool isEnding);
    void putOut(double phase, double slope, SymbolState state);
    void turnPutOut();
    Complex sampleAt(std::size_t index, std::size_t offset) const;
    Complex undone(std::size_t index, double amplitude) const;
    Complex turnOf(std::size_t index) const;
    std::size_t waitingCount() const { return m_waiting.symbols.size() - m_head; }
    void handOver(BasebandBlock& output);
    void letGo();
    double stepAt(std::size_t index) const;
    void settle(std::size_t count);

    const Modulation* m_modulation = nullptr;
    std::size_t m_perSymbol = 1;
    double m_symbolRate = 1.0;
    std::size_t m_reach = 1;   // symbols over which a phase is smoothed, on either side
    double m_meanSquare = 1.0; // of the points' powers
    CarrierSearch m_search;
    std::vector<CarrierLoop> m_loop; // one, or none

    BasebandBlock m_waiting;    // symbols and samples; of these...
    std::size_t m_head = 0;     // ...so many symbols were put out, and turned with their samples...
    double m_takenBefore = 0.0; // phase that was taken off the last of them before; and...
    TrackedPhases m_tracked;    // ...as many as its count tells were tracked
    // Of symbols that were put out, but not turned yet: rad, and rad a sample.
    std::vector<double> m_turns, m_steps;
    std::vector<double> m_halves; // Q of these symbols, where it comes half a symbol later
    std::int64_t m_number = 0;    // of the next symbol to be put out
    bool m_wasHeld = false;       // since the loop started
    double m_strongest = 0.0;     // amplitude so far
    double m_emittedAmplitude = 0.0;
    double m_lastPhase = 0.0;  // put out last
    double m_offset = 0.0;     // frequency put out last, rad a symbol
    double m_phaseError = 0.0; // mean square, rad^2
};
