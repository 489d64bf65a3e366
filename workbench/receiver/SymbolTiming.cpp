// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/receiver/SymbolTiming.h"

#include "workbench/receiver/WeightedSums.h"
#include "workbench/sources/Constants.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <utility>

#include <liquid/liquid.h>

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double halfBand = 0.07;       // about half the symbol rate, symbol rates
constexpr float stopBand = 50.0F;       // dB
constexpr int blockLength = 16;         // symbols
constexpr std::int64_t aheadCount = 16; // blocks
constexpr int behindCount = 32;         // blocks for the frequency; for the phase as many as ahead
// Of the search for the frequency, rad a block: a third of what the blocks tell apart.
constexpr double searchStep = 2.0 * pi / (3.0 * (aheadCount + behindCount + 1));
constexpr double mostPower = 2.0;        // of a block, against those that agree
constexpr double leastPower = 1e-30;     // full scale is 1: what is below is rounding
constexpr int turnLength = 256;          // samples
constexpr std::size_t width = 4;         // numbers of a mixed sample
constexpr std::size_t mostMixed = 16384; // numbers that wait for the filter
// What a sum of lines of noise does not reach, against what they could sum up to: noise grows as
// the root of their number. Where positive and negative frequencies differ, it has less in common.
constexpr double lockStrength = 0.36;
constexpr double lockBlocks = 22.0; // of them
// Of a real signal: the square of the sum against the sum of squares. Turned by chance, as those of
// noise are whatever its spectrum, level and distribution, lines exceed it with the probability
// exp(-x); some ten frequencies are tried in three stretches.
constexpr double lockEvidence = 12.0;
constexpr double goOnEvidence = 8.0;
constexpr double mostEvidence = 0.75; // needed a line of those of short bursts
constexpr std::size_t fewLines = 8;
constexpr double mostStrength = 0.6;  // needed of so few
constexpr double faintBlock = 0.02;   // of the strongest near it: it lies beside a burst
constexpr double goOnPart = 0.6;      // of the strength, once there is a clock
constexpr std::int64_t fewBlocks = 4; // tell no frequency

using Eight = double __attribute__((vector_size(64)));
constexpr std::size_t eightTurns = 8;

/// Full scale is 1: what is far beyond is no signal.
double usable(double sample) { return std::isfinite(sample) ? std::clamp(sample, -1e6, 1e6) : 0.0; }

} // namespace

SymbolTiming::SymbolTiming(double samplesPerSymbol, bool isOffset)
    : m_samplesPerSymbol(samplesPerSymbol)
    , m_turnsPerSymbol(isOffset ? 2.0 : 1.0)
    , m_delay(static_cast<std::int64_t>(std::ceil(samplesPerSymbol / halfBand)))
    , m_stride(std::max<std::int64_t>(static_cast<std::int64_t>(samplesPerSymbol / 2.0), 1))
    , m_mixed(width * static_cast<std::size_t>(m_delay))
    , m_mixedFirst(-m_delay)
    , m_step(std::polar(1.0, -pi / samplesPerSymbol))
    , m_slope(1.0 / samplesPerSymbol)
{
    m_taps.resize(2 * static_cast<std::size_t>(m_delay) + 1);
    liquid_firdes_kaiser(static_cast<unsigned>(m_taps.size()),
                         static_cast<float>(halfBand / samplesPerSymbol), stopBand, 0.0F,
                         m_taps.data());
    std::reverse(m_taps.begin(), m_taps.end());
    prepareSearch();
}

void SymbolTiming::push(double sample) { mixDown(usable(sample)); }

void SymbolTiming::push(std::complex<double> sample)
{
    m_isReal = false;
    mixDown({usable(sample.real()), usable(sample.imag())});
}

/// Adds a sample to those that wait for the filter.
void SymbolTiming::mixDown(Complex sample)
{
    if (m_position % turnLength == 0) { // from there step by step: errors do not add up
        const double turns = static_cast<double>(m_position) / (2.0 * m_samplesPerSymbol);
        m_down = std::polar(1.0, -2.0 * pi * (turns - std::floor(turns)));
    }
    const double i = sample.real();
    const double q = sample.imag();
    const double c = m_down.real();
    const double d = m_down.imag();
    for (const double value : {i * c - q * d, i * d + q * c, i * c + q * d, q * c - i * d})
        m_mixed.push_back(static_cast<float>(value));
    m_down = {c * m_step.real() - d * m_step.imag(), c * m_step.imag() + d * m_step.real()};
    ++m_position;
    if (m_mixed.size() > mostMixed + 2 * width * m_taps.size())
        passBands();
}

