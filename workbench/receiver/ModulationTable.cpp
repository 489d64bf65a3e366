// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/receiver/ModulationTable.h"

#include "workbench/receiver/LiquidHandle.h"

#include <algorithm>
#include <cmath>

#include <liquid/liquid.h>

namespace {

std::vector<std::complex<double>> pointsOf(modulation_scheme scheme)
{
    const LiquidHandle<modemcf> modem(modemcf_create(scheme), modemcf_destroy);
    std::vector<std::complex<double>> points(std::size_t{1} << modemcf_get_bps(modem.get()));
    for (std::size_t k = 0; k < points.size(); ++k) {
        std::complex<float> point;
        modemcf_modulate(modem.get(), static_cast<unsigned>(k), &point);
        points[k] = point;
    }
    return points;
}

Modulation with(Modulation modulation, modulation_scheme scheme)
{
    modulation.points = pointsOf(scheme);
    std::complex<double> sum = 0.0;
    modulation.spacing = 4.0;
    for (const auto& point : modulation.points) {
        sum += std::pow(point, static_cast<double>(modulation.power));
        for (const auto& other : modulation.points) {
            if (&other != &point)
                modulation.spacing = std::min(modulation.spacing, std::abs(point - other));
        }
    }
    // Of an offset modulation the square of I less that of Q tells: it is on the axis.
    modulation.target = modulation.isOffset ? 0.0 : std::arg(sum);
    return modulation;
}

std::vector<Modulation> table()
{
    // Name, power, amplitudes, alternates, offset, window, bandwidth, reach, lock quality.
    return {
        with({"BPSK", 2, false, false, false, 256, 0.04, 32, 0.3, {}, 0, 0}, LIQUID_MODEM_BPSK),
        with({"QPSK", 4, false, false, false, 256, 0.03, 32, 0.3, {}, 0, 0}, LIQUID_MODEM_QPSK),
        with({"8PSK", 8, false, false, false, 512, 0.015, 64, 0.1, {}, 0, 0}, LIQUID_MODEM_PSK8),
        with({"16QAM", 4, true, false, false, 1024, 0.01, 64, 0.3, {}, 0, 0}, LIQUID_MODEM_QAM16),
        with({"64QAM", 4, true, false, false, 2048, 0.007, 64, 0.3, {}, 0, 0}, LIQUID_MODEM_QAM64),
        with({"OQPSK", 2, false, false, true, 1024, 0.02, 64, 0.3, {}, 0, 0}, LIQUID_MODEM_QPSK),
        with({"pi4DQPSK", 4, false, true, false, 256, 0.03, 32, 0.3, {}, 0, 0}, LIQUID_MODEM_QPSK)};
}

} // namespace

const std::vector<Modulation>& modulations::all()
{
    static const std::vector<Modulation> modulations = table();
    return modulations;
}

const Modulation& modulations::of(ReceiverSettings::Modulation modulation)
{
    return all()[static_cast<std::size_t>(modulation)];
}
