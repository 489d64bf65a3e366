// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/receiver/CarrierRecovery.h"

#include <algorithm>
#include <cmath>
#include <set>

namespace {

constexpr double pi = 3.14159265358979323846;
constexpr std::size_t padding = 4;   // of the search, against the window
constexpr double significance = 7.0; // beyond the highest of as many lines of noise
constexpr std::size_t leastSymbols = 16;
constexpr double startQuality = 0.6;
constexpr double lockQuality = 0.3;
constexpr double silence = 1e-3; // of the mean power of symbols
constexpr double damping = 0.707;

} // namespace

BasebandFormat CarrierRecovery::configure(const ReceiverSettings& settings,
                                          const BasebandFormat& format)
{
    m_modulation = nullptr;
    if (settings.modulation && format.hasSymbolClock && !format.isDemodulated) {
        m_modulation = &modulations::of(*settings.modulation);
        m_perSymbol = static_cast<std::size_t>(format.samplesPerSymbol);
        m_symbolRate = format.sampleRate / format.samplesPerSymbol;
        m_reach = m_modulation->hasAmplitudes ? 64 : 32;
        // Gardner, "Phaselock Techniques": a loop of second order from its noise bandwidth.
        const double theta = m_modulation->loopBandwidth / (damping + 0.25 / damping);
        const double scale = 1.0 + 2.0 * damping * theta + theta * theta;
        m_phaseStep = 4.0 * damping * theta / scale;
        m_frequencyStep = 4.0 * theta * theta / scale;
        std::set<double> levels;
        for (const Complex& point : m_modulation->points)
            levels.insert(point.real());
        m_levels.clear();
        if (m_modulation->hasAmplitudes &&
            levels.size() * levels.size() == m_modulation->points.size())
            m_levels.assign(levels.begin(), levels.end());
    }
    reset();
    return format;
}

void CarrierRecovery::reset()
{
    m_waiting = {};
    m_head = 0;
    m_used = 0;
    m_tracked.clear();
    m_past = 0;
    m_number = 0;
    m_isTracking = false;
    m_phase = m_frequency = m_lastPhase = m_offset = m_phaseError = 0.0;
    m_amplitude = 1.0;
    m_emittedAmplitude = 0.0;
    m_quality = 0.0;
}

void CarrierRecovery::process(BasebandBlock& block)
{
    if (!isOn())
        return;
    m_waiting.append(block);
    BasebandBlock output;
    output.clock.swap(m_waiting.clock);
    searchOn(false, output);
    dropHead();
    block = std::move(output);
}

/// Forgets what was put out.
void CarrierRecovery::dropHead()
{
    m_waiting.symbols.erase(m_waiting.symbols.begin(),
                            m_waiting.symbols.begin() + static_cast<std::ptrdiff_t>(m_head));
    const std::size_t count = std::min(m_head * m_perSymbol, m_waiting.samples.size());
    m_waiting.samples.erase(m_waiting.samples.begin(),
                            m_waiting.samples.begin() + static_cast<std::ptrdiff_t>(count));
    m_head = 0;
}

void CarrierRecovery::finish(BasebandBlock& block)
{
    if (!isOn())
        return;
    BasebandBlock output;
    searchOn(true, output);
    block.append(output);
    m_waiting = {};
    m_head = 0;
}

/// The middle of a symbol that waits.
CarrierRecovery::Complex CarrierRecovery::symbolAt(std::size_t index) const
{
    Complex value(m_waiting.samples[(m_head + index) * m_perSymbol]);
    if (m_modulation->alternates && (m_number + static_cast<std::int64_t>(index)) % 2 != 0)
        value *= std::polar(1.0, -0.25 * pi);
    return value;
}

void CarrierRecovery::searchOn(bool isEnding, BasebandBlock& output)
{
    for (;;) {
        if (m_isTracking) {
            while (m_isTracking && m_used < waitingCount())
                track();
            putOutTracked(isEnding && m_isTracking, output);
            if (m_isTracking)
                return;
            letGo(output);
        }
        const std::size_t window = m_modulation->window;
        const std::size_t count = std::min(window, waitingCount());
        if (count < window && !isEnding)
            return;
        if (count >= leastSymbols && acquire(count))
            continue;
        // A burst may start in the second half of the window.
        settle(isEnding && count < window ? count : window / 2, output);
        if (waitingCount() == 0)
            return;
    }
}

