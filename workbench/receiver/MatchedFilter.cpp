// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/receiver/MatchedFilter.h"

#include <numeric>

#include <liquid/liquid.h>

namespace {

constexpr unsigned halfLength = 8;         // symbols
constexpr unsigned doublingHalfLength = 7; // samples
constexpr float stopBand = 60.0F;          // dB

} // namespace

BasebandFormat MatchedFilter::configure(const ReceiverSettings& settings,
                                        const BasebandFormat& format)
{
    m_complex.reset();
    m_real.reset();
    m_doubling.reset();
    if (!settings.rollOff || format.samplesPerSymbol == 0.0)
        return format;
    const auto perSymbol = static_cast<unsigned>(format.samplesPerSymbol);
    std::vector<float> taps(2 * perSymbol * halfLength + 1);
    liquid_firdes_rrcos(perSymbol, halfLength, static_cast<float>(*settings.rollOff), 0.0F,
                        taps.data());
    const float sum = std::accumulate(taps.begin(), taps.end(), 0.0F);
    for (float& tap : taps)
        tap /= sum;
    const auto count = static_cast<unsigned>(taps.size());
    if (format.isDemodulated)
        m_real = {firfilt_rrrf_create(taps.data(), count), firfilt_rrrf_destroy};
    else
        m_complex = {firfilt_crcf_create(taps.data(), count), firfilt_crcf_destroy};
    BasebandFormat result = format;
    result.samplesPerSymbol = ReceiverSettings::samplesPerSymbol;
    result.sampleRate *= result.samplesPerSymbol / perSymbol;
    if (result.samplesPerSymbol > format.samplesPerSymbol)
        m_doubling = {firinterp_crcf_create_kaiser(2, doublingHalfLength, stopBand),
                      firinterp_crcf_destroy};
    return result;
}

void MatchedFilter::process(BasebandBlock& block)
{
    const auto count = static_cast<unsigned>(block.samples.size());
    if (m_complex && count > 0)
        firfilt_crcf_execute_block(m_complex.get(), block.samples.data(), count,
                                   block.samples.data());
    if (m_doubling && count > 0) {
        m_output.resize(2 * block.samples.size());
        firinterp_crcf_execute_block(m_doubling.get(), block.samples.data(), count,
                                     m_output.data());
        block.samples.swap(m_output);
    }
    if (m_real && count > 0)
        firfilt_rrrf_execute_block(m_real.get(), block.demodulated.data(), count,
                                   block.demodulated.data());
}

void MatchedFilter::reset()
{
    if (m_complex)
        firfilt_crcf_reset(m_complex.get());
    if (m_doubling)
        firinterp_crcf_reset(m_doubling.get());
    if (m_real)
        firfilt_rrrf_reset(m_real.get());
}
