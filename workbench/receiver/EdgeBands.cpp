// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/receiver/EdgeBands.h"

#include "workbench/receiver/ComplexProduct.h"
#include "workbench/receiver/Vectors.h"
#include "workbench/sources/Constants.h"

#include <algorithm>
#include <cmath>

#include <liquid/liquid.h>

namespace {

constexpr double halfBand = 0.07;   // about half the symbol rate, symbol rates
constexpr float stopBand = 50.0F;   // dB
constexpr std::size_t together = 4; // outputs

/// Four numbers of a sample for each of some outputs that are a hop apart: sums of taps times what
/// is a sample further each. Four taps are taken at once.
template<std::size_t outputs>
ORVANE_WITHIN void sumUp(const std::vector<float>& taps, const float* values, std::size_t hop,
                         float* sums)
{
    Floats partial[outputs] = {};
    for (std::size_t k = 0; k < taps.size(); k += floatsWidth) {
        Floats weights;
        load(&taps[k], weights);
        ORVANE_UNROLLED
        for (std::size_t n = 0; n < outputs; ++n) {
            Floats factors;
            load(values + n * hop + k, factors);
            partial[n] += weights * factors;
        }
    }
    ORVANE_UNROLLED
    for (std::size_t n = 0; n < outputs; ++n) {
        using Quad = float __attribute__((vector_size(16)));
        Quad quads[4];
        std::memcpy(quads, &partial[n], sizeof quads);
        store((quads[0] + quads[1]) + (quads[2] + quads[3]), sums + 4 * n);
    }
}

ORVANE_WIDEST void sumSome(const std::vector<float>& taps, const float* values, std::size_t hop,
                           float* sums)
{
    sumUp<together>(taps, values, hop, sums);
}

ORVANE_WIDEST void sumOne(const std::vector<float>& taps, const float* values, float* sums)
{
    sumUp<1>(taps, values, 0, sums);
}

/// Mixes samples up and down: turns each by a turn and back by it.
ORVANE_WIDEST void mix(const float* __restrict samples, const float* __restrict turns,
                       std::size_t count, float real, float imaginary, float* __restrict mixed)
{
    for (std::size_t k = 0; k < count; ++k) {
        const float cosine = real * turns[2 * k] - imaginary * turns[2 * k + 1];
        const float sine = real * turns[2 * k + 1] + imaginary * turns[2 * k];
        const float i = samples[2 * k];
        const float q = samples[2 * k + 1];
        mixed[4 * k] = i * cosine - q * sine;
        mixed[4 * k + 1] = i * sine + q * cosine;
        mixed[4 * k + 2] = i * cosine + q * sine;
        mixed[4 * k + 3] = q * cosine - i * sine;
    }
}

} // namespace

EdgeBands::EdgeBands(double samplesPerSymbol)
    : m_samplesPerSymbol(samplesPerSymbol)
    , m_delay(static_cast<std::int64_t>(std::ceil(samplesPerSymbol / halfBand)))
    , m_stride(std::max<std::int64_t>(static_cast<std::int64_t>(samplesPerSymbol / 2.0), 1))
    , m_mixed(width * static_cast<std::size_t>(m_delay))
    , m_mixedFirst(-m_delay)
{
    std::vector<float> taps(tapCount()); // symmetric
    liquid_firdes_kaiser(static_cast<unsigned>(taps.size()),
                         static_cast<float>(halfBand / samplesPerSymbol), stopBand, 0.0F,
                         taps.data());
    m_taps.reserve(width * (taps.size() + width));
    for (const float tap : taps)
        m_taps.insert(m_taps.end(), width, tap);
    m_taps.resize((m_taps.size() + floatsWidth - 1) / floatsWidth * floatsWidth);
    for (std::size_t k = 0; k < turnLength; ++k)
        m_turns.emplace_back(std::polar(1.0, -pi * static_cast<double>(k) / samplesPerSymbol));
    m_samples.reserve(turnLength);
}

void EdgeBands::push(const std::complex<float>* samples, std::size_t count)
{
    mixWaiting();
    while (count > 0) {
        const std::size_t here = std::min(count, m_room);
        mixDown(samples, here);
        samples += here;
        count -= here;
    }
}

void EdgeBands::mixWaiting()
{
    mixDown(m_samples.data(), m_samples.size());
    m_samples.clear();
}

/// Mixes the next samples, all of the open block.
void EdgeBands::mixDown(const std::complex<float>* samples, std::size_t count)
{
    if (count == 0)
        return;
    const auto begin = static_cast<std::size_t>(m_mixedCount) % turnLength;
    const double cycles = static_cast<double>(m_mixedCount - static_cast<std::int64_t>(begin)) /
                          (2.0 * m_samplesPerSymbol);
    const std::complex<float> start(std::polar(1.0, -2.0 * pi * (cycles - std::floor(cycles))));
    const std::size_t before = m_mixed.size();
    m_mixed.resize(before + width * count);
    mix(reinterpret_cast<const float*>(samples), reinterpret_cast<const float*>(&m_turns[begin]),
        count, start.real(), start.imag(), &m_mixed[before]);
    m_mixedCount += static_cast<std::int64_t>(count);
    m_room = turnLength - (begin + count) % turnLength;
}

const std::vector<EdgeBands::Output>& EdgeBands::take()
{
    mixWaiting();
    m_outputs.clear();
    // What the last taps of a sum are multiplied with by 0 has to be there.
    const std::size_t used = m_mixed.size();
    m_mixed.resize(used + floatsWidth);
    while (m_center + m_delay + static_cast<std::int64_t>(together - 1) * m_stride < m_mixedCount)
        filter(together);
    while (m_center + m_delay < m_mixedCount)
        filter(1);
    m_mixed.resize(used);
    dropUsed();
    return m_outputs;
}

void EdgeBands::filter(std::size_t outputs)
{
    float sums[together * width];
    const float* values =
        &m_mixed[width * static_cast<std::size_t>(m_center - m_delay - m_mixedFirst)];
    if (outputs == together)
        sumSome(m_taps, values, width * static_cast<std::size_t>(m_stride), sums);
    else
        sumOne(m_taps, values, sums);
    const std::size_t before = m_outputs.size();
    m_outputs.resize(before + outputs);
    for (std::size_t n = 0; n < outputs; ++n) {
        const float* sum = sums + width * n;
        Output& output = m_outputs[before + n];
        output.position = m_center;
        output.upper = {double{sum[0]}, double{sum[1]}};
        output.lower = {double{sum[2]}, double{sum[3]}};
        m_center += m_stride;
    }
}

void EdgeBands::dropUsed()
{
    const std::int64_t used = m_center - m_delay - m_mixedFirst;
    if (used < static_cast<std::int64_t>(tapCount())) // moving the rest would cost more
        return;
    m_mixed.erase(m_mixed.begin(), m_mixed.begin() + static_cast<std::ptrdiff_t>(width) * used);
    m_mixedFirst += used;
}
