// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/receiver/CarrierLock.h"
#include "workbench/receiver/Decisions.h"
#include "workbench/receiver/ModulationTable.h"
#include "workbench/receiver/TrackedPhases.h"
#include "workbench/receiver/Vectors.h"

#include <array>
#include <complex>
#include <cstddef>

/// A decision-directed loop that follows the carrier of symbols until its decisions are no better
/// than guesses. Symbols are taken some at a time: only the loop itself goes from each to the next.
class CarrierLoop
{
public:
    using Complex = std::complex<double>;
    static constexpr std::size_t together = floatsWidth;
    struct Input
    {
        Complex sample; ///< in the middle of the symbol, without turns beside the carrier's
        Complex later;  ///< half a symbol after it, in offset modulations
        double taken;   ///< rad, phase that earlier stages took off
    };

    explicit CarrierLoop(const Modulation& modulation);

    /// @param phase, frequency  of the first symbol, rad and rad a symbol.
    /// @param amplitude  of the points relative to points with a mean power of 1.
    void start(double phase, double frequency, double amplitude);
    void stop() { m_isTracking = false; }
    bool isTracking() const { return m_isTracking; }
    /// Follows the next symbols, up to the one where the carrier is lost, and adds them.
    /// @param count  1 to "together".
    void follow(const Input* inputs, std::size_t count, TrackedPhases& tracked);
    double frequency() const { return m_frequency; } ///< rad a symbol
    double amplitude() const { return m_amplitude; }

private:
    using Column = std::array<float, together>;
    /// What is known of symbols once the loop has followed them.
    struct Followed
    {
        Column i, q;             ///< turned back
        Column turnedI, turnedQ; ///< by what they are off: turned back by their points, too
        Column errors, qualities;
        std::array<bool, together> areHeard;
    };
    struct State
    {
        double frequency, amplitude; ///< after a symbol
    };

    void run(const Input* inputs, std::size_t count);
    void judgeAmplitudes();
    void add(std::size_t count, TrackedPhases& tracked);

    const Modulation* m_modulation;
    Decisions m_decisions;
    CarrierLock m_lock;
    double m_phaseStep = 0.0; // of the loop, for an error of 1 rad...
    double m_frequencyStep = 0.0;
    double m_smoothing;
    Complex m_fourthPower; // mean of the points'

    bool m_isTracking = false;
    double m_phase = 0.0;     // of the next symbol, rad
    double m_frequency = 0.0; // rad a symbol
    double m_amplitude = 1.0;
    double m_quality = 0.0;
    std::size_t m_coasted = 0; // consecutive symbols that were too faint to be followed
    Followed m_followed = {};
    std::array<State, together> m_states = {};
    std::array<TrackedPhases::Symbol, together> m_symbols = {};
};
