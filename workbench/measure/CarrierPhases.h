// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/receiver/Decisions.h"

#include <vector>

/// Phases of a carrier, one from each symbol, for a line through them.
///
/// With much noise, decisions follow the phase at which they are made and hide most of its error.
/// There a symbol counts as its expected point, and its error is divided by the part of a turn that
/// it shows: one step of the scoring method from a phase near the truth (Kay, "Fundamentals of
/// Statistical Signal Processing: Estimation Theory", 7.7), which reaches the Cramer-Rao bound for
/// unknown symbols (Rice, Cowley, Moran, Rice, "Cramer- Rao lower bounds for QAM phase and
/// frequency estimation", IEEE Trans. Commun. 49(9), 2001).
class CarrierPhases
{
public:
    using Complex = std::complex<double>;

    struct Symbol
    {
        double phase;  ///< rad, that was taken off
        Complex point; ///< the symbol without that phase, at the modulation's scale
        bool isStart;  ///< its phase does not continue that of the symbol before
    };
    struct Phase
    {
        double value; ///< rad
        double weight;
    };

    /// @param noise     variance on each axis.
    /// @param isCertain  decisions count as right, whatever the noise.
    CarrierPhases(const Decisions& decisions, double noise, bool isCertain);

    std::vector<Phase> of(std::vector<Symbol> symbols) const;

private:
    struct Turn
    {
        double sine, weight; ///< both times the square of the point that was sent
    };
    Turn turnOf(const Complex& point) const;
    double shownPart(const std::vector<Symbol>& symbols) const;
    void comeNearer(std::vector<Symbol>& symbols, double shown) const;

    const Decisions& m_decisions;
    double m_noise;
    bool m_isCertain;
};
