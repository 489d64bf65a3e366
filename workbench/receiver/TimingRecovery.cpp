// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/receiver/TimingRecovery.h"

#include "workbench/receiver/Interpolation.h"
#include "workbench/receiver/ModulationTable.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int perSymbol = ReceiverSettings::samplesPerSymbol;
constexpr double smoothing = 1.0 / 16.0;

} // namespace

BasebandFormat TimingRecovery::configure(const ReceiverSettings& settings,
                                         const BasebandFormat& format)
{
    m_isOneEach = format.samplesPerSymbol == 1.0;
    m_isOn = settings.hasTimingRecovery && format.samplesPerSymbol > 1.0;
    m_isDemodulated = format.isDemodulated;
    m_isReal = format.isReal;
    m_sampleRate = format.sampleRate;
    m_timeOffset = format.timeOffset;
    m_isOffset = settings.modulation && modulations::of(*settings.modulation).isOffset;
    m_step = settings.usedFilter() ? 2 : 1;
    reset();
    BasebandFormat result = format;
    result.hasSymbolClock = m_isOn || m_isOneEach;
    return result;
}

void TimingRecovery::reset()
{
    m_timing = m_isOn ? std::make_unique<SymbolTiming>(perSymbol / m_step, m_isOffset) : nullptr;
    m_skipCount = 0;
    m_waiting = {};
    m_first = 0;
    m_isEnding = false;
    m_knot.reset();
    m_count = 0;
    m_error = 0.0;
}

void TimingRecovery::process(BasebandBlock& block)
{
    if (m_isOneEach) {
        BasebandBlock output = std::move(block);
        block = {};
        for (std::size_t k = 0; k < output.samples.size(); ++k) {
            block.samples.push_back(output.samples[k]);
            if (m_isDemodulated)
                block.demodulated.push_back(output.demodulated[k]);
            addSymbol(static_cast<double>(m_count), SymbolState::Good, block);
            ++m_count;
        }
    }
    if (!m_isOn)
        return;
    std::size_t k = m_skipCount;
    for (; k < block.samples.size(); k += m_step) {
        if (m_isDemodulated)
            m_timing->push(double{block.demodulated[k]});
        else if (m_isReal)
            m_timing->push(double{block.samples[k].real()});
        else
            m_timing->push(std::complex<double>(block.samples[k]));
    }
    m_skipCount = k - block.samples.size();
    m_waiting.append(block);
    block = {};
    follow(block);
}

void TimingRecovery::finish(BasebandBlock& block)
{
    if (!m_isOn)
        return;
    BasebandBlock tail;
    m_timing->finish();
    m_isEnding = true;
    follow(tail);
    block.append(tail);
}

void TimingRecovery::follow(BasebandBlock& output)
{
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
        follow(knot, output);
        measure(knot, output);
        m_knot = knot;
    }
    if (m_knot)
        dropUsed(m_knot->position);
}

/// Puts out the samples up to a knot.
void TimingRecovery::follow(const SymbolKnot& knot, BasebandBlock& output)
{
    const double end = static_cast<double>(m_first) + static_cast<double>(m_waiting.samples.size());
    const double perSample = (knot.symbol - m_knot->symbol) / (knot.position - m_knot->position);
    for (;; ++m_next) {
        const double symbol = static_cast<double>(m_next) / perSymbol;
        const double position = m_knot->position + (symbol - m_knot->symbol) / perSample;
        if (symbol >= knot.symbol || position > end - 1.0) // none are made up at the end
            return;
        interpolate(position, output);
        if (m_next % perSymbol == 0)
            addSymbol(position,
                      m_knot->isLocked && knot.isLocked ? SymbolState::Good : SymbolState::Unlocked,
                      output);
        ++m_count;
    }
}

/// Makes a symbol of the newest sample.
void TimingRecovery::addSymbol(double position, SymbolState state, BasebandBlock& output)
{
    Symbol symbol;
    symbol.position = static_cast<double>(m_count);
    symbol.time = position / m_sampleRate + m_timeOffset;
    symbol.value =
        m_isDemodulated ? std::complex<float>(output.demodulated.back()) : output.samples.back();
    symbol.state = state;
    output.symbols.push_back(symbol);
}

void TimingRecovery::measure(const SymbolKnot& knot, BasebandBlock& output)
{
    if (knot.measured && knot.isLocked)
        output.clock.push_back({knot.position / m_sampleRate + m_timeOffset, *knot.measured});
    const double expected =
        (1.0 + m_timing->rateError()) / perSymbol * (knot.position - m_knot->position);
    const double error = knot.symbol - m_knot->symbol - expected;
    m_error += smoothing * (error * error - m_error);
}

void TimingRecovery::interpolate(double position, BasebandBlock& output)
{
    const auto count = static_cast<std::ptrdiff_t>(m_waiting.samples.size());
    const auto within = [count](std::ptrdiff_t index) { return index >= 0 && index < count; };
    const double place = position - static_cast<double>(m_first);
    output.samples.push_back(Interpolation::at(place, [&](std::ptrdiff_t index) {
        return within(index) ? m_waiting.samples[static_cast<std::size_t>(index)]
                             : std::complex<float>();
    }));
    if (m_isDemodulated)
        output.demodulated.push_back(Interpolation::at(place, [&](std::ptrdiff_t index) {
            return within(index) ? m_waiting.demodulated[static_cast<std::size_t>(index)] : 0.0F;
        }));
}

void TimingRecovery::dropUsed(double position)
{
    const std::int64_t kept = static_cast<std::int64_t>(position) - 2 * Interpolation::reach;
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
    report.isLocked = m_knot && m_knot->isLocked;
    if (*report.isLocked)
        report.readings = {{StageReport::Quantity::SymbolRateError, 1e6 * m_timing->rateError()},
                           {StageReport::Quantity::TimingError, std::sqrt(m_error)}};
    return report;
}
