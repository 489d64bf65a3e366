// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/receiver/BurstGate.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double groupSymbols = 8.0;
constexpr double groupSeconds = 1e-3;
constexpr double mostGroup = 1e6;  // samples
constexpr float hysteresis = 0.5F; // of the threshold
constexpr float leastPower = 1e-20F;

} // namespace

void BurstGate::configure(const ReceiverSettings& settings, double sampleRate)
{
    m_isOn = settings.squelch.has_value();
    if (m_isOn) {
        m_threshold = static_cast<float>(std::pow(10.0, *settings.squelch / 10.0));
        const double length = settings.symbolRate ? groupSymbols * sampleRate / *settings.symbolRate
                                                  : groupSeconds * sampleRate;
        m_groupLength = static_cast<std::size_t>(std::clamp(std::round(length), 1.0, mostGroup));
    }
    reset();
}

void BurstGate::process(std::vector<std::complex<float>> samples, std::vector<Part>& parts)
{
    if (!m_isOn) {
        parts.push_back({true, std::move(samples)});
        return;
    }
    for (auto first = samples.begin(); first != samples.end();) {
        const auto missing = static_cast<std::ptrdiff_t>(m_groupLength - m_open.size());
        const auto last = first + std::min(missing, samples.end() - first);
        m_open.insert(m_open.end(), first, last);
        first = last;
        if (m_open.size() == m_groupLength)
            close(parts);
    }
}

/// Ends the open group.
void BurstGate::close(std::vector<Part>& parts)
{
    if (m_open.empty())
        return;
    float energy = 0.0F;
    for (const std::complex<float> sample : m_open)
        energy += std::norm(sample);
    m_power = energy / static_cast<float>(m_open.size());
    m_isOpen = m_power >= m_threshold * (m_isOpen ? hysteresis : 1.0F);
    m_groups.push_back({m_isOpen, std::move(m_open)});
    m_open.clear();
    if (m_groups.size() > 1)
        passOn(parts);
}

/// Passes on the oldest group.
void BurstGate::passOn(std::vector<Part>& parts)
{
    Group group = std::move(m_groups.front());
    m_groups.erase(m_groups.begin());
    const bool isNextOpen = !m_groups.empty() && m_groups.front().isOpen;
    const bool isOpen = group.isOpen || m_wasOpen || isNextOpen;
    m_wasOpen = group.isOpen;
    if (parts.empty() || parts.back().isOpen != isOpen)
        parts.push_back({isOpen, {}});
    auto& samples = parts.back().samples;
    samples.insert(samples.end(), group.samples.begin(), group.samples.end());
}

void BurstGate::finish(std::vector<Part>& parts)
{
    close(parts);
    while (!m_groups.empty())
        passOn(parts);
}

void BurstGate::reset()
{
    m_open.clear();
    m_groups.clear();
    m_wasOpen = false;
    m_power = 0.0F;
    m_isOpen = false;
}

StageReport BurstGate::report() const
{
    StageReport report{StageReport::Stage::Squelch, m_isOn, {}, {}};
    if (!m_isOn)
        return report;
    report.isLocked = m_isOpen;
    report.readings = {
        {StageReport::Quantity::Level, 10.0 * std::log10(double{std::max(m_power, leastPower)})}};
    return report;
}
