// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/receiver/ReceivedPath.h"

#include "workbench/receiver/MeasuringFilter.h"
#include "workbench/receiver/SingleNumbers.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr std::size_t frameLength = 4096; // samples of the input that are received at a time
constexpr double frameSeconds = 0.02;     // at most, so that slow signals do not wait long
constexpr std::size_t mostQuiet = 8192;   // samples of a block between bursts
// Of the power of the burst, which its first and last symbols reach.
constexpr double burstPower = 0.4;
constexpr std::size_t powerSymbols = 4; // over which the power is measured
constexpr std::size_t rampSymbols = 3;  // at either end of a burst
constexpr std::size_t edgeReach = 64;   // symbols at the end of a run in which a burst begins

using Demodulation = ReceiverSettings::Demodulation;

} // namespace

ReceivedPath::ReceivedPath(const SignalFacts& input, const ChannelChoice& channel,
                           const ReceiverSettings& settings)
    : SignalPath(input)
    , m_settings(settings)
    , m_showsQ(input.isComplex && channel.value % 2 == 1)
{
    m_front.configure(settings, input.sampleRate, input.valueCount(), input.isComplex, channel);
    BasebandFormat format;
    format.sampleRate = input.sampleRate;
    format.isReal = !input.isComplex && settings.shift == 0.0 && !settings.modulation;
    for (ReceiverStage* stage : stages())
        format = stage->configure(settings, format);
    m_timeOffset = format.timeOffset;
    m_format.sampleRate = format.sampleRate;
    m_format.samplesPerSymbol = format.hasSymbolClock ? format.samplesPerSymbol : 0.0;
    m_format.hasQ = true;
    m_format.isDemodulated = format.isDemodulated;
    m_format.hasDecisions = format.hasSymbolClock && !format.isDemodulated;
    if (settings.demodulation == Demodulation::Fm)
        m_scale = settings.symbolRate.value_or(input.sampleRate);
    m_format.fittedPart = m_carrier.fittedPart() + m_refinement.fittedPart();
    m_edge = static_cast<std::size_t>(measuringFilter::edgeOf(settings));
    m_level.configure(settings.hasGainControl && !format.isDemodulated, m_format.samplesPerSymbol);
    ReceivedPath::reset(0, false);
}

std::array<ReceiverStage*, 7> ReceivedPath::stages()
{
    return {&m_demodulator, &m_resampler, &m_frequency, &m_filter,
            &m_timing,      &m_carrier,   &m_refinement};
}

void ReceivedPath::reset(std::int64_t position, bool goesOn)
{
    m_front.reset(goesOn);
    m_level.reset();
    m_values.clear();
    m_taken = position;
    m_position =
        std::llround(static_cast<double>(position) * m_format.sampleRate / m_input.sampleRate);
    m_isAfterGap = true;
    m_isRunning = false;
    m_received = {};
}

// Works in frames of one length, because the results must not depend on the lengths of the blocks.
void ReceivedPath::process(const std::vector<double>& values, std::vector<SignalBlock>& blocks)
{
    const auto width = static_cast<std::size_t>(m_input.valueCount());
    const auto longest = static_cast<std::size_t>(m_input.sampleRate * frameSeconds) + 1;
    const std::size_t length = width * std::min(frameLength, longest);
    const auto take = [&](const double* frame, std::size_t count) {
        if (m_parts.size() == 1)
            m_front.reuse(m_parts.front().samples);
        m_parts.clear();
        m_front.process(frame, count, m_parts);
        takeParts(m_parts, blocks);
    };
    const double* next = values.data();
    const double* const end = next + values.size();
    if (!m_values.empty()) { // a frame that waits for more
        const auto wanted = static_cast<std::ptrdiff_t>(length - m_values.size());
        const double* const until = next + std::min(wanted, end - next);
        m_values.insert(m_values.end(), next, until);
        next = until;
        if (m_values.size() < length)
            return;
        take(m_values.data(), length);
        m_values.clear();
    }
    for (; end - next >= static_cast<std::ptrdiff_t>(length); next += length)
        take(next, length);
    m_values.assign(next, end);
}

void ReceivedPath::finish(std::vector<SignalBlock>& blocks)
{
    std::vector<BurstGate::Part> parts;
    m_front.process(m_values.data(), m_values.size(), parts);
    m_values.clear();
    m_front.finish(parts);
    takeParts(parts, blocks);
    endRun(blocks);
}

void ReceivedPath::takeParts(std::vector<BurstGate::Part>& parts, std::vector<SignalBlock>& blocks)
{
    for (BurstGate::Part& part : parts) {
        const auto count = static_cast<std::int64_t>(part.samples.size());
        if (part.isOpen && count > 0) {
            if (!m_isRunning) {
                fillQuiet(blocks);
                startRun();
            }
            m_taken += count;
            run(part.samples, blocks);
        } else if (count > 0) {
            endRun(blocks);
            m_taken += count;
            fillQuiet(blocks);
        }
    }
}

