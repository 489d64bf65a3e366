// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/receiver/CarrierRecovery.h"

#include "workbench/receiver/ComplexProduct.h"
#include "workbench/receiver/Rotation.h"
#include "workbench/sources/Constants.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

constexpr std::size_t leastSymbols = 16;
constexpr double localPart = 0.5;    // of the lock quality, for the symbols around one
constexpr double offsetRange = 0.02; // of a symbol rate, times the power, either way
constexpr double faintBurst = 0.01;  // of the level of the strongest one

} // namespace

BasebandFormat CarrierRecovery::configure(const ReceiverSettings& settings,
                                          const BasebandFormat& format)
{
    m_modulation = nullptr;
    if (settings.modulation && format.hasSymbolClock && !format.isDemodulated) {
        m_modulation = &modulations::of(*settings.modulation);
        m_perSymbol = static_cast<std::size_t>(format.samplesPerSymbol);
        m_symbolRate = format.sampleRate / format.samplesPerSymbol;
        m_reach = m_modulation->reach;
        m_tracked.configure(m_reach, m_modulation->hasAmplitudes);
        m_meanSquare = 0.0;
        for (const Complex& point : m_modulation->points) {
            const auto count = static_cast<double>(m_modulation->points.size());
            m_meanSquare += std::norm(point) * std::norm(point) / count;
        }
    }
    reset();
    return format;
}

void CarrierRecovery::reset()
{
    m_waiting = {};
    m_head = 0;
    m_tracked.clear();
    m_loop.clear();
    if (isOn())
        m_loop.emplace_back(*m_modulation);
    m_number = 0;
    m_lastPhase = m_offset = m_phaseError = 0.0;
    m_strongest = 0.0;
    m_emittedAmplitude = 0.0;
}

void CarrierRecovery::process(BasebandBlock& block)
{
    if (!isOn())
        return;
    m_waiting.append(block);
    block.clear();
    block.clock.swap(m_waiting.clock);
    searchOn(false);
    handOver(block);
}

/// Moves the symbols that were put out, with their samples, into an empty block.
void CarrierRecovery::handOver(BasebandBlock& output)
{
    const auto move = [](auto& from, std::size_t count, auto& to) { // what stays is shorter
        const auto end = from.begin() + static_cast<std::ptrdiff_t>(count);
        to.assign(end, from.end());
        from.erase(end, from.end());
        to.swap(from);
    };
    const std::size_t count = std::min(m_head * m_perSymbol, m_waiting.samples.size());
    move(m_waiting.symbols, m_head, output.symbols);
    move(m_waiting.samples, count, output.samples);
    m_head = 0;
}

void CarrierRecovery::finish(BasebandBlock& block)
{
    if (!isOn())
        return;
    searchOn(true);
    BasebandBlock rest;
    handOver(rest);
    block.append(rest);
    m_waiting = {};
}

/// A sample at an offset from the middle of a symbol that waits.
CarrierRecovery::Complex CarrierRecovery::sampleAt(std::size_t index, std::size_t offset) const
{
    const std::size_t place = (m_head + index) * m_perSymbol + offset;
    return Complex(m_waiting.samples[std::min(place, m_waiting.samples.size() - 1)]);
}

/// Turn of the samples of a symbol beside that of the carrier.
CarrierRecovery::Complex CarrierRecovery::turnOf(std::size_t index) const
{
    const bool isTurned =
        m_modulation->alternates && (m_number + static_cast<std::int64_t>(index)) % 2 != 0;
    return isTurned ? std::polar(1.0, -0.25 * pi) : 1.0;
}

/// A symbol without its modulation: its phase is a multiple of the carrier's.
CarrierRecovery::Complex CarrierRecovery::undone(std::size_t index, double amplitude) const
{
    Complex symbol = sampleAt(index, 0) * turnOf(index) / amplitude;
    if (m_modulation->isOffset) { // I's square is largest where Q's is smallest
        const Complex later = sampleAt(index, m_perSymbol / 2) / amplitude;
        return symbol * symbol - later * later;
    }
    // Only amplitudes that the modulation has tell something.
    if (!m_modulation->hasAmplitudes)
        symbol *= std::min(std::abs(symbol), 1.0) / std::max(std::abs(symbol), 1e-9);
    Complex result = 1.0;
    for (unsigned n = 0; n < m_modulation->power; ++n)
        result *= symbol;
    return result;
}

