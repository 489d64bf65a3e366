// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/receiver/TimingRefinement.h"

#include "workbench/receiver/ComplexProduct.h"
#include "workbench/receiver/Vectors.h"
#include "workbench/sources/Constants.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr std::size_t groupLength = 16; // symbols
constexpr std::size_t reach = 4;        // groups around one, on either side
constexpr double mostEarly = 0.25;      // symbols: larger errors do not come from the clock
constexpr std::size_t leastMembers = 8; // of a group that measures the clock by itself
constexpr std::size_t pulseReach = 8;   // symbols on either side whose pulses count

/// Slope of a raised cosine pulse a whole number of symbols from its middle, per symbol period.
double slopeOfPulse(double symbols, double rollOff)
{
    const double alternating = std::cos(pi * symbols) / symbols;
    const double part = 1.0 - 4.0 * rollOff * rollOff * symbols * symbols;
    return alternating *
           (std::abs(part) < 1e-6 ? 0.25 * pi : std::cos(pi * rollOff * symbols) / part);
}

} // namespace

BasebandFormat TimingRefinement::configure(const ReceiverSettings& settings,
                                           const BasebandFormat& format)
{
    m_decisions.clear();
    m_isOn = settings.modulation && format.hasSymbolClock && !format.isDemodulated &&
             format.samplesPerSymbol > 1.0;
    if (m_isOn) {
        const Modulation& modulation = modulations::of(*settings.modulation);
        m_isOffset = modulation.isOffset;
        m_decisions.emplace_back(modulation.points);
        m_slopes.clear();
        if (settings.rollOff && !m_isOffset &&
            settings.usedFilter() == ReceiverSettings::Filter::RootRaisedCosine) {
            for (std::size_t k = 1; k <= pulseReach; ++k)
                m_slopes.push_back(slopeOfPulse(static_cast<double>(k), *settings.rollOff));
            m_curvature = pi * pi / 3.0 + (pi * pi - 8.0) * *settings.rollOff * *settings.rollOff;
        }
        m_perSymbol = static_cast<std::size_t>(format.samplesPerSymbol);
        m_symbolRate = format.sampleRate / format.samplesPerSymbol;
    }
    reset();
    return format;
}

double TimingRefinement::fittedPart() const
{
    return m_isOn && m_slopes.empty() ? 0.5 / static_cast<double>((2 * reach + 1) * groupLength)
                                      : 0.0;
}

void TimingRefinement::reset()
{
    m_waiting = {};
    m_points.clear();
    m_sent.clear();
    m_decided.clear();
    m_head = 0;
    m_grouped = 0;
    m_number = 0;
    m_groups.clear();
}

/// The first and the last sample go on.
TimingRefinement::Complex TimingRefinement::sampleAt(std::ptrdiff_t index) const
{
    const auto last = static_cast<std::ptrdiff_t>(m_waiting.samples.size()) - 1;
    return Complex(
        m_waiting.samples[static_cast<std::size_t>(std::clamp<std::ptrdiff_t>(index, 0, last))]);
}

/// By five samples, and by three.
ORVANE_WITHIN TimingRefinement::Slopes TimingRefinement::slopesAt(std::size_t symbol,
                                                                  std::ptrdiff_t offset) const
{
    const std::ptrdiff_t first = static_cast<std::ptrdiff_t>(symbol * m_perSymbol) + offset - 2;
    const auto slopesOf = [step = static_cast<double>(m_perSymbol)](const auto* samples) {
        const Complex before(samples[1]), middle(samples[2]), after(samples[3]);
        const Complex farther = Complex(samples[4]) - Complex(samples[0]);
        return Slopes{step / 12.0 * (8.0 * (after - before) - farther),
                      step * step * (after - 2.0 * middle + before)};
    };
    if (first >= 0 && first + 5 <= static_cast<std::ptrdiff_t>(m_waiting.samples.size()))
        return slopesOf(m_waiting.samples.data() + first);
    Complex samples[5];
    std::generate_n(samples, 5, [this, k = first]() mutable { return sampleAt(k++); });
    return slopesOf(samples);
}

void TimingRefinement::process(BasebandBlock& block)
{
    if (!m_isOn)
        return;
    block.clock.clear(); // these groups measure it better
    m_waiting.append(block);
    decide();
    block.demodulated.clear();
    block.symbols.clear();
    // A slope needs samples of the following symbol, and its expected value needs the neighbouring
    // symbols.
    const std::size_t after = m_slopes.empty() ? 0 : pulseReach;
    while (m_grouped + groupLength + after < m_waiting.symbols.size()) {
        addGroup(m_grouped, groupLength);
        m_grouped += groupLength;
    }
    m_waiting.clock.swap(block.clock);
    const std::size_t kept = (reach + 1) * groupLength;
    if (m_grouped > m_head + kept)
        passOn(m_grouped - kept - m_head, block);
    else
        block.samples.clear();
}

