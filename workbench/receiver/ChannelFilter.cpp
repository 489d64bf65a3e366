// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/receiver/ChannelFilter.h"

#include <algorithm>
#include <cmath>

#include <liquid/liquid.h>

namespace {

constexpr float stopBand = 60.0F;    // dB
constexpr double transition = 0.3;   // of the cut-off frequency
constexpr unsigned maxLength = 2001; // of the filter: steeper ones take too long

} // namespace

BasebandFormat ChannelFilter::configure(const ReceiverSettings& settings,
                                        const BasebandFormat& format)
{
    m_filter.reset();
    if (!settings.bandwidth)
        return format;
    const double cutOff = std::min(0.5 * *settings.bandwidth / format.sampleRate, 0.499);
    const double slope = std::min(transition * cutOff, 2.0 * (0.5 - cutOff));
    const unsigned wanted =
        estimate_req_filter_len(static_cast<float>(std::max(slope, 1e-4)), stopBand);
    const unsigned length = std::clamp(wanted, 3U, maxLength) | 1U;
    std::vector<float> taps(length);
    liquid_firdes_kaiser(length, static_cast<float>(cutOff), stopBand, 0.0F, taps.data());
    m_filter.emplace(taps, static_cast<float>(2.0 * cutOff));
    m_delay = length / 2;
    m_skipped = 0;
    return format;
}

void ChannelFilter::process(BasebandBlock& block)
{
    if (!m_filter || block.samples.empty())
        return;
    m_filter->process(block.samples);
    const std::size_t skip = std::min(m_delay - m_skipped, block.samples.size());
    m_skipped += skip;
    block.samples.erase(block.samples.begin(),
                        block.samples.begin() + static_cast<std::ptrdiff_t>(skip));
}

void ChannelFilter::finish(BasebandBlock& block)
{
    if (!m_filter)
        return;
    BasebandBlock tail;
    tail.samples.resize(m_delay);
    process(tail);
    block.append(tail);
}

void ChannelFilter::reset()
{
    m_skipped = 0;
    if (m_filter)
        m_filter->reset();
}
