// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
// What takes many numbers at once, beside the plain loops that say the same.
#include "workbench/receiver/CarrierLock.h"
#include "workbench/receiver/EdgeBands.h"
#include "workbench/receiver/FastFunctions.h"
#include "workbench/receiver/FirFilter.h"
#include "workbench/receiver/Interpolation.h"
#include "workbench/receiver/Rotation.h"
#include "workbench/receiver/SingleNumbers.h"
#include "workbench/receiver/TrackedPhases.h"
#include "workbench/receiver/TurnSearch.h"
#include "workbench/sources/Constants.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace {

using Sample = std::complex<float>;

std::mt19937& generator()
{
    static std::mt19937 result(1);
    return result;
}

double normal() { return std::normal_distribution<double>()(generator()); }

std::vector<Sample> noise(std::size_t count)
{
    std::vector<Sample> samples(count);
    for (Sample& sample : samples)
        sample = {float(normal()), float(normal())};
    return samples;
}

TEST(FastSums, FilterAsPlainOnesDoWhateverTheBlocks)
{
    const std::vector<Sample> samples = noise(500);
    const std::pair<std::size_t, std::size_t> rows[] = {{1, 1}, {2, 1}, {33, 1}, {140, 1},
                                                        {1, 2}, {2, 2}, {33, 2}, {140, 2}};
    for (const auto& [length, every] : rows) {
        std::vector<float> taps(length);
        for (float& tap : taps)
            tap = float(normal());
        FirFilter filter(taps, 0.5F, every);
        std::vector<Sample> filtered;
        for (std::size_t first = 0; first < samples.size(); first += first / 2 + 7) {
            const std::size_t next = std::min(first + first / 2 + 7, samples.size());
            std::vector<Sample> part(samples.begin() + std::ptrdiff_t(first),
                                     samples.begin() + std::ptrdiff_t(next));
            filter.process(part);
            filtered.insert(filtered.end(), part.begin(), part.end());
        }
        ASSERT_EQ(filtered.size(), samples.size() / every);
        for (std::size_t k = 0; k < filtered.size(); ++k) {
            const std::size_t newest = k * every;
            Sample sum;
            for (std::size_t n = std::min(length, newest + 1); n-- > 0;) // the oldest sample first
                sum += taps[n] * samples[newest - n];
            ASSERT_EQ(filtered[k], 0.5F * sum) << length << ' ' << every << ' ' << k;
        }
    }
}

TEST(FastSums, InterpolateAsPlainOnesDo)
{
    // Of 16 products in another order; weights are 1 at most, and so is their sum of squares.
    constexpr double tolerance = 16 * 6e-8 * 4.0;
    const std::vector<Sample> samples = noise(400);
    std::vector<float> numbers;
    numbers.reserve(samples.size());
    for (const Sample& sample : samples)
        numbers.push_back(sample.real());
    for (const double step : {1.0, 1.0 + 1e-4, 0.9999, 0.5, 0.37, 2.3}) {
        const auto count = std::size_t(370.0 / step);
        std::vector<Sample> pairs(count);
        std::vector<float> singles(count);
        Interpolation::ofWholeBand().fill(samples.data(), 9.3, step, count, pairs.data());
        Interpolation::ofWholeBand().fill(numbers.data(), 9.3, step, count, singles.data());
        for (std::size_t k = 0; k < count; ++k) {
            const Sample plain =
                Interpolation::at(9.3 + double(k) * step, [&](std::ptrdiff_t index) {
                    return samples[std::size_t(index)];
                });
            ASSERT_LT(std::abs(pairs[k] - plain), tolerance) << step << ' ' << k;
            ASSERT_NEAR(singles[k], plain.real(), tolerance);
        }
    }
    // What a fifth of the band keeps of lines within and outside of it: 70 dB, the window's.
    for (const double frequency : {0.05, 0.19}) {
        std::vector<Sample> line(600);
        for (std::size_t k = 0; k < line.size(); ++k)
            line[k] = Sample(std::polar(1.0, 2.0 * pi * frequency * double(k)));
        std::vector<Sample> narrow(100);
        Interpolation(0.2).fill(line.data(), 60.4, 4.7, narrow.size(), narrow.data());
        for (std::size_t k = 0; k < narrow.size(); ++k) {
            const auto kept = Sample(std::polar(frequency < 0.1 ? 1.0 : 0.0,
                                                2.0 * pi * frequency * (60.4 + 4.7 * double(k))));
            ASSERT_LT(std::abs(narrow[k] - kept), 5e-4) << frequency << ' ' << k;
        }
    }
}