void TimingRefinement::finish(BasebandBlock& block)
{
    if (!m_isOn)
        return;
    BasebandBlock output;
    while (m_grouped < m_waiting.symbols.size()) {
        const std::size_t count = std::min(groupLength, m_waiting.symbols.size() - m_grouped);
        addGroup(m_grouped, count);
        m_grouped += count;
    }
    m_waiting.clock.swap(output.clock);
    passOn(m_waiting.symbols.size() - m_head, output);
    block.append(output);
    reset();
}

/// Slope that the pulses of neighbouring symbols add at the instant of a symbol, per symbol period;
/// none when they or the pulse are not known.
ORVANE_WITHIN std::optional<TimingRefinement::Complex>
TimingRefinement::expectedSlopeAt(std::size_t symbol) const
{
    if (m_slopes.empty() || symbol < pulseReach || symbol + pulseReach >= m_sent.size() ||
        m_decided[symbol + pulseReach] <= 2 * pulseReach)
        return std::nullopt;
    const Complex* const sent = &m_sent[symbol];
    const double* const slopes = m_slopes.data();
    Complex sum = 0.0;
    for (std::ptrdiff_t n = 1; n <= static_cast<std::ptrdiff_t>(pulseReach); ++n)
        sum += slopes[n - 1] * (sent[-n] - sent[n]);
    return product(sum, m_waiting.symbols[symbol].turn);
}

void TimingRefinement::addGroup(std::size_t first, std::size_t count)
{
    Group group{static_cast<double>(m_number) + static_cast<double>(first) +
                    0.5 * static_cast<double>(count - 1),
                0.0, 0.0, 0.0};
    std::size_t members = 0;
    double time = 0.0, number = 0.0;
    const std::ptrdiff_t half = static_cast<std::ptrdiff_t>(m_perSymbol / 2);
    for (std::size_t k = first; k < first + count; ++k) {
        const Symbol& symbol = m_waiting.symbols[k];
        if (symbol.state != SymbolState::Good || !(symbol.level > 0.0))
            continue;
        const double scale = 1.0 / symbol.level;
        const Complex value = scale * Complex(symbol.value);
        const Complex point = m_points[k];
        Complex slope = scale * product(slopesAt(k, 0).first, symbol.turn);
        if (const std::optional<Complex> expected = expectedSlopeAt(k)) {
            group.early += product(slope - *expected, std::conj(point)).real();
            group.weight += m_curvature * std::norm(point);
        } else {
            if (m_isOffset)
                slope = {slope.real(), scale * slopesAt(k, half).first.imag()};
            group.early += product(point - value, std::conj(slope)).real();
            group.weight += std::norm(slope);
        }
        time += symbol.time;
        number += static_cast<double>(m_number) + static_cast<double>(k);
        ++members;
    }
    m_groups.push_back(group);
    if (members < leastMembers || !(group.weight > 0.0))
        return;
    const double early = std::clamp(group.early / group.weight, -mostEarly, mostEarly);
    m_waiting.clock.push_back({time / static_cast<double>(members) + early / m_symbolRate,
                               number / static_cast<double>(members)});
}

/// Decides the new symbols, and how they were sent, without turns.
void TimingRefinement::decide()
{
    const std::size_t first = m_sent.size();
    const std::size_t end = std::max(first, m_waiting.symbols.size());
    m_points.resize(end);
    m_sent.resize(end);
    m_decided.resize(end);
    const Decisions& decisions = m_decisions.front();
    std::size_t decided = first > 0 ? m_decided[first - 1] : 0;
    for (std::size_t k = first; k < end; ++k) {
        const Symbol& symbol = m_waiting.symbols[k];
        const bool isGood = symbol.state == SymbolState::Good && symbol.level > 0.0;
        decided = isGood ? decided + 1 : 0;
        const Complex point =
            isGood ? decisions.nearest((1.0 / symbol.level) * Complex(symbol.value)) : 0.0;
        m_decided[k] = decided;
        m_points[k] = point;
        m_sent[k] = isGood && symbol.turn != 1.0 ? point / symbol.turn : point;
    }
}

