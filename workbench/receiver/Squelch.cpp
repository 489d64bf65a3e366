// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/receiver/Squelch.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double groupSymbols = 8.0;
constexpr double groupSeconds = 1e-3;
constexpr double maxGroup = 1e6;     // samples
constexpr float hysteresis = 0.5F;   // power
constexpr float leastPower = 1e-20F; // that is told

} // namespace

BasebandFormat Squelch::configure(const ReceiverSettings& settings, const BasebandFormat& format)
{
    m_isOn = settings.squelch.has_value();
    m_threshold = static_cast<float>(std::pow(10.0, settings.squelch.value_or(0.0) / 10.0));
    const double seconds = settings.symbolRate ? groupSymbols / *settings.symbolRate : groupSeconds;
    m_groupLength = static_cast<std::size_t>(
        std::clamp(seconds * format.sampleRate, 2.0 * groupSymbols, maxGroup));
    reset();
    return format;
}

void Squelch::process(BasebandBlock& block)
{
    if (!m_isOn)
        return;
    BasebandBlock output;
    for (const std::complex<float> sample : block.samples) {
        m_group.push_back(sample);
        if (m_group.size() == m_groupLength)
            passOn(output);
    }
    block.samples.swap(output.samples);
}

void Squelch::finish(BasebandBlock& block) { passOn(block); }

void Squelch::passOn(BasebandBlock& output)
{
    if (m_group.empty())
        return;
    float energy = 0.0F;
    for (const std::complex<float> sample : m_group)
        energy += std::norm(sample);
    m_power = energy / static_cast<float>(m_group.size());
    m_isOpen = m_power >= m_threshold * (m_isOpen ? hysteresis : 1.0F);
    if (!m_isOpen)
        std::fill(m_group.begin(), m_group.end(), 0.0F);
    output.samples.insert(output.samples.end(), m_group.begin(), m_group.end());
    m_group.clear();
}

void Squelch::reset()
{
    m_group.clear();
    m_power = 0.0F;
    m_isOpen = false;
}

StageReport Squelch::report() const
{
    StageReport report{StageReport::Stage::Squelch, m_isOn, {}, {}};
    if (!m_isOn)
        return report;
    report.isLocked = m_isOpen;
    report.readings = {
        {StageReport::Quantity::Level, 10.0 * std::log10(double{std::max(m_power, leastPower)})}};
    return report;
}
