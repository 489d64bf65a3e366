// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/receiver/Decisions.h"
#include "workbench/receiver/ModulationTable.h"

#include <utility>
#include <vector>

/// Tells from symbols whether their carrier is held.
///
/// About a held carrier symbols lie about the points, about a lost one about the circles that the
/// points turn on. The ratio of both likelihoods counts: with little noise it notices a carrier
/// that is slightly off, and with much noise it does not guess. The noise is learnt from the
/// symbols (expectation and maximization: Dempster, Laird, Rubin, J. Royal Statistical Society B
/// 39(1), 1977).
class CarrierLock
{
public:
    explicit CarrierLock(const Modulation& modulation);

    /// Logarithms of the ratio for the next symbols, which then contribute to the noise: within
    /// them it counts as it was before.
    /// @param i, q, evidence  as many numbers as are taken at once.
    /// @param areHeard  which of the symbols, so many of them, are loud enough to contribute.
    void evidence(const float* i, const float* q, const bool* areHeard, std::size_t count,
                  float* evidence);

private:
    void findLost(const float* i, const float* q, float* lost) const;

    Decisions m_decisions;
    bool m_isOffset;
    std::vector<std::pair<double, double>> m_circles; // radius, and how many points
    double m_noise;                                   // power
};
