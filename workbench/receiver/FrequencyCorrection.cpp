// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/receiver/FrequencyCorrection.h"

#include "workbench/receiver/MeasuringFilter.h"
#include "workbench/sources/Constants.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr std::size_t leastSymbols = 16;
constexpr double sameFrequency = 0.02;  // cycles a symbol: closer ones are followed by the loop
constexpr std::size_t turnLength = 256; // samples from phase to phase: errors do not add up
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
        const int perSymbol = static_cast<int>(m_perSymbol);
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
}

void FrequencyCorrection::process(BasebandBlock& block)
{
    if (!m_isOn)
        return;
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

void FrequencyCorrection::estimate(std::size_t count)
{
    const auto found =
        m_estimate->of({m_waiting.begin(), m_waiting.begin() + static_cast<std::ptrdiff_t>(count)});
    if (!found.isFound)
        return;
    const bool isFirst = !m_found.isFound;
    if (!isFirst && std::abs(found.offset - m_found.offset) < sameFrequency)
        return;
    m_found = found;
    const Part& last = m_parts.back();
    const double phase = last.phase + last.step * static_cast<double>(m_position - last.first);
    m_parts.push_back({m_position, phase, found.offset / static_cast<double>(m_perSymbol)});
    if (m_parts.size() > keptParts)
        m_parts.erase(m_parts.begin());
}

void FrequencyCorrection::passOn(std::size_t count, std::vector<std::complex<float>>& output)
{
    const Part& part = m_parts.back();
    const std::complex<double> step = std::polar(1.0, -2.0 * pi * part.step);
    std::complex<double> turn = 1.0;
    for (std::size_t k = 0; k < count; ++k) {
        if (k % turnLength == 0) {
            const double cycles =
                part.phase + part.step * static_cast<double>(m_position - part.first);
            turn = std::polar(1.0, -2.0 * pi * (cycles - std::floor(cycles)));
        }
        const std::complex<float> sample = m_waiting[k];
        const auto c = static_cast<float>(turn.real());
        const auto d = static_cast<float>(turn.imag());
        output.emplace_back(sample.real() * c - sample.imag() * d,
                            sample.real() * d + sample.imag() * c);
        turn = {turn.real() * step.real() - turn.imag() * step.imag(),
                turn.real() * step.imag() + turn.imag() * step.real()};
        ++m_position;
    }
    m_waiting.erase(m_waiting.begin(), m_waiting.begin() + static_cast<std::ptrdiff_t>(count));
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
