// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/receiver/Resampler.h"

#include <algorithm>
#include <cmath>

#include <liquid/liquid.h>

namespace {

constexpr float stopBand = 60.0F; // dB

} // namespace

BasebandFormat Resampler::configure(const ReceiverSettings& settings, const BasebandFormat& format)
{
    m_complex.reset();
    m_real.reset();
    if (!settings.symbolRate)
        return format;
    BasebandFormat result = format;
    // The matched filter does the rest where it limits the band.
    const bool isHalf = settings.rollOff && !format.isDemodulated;
    result.samplesPerSymbol = ReceiverSettings::samplesPerSymbol / (isHalf ? 2.0 : 1.0);
    result.sampleRate = *settings.symbolRate * result.samplesPerSymbol;
    m_ratio = result.sampleRate / format.sampleRate;
    const auto ratio = static_cast<float>(m_ratio);
    m_complex = {msresamp_crcf_create(ratio, stopBand), msresamp_crcf_destroy};
    m_real = {msresamp_rrrf_create(ratio, stopBand), msresamp_rrrf_destroy};
    return result;
}

void Resampler::process(BasebandBlock& block)
{
    if (!m_complex || block.samples.empty())
        return;
    const auto count = static_cast<unsigned>(block.samples.size());
    // What the stages of a resampler hold back may come at once.
    const auto most = static_cast<std::size_t>(2.0 * std::ceil(m_ratio * count) + 64.0);
    unsigned written = 0;
    m_output.samples.resize(most);
    msresamp_crcf_execute(m_complex.get(), block.samples.data(), count, m_output.samples.data(),
                          &written);
    m_output.samples.resize(written);
    block.samples.swap(m_output.samples);
    if (block.demodulated.empty())
        return;
    m_output.demodulated.resize(most);
    msresamp_rrrf_execute(m_real.get(), block.demodulated.data(), count,
                          m_output.demodulated.data(), &written);
    m_output.demodulated.resize(written);
    block.demodulated.swap(m_output.demodulated);
}

void Resampler::reset()
{
    if (!m_complex)
        return;
    msresamp_crcf_reset(m_complex.get());
    msresamp_rrrf_reset(m_real.get());
}
