// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/sources/ModulationKind.h"

#include <complex>
#include <vector>

/// Properties of a modulation that a receiver needs.
struct Modulation
{
    unsigned power;       ///< that removes the modulation
    bool hasAmplitudes;   ///< points are not on one circle
    bool alternates;      ///< every other symbol is turned by an eighth of a turn
    bool isOffset;        ///< Q comes half a symbol after I
    std::size_t window;   ///< symbols needed to find the carrier
    double loopBandwidth; ///< of the decision-directed loop, cycles a symbol
    std::size_t reach;    ///< symbols over which a phase is smoothed, on either side
    double lockQuality;   ///< that noise does not reach, see CarrierRecovery
    std::vector<std::complex<double>> points; ///< of mean power 1
    double target;                            ///< rad, angle of the points raised to the power
    double spacing;                           ///< of the closest points
};

namespace modulations {

const Modulation& of(ModulationKind kind);

} // namespace modulations