void ReceivedPath::startRun()
{
    for (ReceiverStage* stage : stages())
        stage->reset();
    m_isRunning = true;
    m_isStart = true;
    m_runTime = static_cast<double>(m_taken) / m_input.sampleRate;
    m_runPosition = m_position;
    m_received = {};
    m_receivedFirst = 0;
}

void ReceivedPath::run(std::vector<std::complex<float>>& samples, std::vector<SignalBlock>& blocks)
{
    m_block.samples.swap(samples); // these keep their size: it is that of the next ones, nearly
    m_block.demodulated.clear();
    m_block.symbols.clear();
    m_block.clock.clear();
    m_frequency.setSearching(!m_carrier.isTracking());
    pass(m_block, false);
    takeReceived(m_block, false, blocks);
}

/// Passes a block through the stages.
void ReceivedPath::pass(BasebandBlock& block, bool isEnd)
{
    for (ReceiverStage* stage : stages()) {
        stage->process(block);
        if (isEnd)
            stage->finish(block);
        if (stage != &m_timing)
            continue;
        for (Symbol& symbol : block.symbols) // from there on the recovery follows the carrier
            symbol.phase = m_frequency.phaseAt(symbol.time);
    }
}

void ReceivedPath::endRun(std::vector<SignalBlock>& blocks)
{
    if (!m_isRunning)
        return;
    BasebandBlock block;
    pass(block, true);
    takeReceived(block, true, blocks);
    m_isRunning = false;
}

/// Holds back samples that may lie at the end of the run.
void ReceivedPath::takeReceived(BasebandBlock& block, bool isEnd, std::vector<SignalBlock>& blocks)
{
    m_received.append(block);
    if (m_format.samplesPerSymbol == 0.0) {
        passOn(m_received.samples.size(), blocks);
        return;
    }
    auto& symbols = m_received.symbols; // the first of which may lie just before the run
    const auto first = static_cast<double>(m_receivedFirst);
    symbols.erase(symbols.begin(),
                  std::find_if(symbols.begin(), symbols.end(),
                               [first](const Symbol& symbol) { return symbol.position >= first; }));
    const std::size_t kept = edgeReach + m_edge;
    const std::size_t symbolCount = symbols.size();
    if (!isEnd && symbolCount < 2 * kept)
        return;
    if (m_isStart)
        markEdge(symbols.begin(), symbols.end());
    m_isStart = false;
    if (isEnd)
        markEdge(symbols.rbegin(), symbols.rend());
    const auto count = isEnd ? static_cast<double>(m_received.samples.size())
                             : symbols[symbolCount - kept].position - first;
    passOn(static_cast<std::size_t>(count), blocks);
}

/// Marks the symbols at an end of the run up to where the burst has its full power, and those for
/// which the filter lacks samples.
template<class Iterator>
void ReceivedPath::markEdge(Iterator first, Iterator last)
{
    const auto count = static_cast<std::size_t>(last - first);
    std::vector<double> powers;
    for (auto symbol = first; symbol != last; ++symbol) {
        const auto index =
            static_cast<std::size_t>(symbol->position - static_cast<double>(m_receivedFirst));
        powers.push_back(std::norm(std::complex<double>(m_received.samples[index])));
    }
    if (powers.size() < powerSymbols)
        return;
    std::vector<double> sorted = powers;
    const auto middle = sorted.begin() + static_cast<std::ptrdiff_t>(count / 2);
    std::nth_element(sorted.begin(), middle, sorted.end());
    double sum = 0.0;
    for (std::size_t k = 0; k < powerSymbols; ++k)
        sum += powers[k];
    std::size_t begin = 0; // of the burst
    while (begin < std::min(count - powerSymbols, edgeReach) &&
           sum < burstPower * *middle * static_cast<double>(powerSymbols)) {
        sum += powers[begin + powerSymbols] - powers[begin];
        ++begin;
    }
    const std::size_t marked =
        std::min(begin + std::max(begin > 0 ? rampSymbols : 0, m_edge), count);
    for (std::size_t k = 0; k < marked; ++k)
        (first + static_cast<std::ptrdiff_t>(k))->state = SymbolState::Edge;
}

