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
constexpr double mostPower = 4.0; // of a group: a burst has begun, which a loop would overshoot

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
    std::size_t step = 0;
    for (std::size_t k = 0; m_isOn && k < block.samples.size(); k += step) {
        step = std::min(m_groupLength - m_count, block.samples.size() - k);
        std::complex<float>* samples = &block.samples[k];
        for (std::size_t i = 0; i < step; ++i)
            m_energy += double{std::norm(samples[i])};
        agc_crcf_execute_block(m_control.get(), samples, static_cast<unsigned>(step), samples);
        m_count += step;
        if (m_count == m_groupLength)
            closeGroup();
    }
}

void GainControl::closeGroup()
{
    const double power = std::max(m_energy / static_cast<double>(m_groupLength), 1e-12);
    const double gain = agc_crcf_get_gain(m_control.get());
    if (m_isNew || power * gain * gain > mostPower) {
        agc_crcf_reset(m_control.get());
        agc_crcf_set_gain(m_control.get(), static_cast<float>(1.0 / std::sqrt(power)));
    }
    m_isNew = false;
    m_energy = 0.0;
    m_count = 0;
}

void GainControl::reset()
{
    agc_crcf_reset(m_control.get());
    m_isNew = true;
    m_energy = 0.0;
    m_count = 0;
}

StageReport GainControl::report() const
{
    StageReport report{StageReport::Stage::Gain, m_isOn, {}, {}};
    if (m_isOn)
        report.readings = {
            {StageReport::Quantity::Level, double{agc_crcf_get_rssi(m_control.get())}}};
    return report;
}
