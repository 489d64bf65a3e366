// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/receiver/GainControl.h"

#include <algorithm>
#include <cmath>

#include <liquid/liquid.h>

namespace {

// Symbols of varying amplitude must not move it, bursts must not be waited for.
constexpr float quickBandwidth = 4e-3F;
constexpr float calmBandwidth = 5e-4F;
constexpr std::size_t groupSymbols = 8;
constexpr double steadyPower = 2.0; // against the group before, either way
constexpr double mostPower = 8.0;   // of a group: a burst has begun, which a loop would overshoot

} // namespace

GainControl::GainControl()
    : m_control(agc_crcf_create(), agc_crcf_destroy)
{}

BasebandFormat GainControl::configure(const ReceiverSettings& settings,
                                      const BasebandFormat& format)
{
    using Modulation = ReceiverSettings::Modulation;
    m_isOn = settings.hasGainControl && !format.isDemodulated; // whose level it does not change
    const bool isCalm =
        settings.modulation == Modulation::Qam16 || settings.modulation == Modulation::Qam64;
    const float bandwidth = isCalm ? calmBandwidth : quickBandwidth;
    const bool isHalf = format.samplesPerSymbol == 0.5 * ReceiverSettings::samplesPerSymbol;
    agc_crcf_set_bandwidth(m_control.get(), isHalf ? 2.0F * bandwidth : bandwidth);
    m_groupLength = groupSymbols * ReceiverSettings::samplesPerSymbol / (isHalf ? 2 : 1);
    reset();
    return format;
}

void GainControl::process(BasebandBlock& block)
{
    if (!m_isOn)
        return;
    BasebandBlock output;
    for (const std::complex<float> sample : block.samples) {
        m_group.push_back(sample);
        if (m_group.size() == m_groupLength)
            passOn(output);
    }
    block.samples.swap(output.samples);
}

void GainControl::finish(BasebandBlock& block) { passOn(block); }

void GainControl::passOn(BasebandBlock& output)
{
    double energy = 0.0;
    double squares = 0.0;
    for (const std::complex<float> sample : m_group) {
        const double power = double{std::norm(sample)};
        energy += power;
        squares += power * power;
    }
    if (energy == 0.0) {
        m_isFresh = true;
    } else {
        settle(energy, squares);
        agc_crcf_execute_block(m_control.get(), m_group.data(),
                               static_cast<unsigned>(m_group.size()), m_group.data());
    }
    output.samples.insert(output.samples.end(), m_group.begin(), m_group.end());
    m_group.clear();
}

/// Takes the level of a group at once where the loop's is none, or has been left far below.
void GainControl::settle(double energy, double squares)
{
    const double gain = agc_crcf_get_gain(m_control.get());
    // A part of the group may be silent, which weighing its powers by themselves leaves out.
    const double level = squares / energy;
    const double power = level * gain * gain;
    if (!m_isFresh && power < mostPower)
        return;
    m_isFresh = power > steadyPower || power * steadyPower < 1.0;
    agc_crcf_reset(m_control.get());
    agc_crcf_set_gain(m_control.get(), static_cast<float>(1.0 / std::sqrt(std::max(level, 1e-12))));
}

void GainControl::reset()
{
    agc_crcf_reset(m_control.get());
    m_group.clear();
    m_isFresh = true;
}

StageReport GainControl::report() const
{
    StageReport report{StageReport::Stage::Gain, m_isOn, {}, {}};
    if (m_isOn)
        report.readings = {
            {StageReport::Quantity::Level, double{agc_crcf_get_rssi(m_control.get())}}};
    return report;
}
