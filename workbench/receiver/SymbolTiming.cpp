// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/receiver/SymbolTiming.h"

#include "workbench/receiver/ComplexProduct.h"
#include "workbench/receiver/SingleNumbers.h"
#include "workbench/sources/Constants.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <utility>

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr int blockLength = 16;            // symbols
constexpr std::int64_t aheadCount = 16;    // blocks
constexpr std::ptrdiff_t mostPassed = 256; // blocks that are held, but not needed any more
constexpr int behindCount = 32; // blocks for the frequency; for the phase as many as aheadCount
// Step of the search for the frequency, rad a block: a third of what the blocks can resolve.
constexpr double searchStep = 2.0 * pi / (3.0 * (aheadCount + behindCount + 1));
constexpr double mostPower = 2.0;    // of a block, relative to blocks that agree
constexpr double leastPower = 1e-30; // full scale is 1: less is a rounding error
// Threshold of the sum of the lines of blocks, relative to the largest sum possible, that noise
// does not reach: noise grows as the root of their number. Where positive and negative frequencies
// differ, their noise is less correlated.
constexpr double lockStrength = 0.36;
constexpr double lockBlocks = 22.0; // of them
// Threshold for real signals: the square of the sum relative to the sum of squares. Lines of random
// phase, as those of noise have with any spectrum, level and distribution, exceed it with the
// probability exp(-x); some ten frequencies are tried in three stretches.
constexpr double lockEvidence = 12.0;
constexpr double goOnEvidence = 8.0;
constexpr double mostEvidence = 0.75; // needed for each line of a short burst
constexpr std::size_t fewLines = 8;
constexpr double mostStrength = 0.6; // needed with so few blocks
// Of the strongest block near it: a weaker block lies beside a burst.
constexpr double faintBlock = 0.02;
constexpr double goOnPart = 0.6;      // of the strength is enough once there is a clock
constexpr std::int64_t fewBlocks = 4; // or fewer give no frequency

constexpr float largest = 1e6F; // full scale is 1: what is far beyond is no signal

float usable(double sample)
{
    return std::isfinite(sample)
               ? static_cast<float>(std::clamp(sample, double{-largest}, double{largest}))
               : 0.0F;
}

bool isUsual(const std::complex<float>& sample)
{
    return std::abs(sample.real()) <= largest && std::abs(sample.imag()) <= largest;
}

/// An angle less whole turns: within half a turn either way.
double wrapped(double angle)
{
    return std::abs(angle) < pi ? angle : std::remainder(angle, 2.0 * pi);
}

/// Weights of the blocks about one, from the first one on, for its phase.
const std::array<double, 2 * aheadCount + 1>& phaseWeights()
{
    static const auto weights = [] {
        std::array<double, 2 * aheadCount + 1> result{};
        for (std::size_t k = 0; k < result.size(); ++k)
            result[k] =
                0.5 + 0.5 * std::cos(pi * (static_cast<double>(k) - aheadCount) / (aheadCount + 1));
        return result;
    }();
    return weights;
}

} // namespace

SymbolTiming::SymbolTiming(double samplesPerSymbol, bool isOffset)
    : m_samplesPerSymbol(samplesPerSymbol)
    , m_turnsPerSymbol(isOffset ? 2.0 : 1.0)
    , m_bands(samplesPerSymbol)
    , m_search(searchStep, 2.0 * pi * m_turnsPerSymbol * tolerance * blockLength)
    , m_blockEnd(blockLength * samplesPerSymbol)
    , m_slope(1.0 / samplesPerSymbol)
{}

void SymbolTiming::push(double sample) { add({usable(sample), 0.0F}); }

void SymbolTiming::push(const std::complex<float>* samples, std::size_t count, std::size_t step)
{
    m_isReal = false;
    if (step == 1 && areWithin(reinterpret_cast<const float*>(samples), 2 * count, largest)) {
        m_bands.push(samples, count);
        count = 0;
    }
    for (std::size_t k = 0; k < count; ++k) {
        const std::complex<float> sample = samples[k * step];
        m_bands.push(isUsual(sample) ? sample
                                     : std::complex<float>(usable(double{sample.real()}),
                                                           usable(double{sample.imag()})));
    }
    if (m_bands.isDue())
        takeBands();
}

void SymbolTiming::add(std::complex<float> sample)
{
    m_bands.push(sample);
    if (m_bands.isDue())
        takeBands();
}

