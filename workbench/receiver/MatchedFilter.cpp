// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/receiver/MatchedFilter.h"

#include <numeric>

#include <liquid/liquid.h>

namespace {

constexpr unsigned halfLength = 8; // symbols

} // namespace

BasebandFormat MatchedFilter::configure(const ReceiverSettings& settings,
                                        const BasebandFormat& format)
{
    m_complex.reset();
    m_real.reset();
    if (!settings.rollOff || format.samplesPerSymbol == 0.0)
        return format;
    std::vector<float> taps(2 * ReceiverSettings::samplesPerSymbol * halfLength + 1);
    liquid_firdes_rrcos(ReceiverSettings::samplesPerSymbol, halfLength,
                        static_cast<float>(*settings.rollOff), 0.0F, taps.data());
    const float sum = std::accumulate(taps.begin(), taps.end(), 0.0F);
    for (float& tap : taps)
        tap /= sum;
    const auto count = static_cast<unsigned>(taps.size());
    if (format.isDemodulated)
        m_real = {firfilt_rrrf_create(taps.data(), count), firfilt_rrrf_destroy};
    else
        m_complex = {firfilt_crcf_create(taps.data(), count), firfilt_crcf_destroy};
    return format;
}

void MatchedFilter::process(BasebandBlock& block)
{
    const auto count = static_cast<unsigned>(block.samples.size());
    if (m_complex && count > 0)
        firfilt_crcf_execute_block(m_complex.get(), block.samples.data(), count,
                                   block.samples.data());
    if (m_real && count > 0)
        firfilt_rrrf_execute_block(m_real.get(), block.demodulated.data(), count,
                                   block.demodulated.data());
}

void MatchedFilter::reset()
{
    if (m_complex)
        firfilt_crcf_reset(m_complex.get());
    if (m_real)
        firfilt_rrrf_reset(m_real.get());
}
