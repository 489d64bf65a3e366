// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/receiver/BurstGate.h"

#include "workbench/receiver/SampledSignal.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr double groupSymbols = 8.0;
constexpr double groupSeconds = 1e-3;
constexpr double mostGroup = 1e6;  // samples
constexpr float hysteresis = 0.5F; // of the threshold
constexpr float leastPower = 1e-20F;

/// Each eighth sample is summed up by itself, so that no addition waits for the one before.
float energyOf(const std::complex<float>* samples, std::size_t count)
{
    constexpr std::size_t together = 8;
    float sums[together] = {};
    std::size_t k = 0;
    for (; k + together <= count; k += together) {
        for (std::size_t n = 0; n < together; ++n)
            sums[n] += std::norm(samples[k + n]);
    }
    for (; k < count; ++k)
        sums[0] += std::norm(samples[k]);
    return ((sums[0] + sums[4]) + (sums[2] + sums[6])) +
           ((sums[1] + sums[5]) + (sums[3] + sums[7]));
}

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

void BurstGate::process(std::vector<std::complex<float>>& samples, std::vector<Part>& parts)
{
    if (!m_isOn) {
        parts.push_back({true, std::move(samples)});
        return;
    }
    appendSamples(m_line, samples.data(), samples.size());
    while (m_line.size() - m_closed >= m_groupLength)
        close(m_groupLength, parts);
    dropPassed();
}

/// Ends the open group, which has so many samples.
void BurstGate::close(std::size_t count, std::vector<Part>& parts)
{
    if (count == 0)
        return;
    m_power = energyOf(&m_line[m_closed], count) / static_cast<float>(count);
    m_isOpen = m_power >= m_threshold * (m_isOpen ? hysteresis : 1.0F);
    m_groups.push_back({m_isOpen, count});
    m_closed += count;
    if (m_groups.size() > 1)
        passOn(parts);
}

/// Passes on the oldest group.
void BurstGate::passOn(std::vector<Part>& parts)
{
    const Group group = m_groups.front();
    m_groups.erase(m_groups.begin());
    const bool isNextOpen = !m_groups.empty() && m_groups.front().isOpen;
    const bool isOpen = group.isOpen || m_wasOpen || isNextOpen;
    m_wasOpen = group.isOpen;
    if (parts.empty() || parts.back().isOpen != isOpen) {
        parts.push_back({isOpen, {}});
        parts.back().samples.reserve(m_line.size() - m_passed);
    }
    appendSamples(parts.back().samples, &m_line[m_passed], group.count);
    m_passed += group.count;
}

void BurstGate::dropPassed()
{
    m_line.erase(m_line.begin(), m_line.begin() + static_cast<std::ptrdiff_t>(m_passed));
    m_closed -= m_passed;
    m_passed = 0;
}

void BurstGate::finish(std::vector<Part>& parts)
{
    close(m_line.size() - m_closed, parts);
    while (!m_groups.empty())
        passOn(parts);
    dropPassed();
}

void BurstGate::reset()
{
    m_line.clear();
    m_groups.clear();
    m_passed = m_closed = 0;
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