void SymbolTiming::takeBands()
{
    const std::vector<EdgeBands::Output>& bands = m_bands.take();
    for (std::size_t first = 0; first < bands.size();) {
        while (static_cast<double>(bands[first].position) >= m_blockEnd)
            closeBlock();
        std::size_t end = first + 1;
        while (end < bands.size() && static_cast<double>(bands[end].position) < m_blockEnd)
            ++end;
        take(&bands[first], end - first);
        first = end;
    }
}

/// Adds the bands at some positions to the open block.
void SymbolTiming::take(const EdgeBands::Output* bands, std::size_t count)
{
    Complex sum = m_sum; // numbers of its own stay in the processor
    double power = m_power;
    for (std::size_t k = 0; k < count; ++k) {
        sum += product(bands[k].upper, std::conj(bands[k].lower));
        power += 0.5 * (std::norm(bands[k].upper) + std::norm(bands[k].lower));
    }
    m_sum = sum;
    m_power = power;
    if (m_turnsPerSymbol == 1.0)
        return;
    for (std::size_t k = 0; k < count; ++k) {
        m_upperSquares += product(bands[k].upper, bands[k].upper);
        m_lowerSquares += product(bands[k].lower, bands[k].lower);
    }
}

void SymbolTiming::closeBlock()
{
    if (m_turnsPerSymbol > 1.0) {
        const Complex product = m_upperSquares * std::conj(m_lowerSquares);
        m_sum = product / std::sqrt(std::max(std::abs(product), leastPower * leastPower));
    }
    addLine(m_power > leastPower ? m_sum / m_power : 0.0);
    m_sum = m_upperSquares = m_lowerSquares = 0.0;
    m_power = 0.0;
    ++m_blockCount;
    m_blockEnd = centerOf(m_blockCount) + 0.5 * blockLength * m_samplesPerSymbol;
    if (m_blockCount > aheadCount)
        settle(m_settledCount);
}

void SymbolTiming::addLine(Complex line)
{
    m_lines.push_back(line);
    m_powers.push_back(m_power);
    m_agreements.push_back(0.0);
    if (m_lines.size() - m_passed > aheadCount + behindCount + 1) {
        ++m_passed;
        m_agreements[m_passed] = agreementOf(m_passed);
    }
    if (m_passed == static_cast<std::size_t>(mostPassed)) {
        const auto drop = [](auto& values) {
            values.erase(values.begin(), values.begin() + mostPassed);
        };
        drop(m_lines);
        drop(m_powers);
        drop(m_agreements);
        m_passed = 0;
    }
    const std::size_t newest = m_lines.size() - 1;
    m_agreements[newest] = agreementOf(newest);
    if (newest > m_passed)
        m_agreements[newest - 1] = agreementOf(newest - 1);
}

void SymbolTiming::settle(std::int64_t block)
{
    const std::int64_t last = std::min(block + aheadCount, m_blockCount - 1);
    const std::int64_t first = std::max<std::int64_t>(block - behindCount, 0);
    const auto begin = static_cast<std::size_t>(first - oldest());
    const auto end = static_cast<std::size_t>(last - oldest()) + 1;
    const double most = m_isReal ? mostPower * agreeingPower(begin, end) : infinity;
    m_weightedI.resize(end - begin);
    m_weightedQ.resize(end - begin);
    const Complex* const lines = &m_lines[begin];
    const double* const powers = &m_powers[begin];
    const double* const agreements = &m_agreements[begin];
    double* const weightedI = m_weightedI.data();
    double* const weightedQ = m_weightedQ.data();
    for (std::size_t i = 0; i < end - begin; ++i) {
        const double weight = std::min(powers[i], most) * agreements[i];
        weightedI[i] = weight * lines[i].real();
        weightedQ[i] = weight * lines[i].imag();
    }
    const double turn = last - first < fewBlocks ? 0.0 : m_search.of(m_weightedI, m_weightedQ);
    fillTurns(turn);
    Complex sum = 0.0;
    const auto& weights = phaseWeights();
    for (std::int64_t i = std::max(block - aheadCount, first); i <= last; ++i) {
        const auto place = static_cast<std::size_t>(i - block + aheadCount);
        const auto index = static_cast<std::size_t>(i - first);
        sum += weights[place] *
               product(m_turns[place], Complex(m_weightedI[index], m_weightedQ[index]));
    }
    m_phase += wrapped(std::arg(sum) - m_phase);
    m_slope = (1.0 + turn / (2.0 * pi * m_turnsPerSymbol * blockLength)) / m_samplesPerSymbol;
    const double position = centerOf(block);
    const double symbol = position / m_samplesPerSymbol + m_phase / (2.0 * pi * m_turnsPerSymbol);
    const Complex line = m_lines[static_cast<std::size_t>(block - oldest())];
    const double off = wrapped(std::arg(line) - m_phase) / (2.0 * pi * m_turnsPerSymbol);
    SymbolKnot knot{position, symbol, symbol + off, isLockedAt(block)};
    if (block == 0)
        m_knots.push_back({0.0, symbol - position * m_slope, std::nullopt, knot.isLocked});
    m_knots.push_back(knot);
    m_settledCount = block + 1;
}