/// Filters the samples that wait.
void SymbolTiming::passBands()
{
    constexpr std::int64_t together = 4;
    const auto filtered = [this](auto numbers) {
        const auto first = static_cast<std::size_t>(m_center - m_delay - m_mixedFirst);
        return weightedSums(numbers, m_taps, &m_mixed[width * first],
                            width * static_cast<std::size_t>(m_stride), width);
    };
    const auto takeAll = [this](const auto& outputs) {
        for (const Quad& output : outputs) {
            const Complex upper(double{output[0]}, double{output[1]});
            take(upper,
                 m_isReal ? std::conj(upper) : Complex(double{output[2]}, double{output[3]}));
            m_center += m_stride;
        }
    };
    while (m_center + m_delay + (together - 1) * m_stride < m_position)
        takeAll(filtered(std::make_index_sequence<together>()));
    while (m_center + m_delay < m_position)
        takeAll(filtered(std::make_index_sequence<1>()));
    const std::int64_t used = m_center - m_delay - m_mixedFirst;
    if (used < static_cast<std::int64_t>(m_taps.size())) // moving the rest would cost more
        return;
    m_mixed.erase(m_mixed.begin(), m_mixed.begin() + static_cast<std::ptrdiff_t>(width) * used);
    m_mixedFirst += used;
}

/// Adds the bands at the next place to the open block.
void SymbolTiming::take(Complex upper, Complex lower)
{
    while (static_cast<double>(m_center) >=
           centerOf(m_blockCount) + 0.5 * blockLength * m_samplesPerSymbol)
        closeBlock();
    m_sum += upper * std::conj(lower);
    m_upperSquares += upper * upper;
    m_lowerSquares += lower * lower;
    m_power += 0.5 * (std::norm(upper) + std::norm(lower));
}

void SymbolTiming::closeBlock()
{
    if (m_turnsPerSymbol > 1.0) {
        const Complex product = m_upperSquares * std::conj(m_lowerSquares);
        m_sum = product / std::sqrt(std::max(std::abs(product), leastPower * leastPower));
    }
    m_lines.push_back(m_power > leastPower ? m_sum / m_power : 0.0);
    m_powers.push_back(m_power);
    if (m_lines.size() > aheadCount + behindCount + 1) {
        m_lines.pop_front();
        m_powers.pop_front();
    }
    m_sum = m_upperSquares = m_lowerSquares = 0.0;
    m_power = 0.0;
    ++m_blockCount;
    if (m_blockCount > aheadCount)
        settle(m_settledCount);
}

void SymbolTiming::settle(std::int64_t block)
{
    const std::int64_t last = std::min(block + aheadCount, m_blockCount - 1);
    const std::int64_t first = std::max<std::int64_t>(block - behindCount, 0);
    const double most = m_isReal ? mostPower * agreeingPower(first, last) : infinity;
    std::vector<Complex> lines;
    for (std::int64_t i = first; i <= last; ++i)
        lines.push_back(std::min(powerOf(i), most) * agreementOf(i) * lineOf(i));
    const double turn = last - first < fewBlocks ? 0.0 : frequency(lines);
    Complex sum = 0.0;
    for (std::int64_t i = std::max(block - aheadCount, first); i <= last; ++i) {
        const auto distance = static_cast<double>(i - block);
        const double weight = 0.5 + 0.5 * std::cos(pi * distance / (aheadCount + 1));
        sum +=
            weight * std::polar(1.0, -turn * distance) * lines[static_cast<std::size_t>(i - first)];
    }
    m_phase += std::remainder(std::arg(sum) - m_phase, 2.0 * pi);
    m_slope = (1.0 + turn / (2.0 * pi * m_turnsPerSymbol * blockLength)) / m_samplesPerSymbol;
    const double position = centerOf(block);
    const double symbol = position / m_samplesPerSymbol + m_phase / (2.0 * pi * m_turnsPerSymbol);
    const Complex line = lineOf(block);
    const double off =
        std::remainder(std::arg(line) - m_phase, 2.0 * pi) / (2.0 * pi * m_turnsPerSymbol);
    SymbolKnot knot{position, symbol, symbol + off, isLockedAt(block, turn)};
    if (block == 0)
        m_knots.push_back({0.0, symbol - position * m_slope, std::nullopt, knot.isLocked});
    m_knots.push_back(knot);
    m_settledCount = block + 1;
}

