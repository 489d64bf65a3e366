// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/receiver/Interpolation.h"

#include "workbench/receiver/Vectors.h"
#include "workbench/sources/Constants.h"

#include <algorithm>
#include <cstdint>

namespace {

constexpr double finest = 512.0; // phases from sample to sample, of the whole band
constexpr double leastBand = 1e-4;
constexpr double windowShape = 7.0; // of Kaiser, about 70 dB

/// Modified Bessel function of the first kind and order 0, by its power series.
double besselI0(double x)
{
    double sum = 1.0, term = 1.0;
    for (double k = 1.0; term > 1e-17 * sum; ++k) {
        term *= 0.25 * x * x / (k * k);
        sum += term;
    }
    return sum;
}

/// The weights of each phase one after the other, and what they grow by to the next one's.
struct Table
{
    const float* weights;
    const float* slopes;
    std::size_t count;
    int phaseBits; ///< phases from sample to sample, a power of 2
};

struct Place
{
    std::ptrdiff_t before; ///< sample
    std::size_t row;       ///< first weight
    float part;            ///< of the slopes
};

ORVANE_WITHIN Place placeOf(double position, const Table& table)
{
    const double phases = static_cast<double>(1 << table.phaseBits);
    const auto phase = static_cast<std::ptrdiff_t>(position * phases);
    const auto row = static_cast<std::size_t>(phase) & ((std::size_t{1} << table.phaseBits) - 1);
    return {phase >> table.phaseBits, row * table.count,
            static_cast<float>(position * phases - static_cast<double>(phase))};
}

/// Sum of weights times numbers, whole vectors of them, each part of a vector by itself.
ORVANE_WITHIN void sumUp(const Table& table, const Place& place, const float* numbers, Floats& sum)
{
    Floats slope{};
    sum = Floats{};
    for (std::size_t k = 0; k < table.count; k += floatsWidth) {
        Floats factors, values;
        load(numbers + k, values);
        load(table.weights + place.row + k, factors);
        sum += factors * values;
        load(table.slopes + place.row + k, factors);
        slope += factors * values;
    }
    sum += place.part * slope;
}

using Half = float __attribute__((vector_size(32)));
using Quad = float __attribute__((vector_size(16)));

/// The sums of the numbers at even places and at odd ones.
ORVANE_WITHIN void fold(const Floats& sum, float* pair)
{
    Half halves[2];
    std::memcpy(halves, &sum, sizeof halves);
    const Half half = halves[0] + halves[1];
    Quad quads[2];
    std::memcpy(quads, &half, sizeof quads);
    const Quad quad = quads[0] + quads[1];
    pair[0] = quad[0] + quad[2];
    pair[1] = quad[1] + quad[3];
}

ORVANE_WITHIN void fillOne(const Table& table, const Place& place, const float* samples,
                           float* pair)
{
    const auto reach = static_cast<std::ptrdiff_t>(table.count / 4);
    Floats sum;
    sumUp(table, place, samples + 2 * (place.before - reach + 1), sum);
    fold(sum, pair);
}

constexpr std::size_t together = floatsWidth / 2; // pairs, each a sample after the one before
constexpr std::size_t vectors = 4;                // of as many pairs

/// Places a step apart.
struct Places
{
    double first, step;

