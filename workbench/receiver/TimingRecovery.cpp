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
    m_perSymbol = format.samplesPerSymbol;
    m_timeOffset = format.timeOffset;
    m_isOffset = settings.modulation && modulations::of(*settings.modulation).isOffset;
    m_step = settings.usedFilter() && m_isOn
                 ? static_cast<std::size_t>(m_perSymbol) / ReceiverSettings::fewSamplesPerSymbol
                 : 1;
    m_fresh = m_isOn ? std::make_unique<SymbolTiming>(m_perSymbol / static_cast<double>(m_step),
                                                      m_isOffset)
                     : nullptr;
    reset();
    BasebandFormat result = format;
    result.hasSymbolClock = m_isOn || m_isOneEach;
    if (m_isOn) {
        result.sampleRate *= perSymbol / m_perSymbol;
        result.samplesPerSymbol = perSymbol;
    }
    return result;
}

void TimingRecovery::reset()
{
    m_timing = m_isOn ? std::make_unique<SymbolTiming>(*m_fresh) : nullptr;
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
            addSymbol(static_cast<double>(m_count), k, m_count, SymbolState::Good, block);
            ++m_count;
        }
    }
    if (!m_isOn)
        return;
    const std::size_t first = std::min(m_skipCount, block.samples.size());
    const std::size_t count = (block.samples.size() - first + m_step - 1) / m_step;
    if (m_isDemodulated) {
        for (std::size_t k = 0; k < count; ++k)
            m_timing->push(double{block.demodulated[first + k * m_step]});
    } else if (m_isReal) {
        for (std::size_t k = 0; k < count; ++k)
            m_timing->push(double{block.samples[first + k * m_step].real()});
    } else {
        m_timing->push(block.samples.data() + first, count, m_step);
    }
    m_skipCount += count * m_step - block.samples.size();
    m_waiting.append(block);
    block.clear();
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
            // The output starts at the middle of a symbol.
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

/// Puts out samples up to a knot.
void TimingRecovery::follow(const SymbolKnot& knot, BasebandBlock& output)
{
    const double end = static_cast<double>(m_first) + static_cast<double>(m_waiting.samples.size());
    const double perOutput = (knot.position - m_knot->position) / (knot.symbol - m_knot->symbol) /
                             static_cast<double>(perSymbol);
    const double position =
        m_knot->position + (static_cast<double>(m_next) - m_knot->symbol * perSymbol) * perOutput;
    const double toKnot = std::ceil(knot.symbol * perSymbol) - static_cast<double>(m_next);
    const double toEnd = std::floor((end - 1.0 - position) / perOutput) + 1.0; // none are made up
    const double most = std::min(toKnot, toEnd);
    if (!(most > 0.0))
        return;
    const auto count = static_cast<std::size_t>(most);
    const std::size_t before = output.samples.size();
    interpolate(position, perOutput, count, output);
    const auto state =
        m_knot->isLocked && knot.isLocked ? SymbolState::Good : SymbolState::Unlocked;
    const auto past = static_cast<std::size_t>((m_next % perSymbol + perSymbol) % perSymbol);
    for (std::size_t k = past > 0 ? perSymbol - past : 0; k < count; k += perSymbol)
        addSymbol(position + static_cast<double>(k) * perOutput, before + k,
                  m_count + static_cast<std::int64_t>(k), state, output);
    m_next += static_cast<std::int64_t>(count);
    m_count += static_cast<std::int64_t>(count);
}

/// Makes a symbol of a sample of the output, where a number of samples of the run came before it.
void TimingRecovery::addSymbol(double position, std::size_t sample, std::int64_t number,
                               SymbolState state, BasebandBlock& output)
{
    Symbol& symbol = output.symbols.emplace_back();
    symbol.position = static_cast<double>(number);
    symbol.time = position / m_sampleRate + m_timeOffset;
    symbol.value =
        m_isDemodulated ? std::complex<float>(output.demodulated[sample]) : output.samples[sample];
    symbol.state = state;
}

void TimingRecovery::measure(const SymbolKnot& knot, BasebandBlock& output)
{
    if (knot.measured && knot.isLocked)
        output.clock.push_back({knot.position / m_sampleRate + m_timeOffset, *knot.measured});
    const double expected =
        (1.0 + m_timing->rateError()) / m_perSymbol * (knot.position - m_knot->position);
    const double error = knot.symbol - m_knot->symbol - expected;
    m_error += smoothing * (error * error - m_error);
}

/// Samples at places a step apart: silence is before and after those that wait.
void TimingRecovery::interpolate(double first, double step, std::size_t count,
                                 BasebandBlock& output)
{
    constexpr std::ptrdiff_t reach = Interpolation::reach;
    const double place = first - static_cast<double>(m_first);
    const double last = place + static_cast<double>(count) * step;
    const bool isWithin =
        place >= static_cast<double>(reach) &&
        last + static_cast<double>(reach) + 1.0 < static_cast<double>(m_waiting.samples.size());
    const auto fill = [&](const auto& from, auto& to) {
        using Sample = typename std::decay_t<decltype(from)>::value_type;
        const std::size_t before = to.size();
        to.resize(before + count);
        if (isWithin) {
            Interpolation::ofWholeBand().fill(from.data(), place, step, count, &to[before]);
            return;
        }
        for (std::size_t k = 0; k < count; ++k)
            to[before + k] = Interpolation::at(
                place + static_cast<double>(k) * step, [&from](std::ptrdiff_t index) {
                    const bool isThere =
                        index >= 0 && index < static_cast<std::ptrdiff_t>(from.size());
                    return isThere ? from[static_cast<std::size_t>(index)] : Sample();
                });
    };
    fill(m_waiting.samples, output.samples);
    if (m_isDemodulated)
        fill(m_waiting.demodulated, output.demodulated);
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
