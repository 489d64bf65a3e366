// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/receiver/HalfBits.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <vector>

namespace {

using Code = HalfBits::Code;
using Complex = std::complex<double>;
using Samples = std::vector<Complex>;

constexpr std::size_t leastBits = 48;
constexpr std::size_t bitsPerBlock = 64; // few enough for bursts, in which bits start anywhere

/// The signal without its carrier, whose frequency is the mean step from sample to sample.
Samples withoutCarrier(Samples samples)
{
    Complex step;
    for (std::size_t i = 1; i < samples.size(); ++i)
        step += samples[i] * std::conj(samples[i - 1]);
    const double turn = std::arg(step);
    for (std::size_t i = 0; i < samples.size(); ++i)
        samples[i] *= std::polar(1.0, -turn * static_cast<double>(i));
    return samples;
}

Samples envelopeOf(Samples samples)
{
    for (Complex& sample : samples)
        sample = std::abs(sample);
    return samples;
}

/// Whether an envelope is low for at least a quarter of the time, unlike that of frequency
/// modulation.
bool hasPauses(const Samples& envelope)
{
    std::vector<double> sorted;
    for (const Complex& value : envelope)
        sorted.push_back(value.real());
    std::sort(sorted.begin(), sorted.end());
    return sorted[sorted.size() / 4] < 0.5 * sorted[sorted.size() * 3 / 4];
}

/// Integral of the samples up to a place, which may lie between samples.
class Integral
{
public:
    explicit Integral(const Samples& samples)
    {
        m_sums.reserve(samples.size() + 1);
        Complex sum;
        m_sums.push_back(sum);
        for (const Complex& sample : samples)
            m_sums.push_back(sum += sample);
    }

    double end() const { return static_cast<double>(m_sums.size() - 1); }
    Complex to(double place) const
    {
        const auto index = std::min(static_cast<std::size_t>(place), m_sums.size() - 2);
        return m_sums[index] +
               (place - static_cast<double>(index)) * (m_sums[index + 1] - m_sums[index]);
    }

private:
    std::vector<Complex> m_sums;
};

double energyOf(const Samples& values)
{
    double energy = 0.0;
    for (const Complex& value : values)
        energy += std::norm(value);
    return energy;
}

/// Consecutive halves from a place on, relative to their mean, aligned with their edges, where they
/// have the most energy.
Samples halvesOf(const Integral& integral, double start, double length, std::size_t count)
{
    constexpr int phaseCount = 8;
    Samples best;
    for (int phase = 0; phase < phaseCount; ++phase) {
        const double first = start + length * phase / phaseCount;
        Samples halves;
        for (std::size_t k = 0; k < count; ++k) {
            const double place = first + length * static_cast<double>(k);
            halves.push_back(integral.to(place + length) - integral.to(place));
        }
        const Complex mean =
            (integral.to(first + length * static_cast<double>(count)) - integral.to(first)) /
            static_cast<double>(count);
        for (Complex& half : halves)
            half -= mean;
        if (best.empty() || energyOf(halves) > energyOf(best))
            best = std::move(halves);
    }
    return best;
}

/// Correlation of every second half with the next one; -1 when these are opposite.
double correlationFrom(const Samples& halves, std::size_t first)
{
    double product = 0.0;
    double energy = 0.0;
    for (std::size_t k = first; k + 1 < halves.size(); k += 2) {
        product += (halves[k] * std::conj(halves[k + 1])).real();
        energy += 0.5 * (std::norm(halves[k]) + std::norm(halves[k + 1]));
    }
    return energy > 0.0 ? product / energy : 0.0;
}

struct Spread
{
    /// Mean and variance of every second half.
    static Spread from(const Samples& halves, std::size_t first)
    {
        Spread spread;
        double count = 0.0;
        for (std::size_t k = first; k < halves.size(); k += 2) {
            spread.mean += halves[k];
            spread.variance += std::norm(halves[k]);
            count += 1.0;
        }
        spread.mean /= count;
        spread.variance = spread.variance / count - std::norm(spread.mean);
        return spread;
    }

    /// Whether these halves are pauses between the others, and the others are data, not pauses and
    /// not as regular as a square wave.
    bool isRestOf(const Spread& data, bool isEnvelope) const
    {
        constexpr double most = 0.12;  // of the variance of data
        constexpr double least = 0.25; // of the square of their height, for data of pulses
        return variance < most * data.variance &&
               data.variance > least * std::norm(data.mean - mean) &&
               (!isEnvelope || mean.real() < data.mean.real());
    }

    Complex mean;
    double variance = 0.0;
};

/// The code that a block shows; none when its data are not random, as on an idle line.
std::optional<Code> verdictOf(const Samples& halves, bool isEnvelope)
{
    // Codes are below it even in noise, and random data hardly ever.
    constexpr double opposite = -0.7;
    constexpr double random = 0.5; // random data are below it by 4 standard deviations
    const auto [low, high] = std::minmax({correlationFrom(halves, 0), correlationFrom(halves, 1)});
    if (low < opposite)
        return std::abs(high) < random ? std::optional<Code>(Code::Manchester) : std::nullopt;
    const Spread even = Spread::from(halves, 0);
    const Spread odd = Spread::from(halves, 1);
    return even.isRestOf(odd, isEnvelope) || odd.isRestOf(even, isEnvelope) ? Code::ReturnToZero
                                                                            : Code::Plain;
}

Code codeOf(const Samples& samples, double halfLength, bool isEnvelope = false)
{
    const Integral integral(samples);
    const double bits = integral.end() / (2.0 * halfLength) - 1.0; // finding the phase takes a half
    if (bits < static_cast<double>(leastBits))
        return Code::Plain;
    const auto bitCount = std::min(static_cast<std::size_t>(bits), bitsPerBlock);
    // So that there are equally many pairs from each half on.
    const std::size_t count = 2 * bitCount + 1;
    const double blockLength = 2.0 * halfLength * static_cast<double>(bitCount);
    std::array<double, 3> weights{};
    for (double start = 0.0; start + blockLength + 2.0 * halfLength <= integral.end();
         start += blockLength) {
        const Samples halves = halvesOf(integral, start, halfLength, count);
        if (const auto verdict = verdictOf(halves, isEnvelope))
            weights[static_cast<std::size_t>(*verdict)] += energyOf(halves);
    }
    const double total = weights[0] + weights[1] + weights[2];
    constexpr double most = 0.6;
    for (const Code code : {Code::Manchester, Code::ReturnToZero}) {
        if (weights[static_cast<std::size_t>(code)] > most * total)
            return code;
    }
    return Code::Plain;
}

} // namespace

HalfBits::Code HalfBits::codeOf(const SampledSignal& signal, std::size_t start, std::size_t length,
                                double rate)
{
    const double halfLength = signal.sampleRate / rate;
    if (!(halfLength >= 2.0))
        return Code::Plain;
    const auto first = signal.samples.begin() + static_cast<std::ptrdiff_t>(start);
    const Samples samples(first, first + static_cast<std::ptrdiff_t>(length));
    if (!signal.isComplex)
        return ::codeOf(samples, halfLength);
    const Samples envelope = envelopeOf(samples);
    const Code code = ::codeOf(withoutCarrier(samples), halfLength);
    if (code == Code::Manchester || (code == Code::ReturnToZero && hasPauses(envelope)))
        return code;
    return ::codeOf(envelope, halfLength, true);
}