/// Makes a block of the first received samples.
void ReceivedPath::passOn(std::size_t count, std::vector<SignalBlock>& blocks)
{
    const auto end = static_cast<std::ptrdiff_t>(std::min(count, m_received.samples.size()));
    if (end == 0)
        return;
    SignalBlock block = makeBlock();
    block.position = m_runPosition + m_receivedFirst;
    const auto length = static_cast<std::size_t>(end);
    block.i.resize(length);
    block.q.resize(length);
    makeDouble(reinterpret_cast<const float*>(m_received.samples.data()), length, block.i.data(),
               block.q.data());
    if (m_format.isDemodulated) {
        block.samples.resize(length);
        for (std::size_t k = 0; k < length; ++k)
            block.samples[k] = m_scale * double{m_received.demodulated[k]};
    } else {
        block.samples = m_showsQ ? block.q : block.i;
    }
    block.time =
        m_runTime + m_timeOffset + static_cast<double>(m_receivedFirst) / m_format.sampleRate;
    const auto endPosition = static_cast<double>(m_receivedFirst + end);
    if (m_format.samplesPerSymbol > 0.0)
        block.symbols.reserve(static_cast<std::size_t>(
            static_cast<double>(length) / m_format.samplesPerSymbol + 2.0));
    auto later = m_received.symbols.begin();
    for (; later != m_received.symbols.end() && later->position < endPosition; ++later) {
        block.symbols.push_back(*later);
        Symbol& symbol = block.symbols.back();
        if (block.symbols.size() == 1) // time follows the symbol clock
            block.time =
                m_runTime + symbol.time -
                (symbol.position - static_cast<double>(m_receivedFirst)) / m_format.sampleRate;
        if (m_format.isDemodulated)
            symbol.value *= static_cast<float>(m_scale);
        symbol.position += static_cast<double>(m_runPosition);
        symbol.time += m_runTime;
    }
    m_received.symbols.erase(m_received.symbols.begin(), later);
    for (ClockPoint point : m_received.clock) {
        point.time += m_runTime;
        block.clock.push_back(point);
    }
    m_received.clock.clear();
    const auto leave = [end](auto& values) {
        values.erase(values.begin(),
                     values.begin() + std::min(end, static_cast<std::ptrdiff_t>(values.size())));
    };
    leave(m_received.samples);
    leave(m_received.demodulated);
    m_receivedFirst += end;
    if (m_settings.hasAutoSquelch && m_format.samplesPerSymbol > 0.0)
        silence(block);
    m_level.process(block, m_carrier.isOn() ? m_carrier.amplitude() : 0.0);
    push(std::move(block), blocks);
}

/// Silences the samples that do not belong to good symbols.
void ReceivedPath::silence(SignalBlock& block) const
{
    const double half = 0.5 * m_format.samplesPerSymbol;
    block.isQuiet.assign(block.count(), 1);
    for (const Symbol& symbol : block.symbols) {
        if (symbol.state != SymbolState::Good)
            continue;
        const double middle = symbol.position - static_cast<double>(block.position);
        const auto last = static_cast<double>(block.count());
        const auto begin =
            static_cast<std::size_t>(std::clamp(std::floor(middle - half), 0.0, last));
        const auto end = static_cast<std::size_t>(std::clamp(std::ceil(middle + half), 0.0, last));
        std::fill(block.isQuiet.begin() + static_cast<std::ptrdiff_t>(begin),
                  block.isQuiet.begin() + static_cast<std::ptrdiff_t>(end), std::uint8_t{0});
    }
    for (auto* values : {&block.samples, &block.i, &block.q}) {
        for (std::size_t k = 0; k < values->size(); ++k)
            (*values)[k] = block.isQuiet[k] ? 0.0 : (*values)[k];
    }
}

/// Appends samples for the time from the last burst to the present place of the input.
void ReceivedPath::fillQuiet(std::vector<SignalBlock>& blocks)
{
    const double until = static_cast<double>(m_taken) / m_input.sampleRate;
    const std::int64_t end = std::llround(until * m_format.sampleRate);
    while (m_position < end) {
        const auto count = static_cast<std::size_t>(
            std::min<std::int64_t>(end - m_position, static_cast<std::int64_t>(mostQuiet)));
        SignalBlock block;
        block.position = m_position;
        block.time = static_cast<double>(m_position) / m_format.sampleRate;
        block.samples.resize(count);
        block.i.resize(count);
        block.q.resize(count);
        block.isQuiet.resize(count, 1);
        push(std::move(block), blocks);
    }
}

void ReceivedPath::push(SignalBlock block, std::vector<SignalBlock>& blocks)
{
    block.reports = reports(block);
    m_position = block.end();
    append(std::move(block), blocks);
}

std::vector<StageReport> ReceivedPath::reports(const SignalBlock& block) const
{
    StageReport squelch = m_front.squelchReport();
    if (m_settings.hasAutoSquelch) {
        const bool isOpen =
            block.isQuiet.empty() || std::count(block.isQuiet.begin(), block.isQuiet.end(), 0) > 0;
        squelch.isOn = true;
        squelch.isLocked = isOpen && squelch.isLocked.value_or(true);
    }
    StageReport carrier = m_carrier.report();
    if (carrier.isLocked.value_or(false) && m_frequency.mayBeAlias())
        carrier.readings.push_back(
            {StageReport::Quantity::AliasDistance, m_frequency.aliasDistance()});
    return {m_front.shiftReport(),  m_front.channelReport(), squelch,
            m_demodulator.report(), m_resampler.report(),    m_level.report(),
            m_filter.report(),      m_timing.report(),       carrier};
}