/// Puts symbols out that have no carrier.
void CarrierRecovery::settle(std::size_t count, BasebandBlock& output)
{
    for (std::size_t k = 0; k < count; ++k)
        putOut(m_lastPhase + m_offset, m_offset, SymbolState::Unlocked, output);
}

/// The loop follows no more.
void CarrierRecovery::letGo(BasebandBlock& output)
{
    settle(m_used, output);
    m_used = 0;
    m_tracked.clear();
    m_past = 0;
    m_phaseError = 0.0;
}

CarrierRecovery::Complex CarrierRecovery::nearest(Complex symbol) const
{
    if (!m_levels.empty()) { // each axis by itself
        const auto on = [this](double value) {
            const auto above = std::lower_bound(m_levels.begin(), m_levels.end(), value);
            if (above == m_levels.begin())
                return m_levels.front();
            if (above == m_levels.end())
                return m_levels.back();
            return *above - value < value - *(above - 1) ? *above : *(above - 1);
        };
        return {on(symbol.real()), on(symbol.imag())};
    }
    Complex best = m_modulation->points.front();
    for (const Complex& point : m_modulation->points)
        best = std::norm(symbol - point) < std::norm(symbol - best) ? point : best;
    return best;
}

/// Looks for a carrier among the symbols that wait; the loop then starts with the first.
bool CarrierRecovery::acquire(std::size_t count)
{
    std::size_t size = 64;
    while (size < count * padding)
        size *= 2;
    double power = 0.0, squares = 0.0, meanSquare = 0.0, energy = 0.0;
    for (const Complex& point : m_modulation->points)
        meanSquare +=
            std::norm(point) * std::norm(point) / static_cast<double>(m_modulation->points.size());
    for (std::size_t k = 0; k < count; ++k) {
        const double norm = std::norm(symbolAt(k));
        power += norm;
        squares += norm * norm;
    }
    if (!(power > 0.0))
        return false;
    // A burst may begin in the window, where the mean would tell too little.
    const double amplitude = std::sqrt(squares / power / meanSquare);
    std::vector<Complex> line(size);
    for (std::size_t k = 0; k < count; ++k) {
        Complex symbol = symbolAt(k) / amplitude;
        // Of amplitudes only those tell something that the modulation has.
        if (!m_modulation->hasAmplitudes)
            symbol *= std::min(std::abs(symbol), 1.0) / std::max(std::abs(symbol), 1e-9);
        line[k] = 1.0;
        for (unsigned n = 0; n < m_modulation->power; ++n)
            line[k] *= symbol;
        energy += std::norm(line[k]);
    }
    std::vector<Complex> spectrum = line;
    m_transforms.forward(spectrum);
    const auto strength = [&](std::size_t bin) { return std::norm(spectrum[bin % size]); };
    std::size_t best = 0;
    for (std::size_t bin = 1; bin < size; ++bin)
        best = strength(bin) > strength(best) ? bin : best;
    if (!(strength(best) > (std::log(static_cast<double>(count)) + significance) * energy))
        return false;
    // The top of the parabola through the best one and its neighbours.
    const double left = std::sqrt(strength(best + size - 1));
    const double right = std::sqrt(strength(best + 1));
    const double curvature = left - 2.0 * std::sqrt(strength(best)) + right;
    const double part = curvature < 0.0 ? 0.5 * (left - right) / curvature : 0.0;
    double turn = 2.0 * pi * (static_cast<double>(best) + part) / static_cast<double>(size);
    turn = std::remainder(turn, 2.0 * pi); // of a symbol, times the power
    Complex sum = 0.0;
    for (std::size_t k = 0; k < count; ++k)
        sum += line[k] * std::polar(1.0, -turn * static_cast<double>(k));
    m_frequency = turn / m_modulation->power;
    const double phase = (std::arg(sum) - m_modulation->target) / m_modulation->power;
    // Of the turns that cannot be told apart the one that goes on from before.
    const double ambiguity = 2.0 * pi / m_modulation->power;
    const double expected = m_lastPhase + m_frequency;
    m_phase = phase + ambiguity * std::round((expected - phase) / ambiguity);
    m_amplitude = amplitude;
    m_isTracking = true;
    m_quality = startQuality;
    return true;
}

