// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/receiver/MatchedFilter.h"

#include "workbench/receiver/MeasuringFilter.h"

#include <algorithm>

#include <liquid/liquid.h>

BasebandFormat MatchedFilter::configure(const ReceiverSettings& settings,
                                        const BasebandFormat& format)
{
    m_complex.reset();
    m_real.reset();
    m_every = 1;
    BasebandFormat result = format;
    std::vector<float> taps;
    if (format.samplesPerSymbol > 1.0)
        taps = measuringFilter::tapsOf(settings, static_cast<int>(format.samplesPerSymbol));
    if (!taps.empty()) {
        const auto count = static_cast<unsigned>(taps.size());
        m_delay = taps.size() / 2;
        if (settings.isNarrow()) {
            m_every = static_cast<std::size_t>(format.samplesPerSymbol) /
                      ReceiverSettings::fewSamplesPerSymbol;
            result.samplesPerSymbol /= static_cast<double>(m_every);
            result.sampleRate /= static_cast<double>(m_every);
        }
        if (format.isDemodulated)
            m_real = {firfilt_rrrf_create(taps.data(), count), firfilt_rrrf_destroy};
        else
            m_complex.emplace(taps, 1.0F, m_every);
    }
    reset();
    return result;
}

void MatchedFilter::process(BasebandBlock& block)
{
    const auto count = static_cast<unsigned>(block.samples.size());
    if (count == 0 || (!m_complex && !m_real))
        return;
    if (m_complex) {
        m_complex->process(block.samples);
    } else {
        firfilt_rrrf_execute_block(m_real.get(), block.demodulated.data(), count,
                                   block.demodulated.data());
        m_waiting.insert(m_waiting.end(), block.samples.begin(), block.samples.end());
        const std::size_t ready = m_waiting.size() - std::min(m_waiting.size(), m_delay);
        const auto end = m_waiting.begin() + static_cast<std::ptrdiff_t>(ready);
        block.samples.assign(m_waiting.begin(), end);
        m_waiting.erase(m_waiting.begin(), end);
    }
    skip(block);
}

/// Drops the output until the filter is half filled.
void MatchedFilter::skip(BasebandBlock& block)
{
    auto leave = [](auto& values, std::size_t count) {
        values.erase(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(count));
    };
    const std::size_t count =
        std::min(m_toSkip, m_real ? block.demodulated.size() : block.samples.size());
    m_toSkip -= count;
    if (m_real)
        leave(block.demodulated, count);
    else
        leave(block.samples, count);
}

void MatchedFilter::finish(BasebandBlock& block)
{
    if (!m_complex && !m_real)
        return;
    BasebandBlock tail;
    tail.samples.resize(m_delay);
    if (m_real)
        tail.demodulated.resize(m_delay);
    process(tail);
    block.append(tail);
}

void MatchedFilter::reset()
{
    m_toSkip = m_delay / m_every;
    m_waiting.clear();
    if (m_complex)
        m_complex->reset();
    if (m_real)
        firfilt_rrrf_reset(m_real.get());
}
