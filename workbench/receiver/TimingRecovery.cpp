// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/receiver/TimingRecovery.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int perSymbol = ReceiverSettings::samplesPerSymbol;
// Above what noise reaches, which is less where positive and negative frequencies differ.
constexpr double lockStrength = 0.36;
constexpr double lockStrengthDemodulated = 0.45;
constexpr double smoothing = 1.0 / 16.0;

/// The cubic through four neighbours, between the two in the middle (Lagrange).
template<class Value>
Value cubic(const Value* values, float part)
{
    const Value &a = values[0], &b = values[1], &c = values[2], &d = values[3];
    const Value first = (c - 0.5F * b) - a / 3.0F - d / 6.0F;
    const Value second = 0.5F * (a + c) - b;
    const Value third = (d - a) / 6.0F + 0.5F * (b - c);
    return b + part * (first + part * (second + part * third));
}

} // namespace

BasebandFormat TimingRecovery::configure(const ReceiverSettings& settings,
                                         const BasebandFormat& format)
{
    m_isOn = settings.hasTimingRecovery && format.samplesPerSymbol > 0.0;
    m_isDemodulated = format.isDemodulated;
    m_step = settings.rollOff ? 2 : 1;
    reset();
    BasebandFormat result = format;
    result.hasSymbolClock = m_isOn;
    return result;
}

void TimingRecovery::reset()
{
    m_timing = m_isOn ? std::make_unique<SymbolTiming>(perSymbol / m_step) : nullptr;
    m_skipCount = 0;
    m_waiting = {};
    m_first = 0;
    m_knot.reset();
    m_error = 0.0;
}

void TimingRecovery::process(BasebandBlock& block)
{
    if (!m_isOn)
        return;
    std::size_t k = m_skipCount;
    for (; k < block.samples.size(); k += m_step) {
        if (m_isDemodulated)
            m_timing->push(double{block.demodulated[k]});
        else
            m_timing->push(std::complex<double>(block.samples[k]));
    }
    m_skipCount = k - block.samples.size();
    m_waiting.samples.insert(m_waiting.samples.end(), block.samples.begin(), block.samples.end());
    m_waiting.demodulated.insert(m_waiting.demodulated.end(), block.demodulated.begin(),
                                 block.demodulated.end());
    block.samples.clear();
    block.demodulated.clear();
    follow(block);
}

void TimingRecovery::finish(BasebandBlock& block)
{
    if (!m_isOn)
        return;
    process(block);
    m_timing->finish();
    follow(block);
}

void TimingRecovery::follow(BasebandBlock& output)
{
    const double end = static_cast<double>(m_first) + static_cast<double>(m_waiting.samples.size());
    for (SymbolKnot knot : m_timing->takeKnots()) {
        knot.position *= static_cast<double>(m_step);
        if (!m_knot) {
            // The output starts with the middle of a symbol.
            m_next = static_cast<std::int64_t>(std::ceil(knot.symbol)) * perSymbol;
            m_knot = knot;
            continue;
        }
        if (knot.position <= m_knot->position || knot.symbol <= m_knot->symbol)
            continue;
        const double perSample =
            (knot.symbol - m_knot->symbol) / (knot.position - m_knot->position);
        for (;; ++m_next) {
            const double symbol = static_cast<double>(m_next) / perSymbol;
            const double position = m_knot->position + (symbol - m_knot->symbol) / perSample;
            if (symbol >= knot.symbol || position + 3.0 > end) // none are made up at the end
                break;
            interpolate(position, output);
        }
        const double expected =
            (1.0 + m_timing->rateError()) / perSymbol * (knot.position - m_knot->position);
        const double error = knot.symbol - m_knot->symbol - expected;
        m_error += smoothing * (error * error - m_error);
        m_knot = knot;
    }
    if (m_knot)
        dropUsed(m_knot->position);
}

void TimingRecovery::interpolate(double position, BasebandBlock& output) const
{
    const auto count = static_cast<std::int64_t>(m_waiting.samples.size());
    const double start = std::floor(position) - 1.0 - static_cast<double>(m_first);
    const float part = static_cast<float>(position - std::floor(position));
    const auto index = static_cast<std::int64_t>(start);
    const bool isInside = index >= 0 && index + 3 < count;
    output.samples.push_back(isInside
                                 ? cubic(&m_waiting.samples[static_cast<std::size_t>(index)], part)
                                 : std::complex<float>());
    if (m_isDemodulated)
        output.demodulated.push_back(
            isInside ? cubic(&m_waiting.demodulated[static_cast<std::size_t>(index)], part) : 0.0F);
}

void TimingRecovery::dropUsed(double position)
{
    const std::int64_t kept = static_cast<std::int64_t>(position) - 4;
    const auto count = std::clamp<std::int64_t>(
        kept - m_first, 0, static_cast<std::int64_t>(m_waiting.samples.size()));
    const auto drop = [count](auto& values) {
        values.erase(values.begin(),
                     values.begin() + std::min(count, static_cast<std::int64_t>(values.size())));
    };
    drop(m_waiting.samples);
    drop(m_waiting.demodulated);
    m_first += count;
}

StageReport TimingRecovery::report() const
{
    StageReport report{StageReport::Stage::Timing, m_isOn, {}, {}};
    if (!m_isOn)
        return report;
    report.isLocked =
        m_knot && m_timing->strength() > (m_isDemodulated ? lockStrengthDemodulated : lockStrength);
    if (*report.isLocked)
        report.readings = {{StageReport::Quantity::SymbolRateError, 1e6 * m_timing->rateError()},
                           {StageReport::Quantity::TimingError, std::sqrt(m_error)}};
    return report;
}
