// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/receiver/GainControl.h"

#include <liquid/liquid.h>

namespace {

// Symbols of varying amplitude must not move it, bursts must not be waited for.
constexpr float quickBandwidth = 4e-3F;
constexpr float calmBandwidth = 5e-4F;

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
    reset();
    return format;
}

void GainControl::process(BasebandBlock& block)
{
    if (m_isOn && !block.samples.empty())
        agc_crcf_execute_block(m_control.get(), block.samples.data(),
                               static_cast<unsigned>(block.samples.size()), block.samples.data());
}

void GainControl::reset() { agc_crcf_reset(m_control.get()); }

StageReport GainControl::report() const
{
    StageReport report{StageReport::Stage::Gain, m_isOn, {}, {}};
    if (m_isOn)
        report.readings = {
            {StageReport::Quantity::Level, double{agc_crcf_get_rssi(m_control.get())}}};
    return report;
}
