// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/receiver/FrontEnd.h"

#include "workbench/receiver/SingleNumbers.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr float largest = 1e6F;
constexpr double dcSymbols = 2048.0; // slower changes count as DC
constexpr double dcSeconds = 0.1;    // where the symbol rate is not known
constexpr double mostDc = 1e6;       // samples

float usable(double value)
{
    if (std::abs(value) <= double{largest})
        return static_cast<float>(value);
    const auto single = static_cast<float>(value);
    return std::isfinite(single) ? std::clamp(single, -largest, largest) : 0.0F;
}

} // namespace

void FrontEnd::configure(const ReceiverSettings& settings, double sampleRate, int valueCount,
                         bool isComplex, const ChannelChoice& channel)
{
    m_valueCount = valueCount;
    m_isComplex = isComplex;
    m_channel = channel;
    m_removesDc = settings.removesDc;
    const double length = settings.symbolRate ? dcSymbols * sampleRate / *settings.symbolRate
                                              : dcSeconds * sampleRate;
    m_dcLength = static_cast<std::size_t>(std::clamp(length, 16.0, mostDc));
    BasebandFormat format;
    format.sampleRate = sampleRate;
    m_shift.configure(settings, format);
    m_filter.configure(settings, format);
    m_gate.configure(settings, sampleRate);
    reset(false);
}

void FrontEnd::process(const double* values, std::size_t count, std::vector<BurstGate::Part>& parts)
{
    const auto width = static_cast<std::size_t>(m_valueCount);
    m_block.samples.resize(count / width);
    const bool isPlain = m_isComplex && width == 2 &&
                         makeSingle(values, 2 * m_block.samples.size(), double{largest},
                                    reinterpret_cast<float*>(m_block.samples.data()));
    if (!isPlain)
        takeEach(values);
    if (m_removesDc)
        removeDc(m_block.samples);
    m_shift.process(m_block);
    m_filter.process(m_block);
    m_gate.process(m_block.samples, parts);
}

void FrontEnd::takeEach(const double* value)
{
    for (std::complex<float>& sample : m_block.samples) {
        const std::complex<double> taken =
            m_isComplex ? m_channel.pairOf(value) : m_channel.of(value);
        sample = {usable(taken.real()), usable(taken.imag())};
        value += m_valueCount;
    }
}

/// The mean starts as that of the first samples, which wait for it; then it follows slowly.
void FrontEnd::removeDc(std::vector<std::complex<float>>& samples)
{
    if (!m_hasDc) {
        m_waiting.insert(m_waiting.end(), samples.begin(), samples.end());
        samples.clear();
        if (m_waiting.size() < m_dcLength)
            return;
        settleDc();
        samples.swap(m_waiting);
    }
    const double step = 1.0 / static_cast<double>(m_dcLength);
    for (std::complex<float>& sample : samples) {
        m_dc += step * (std::complex<double>(sample) - m_dc);
        sample -= std::complex<float>(m_dc);
    }
}

void FrontEnd::settleDc()
{
    m_dc = 0.0;
    for (const std::complex<float> sample : m_waiting)
        m_dc += std::complex<double>(sample) / static_cast<double>(m_waiting.size());
    m_hasDc = true;
}

void FrontEnd::finish(std::vector<BurstGate::Part>& parts)
{
    BasebandBlock block;
    if (m_removesDc && !m_hasDc && !m_waiting.empty()) {
        settleDc();
        block.samples.swap(m_waiting);
        for (std::complex<float>& sample : block.samples)
            sample -= std::complex<float>(m_dc);
    }
    m_shift.process(block);
    m_filter.process(block);
    m_filter.finish(block);
    if (!block.samples.empty())
        m_gate.process(block.samples, parts);
    m_gate.finish(parts);
}

void FrontEnd::reset(bool goesOn)
{
    m_waiting.clear();
    m_hasDc = m_hasDc && goesOn;
    m_shift.reset();
    m_filter.reset();
    m_gate.reset();
}