    ORVANE_WITHIN double at(std::size_t number) const
    {
        return first + static_cast<double>(number) * step;
    }
};

/// Parts of the slopes at vectors of places that lie in one row, each twice.
/// @param firsts  the first place of each vector.
/// @param phase   that of the first of all.
ORVANE_WIDEST void findParts(const double* firsts, std::size_t count, double step, double phases,
                             double phase, float* parts)
{
    using Singles = float __attribute__((vector_size(doublesWidth * sizeof(float))));
    using Words = std::uint32_t __attribute__((vector_size(sizeof(Singles))));
    using Pairs = std::uint64_t __attribute__((vector_size(sizeof(Floats))));
    const Doubles numbers{0.0, 1.0, 2.0, 3.0, 4.0, 5.0, 6.0, 7.0};
    Doubles before = phase + phases * numbers;
    for (std::size_t n = 0; n < count; ++n) {
        const Doubles part = (firsts[n] + numbers * step) * phases - before;
        const Singles singles = __builtin_convertvector(part, Singles);
        Words words;
        std::memcpy(&words, &singles, sizeof words);
        Pairs pairs = __builtin_convertvector(words, Pairs);
        pairs |= pairs << 32;
        store(pairs, parts + n * floatsWidth);
        before += phases * static_cast<double>(together);
    }
}

/// Whether places, each a sample after the one before or nearly so, surely have one row: the first
/// and the last one are not next to its ends.
ORVANE_WITHIN bool haveOneRow(double first, double last, double samples, double phases)
{
    constexpr double margin = 1e-6; // of a row, beyond any rounding error
    const double phase = std::floor(first * phases);
    const double before = first * phases - phase;
    const double after = last * phases - (phase + samples * phases);
    return std::min(before, after) >= margin && std::max(before, after) <= 1.0 - margin;
}

ORVANE_WITHIN bool haveEachOneRow(double first, double step, const Table& table)
{
    const Place before = placeOf(first, table);
    bool isSame = true;
    for (std::size_t n = 1; n < together; ++n) {
        const Place place = placeOf(first + static_cast<double>(n) * step, table);
        isSame = isSame && place.row == before.row &&
                 place.before == before.before + static_cast<std::ptrdiff_t>(n);
    }
    return isSame;
}

/// Some vectors of pairs, which are a sample apart or nearly so, each into the place of the output
/// that is "every" pairs after the one before.
/// Where the row stays, they are sums of weights times the numbers from each sample on.
/// @param begin  number of the first place.
template<std::size_t count>
ORVANE_WITHIN void fillSome(const Table& table, const float* samples, const Places& places,
                            std::size_t begin, std::size_t every, float* output)
{
    const double step = static_cast<double>(every) * places.step;
    const double phases = static_cast<double>(1 << table.phaseBits);
    double firsts[count];
    for (std::size_t n = 0; n < count; ++n)
        firsts[n] = places.at(begin + n * together * every);
    if (!haveOneRow(firsts[0], firsts[count - 1] + static_cast<double>(together - 1) * step,
                    static_cast<double>(count * together - 1), phases)) {
        if constexpr (count > 1) {
            for (std::size_t n = 0; n < count; ++n)
                fillSome<1>(table, samples, places, begin + n * together * every, every,
                            output + 2 * n * together * every);
            return;
        }
        if (!haveEachOneRow(firsts[0], step, table)) {
            for (std::size_t n = 0; n < together; ++n)
                fillOne(table, placeOf(firsts[0] + static_cast<double>(n) * step, table), samples,
                        output + 2 * n * every);
            return;
        }
    }
    const Place first = placeOf(firsts[0], table);
    float parts[count * floatsWidth];
    findParts(firsts, count, step, phases,
              static_cast<double>(static_cast<std::ptrdiff_t>(firsts[0] * phases)), parts);
    const auto reach = static_cast<std::ptrdiff_t>(table.count / 4);
    const float* const values = samples + 2 * (first.before - reach + 1);
    Floats sums[count] = {}, slopes[count] = {};
    for (std::size_t k = 0; k < table.count; k += 2) {
        const float weight = table.weights[first.row + k];
        const float slope = table.slopes[first.row + k];
        ORVANE_UNROLLED
        for (std::size_t n = 0; n < count; ++n) {
            Floats factors;
            load(values + k + n * floatsWidth, factors);
            sums[n] += weight * factors;
            slopes[n] += slope * factors;
        }
    }
    ORVANE_UNROLLED
    for (std::size_t n = 0; n < count; ++n) {
        Floats part;
        load(parts + n * floatsWidth, part);
        float pairs[floatsWidth];
        store(sums[n] + part * slopes[n], pairs);
        for (std::size_t k = 0; k < together; ++k)
            std::memcpy(output + 2 * (n * together + k) * every, pairs + 2 * k, 2 * sizeof(float));
    }
}

ORVANE_WIDEST void fillPairs(const Table& table, const float* samples, double first, double step,
                             std::size_t count, float* output)
{
    constexpr double most = 4.0;    // places from sample to sample
    constexpr double nearly = 0.01; // samples
    const double perSample = std::max(std::round(1.0 / step), 1.0);
    const auto every = perSample <= most && std::abs(perSample * step - 1.0) < nearly
                           ? static_cast<std::size_t>(perSample)
                           : std::size_t{0};
    const Places places{first, step};
    std::size_t n = 0;
    for (; every > 0 && n + vectors * together * every <= count; n += vectors * together * every) {
        for (std::size_t k = n; k < n + every; ++k)
            fillSome<vectors>(table, samples, places, k, every, output + 2 * k);
    }
    for (; every > 0 && n + together * every <= count; n += together * every) {
        for (std::size_t k = n; k < n + every; ++k)
            fillSome<1>(table, samples, places, k, every, output + 2 * k);
    }
    for (; n < count; ++n)
        fillOne(table, placeOf(places.at(n), table), samples, output + 2 * n);
}

ORVANE_WIDEST void fillNumbers(const Table& table, const float* samples, double first, double step,
                               std::size_t count, float* output)
{
    const auto reach = static_cast<std::ptrdiff_t>(table.count / 2);
    for (std::size_t n = 0; n < count; ++n) {
        const Place place = placeOf(first + static_cast<double>(n) * step, table);
        Floats sum;
        sumUp(table, place, samples + place.before - reach + 1, sum);
        float pair[2];
        fold(sum, pair);
        output[n] = pair[0] + pair[1];
    }
}

} // namespace

