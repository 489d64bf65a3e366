// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/receiver/ModulationTable.h"

#include <algorithm>
#include <cmath>

namespace {

Modulation with(ModulationKind kind, Modulation modulation)
{
    modulation.points = modulationKinds::points(kind);
    std::complex<double> sum = 0.0;
    modulation.spacing = 4.0;
    for (const auto& point : modulation.points) {
        sum += std::pow(point, static_cast<double>(modulation.power));
        for (const auto& other : modulation.points) {
            if (&other != &point)
                modulation.spacing = std::min(modulation.spacing, std::abs(point - other));
        }
    }
    // Of an offset modulation, the square of I minus that of Q counts, which is on the axis.
    modulation.target = modulation.isOffset ? 0.0 : std::arg(sum);
    return modulation;
}

std::vector<Modulation> table()
{
    using Kind = ModulationKind;
    // Power, amplitudes, alternates, offset, window, bandwidth, reach, lock quality.
    return {with(Kind::Bpsk, {2, false, false, false, 256, 0.04, 32, 0.3, {}, 0, 0}),
            with(Kind::Qpsk, {4, false, false, false, 256, 0.03, 32, 0.3, {}, 0, 0}),
            with(Kind::Psk8, {8, false, false, false, 512, 0.015, 64, 0.1, {}, 0, 0}),
            with(Kind::Qam16, {4, true, false, false, 1024, 0.01, 64, 0.3, {}, 0, 0}),
            with(Kind::Qam64, {4, true, false, false, 2048, 0.007, 64, 0.3, {}, 0, 0}),
            with(Kind::Oqpsk, {2, false, false, true, 1024, 0.02, 64, 0.3, {}, 0, 0}),
            with(Kind::Pi4Dqpsk, {4, false, true, false, 256, 0.03, 32, 0.3, {}, 0, 0})};
}

} // namespace

const Modulation& modulations::of(ModulationKind kind)
{
    static const std::vector<Modulation> modulations = table();
    return modulations[static_cast<std::size_t>(kind)];
}