TEST(FastSums, TurnAndMixAsPlainOnesDo)
{
    const std::vector<Sample> samples = noise(1000);
    std::vector<Sample> turned = samples;
    Rotation(-0.0123).turn(turned.data(), turned.size(), 0.7);
    for (std::size_t k = 0; k < turned.size(); ++k)
        ASSERT_LT(std::abs(std::complex<double>(turned[k]) -
                           std::complex<double>(samples[k]) *
                               std::polar(1.0, 2.0 * pi * (0.7 - 0.0123 * double(k)))),
                  1e-6); // three roundings of 6e-8, of samples of up to 5

    for (const std::size_t length : {1, 8, 11}) {
        std::vector<double> phases, steps;
        turned.assign(samples.begin(), samples.begin() + 900); // the last group lacks some
        for (std::size_t k = 0; k * length < turned.size(); ++k) {
            phases.push_back(2.0 * normal() + 1e3 * double(k));
            steps.push_back(0.02 * normal());
        }
        turnGroups(turned.data(), turned.size(), length, phases, steps);
        for (std::size_t k = 0; k < turned.size(); ++k) {
            const std::size_t group = k / length;
            const double angle = phases[group] + double(k % length) * steps[group];
            ASSERT_LT(std::abs(std::complex<double>(turned[k]) -
                               std::complex<double>(samples[k]) * std::polar(1.0, angle)),
                      1e-5); // a step is 1e-7 off, of samples of up to 5
        }
    }

    // The band of a line is the line, turned to 0, as far as the low-pass is even there.
    EdgeBands bands(4.3);
    for (std::size_t k = 0; k < 1000; ++k) {
        bands.push(Sample(std::polar(1.0, pi * double(k) / 4.3)));
        if (k % 97 == 0)
            bands.take();
    }
    for (const EdgeBands::Output& output : bands.take()) {
        if (output.position < bands.delay())
            continue;
        EXPECT_NEAR(std::arg(output.upper), 0.0, 1e-6);
        EXPECT_LT(std::abs(output.lower), 0.01 * std::abs(output.upper)); // 50 dB, two of them
    }
}

TEST(FastSums, TakeManySamplesAsOneAfterTheOther)
{
    const std::vector<Sample> samples = noise(1000);
    EdgeBands single(4.3), together(4.3);
    for (const Sample& sample : samples)
        single.push(sample);
    together.push(samples.data(), 400);
    together.push(samples.data() + 400, 600);
    const auto& expected = single.take();
    const auto& outputs = together.take();
    ASSERT_EQ(outputs.size(), expected.size());
    for (std::size_t k = 0; k < outputs.size(); ++k)
        ASSERT_EQ(outputs[k].upper, expected[k].upper) << k;

    std::vector<double> first(999), second(999);
    makeDouble(reinterpret_cast<const float*>(samples.data()), first.size(), first.data(),
               second.data());
    for (std::size_t k = 0; k < first.size(); ++k)
        ASSERT_EQ(std::complex(first[k], second[k]), std::complex<double>(samples[k])) << k;

    std::vector<double> numbers(37, 0.1);
    std::vector<float> singles(37);
    numbers[3] = numbers[36] = -2.0;
    EXPECT_TRUE(makeSingle(numbers.data(), 37, 2.0, singles.data()));
    EXPECT_EQ(singles, std::vector<float>(numbers.begin(), numbers.end()));
    for (const std::size_t place : {3U, 36U}) { // in a vector, and in the rest
        for (const double large : {2.1, -2.1, HUGE_VAL, std::nan("")}) {
            numbers[place] = large;
            EXPECT_FALSE(makeSingle(numbers.data(), 37, 2.0, singles.data())) << place << large;
        }
        numbers[place] = 0.0;
    }
    for (const std::size_t place : {3U, 36U}) {
        for (const float large : {2.1F, -2.1F, HUGE_VALF, std::nanf("")}) {
            singles.assign(37, -2.0F);
            EXPECT_TRUE(areWithin(singles.data(), 37, 2.0F));
            singles[place] = large;
            EXPECT_FALSE(areWithin(singles.data(), 37, 2.0F)) << place << large;
        }
    }
}

