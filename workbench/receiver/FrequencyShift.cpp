// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/receiver/FrequencyShift.h"

#include "workbench/sources/Constants.h"

#include <liquid/liquid.h>

namespace {} // namespace

FrequencyShift::FrequencyShift()
    : m_oscillator(nco_crcf_create(LIQUID_VCO), nco_crcf_destroy)
{}

BasebandFormat FrequencyShift::configure(const ReceiverSettings& settings,
                                         const BasebandFormat& format)
{
    m_isOn = settings.shift != 0.0;
    nco_crcf_set_frequency(m_oscillator.get(),
                           static_cast<float>(2.0 * pi * settings.shift / format.sampleRate));
    return format;
}

void FrequencyShift::process(BasebandBlock& block)
{
    if (m_isOn && !block.samples.empty())
        nco_crcf_mix_block_up(m_oscillator.get(), block.samples.data(), block.samples.data(),
                              static_cast<unsigned>(block.samples.size()));
}

void FrequencyShift::reset() { nco_crcf_set_phase(m_oscillator.get(), 0.0F); }
