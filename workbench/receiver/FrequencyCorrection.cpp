// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/receiver/FrequencyCorrection.h"

#include "workbench/receiver/Interpolation.h"
#include "workbench/receiver/MeasuringFilter.h"
#include "workbench/sources/Constants.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr std::size_t leastSymbols = 16;
constexpr double sameFrequency = 0.02; // cycles a symbol: the loop follows smaller differences
constexpr std::size_t keptParts = 64;

} // namespace

BasebandFormat FrequencyCorrection::configure(const ReceiverSettings& settings,
                                              const BasebandFormat& format)
{
    m_isOn = settings.modulation && format.samplesPerSymbol > 1.0 && !format.isDemodulated;
    if (m_isOn) {
        m_perSymbol = static_cast<std::size_t>(format.samplesPerSymbol);
        m_sampleRate = format.sampleRate;
        m_timeOffset = format.timeOffset;
        m_symbolRate = format.sampleRate / format.samplesPerSymbol;
        constexpr int perSymbol = ReceiverSettings::samplesPerSymbol;
        m_estimate = std::make_unique<FrequencyEstimate>(
            *settings.modulation, perSymbol, measuringFilter::tapsOf(settings, perSymbol));
    }
    reset();
    return format;
}

void FrequencyCorrection::reset()
{
    m_isSearching = true;
    m_found = {};
    m_waiting.clear();
    m_position = 0;
    m_parts.assign(1, {0, 0.0, 0.0});
    m_rotation = Rotation();
}

void FrequencyCorrection::process(BasebandBlock& block)
{
    if (!m_isOn)
        return;
    if (!m_isSearching && m_waiting.empty()) {
        turn(block.samples.data(), block.samples.size());
        return;
    }
    m_waiting.insert(m_waiting.end(), block.samples.begin(), block.samples.end());
    block.samples.clear();
    const std::size_t window = windowSymbols * m_perSymbol;
    while (m_isSearching && m_waiting.size() >= window) {
        estimate(window);
        passOn(window, block.samples);
    }
    if (!m_isSearching)
        passOn(m_waiting.size(), block.samples);
}

void FrequencyCorrection::finish(BasebandBlock& block)
{
    if (!m_isOn)
        return;
    if (m_isSearching && m_waiting.size() >= leastSymbols * m_perSymbol)
        estimate(m_waiting.size());
    passOn(m_waiting.size(), block.samples);
}

/// The first samples that wait, as many of a symbol as the estimate takes: among few of them, the
/// middle of a symbol may be far from each.
std::vector<std::complex<float>> FrequencyCorrection::finely(std::size_t count) const
{
    const auto end = m_waiting.begin() + static_cast<std::ptrdiff_t>(count);
    constexpr std::size_t wanted = ReceiverSettings::samplesPerSymbol;
    if (m_perSymbol == wanted)
        return {m_waiting.begin(), end};
    const Interpolation& interpolation = Interpolation::ofWholeBand();
    std::vector<std::complex<float>> line(interpolation.length()); // silence is around
    line.insert(line.end(), m_waiting.begin(), end);
    line.resize(line.size() + interpolation.length());
    std::vector<std::complex<float>> result(count * wanted / m_perSymbol);
    interpolation.fill(line.data(), static_cast<double>(interpolation.length()),
                       static_cast<double>(m_perSymbol) / wanted, result.size(), result.data());
    return result;
}

void FrequencyCorrection::estimate(std::size_t count)
{
    const auto found = m_estimate->of(finely(count));
    if (!found.isFound)
        return;
    const bool isFirst = !m_found.isFound;
    if (!isFirst && std::abs(found.offset - m_found.offset) < sameFrequency)
        return;
    m_found = found;
    const Part& last = m_parts.back();
    const double phase = last.phase + last.step * static_cast<double>(m_position - last.first);
    m_parts.push_back({m_position, phase, found.offset / static_cast<double>(m_perSymbol)});
    m_rotation = Rotation(-m_parts.back().step);
    if (m_parts.size() > keptParts)
        m_parts.erase(m_parts.begin());
}

void FrequencyCorrection::passOn(std::size_t count, std::vector<std::complex<float>>& output)
{
    const std::size_t before = output.size();
    const auto end = m_waiting.begin() + static_cast<std::ptrdiff_t>(count);
    output.insert(output.end(), m_waiting.begin(), end);
    m_waiting.erase(m_waiting.begin(), end);
    turn(output.data() + before, count);
}

/// Takes the frequency off the next samples.
void FrequencyCorrection::turn(std::complex<float>* samples, std::size_t count)
{
    const Part& part = m_parts.back();
    m_rotation.turn(samples, count,
                    -part.phase - part.step * static_cast<double>(m_position - part.first));
    m_position += static_cast<std::int64_t>(count);
}

double FrequencyCorrection::phaseAt(double time) const
{
    const double sample = (time - m_timeOffset) * m_sampleRate;
    const Part* part = &m_parts.front();
    for (const Part& later : m_parts) {
        if (static_cast<double>(later.first) <= sample)
            part = &later;
    }
    return 2.0 * pi * (part->phase + part->step * (sample - static_cast<double>(part->first)));
}