/// Value, at a group, of a straight line through the groups around it.
double TimingRefinement::lineAt(std::size_t group) const
{
    double s0 = 0.0, s1 = 0.0, s2 = 0.0, e0 = 0.0, e1 = 0.0;
    const std::size_t last = std::min(group + reach, m_groups.size() - 1);
    for (std::size_t k = group - std::min(group, reach); k <= last; ++k) {
        const Group& other = m_groups[k];
        const double x = (other.place - m_groups[group].place) / groupLength;
        s0 += other.weight;
        s1 += other.weight * x;
        s2 += other.weight * x * x;
        e0 += other.early;
        e1 += other.early * x;
    }
    const double determinant = s0 * s2 - s1 * s1;
    if (!(s0 > 0.0))
        return 0.0;
    const double level = determinant > 1e-6 * s0 * s0 ? (s2 * e0 - s1 * e1) / determinant : e0 / s0;
    return std::clamp(level, -mostEarly, mostEarly);
}

void TimingRefinement::fitLines()
{
    for (std::size_t k = 0; k < m_groups.size(); ++k)
        m_groups[k].line = lineAt(k);
}

/// @param after  the group after the last place that was asked for; that of this one when done.
double TimingRefinement::earlyAt(double place, std::size_t& after) const
{
    if (m_groups.size() < 2)
        return m_groups.empty() ? 0.0 : m_groups.front().line;
    after = std::max<std::size_t>(after, 1);
    while (after + 1 < m_groups.size() && m_groups[after].place < place)
        ++after;
    const Group& from = m_groups[after - 1];
    const Group& to = m_groups[after];
    return from.line + (to.line - from.line) * (place - from.place) / (to.place - from.place);
}

/// Turn of the carrier from a symbol to the next one.
double TimingRefinement::turnAt(std::size_t symbol) const
{
    const auto& symbols = m_waiting.symbols;
    if (symbol + 1 < symbols.size())
        return symbols[symbol + 1].phase - symbols[symbol].phase;
    return symbol > 0 ? symbols[symbol].phase - symbols[symbol - 1].phase : 0.0;
}

void TimingRefinement::passOn(std::size_t count, BasebandBlock& output)
{
    const std::ptrdiff_t half = static_cast<std::ptrdiff_t>(m_perSymbol / 2);
    const auto moved = [this](std::size_t k, std::ptrdiff_t offset, double early) {
        const Slopes slopes = slopesAt(k, offset);
        return early * slopes.first + 0.5 * early * early * slopes.second;
    };
    fitLines();
    output.symbols.reserve(output.symbols.size() + count);
    std::size_t after = 0;
    for (std::size_t k = m_head; k < m_head + count; ++k) {
        output.symbols.push_back(m_waiting.symbols[k]);
        Symbol& symbol = output.symbols.back();
        if (symbol.state == SymbolState::Good) {
            const double early =
                earlyAt(static_cast<double>(m_number) + static_cast<double>(k), after);
            Complex step = product(moved(k, 0, early), symbol.turn);
            if (m_isOffset)
                step = {step.real(), moved(k, half, early).imag()};
            symbol.value += std::complex<float>(step);
            symbol.position += early * static_cast<double>(m_perSymbol);
            symbol.time += early / m_symbolRate;
            symbol.phase += early * turnAt(k); // phase of the carrier at the new instant
        }
    }
    const std::size_t begin = std::min(m_head * m_perSymbol, m_waiting.samples.size());
    m_head += count;
    const bool isAll = m_head == m_waiting.symbols.size();
    const std::size_t end =
        isAll ? m_waiting.samples.size() : std::min(m_head * m_perSymbol, m_waiting.samples.size());
    output.samples.resize(end - begin);
    std::copy_n(m_waiting.samples.data() + begin, end - begin, output.samples.data());
    // The symbol before the next one stays, because its samples are needed.
    const std::size_t forgotten = m_head - std::min<std::size_t>(m_head, 1);
    m_waiting.symbols.erase(m_waiting.symbols.begin(),
                            m_waiting.symbols.begin() + static_cast<std::ptrdiff_t>(forgotten));
    m_waiting.samples.erase(m_waiting.samples.begin(),
                            m_waiting.samples.begin() +
                                static_cast<std::ptrdiff_t>(
                                    std::min(forgotten * m_perSymbol, m_waiting.samples.size())));
    m_points.erase(m_points.begin(), m_points.begin() + static_cast<std::ptrdiff_t>(forgotten));
    m_sent.erase(m_sent.begin(), m_sent.begin() + static_cast<std::ptrdiff_t>(forgotten));
    m_decided.erase(m_decided.begin(), m_decided.begin() + static_cast<std::ptrdiff_t>(forgotten));
    m_head -= forgotten;
    m_grouped -= forgotten;
    m_number += static_cast<std::int64_t>(forgotten);
    const std::size_t spare = m_groups.size() - std::min<std::size_t>(m_groups.size(), 3 * reach);
    if (spare > 0)
        m_groups.erase(m_groups.begin(), m_groups.begin() + static_cast<std::ptrdiff_t>(spare));
}