void CarrierRecovery::track()
{
    const Complex symbol = symbolAt(m_used) * std::polar(1.0 / m_amplitude, -m_phase);
    const Complex ideal = nearest(symbol);
    const Complex product = symbol * std::conj(ideal);
    const double weight = std::norm(ideal);
    const double error = std::arg(product);
    // Angles of guesses are even between two points: their mean cosine is 0. Of amplitudes, what is
    // off counts against the spacing of points, the mean square of an even error being a sixth.
    double quality = std::cos(m_modulation->power * error);
    if (m_modulation->hasAmplitudes)
        quality =
            1.0 - 6.0 * std::norm(symbol - ideal) / (m_modulation->spacing * m_modulation->spacing);
    else if (std::norm(symbol) < silence)
        quality = 0.0; // no angle
    m_tracked.push_back({m_phase, error, weight, quality});
    const double smoothing = 0.5 / static_cast<double>(m_reach);
    m_quality += smoothing * (quality - m_quality);
    m_amplitude *= 1.0 + 0.25 * smoothing * std::clamp(product.real() - weight, -1.0, 1.0);
    const double driven = weight * error;
    m_phase += m_frequency + m_phaseStep * driven;
    m_frequency += m_frequencyStep * driven;
    ++m_used;
    m_isTracking = m_quality >= lockQuality;
}

/// Puts symbols out around which enough were tracked.
void CarrierRecovery::putOutTracked(bool isEnding, BasebandBlock& output)
{
    while (m_used > m_reach || (isEnding && m_used > 0)) {
        const std::size_t here = m_past;
        const std::size_t first = here - std::min(here, m_reach);
        const std::size_t last = std::min(here + m_reach, m_tracked.size() - 1);
        double s0 = 0.0, s1 = 0.0, s2 = 0.0, e0 = 0.0, e1 = 0.0, quality = 0.0;
        for (std::size_t k = first; k <= last; ++k) {
            const Tracked& t = m_tracked[k];
            // Phases of the loop differ little: lines go through what the symbols had.
            const double x = static_cast<double>(k) - static_cast<double>(here);
            const double y = t.phase + t.error - m_tracked[here].phase;
            s0 += t.weight;
            s1 += t.weight * x;
            s2 += t.weight * x * x;
            e0 += t.weight * y;
            e1 += t.weight * x * y;
            quality += t.quality;
        }
        const double determinant = s0 * s2 - s1 * s1;
        const bool isLine = determinant > 1e-9 * s0 * s0;
        const double slope = isLine ? (s0 * e1 - s1 * e0) / determinant : 0.0;
        const double level = isLine ? (s2 * e0 - s1 * e1) / determinant : e0 / s0;
        quality /= static_cast<double>(last - first + 1);
        const double error = m_tracked[here].error - level;
        m_phaseError += 0.5 / static_cast<double>(m_reach) * (error * error - m_phaseError);
        m_emittedAmplitude = m_amplitude;
        putOut(m_tracked[here].phase + level, slope,
               quality >= lockQuality ? SymbolState::Good : SymbolState::Unlocked, output);
        --m_used;
        if (m_past < m_reach)
            ++m_past;
        else
            m_tracked.pop_front();
    }
}

/// Puts the next symbol out, and the samples up to the one after it.
void CarrierRecovery::putOut(double phase, double slope, SymbolState state, BasebandBlock& output)
{
    const std::size_t begin = m_head * m_perSymbol;
    const std::size_t end = std::min(begin + m_perSymbol, m_waiting.samples.size());
    const bool isTurned = m_modulation->alternates && m_number % 2 != 0;
    std::complex<float> turn(std::polar(1.0, -phase - (isTurned ? 0.25 * pi : 0.0)));
    const std::complex<float> step(std::polar(1.0, -slope / static_cast<double>(m_perSymbol)));
    Symbol symbol = m_waiting.symbols[m_head];
    symbol.value = m_waiting.samples[begin] * turn;
    for (std::size_t k = begin; k < end; ++k) {
        output.samples.push_back(m_waiting.samples[k] * turn);
        turn *= step;
    }
    symbol.phase = phase;
    if (symbol.state == SymbolState::Good)
        symbol.state = state;
    output.symbols.push_back(symbol);
    m_lastPhase = phase;
    m_offset = slope;
    ++m_head;
    ++m_number;
}

StageReport CarrierRecovery::report() const
{
    StageReport report{StageReport::Stage::Carrier, isOn(), {}, {}};
    if (!isOn())
        return report;
    report.isLocked = m_emittedAmplitude > 0.0 && m_isTracking;
    if (*report.isLocked)
        report.readings = {
            {StageReport::Quantity::CarrierOffset, m_offset * m_symbolRate / (2.0 * pi)},
            {StageReport::Quantity::PhaseError, std::sqrt(m_phaseError) * 180.0 / pi}};
    return report;
}