/// Whether the lines about a block agree more than those of noise do, and the block is on the side
/// of those that do.
bool SymbolTiming::isLockedAt(std::int64_t block, double turn)
{
    const std::int64_t oldest = m_blockCount - static_cast<std::int64_t>(m_lines.size());
    const std::int64_t first = std::max(block - aheadCount, oldest);
    const std::int64_t last = std::min(block + aheadCount, m_blockCount - 1);
    std::vector<Complex> lines; // turned to where they should be
    std::vector<double> powers;
    for (std::int64_t i = first; i <= last; ++i) {
        lines.push_back(std::polar(1.0, -m_phase - turn * static_cast<double>(i - block)) *
                        lineOf(i));
        // Of a real signal, noise may be stronger than bursts.
        powers.push_back(m_isReal ? 1.0 : m_powers[static_cast<std::size_t>(i - oldest)]);
    }
    const auto here = static_cast<std::size_t>(block - first);
    m_isLocked = areLocked(lines, powers, here);
    if (m_isReal)
        return m_isLocked && isOfBurst(lines, here);
    // Data may leave a block without power in the band, but not its neighbours, too.
    const double near = *std::max_element(
        powers.begin() + static_cast<std::ptrdiff_t>(here - std::min<std::size_t>(here, 1)),
        powers.begin() + static_cast<std::ptrdiff_t>(std::min(here + 2, powers.size())));
    return m_isLocked && near >= faintBlock * *std::max_element(powers.begin(), powers.end());
}