/// Turns of the blocks about one, by as much from each to the next.
void SymbolTiming::fillTurns(double turn)
{
    constexpr std::size_t together = 4; // which do not wait for one another
    m_turns.resize(phaseWeights().size());
    const std::complex<double> step = std::polar(1.0, -turn);
    const std::complex<double> twice = product(step, step);
    const std::complex<double> steps = product(twice, twice);
    m_turns[0] = std::polar(1.0, turn * static_cast<double>(aheadCount));
    m_turns[1] = product(m_turns[0], step);
    m_turns[2] = product(m_turns[0], twice);
    m_turns[3] = product(m_turns[1], twice);
    for (std::size_t k = together; k < m_turns.size(); ++k)
        m_turns[k] = product(m_turns[k - together], steps);
}

/// Whether the lines around a block agree more than those of noise, and the block agrees with them.
bool SymbolTiming::isLockedAt(std::int64_t block)
{
    const auto passed = static_cast<std::int64_t>(m_passed);
    const std::int64_t first = std::max(block - aheadCount, oldest() + passed);
    const std::int64_t last = std::min(block + aheadCount, m_blockCount - 1);
    const auto count = static_cast<std::size_t>(last - first) + 1;
    const Complex start = std::polar(1.0, -m_phase);
    auto& lines = m_nearLines; // turned back by the expected phase
    auto& powers = m_nearPowers;
    lines.resize(count);
    powers.resize(count);
    const Complex* const turns = &m_turns[static_cast<std::size_t>(first - block + aheadCount)];
    const Complex* const from = &m_lines[static_cast<std::size_t>(first - oldest())];
    for (std::size_t k = 0; k < count; ++k)
        lines[k] = product(product(start, turns[k]), from[k]);
    // In a real signal, noise may be stronger than bursts.
    if (m_isReal)
        powers.assign(count, 1.0);
    else
        std::copy_n(&m_powers[static_cast<std::size_t>(first - oldest())], count, powers.data());
    const auto here = static_cast<std::size_t>(block - first);
    m_isLocked = areLocked(lines, powers, here);
    if (m_isReal)
        return m_isLocked && isOfBurst(lines, here);
    // Data may leave a block without power in the band, but not also its neighbours.
    const double near = *std::max_element(
        powers.begin() + static_cast<std::ptrdiff_t>(here - std::min<std::size_t>(here, 1)),
        powers.begin() + static_cast<std::ptrdiff_t>(std::min(here + 2, powers.size())));
    return m_isLocked && near >= faintBlock * *std::max_element(powers.begin(), powers.end());
}

/// Whether there is a clock around a block. It takes less evidence to continue a clock.
bool SymbolTiming::areLocked(const std::vector<Complex>& lines, const std::vector<double>& powers,
                             std::size_t here) const
{
    const double strongest = *std::max_element(powers.begin(), powers.end());
    // A burst may be shorter than the stretch that is examined.
    for (const auto blocks : {aheadCount, aheadCount / 2, aheadCount / 4}) {
        const auto reach = static_cast<std::size_t>(blocks);
        Complex sum = 0.0;
        double all = 0.0, squares = 0.0;
        double count = 0.0; // number of blocks that are not weaker than those of a burst
        for (std::size_t i = here - std::min(here, reach);
             i <= std::min(here + reach, lines.size() - 1); ++i) {
            sum += powers[i] * lines[i];
            all += powers[i];
            if (m_isReal)
                squares += std::norm(lines[i]);
            count += powers[i] >= faintBlock * strongest ? 1.0 : 0.0;
        }
        if (m_isReal) {
            const double most =
                lines.size() > fewLines ? mostEvidence : mostStrength * mostStrength;
            if (std::norm(sum) >
                std::min(m_isLocked ? goOnEvidence : lockEvidence, most * count) * squares)
                return true;
            continue;
        }
        const double need = lockStrength * std::sqrt(lockBlocks / std::max(count, 1.0)) *
                            (m_isLocked ? goOnPart : 1.0);
        const double least = std::min(need, mostStrength) * all;
        if (std::norm(sum) > least * least)
            return true;
    }
    return false;
}