void CarrierRecovery::searchOn(bool isEnding)
{
    for (;;) {
        if (isTracking()) {
            while (isTracking() && m_tracked.count() < waitingCount())
                track();
            putOutTracked(isEnding && isTracking());
            if (isTracking())
                return;
            letGo();
        }
        const std::size_t window = m_modulation->window;
        const std::size_t count = std::min(window, waitingCount());
        if (count < window && !isEnding)
            return;
        if (count >= leastSymbols && acquire(count))
            continue;
        // A burst may start in the second half of the window.
        settle(isEnding && count < window ? count : window / 2);
        if (waitingCount() == 0)
            return;
    }
}

/// Change of the phase that earlier stages took off, from a symbol to the next one.
double CarrierRecovery::stepAt(std::size_t index) const
{
    const auto& symbols = m_waiting.symbols;
    const std::size_t here = m_head + index;
    if (here + 1 < symbols.size())
        return symbols[here + 1].phase - symbols[here].phase;
    if (here == 0)
        return 0.0;
    return symbols[here].phase - (index > 0 ? symbols[here - 1].phase : m_takenBefore);
}

/// Puts out symbols without a carrier.
void CarrierRecovery::settle(std::size_t count)
{
    const bool hadCarrier = m_strongest > 0.0;
    for (std::size_t k = 0; k < count; ++k)
        putOut(hadCarrier ? m_lastPhase + m_offset : m_waiting.symbols[m_head].phase,
               hadCarrier ? m_offset : stepAt(0), SymbolState::Unlocked);
    turnPutOut();
}

/// The loop has lost the carrier.
void CarrierRecovery::letGo()
{
    settle(m_tracked.count());
    m_tracked.clear();
    m_phaseError = 0.0;
}

/// Looks for a carrier among the symbols that wait; the loop then starts with the first.
bool CarrierRecovery::acquire(std::size_t count)
{
    double power = 0.0, squares = 0.0;
    for (std::size_t k = 0; k < count; ++k) {
        const double norm = std::norm(sampleAt(k, 0));
        power += norm;
        squares += norm * norm;
    }
    if (!(power > 0.0))
        return false;
    // A burst may begin in the window, where the mean would tell too little.
    const double amplitude = std::sqrt(squares / power / m_meanSquare);
    if (amplitude < faintBurst * m_strongest) // for example the tail of a filter
        return false;
    const double before = m_waiting.symbols[m_head].phase;
    const double step =
        (m_waiting.symbols[m_head + count - 1].phase - before) / static_cast<double>(count - 1);
    std::vector<Complex> symbols(count);
    for (std::size_t k = 0; k < count; ++k) {
        // What was taken off before may have changed within the window.
        const double bend =
            m_waiting.symbols[m_head + k].phase - before - step * static_cast<double>(k);
        symbols[k] = undone(k, amplitude) * std::polar(1.0, m_modulation->power * bend);
    }
    // The line of an offset modulation is faint, and the frequency is already known better than
    // this.
    const auto line = m_search.lineOf(symbols, m_modulation->isOffset ? offsetRange : 0.5);
    if (!line)
        return false;
    const double frequency = line->turn / m_modulation->power + step;
    const double phase = (line->phase - m_modulation->target) / m_modulation->power + before;
    // Of the phases that cannot be told apart, takes the one that continues the last one.
    const double ambiguity = 2.0 * pi / m_modulation->power;
    const double expected = m_number > 0 ? m_lastPhase + frequency : before;
    m_loop.front().start(phase + ambiguity * std::round((expected - phase) / ambiguity), frequency,
                         amplitude);
    m_strongest = std::max(m_strongest, amplitude);
    m_wasHeld = false;
    return true;
}

/// Follows some of the symbols that wait.
void CarrierRecovery::track()
{
    std::array<CarrierLoop::Input, CarrierLoop::together> inputs;
    const std::size_t first = m_tracked.count();
    const std::size_t count = std::min(waitingCount() - first, inputs.size());
    for (std::size_t k = 0; k < count; ++k) {
        const std::size_t here = first + k;
        inputs[k].sample = sampleAt(here, 0);
        if (m_modulation->alternates)
            inputs[k].sample = product(inputs[k].sample, turnOf(here));
        if (m_modulation->isOffset)
            inputs[k].later = sampleAt(here, m_perSymbol / 2);
        inputs[k].taken = m_waiting.symbols[m_head + here].phase;
    }
    m_loop.front().follow(inputs.data(), count, m_tracked);
}

