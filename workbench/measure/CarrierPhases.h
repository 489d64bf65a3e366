// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/receiver/Decisions.h"

#include <vector>

/// Phases of a carrier as its symbols tell them, one by one, for a line through them.
///
/// Where noise leaves the symbols in doubt, decisions follow the phase that they are made at and
/// hide most of what it is off. There a symbol counts as the point that is to be expected of it,
/// and what it is off is divided by how much of a turn that shows: one step of the scoring method
/// from a phase near the truth (Kay, "Fundamentals of Statistical Signal Processing: Estimation
/// Theory", 7.7), which comes to the Cramer-Rao bound of unknown symbols (Rice, Cowley, Moran,
/// Rice, "Cramer- Rao lower bounds for QAM phase and frequency estimation", IEEE Trans. Commun.
/// 49(9), 2001).
class CarrierPhases
{
public:
    using Complex = std::complex<double>;

    struct Symbol
    {
        double phase;  ///< rad, that was taken off
        Complex point; ///< what is left, where points have the modulation's size
        bool isStart;  ///< its phase does not go on from the one before it
    };
    struct Phase
    {
        double value; ///< rad
        double weight;
    };

    /// @param noise     variance on each axis.
    /// @param isCertain  decisions are taken as they are, whatever the noise.
    CarrierPhases(const Decisions& decisions, double noise, bool isCertain);

    std::vector<Phase> of(std::vector<Symbol> symbols) const;

private:
    struct Turn
    {
        double sine, weight; ///< both times the square of the point that was meant
    };
    Turn turnOf(const Complex& point) const;
    double shownPart(const std::vector<Symbol>& symbols) const;
    void comeNearer(std::vector<Symbol>& symbols, double shown) const;

    const Decisions& m_decisions;
    double m_noise;
    bool m_isCertain;
};