Interpolation::Interpolation(double band)
    : m_length(static_cast<std::size_t>(reach) *
               static_cast<std::size_t>(std::ceil(1.0 / std::clamp(band, leastBand, 1.0))))
{
    while (std::ldexp(1.0, m_phaseBits) < finest * band)
        ++m_phaseBits;
    const double used = std::clamp(band, leastBand, 1.0);
    const auto phases = std::size_t{1} << static_cast<unsigned>(m_phaseBits);
    std::vector<double> row(2 * m_length);
    for (std::size_t phase = 0; phase <= phases; ++phase) {
        const double part = static_cast<double>(phase) / static_cast<double>(phases);
        double sum = 0.0;
        for (std::size_t k = 0; k < row.size(); ++k) {
            const double t =
                used * (static_cast<double>(k) - static_cast<double>(m_length) + 1.0 - part);
            const double edge = t / static_cast<double>(reach);
            const double sine = std::abs(t) < 1e-9 ? 1.0 : std::sin(pi * t) / (pi * t);
            row[k] = std::abs(edge) > 1.0
                         ? 0.0
                         : sine * besselI0(windowShape * std::sqrt(1.0 - edge * edge));
            sum += row[k];
        }
        for (const double weight : row)
            m_weights.push_back(static_cast<float>(weight / sum));
    }
    m_slopes.resize(m_weights.size()); // of the last phase none: it is the first of the next sample
    for (std::size_t k = 0; k + row.size() < m_weights.size(); ++k)
        m_slopes[k] = m_weights[k + row.size()] - m_weights[k];
    for (std::size_t k = 0; k < m_weights.size(); ++k) {
        m_twiceWeights.insert(m_twiceWeights.end(), 2, m_weights[k]);
        m_twiceSlopes.insert(m_twiceSlopes.end(), 2, m_slopes[k]);
    }
}

const Interpolation& Interpolation::ofWholeBand()
{
    static const Interpolation whole(1.0);
    return whole;
}

void Interpolation::fill(const std::complex<float>* samples, double first, double step,
                         std::size_t count, std::complex<float>* output) const
{
    fillPairs({m_twiceWeights.data(), m_twiceSlopes.data(), 4 * m_length, m_phaseBits},
              reinterpret_cast<const float*>(samples), first, step, count,
              reinterpret_cast<float*>(output));
}

void Interpolation::fill(const float* samples, double first, double step, std::size_t count,
                         float* output) const
{
    fillNumbers({m_weights.data(), m_slopes.data(), 2 * m_length, m_phaseBits}, samples, first,
                step, count, output);
}