/// Puts out the symbols around which enough others were tracked. Where the carrier is lost, the
/// search starts there, because the loop would not find the carrier by itself.
void CarrierRecovery::putOutTracked(bool isEnding)
{
    while (m_tracked.count() > m_reach || (isEnding && m_tracked.count() > 0)) {
        const TrackedPhases::Symbol& tracked = m_tracked.symbol();
        const bool isHeld = m_tracked.isHeld();
        SymbolState state = SymbolState::Good;
        const TrackedPhases::Smoothed smoothed = m_tracked.smoothed(m_loop.front().frequency());
        if (m_tracked.isFaint())
            state = SymbolState::Edge;
        else if (!isHeld || // fourth powers of amplitudes scatter too much in some dozens of
                            // symbols
                 (!m_modulation->hasAmplitudes &&
                  smoothed.quality < localPart * m_modulation->lockQuality))
            state = SymbolState::Unlocked;
        if (state == SymbolState::Unlocked && !isHeld && m_wasHeld) {
            m_loop.front().stop();
            m_tracked.clear();
            break;
        }
        m_wasHeld = m_wasHeld || state == SymbolState::Good;
        const double error = tracked.error - (smoothed.phase - tracked.phase);
        m_phaseError += 0.5 / static_cast<double>(m_reach) * (error * error - m_phaseError);
        m_emittedAmplitude = m_loop.front().amplitude();
        putOut(smoothed.phase, smoothed.slope, state);
        m_tracked.advance();
    }
    turnPutOut();
}

/// Puts out the next symbol, which is turned later, with its samples.
void CarrierRecovery::putOut(double phase, double slope, SymbolState state)
{
    Symbol& symbol = m_waiting.symbols[m_head];
    m_turns.push_back(symbol.phase - phase);
    m_steps.push_back((stepAt(0) - slope) / static_cast<double>(m_perSymbol));
    m_takenBefore = symbol.phase;
    symbol.turn = turnOf(0);
    symbol.level = state == SymbolState::Unlocked ? 0.0 : m_emittedAmplitude;
    symbol.phase = phase;
    if (symbol.state == SymbolState::Good)
        symbol.state = state;
    m_lastPhase = phase;
    m_offset = slope;
    ++m_head;
    ++m_number;
}

/// Turns the symbols that were put out, and the samples from each up to the one after it.
void CarrierRecovery::turnPutOut()
{
    const std::size_t count = m_turns.size();
    const std::size_t begin = (m_head - count) * m_perSymbol;
    const std::size_t end = std::min(m_head * m_perSymbol, m_waiting.samples.size());
    m_halves.clear();
    for (std::size_t k = 0; m_modulation->isOffset && k < count; ++k) {
        const std::size_t later = begin + k * m_perSymbol + m_perSymbol / 2;
        const Complex half(m_waiting.samples[std::min(later, m_waiting.samples.size() - 1)]);
        m_halves.push_back(product(half, std::polar(1.0, m_turns[k])).imag());
    }
    std::complex<float>* const samples = m_waiting.samples.data() + begin;
    turnGroups(samples, end - begin, m_perSymbol, m_turns, m_steps);
    for (std::size_t k = 0; k < count; ++k) {
        Symbol& symbol = m_waiting.symbols[m_head - count + k];
        symbol.value = samples[k * m_perSymbol];
        if (m_modulation->alternates)
            symbol.value = product(symbol.value, std::complex<float>(symbol.turn));
        if (m_modulation->isOffset)
            symbol.value.imag(static_cast<float>(m_halves[k]));
    }
    m_turns.clear();
    m_steps.clear();
}

StageReport CarrierRecovery::report() const
{
    StageReport report{StageReport::Stage::Carrier, isOn(), {}, {}};
    if (!isOn())
        return report;
    report.isLocked = m_emittedAmplitude > 0.0 && isTracking();
    if (*report.isLocked)
        report.readings = {
            {StageReport::Quantity::CarrierOffset, m_offset * m_symbolRate / (2.0 * pi)},
            {StageReport::Quantity::PhaseError, std::sqrt(m_phaseError) * 180.0 / pi}};
    return report;
}