TEST(FastSums, SearchTurnsAsPlainOnesDo)
{
    constexpr double step = 0.04;
    TurnSearch search(step, 0.6);
    for (const double turn : {0.0, 0.13, -0.55, 0.6}) {
        std::vector<double> i, q;
        for (int k = 0; k < 49; ++k) {
            const auto line =
                std::polar(1.0, 1.0 + turn * k) + 0.3 * std::complex(normal(), normal());
            i.push_back(line.real());
            q.push_back(line.imag());
        }
        double best = 0.0, most = 0.0;
        for (double tried = -0.6; tried < 0.6; tried += step / 64) {
            std::complex<double> sum;
            for (std::size_t k = 0; k < i.size(); ++k)
                sum += std::complex(i[k], q[k]) * std::polar(1.0, -tried * double(k));
            if (std::abs(sum) > most) {
                most = std::abs(sum);
                best = tried;
            }
        }
        EXPECT_NEAR(search.of(i, q), best, step / 8) << turn; // a parabola is no sine cardinal
    }
}

TEST(FastSums, FunctionsAreThoseOfTheStandard)
{
    for (int k = 0; k < 200000; ++k) {
        const float x = 30.0F * float(normal());
        const float y = 30.0F * float(normal());
        ASSERT_NEAR(fast::exponential(std::min(x, 80.0F)) /
                        std::exp(std::clamp(double{x}, -80.0, 80.0)),
                    1.0, 2e-7)
            << x;
        const float positive = std::exp(0.5F * x);
        const double logarithm = std::log(double{positive});
        ASSERT_NEAR(fast::logarithm(positive), logarithm,
                    2e-7 * std::max(1.0, std::abs(logarithm)));
        ASSERT_NEAR(fast::angleOf(x, y), std::atan2(double{y}, double{x}), 1e-6) << x << ' ' << y;
        float real = 0.0F, imaginary = 0.0F;
        const double angle = k < 1000 ? 0.25 * pi * (k - 500) : 1e4 * double{x};
        fast::turnBy(angle, real, imaginary);
        ASSERT_NEAR(real, std::cos(angle), 2e-7) << angle;
        ASSERT_NEAR(imaginary, std::sin(angle), 2e-7) << angle;
    }
    EXPECT_EQ(fast::angleOf(0.0F, 0.0F), 0.0F);
    EXPECT_EQ(fast::angleOf(-1.0F, 0.0F), float(pi));
    EXPECT_LT(fast::exponential(-1e30F), 1e-34F);
}

/// Logarithm of the likelihood ratio by all points, in double numbers.
double plainEvidence(const Modulation& modulation, std::complex<double> symbol, double noise)
{
    double held = 0.0, lost = std::exp(-30.0), power = 0.0;
    for (const auto& point : modulation.points) {
        held += std::exp(-std::norm(symbol - point) / noise);
        power += std::norm(point) / double(modulation.points.size());
        const double radius = std::abs(symbol), circle = std::abs(point);
        if (!modulation.isOffset)
            lost += std::exp(-(radius - circle) * (radius - circle) / noise) /
                    std::sqrt(1.0 + 4.0 * pi * radius * circle / noise);
    }
    if (modulation.isOffset)
        lost += double(modulation.points.size()) * noise / (power + noise) *
                std::exp(-std::norm(symbol) / (power + noise));
    return std::log(held / lost + 1e-3);
}

