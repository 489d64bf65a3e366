// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/receiver/CarrierLock.h"
#include "workbench/receiver/CarrierSearch.h"
#include "workbench/receiver/Decisions.h"
#include "workbench/receiver/ModulationTable.h"
#include "workbench/receiver/ReceiverStage.h"
#include "workbench/receiver/TrackedPhases.h"

/// Turns the points of a modulation to where they belong, up to the turns that the modulation
/// cannot tell apart; their size stays. What was taken off the carrier before is told by the phases
/// of the symbols that come in; those that go out have all of it.
///
/// While it searches, it looks at windows of symbols (CarrierSearch). Where there is a carrier, a
/// loop starts at the window's first symbol, and follows by decisions until these are no better
/// than guesses. Symbols wait until those around them tell their phase and whether the carrier is
/// held there (TrackedPhases, CarrierLock). Where it is not any more, the search starts anew.
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
    bool acquire(std::size_t count);
    double qualityOf(const Complex& symbol, const Complex& turned) const;
    void track();
    void searchOn(bool isEnding, BasebandBlock& output);
    void putOutTracked(bool isEnding, BasebandBlock& output);
    void putOut(double phase, double slope, SymbolState state, BasebandBlock& output);
    Complex sampleAt(std::size_t index, std::size_t offset) const;
    Complex undone(std::size_t index, double amplitude) const;
    Complex turnOf(std::size_t index) const;
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
    CarrierSearch m_search;
    std::vector<CarrierLock> m_lock; // one, or none

    BasebandBlock m_waiting;   // symbols and samples, of which...
    std::size_t m_head = 0;    // ...so many symbols, with their samples, were put out...
    TrackedPhases m_tracked;   // ...some of them, and so many of those that wait, as its count
    std::int64_t m_number = 0; // of the next symbol to be put out
    bool m_isTracking = false;
    bool m_wasHeld = false;   // since the loop started
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
