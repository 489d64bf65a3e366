// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/receiver/Interpolation.h"

#include "workbench/receiver/Vectors.h"
#include "workbench/sources/Constants.h"

#include <algorithm>

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

/// Some pairs, which are a sample apart or nearly so, each into the place of the output that is
/// "every" pairs after the one before.
/// Where the row stays, they are sums of weights times the numbers from each sample on.
ORVANE_WITHIN void fillSome(const Table& table, const float* samples, double first, double step,
                            std::size_t every, float* output)
{
    Place places[together];
    float parts[floatsWidth];
    bool isSame = true;
    for (std::size_t n = 0; n < together; ++n) {
        places[n] = placeOf(first + static_cast<double>(n) * step, table);
        parts[2 * n] = parts[2 * n + 1] = places[n].part;
        isSame = isSame && places[n].row == places[0].row &&
                 places[n].before == places[0].before + static_cast<std::ptrdiff_t>(n);
    }
    if (!isSame) {
        for (std::size_t n = 0; n < together; ++n)
            fillOne(table, places[n], samples, output + 2 * n * every);
        return;
    }
    const auto reach = static_cast<std::ptrdiff_t>(table.count / 4);
    const float* numbers = samples + 2 * (places[0].before - reach + 1);
    Floats sum{}, slope{}, part;
    for (std::size_t k = 0; k < table.count; k += 2) {
        Floats values;
        load(numbers + k, values);
        sum += table.weights[places[0].row + k] * values;
        slope += table.slopes[places[0].row + k] * values;
    }
    load(parts, part);
    float pairs[floatsWidth];
    store(sum + part * slope, pairs);
    for (std::size_t n = 0; n < together; ++n)
        std::memcpy(output + 2 * n * every, pairs + 2 * n, 2 * sizeof(float));
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
    std::size_t n = 0;
    const auto at = [&](std::size_t place) { return first + static_cast<double>(place) * step; };
    for (; every > 0 && n + together * every <= count; n += together * every) {
        for (std::size_t k = n; k < n + every; ++k)
            fillSome(table, samples, at(k), static_cast<double>(every) * step, every,
                     output + 2 * k);
    }
    for (; n < count; ++n)
        fillOne(table, placeOf(at(n), table), samples, output + 2 * n);
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