TEST(FastSums, JudgeCarriersAsPlainOnesDo)
{
    constexpr std::size_t together = Decisions::together;
    for (const ModulationKind kind :
         {ModulationKind::Bpsk, ModulationKind::Qpsk, ModulationKind::Psk8, ModulationKind::Qam64,
          ModulationKind::Oqpsk}) {
        const Modulation& modulation = modulations::of(kind);
        const Decisions decisions(modulation.points);
        CarrierLock lock(modulation);
        double noise = 0.125 * modulation.spacing * modulation.spacing;
        for (int round = 0; round < 40; ++round) {
            float i[together], q[together], evidence[together];
            bool areHeard[together];
            for (std::size_t k = 0; k < together; ++k) {
                const double spread = k == 5 ? 1.0 : 0.03; // one is far from all points
                const auto& point = modulation.points[generator()() % modulation.points.size()];
                i[k] = float(point.real() + spread * normal());
                q[k] = float(point.imag() + spread * normal());
                areHeard[k] = k != 7;
            }
            const std::size_t count = round % 2 == 0 ? together : 9;
            lock.evidence(i, q, areHeard, count, evidence);
            const double before = noise;
            for (std::size_t k = 0; k < count; ++k) {
                const std::complex<double> symbol(double{i[k]}, double{q[k]});
                // Single numbers are off by 6e-8 of 2, and exponents by as much over the noise.
                const double tolerance = 1e-5 + 1e-6 * std::abs(symbol) / before;
                ASSERT_NEAR(evidence[k], plainEvidence(modulation, symbol, before), tolerance)
                    << int(kind) << ' ' << round << ' ' << k;
                if (areHeard[k])
                    noise += (decisions.expected(symbol, 0.5 * before).square - noise) / 64.0;
            }
        }
    }
}

TEST(FastSums, TrackPhasesAsPlainOnesDo)
{
    constexpr int reach = 32;
    TrackedPhases tracked;
    tracked.configure(reach, false);
    std::vector<TrackedPhases::Symbol> symbols;
    for (int k = 0; k < 6000; ++k) {
        const bool isBurst = k % 700 < 600;
        symbols.push_back({0.01 * k, 0.1 * normal(), 1.0, normal(), isBurst ? 1.0 + normal() : -0.5,
                           (isBurst ? 1.0 : 0.3) * std::abs(1.0 + 0.2 * normal())});
    }
    for (std::size_t first = 0, next = 1; first < symbols.size(); first = next) {
        next = std::min(first + 1 + first % 16, symbols.size());
        tracked.add(&symbols[first], next - first);
    }
    double odds = 0.0;
    for (int here = 0; here < 6000; ++here) {
        const auto& symbol = symbols[std::size_t(here)];
        double s0 = 0.0, s1 = 0.0, s2 = 0.0, e0 = 0.0, e1 = 0.0;
        for (int k = std::max(here - reach, 0); k <= std::min(here + reach, 5999); ++k) {
            const auto& other = symbols[std::size_t(k)];
            if (!TrackedPhases::isHeard(other.power))
                continue;
            const double y = other.phase + other.error - symbol.phase;
            s0 += 1.0, s1 += k - here, s2 += (k - here) * (k - here);
            e0 += y, e1 += y * (k - here);
        }
        const auto smoothed = tracked.smoothed(0.0);
        ASSERT_NEAR(smoothed.phase - symbol.phase, (s2 * e0 - s1 * e1) / (s0 * s2 - s1 * s1),
                    1e-10);
        ASSERT_NEAR(smoothed.slope, (s0 * e1 - s1 * e0) / (s0 * s2 - s1 * s1), 1e-10);
        double after = 0.0;
        for (int k = std::min(here + reach, 5999); k > here; --k)
            after = std::clamp(after + symbols[std::size_t(k)].evidence, -9.0, 9.0);
        ASSERT_EQ(tracked.isHeld(), odds + symbol.evidence + after >= 0.0) << here;
        odds = std::clamp(odds + symbol.evidence, -9.0, 9.0);
        bool isFaint = false; // whichever of the stretches of 9 symbols within 3 of it
        for (int first = here - 7; first <= here - 1; ++first) {
            double sum = 0.0;
            for (int k = std::max(first, 0); k < std::min(first + 9, 6000); ++k)
                sum += symbols[std::size_t(k)].power;
            isFaint = isFaint || sum < 0.4 * 9;
        }
        ASSERT_EQ(tracked.isFaint(), isFaint) << here;
        tracked.advance();
    }
}

} // namespace
