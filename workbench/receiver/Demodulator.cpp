// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/receiver/Demodulator.h"

#include <liquid/liquid.h>

Demodulator::Demodulator()
    : m_fm(freqdem_create(1.0F), freqdem_destroy)
{}

BasebandFormat Demodulator::configure(const ReceiverSettings& settings,
                                      const BasebandFormat& format)
{
    m_demodulation = settings.demodulation;
    m_scale =
        static_cast<float>(settings.symbolRate ? format.sampleRate / *settings.symbolRate : 1.0);
    BasebandFormat result = format;
    result.isDemodulated = m_demodulation != ReceiverSettings::Demodulation::Linear;
    reset();
    return result;
}

void Demodulator::process(BasebandBlock& block)
{
    const auto count = static_cast<unsigned>(block.samples.size());
    if (m_demodulation == ReceiverSettings::Demodulation::Linear)
        return;
    block.demodulated.resize(count);
    if (m_demodulation == ReceiverSettings::Demodulation::Am) {
        for (unsigned k = 0; k < count; ++k)
            block.demodulated[k] = std::abs(block.samples[k]);
    } else if (count > 0) {
        freqdem_demodulate_block(m_fm.get(), block.samples.data(), count, block.demodulated.data());
        for (unsigned k = 0; k < count; ++k) // or the sign of a zero would become a frequency
            block.demodulated[k] *= block.samples[k] == 0.0F ? 0.0F : m_scale;
    }
}

void Demodulator::reset() { freqdem_reset(m_fm.get()); }