/// Whether a block belongs to the burst around it rather than to noise beside it: the likelier
/// state of a two-state Markov chain (forward-backward algorithm, Rabiner, Proc. IEEE 77(2), 1989).
bool SymbolTiming::isOfBurst(const std::vector<Complex>& lines, std::size_t here)
{
    constexpr std::size_t steady = 8; // blocks whose mean gives the strength in the burst
    constexpr double noise = 0.45;    // standard deviation of the line of a noise block...
    constexpr double spread = 0.35;   // ...and of a burst block around its mean
    constexpr double changes = 0.02;  // probability, from block to block
    double burst = 0.4;
    for (std::size_t i = 0; i + steady <= lines.size(); ++i) {
        double sum = 0.0;
        for (std::size_t k = i; k < i + steady; ++k)
            sum += lines[k].real() / steady;
        burst = std::max(burst, sum);
    }
    const auto evidence = [&](std::size_t i) { // logarithm of the likelihood ratio
        const double line = lines[i].real();
        const double ofBurst = (line - burst) / spread;
        const double ofNoise = line / noise;
        return std::log(noise / spread) + 0.5 * (ofNoise * ofNoise - ofBurst * ofBurst);
    };
    const auto goOn = [](double odds) {
        const double ratio = std::exp(std::clamp(odds, -50.0, 50.0));
        return std::log((ratio * (1.0 - changes) + changes) / (ratio * changes + 1.0 - changes));
    };
    double before = 0.0;
    for (std::size_t i = 0; i < here; ++i)
        before = goOn(before + evidence(i));
    double after = 0.0;
    for (std::size_t i = lines.size() - 1; i > here; --i)
        after = goOn(after + evidence(i));
    return before + evidence(here) + after > 0.0;
}

/// Weight of a block: how well its line agrees with its neighbours, which noise does not, times its
/// power.
double SymbolTiming::agreementOf(std::size_t index) const
{
    const std::size_t last = std::min(index + 1, m_lines.size() - 1);
    Complex sum = 0.0;
    double count = 0.0;
    for (std::size_t i = index - std::min<std::size_t>(index - m_passed, 1); i <= last; ++i) {
        sum += m_lines[i];
        count += 1.0;
    }
    return std::norm(sum / count);
}

/// Median power of blocks that agree. In a real signal, noise may be stronger than bursts.
double SymbolTiming::agreeingPower(std::size_t begin, std::size_t end) const
{
    std::vector<std::pair<double, double>> powers; // and weights
    double half = 0.0;
    for (std::size_t i = begin; i < end; ++i) {
        powers.emplace_back(m_powers[i], m_agreements[i] * m_agreements[i]);
        half += 0.5 * powers.back().second;
    }
    std::sort(powers.begin(), powers.end());
    std::size_t k = 0;
    for (; k + 1 < powers.size() && powers[k].second < half; ++k)
        half -= powers[k].second;
    return powers[k].first;
}

double SymbolTiming::centerOf(std::int64_t block) const
{
    return (static_cast<double>(block) + 0.5) * blockLength * m_samplesPerSymbol;
}

void SymbolTiming::finish()
{
    const std::int64_t count = m_bands.count();
    for (std::int64_t i = 0; i < m_bands.delay(); ++i)
        add(0.0F);
    takeBands();
    closeBlock();
    while (m_settledCount < m_blockCount)
        settle(m_settledCount);
    const SymbolKnot last = m_knots.back();
    const auto end = static_cast<double>(count);
    if (end > last.position)
        m_knots.push_back({end, last.symbol + (end - last.position) * m_slope});
}

std::vector<SymbolKnot> SymbolTiming::takeKnots()
{
    takeBands();
    return std::exchange(m_knots, {});
}