/// Whether there is a clock about a block. It takes less to go on with it.
bool SymbolTiming::areLocked(const std::vector<Complex>& lines, const std::vector<double>& powers,
                             std::size_t here) const
{
    const double strongest = *std::max_element(powers.begin(), powers.end());
    // A burst may be short against what else is about it.
    for (const auto blocks : {aheadCount, aheadCount / 2, aheadCount / 4}) {
        const auto reach = static_cast<std::size_t>(blocks);
        Complex sum = 0.0;
        double all = 0.0;
        double squares = 0.0;
        double count = 0.0; // of blocks that are no weaker than those of a burst are
        for (std::size_t i = here - std::min(here, reach);
             i <= std::min(here + reach, lines.size() - 1); ++i) {
            sum += powers[i] * lines[i];
            all += powers[i];
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
        if (std::abs(sum) > std::min(need, mostStrength) * all)
            return true;
    }
    return false;
}

/// Whether a block is of the burst about it rather than of the noise beside: of the two states that
/// follow one another, the likelier (forward and backward, Rabiner, Proc. IEEE 77(2), 1989).
bool SymbolTiming::isOfBurst(const std::vector<Complex>& lines, std::size_t here)
{
    constexpr std::size_t steady = 8; // blocks whose mean tells what those of the burst have
    constexpr double noise = 0.45;    // deviation of the line of a block of noise...
    constexpr double spread = 0.35;   // ...and of one of a burst, about its mean
    constexpr double changes = 0.02;  // probability, from block to block
    double burst = 0.4;
    for (std::size_t i = 0; i + steady <= lines.size(); ++i) {
        double sum = 0.0;
        for (std::size_t k = i; k < i + steady; ++k)
            sum += lines[k].real() / steady;
        burst = std::max(burst, sum);
    }
    const auto evidence = [&](std::size_t i) { // logarithm of the ratio of likelihoods
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

/// Prepares the search for the frequency: the turns that are tried, one more at either end.
void SymbolTiming::prepareSearch()
{
    const int range = static_cast<int>(
        std::ceil(2.0 * pi * m_turnsPerSymbol * tolerance * blockLength / searchStep));
    for (int i = -range - 1; i <= range + 1; ++i) {
        m_cosines.push_back(std::cos(i * searchStep));
        m_sines.push_back(std::sin(i * searchStep));
    }
    m_strengths.resize(m_cosines.size());
    const std::size_t whole = (m_cosines.size() + eightTurns - 1) / eightTurns * eightTurns;
    m_cosines.resize(whole);
    m_sines.resize(whole);
}

/// The turn from block to block, rad, with which the lines sum up best.
double SymbolTiming::frequency(const std::vector<Complex>& lines)
{
    // Horner's scheme, written out: all is finite. Eight turns are tried side by side.
    for (std::size_t k = 0; k < m_cosines.size(); k += eightTurns) {
        Eight c, d, real{}, imaginary{};
        std::memcpy(&c, &m_cosines[k], sizeof c);
        std::memcpy(&d, &m_sines[k], sizeof d);
        for (const Complex& line : lines) {
            const Eight turned = real * c - imaginary * d;
            imaginary = real * d + imaginary * c + line.imag();
            real = turned + line.real();
        }
        for (std::size_t n = 0; n < std::min(eightTurns, m_strengths.size() - k); ++n)
            m_strengths[k + n] = std::hypot(real[n], imaginary[n]);
    }
    const std::size_t middle = m_strengths.size() / 2;
    std::size_t best = middle;
    for (std::size_t k = 1; k + 1 < m_strengths.size(); ++k)
        best = m_strengths[k] > m_strengths[best] ? k : best;
    // The top of the parabola through the best one and its neighbours.
    const double left = m_strengths[best - 1];
    const double right = m_strengths[best + 1];
    const double curvature = left - 2.0 * m_strengths[best] + right;
    const double offset = curvature < 0.0 ? 0.5 * (left - right) / curvature : 0.0;
    const double turns = static_cast<double>(best) - static_cast<double>(middle);
    return (turns + std::clamp(offset, -0.5, 0.5)) * searchStep;
}

/// How well the line of a block agrees with its neighbours, as noise does not: it counts by that,
/// and by its power.
double SymbolTiming::agreementOf(std::int64_t block) const
{
    const std::int64_t oldest = m_blockCount - static_cast<std::int64_t>(m_lines.size());
    Complex sum = 0.0;
    double count = 0.0;
    for (std::int64_t i = std::max(block - 1, oldest); i <= std::min(block + 1, m_blockCount - 1);
         ++i) {
        sum += lineOf(i);
        count += 1.0;
    }
    return std::norm(sum / count);
}

/// Median power of blocks that agree. Of a real signal, noise may be stronger than bursts.
double SymbolTiming::agreeingPower(std::int64_t first, std::int64_t last) const
{
    std::vector<std::pair<double, double>> powers; // and weights
    double half = 0.0;
    for (std::int64_t i = first; i <= last; ++i) {
        const double agreement = agreementOf(i);
        powers.emplace_back(powerOf(i), agreement * agreement);
        half += 0.5 * powers.back().second;
    }
    std::sort(powers.begin(), powers.end());
    std::size_t k = 0;
    for (; k + 1 < powers.size() && powers[k].second < half; ++k)
        half -= powers[k].second;
    return powers[k].first;
}

double SymbolTiming::powerOf(std::int64_t block) const
{
    const std::int64_t oldest = m_blockCount - static_cast<std::int64_t>(m_lines.size());
    return m_powers[static_cast<std::size_t>(block - oldest)];
}

SymbolTiming::Complex SymbolTiming::lineOf(std::int64_t block) const
{
    const std::int64_t oldest = m_blockCount - static_cast<std::int64_t>(m_lines.size());
    return m_lines[static_cast<std::size_t>(block - oldest)];
}

double SymbolTiming::centerOf(std::int64_t block) const
{
    return (static_cast<double>(block) + 0.5) * blockLength * m_samplesPerSymbol;
}

void SymbolTiming::finish()
{
    const std::int64_t count = m_position;
    for (std::int64_t i = 0; i < m_delay; ++i)
        mixDown(0.0);
    passBands();
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
    passBands();
    return std::exchange(m_knots, {});
}
