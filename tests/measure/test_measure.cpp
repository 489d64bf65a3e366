// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/measure/ConstellationReadings.h"
#include "workbench/measure/EyeReadings.h"
#include "workbench/measure/LevelReadings.h"

#include <algorithm>
#include <cmath>
#include <random>

#include <gtest/gtest.h>

namespace {

using Complex = std::complex<double>;

constexpr double pi = 3.14159265358979323846;
const double nan = std::nan("");
const double infinity = std::numeric_limits<double>::infinity();

/// Numbers at random, the same ones each time.
struct Random
{
    explicit Random(unsigned seed = 1)
        : bits(seed)
    {}
    double noise() { return normal(bits); }
    unsigned below(unsigned count) { return unsigned(bits()) % count; }

    std::mt19937 bits;
    std::normal_distribution<double> normal;
};

std::optional<LevelReadings> levelOf(const std::vector<double>& samples, double sampleRate)
{
    return LevelReadings::of(samples.data(), samples.size(), sampleRate);
}

TEST(LevelMeasurement, GivesTheKnownFiguresOfASine)
{
    for (const double frequency : {50.0, 123.4, 3100.0}) {
        Random random;
        std::vector<double> samples(48000);
        for (std::size_t k = 0; k < samples.size(); ++k)
            samples[k] = 0.3 + 0.5 * std::sin(2.0 * pi * frequency * double(k) / 48000.0);
        samples[77] = nan;
        samples[20000] = infinity;
        const auto readings = levelOf(samples, 48000.0);
        ASSERT_TRUE(readings);
        EXPECT_NEAR(readings->mean, 0.3, 2e-3);
        EXPECT_NEAR(readings->acRms, 0.5 / std::sqrt(2.0), 1e-3);
        EXPECT_NEAR(readings->rms, std::sqrt(0.09 + 0.125), 1e-3);
        EXPECT_NEAR(readings->peakToPeak(), 1.0, 0.01);
        for (double& sample : samples)
            sample += 0.03 * random.noise();
        std::fill_n(samples.begin() + 20000, 1920, nan);
        EXPECT_NEAR(levelOf(samples, 48000.0)->frequency.value_or(0.0), frequency,
                    2e-3 * frequency);
        samples.resize(std::size_t(4.6 * 48000.0 / frequency));
        EXPECT_NEAR(levelOf(samples, 48000.0)->frequency.value_or(0.0), frequency,
                    1e-2 * frequency);
    }
}

TEST(LevelMeasurement, KnowsTheFrequencyOfPulsesHoweverShort)
{
    for (const double duty : {0.005, 0.03, 0.2, 0.5, 0.97}) {
        Random random;
        std::vector<double> samples(48000);
        for (std::size_t k = 0; k < samples.size(); ++k)
            samples[k] = 5.0 + (double(k % 400) < 400.0 * duty ? 1.0 : 0.0) + 0.05 * random.noise();
        samples[5000] = duty < 0.02 ? 5.0 : 30.0; // a click, one pulse more at most
        EXPECT_NEAR(levelOf(samples, 48000.0)->frequency.value_or(0.0), 120.0, 1.1) << duty;
    }
}

TEST(LevelMeasurement, KnowsNoFrequencyOfWhatHasNone)
{
    for (unsigned seed = 0; seed < 200; ++seed) {
        Random random(seed);
        std::vector<double> samples(2000);
        double smooth = 0.0;
        for (double& sample : samples)
            sample = smooth = 0.01 * double(seed % 100) * smooth + random.noise();
        EXPECT_FALSE(levelOf(samples, 1.0)->frequency) << seed;
        std::fill(samples.begin(), samples.end(), 0.0); // heart beats
        for (std::size_t k = 5; k < samples.size(); k += 60 + random.below(50))
            samples[k] = 1.0;
        EXPECT_FALSE(levelOf(samples, 1.0)->frequency) << seed;
    }
    EXPECT_FALSE(levelOf(std::vector<double>(100, 0.5), 1.0)->frequency);
    EXPECT_FALSE(levelOf({0, 1, 0, 1, 0, 1, 0}, 1.0)->frequency) << "two periods";
    for (const std::vector<double>& none : {std::vector<double>(), {nan, infinity}})
        EXPECT_FALSE(levelOf(none, 1.0));
    EXPECT_EQ(levelOf({1e300, -1e300}, 1.0)->highest, 1e300);
}

constexpr int perSymbol = 32;
constexpr int shown = 2;
constexpr std::size_t traceLength = shown * perSymbol + 1;

/// Traces of a random signal with straight edges, half a symbol long about their instants.
struct Eye
{
    unsigned levels = 2;
    double noise = 0.0;  // rms at the samples
    double ones = 1.0;   // times that of what is above the middle
    double jitter = 0.0; // rms of the edges, symbols
    double late = 0.0;   // all edges, symbols
    double shift = 0.0;  // of rising edges, symbols: late; of falling ones early
    std::size_t traces = 2000;

    std::vector<double> samples() const
    {
        Random random;
        std::vector<double> result;
        for (std::size_t trace = 0; trace < traces; ++trace) {
            double symbols[4]; // middles at -1, 0 and 1 symbols, and the one after
            double edges[3];
            for (double& symbol : symbols)
                symbol = random.below(levels);
            for (int k = 0; k < 3; ++k)
                edges[k] = k - 0.5 + late + jitter * random.noise() +
                           (symbols[k + 1] > symbols[k] ? shift : -shift);
            for (std::size_t i = 0; i < traceLength; ++i) {
                const double time = double(i) / perSymbol - 1.0;
                double value = symbols[0];
                for (int k = 0; k < 3; ++k)
                    value += (symbols[k + 1] - symbols[k]) *
                             std::clamp(2.0 * (time - edges[k]) + 0.5, 0.0, 1.0);
                result.push_back(value + (value > 0.5 ? ones : 1.0) * noise * random.noise());
            }
        }
        return result;
    }
    std::optional<EyeReadings> read() const
    {
        return EyeReadings::of(samples(), traceLength, shown);
    }
};

TEST(EyeMeasurement, GivesTheKnownFiguresOfNoiseAndJitter)
{
    Eye noisy;
    noisy.noise = 0.03;
    ASSERT_EQ(noisy.read().value().levelCount(), 2);
    EyeReadings::Eye eye = noisy.read()->eyes[0];
    EXPECT_NEAR(eye.highLevel - eye.lowLevel, 1.0, 0.01);
    EXPECT_NEAR(eye.height, 1.0 - 6.0 * 0.03, 0.01);
    EXPECT_NEAR(eye.opening, 82.0, 1.0);
    EXPECT_NEAR(eye.q, 1.0 / 0.06, 0.7);
    EXPECT_LT(eye.innerHeight, eye.height);
    EXPECT_NEAR(*eye.crossing, 50.0, 1.0);
    // An edge of half a symbol turns noise into jitter, less what interpolation evens out.
    EXPECT_NEAR(*eye.jitterRms, 0.015 * std::sqrt(2.0 / 3.0), 0.001);
    noisy.ones = 2.0;
    EXPECT_NEAR(noisy.read()->eyes[0].lowSigma, 0.03, 0.002);
    EXPECT_NEAR(noisy.read()->eyes[0].highSigma, 0.06, 0.004);
    noisy.noise = 0.13; // closed
    EXPECT_LT(noisy.read()->eyes[0].height, 0.0);
    EXPECT_EQ(noisy.read()->eyes[0].opening, 0.0);

    Eye shaky;
    shaky.jitter = 0.02;
    eye = shaky.read()->eyes[0];
    EXPECT_NEAR(*eye.jitterRms, 0.02, 0.001);
    EXPECT_NEAR(*eye.width, 1.0 - 6.0 * 0.02, 0.01);
    EXPECT_NEAR(*eye.jitterPeak, 6.6 * 0.02, 0.03);
    EXPECT_NEAR(eye.opening, 100.0, 1e-6);

    Eye uneven;
    uneven.late = 0.1;
    EXPECT_NEAR(*uneven.read()->eyes[0].crossingTime, -0.4, 0.005);
    uneven.shift = 0.05; // edges of half a symbol: 0.05 / 0.5 of the way
    EXPECT_NEAR(*uneven.read()->eyes[0].crossing, 40.0, 1.0);
    EXPECT_NEAR(*uneven.read()->eyes[0].jitterRms, 0.0, 0.005) << "where they cross";
}

TEST(EyeMeasurement, TellsTwoThreeAndFourLevelsFromNone)
{
    Eye eye;
    eye.levels = 4;
    eye.noise = 0.04;
    const EyeReadings four = eye.read().value();
    ASSERT_EQ(four.levelCount(), 4);
    for (const EyeReadings::Eye& each : four.eyes) {
        EXPECT_NEAR(each.height, 1.0 - 6.0 * 0.04, 0.03);
        EXPECT_NEAR(each.width.value_or(0.0), 2.0 / 3.0, 0.08); // of steep edges, a third off
        EXPECT_NEAR(each.crossing.value_or(0.0), 50.0, 2.0);
        EXPECT_NEAR(each.jitterRms.value_or(0.0), 0.017, 0.002);
    }
    eye.levels = 3;
    EXPECT_EQ(eye.read().value().levelCount(), 3);
    eye.levels = 8;
    EXPECT_FALSE(eye.read());
    eye.levels = 2;
    std::vector<double> struck = eye.samples();
    std::for_each_n(struck.begin(), 20 * traceLength, [](double& sample) { sample += 50.0; });
    EXPECT_EQ(EyeReadings::of(struck, traceLength, shown).value().levelCount(), 2) << "a click";

    // Two levels that their neighbours split, as behind a narrow filter, and rare ones.
    Random random;
    const auto bit = [&] { return random.below(2) ? 1.0 : -1.0; };
    for (const bool isRare : {false, true}) {
        std::vector<double> flat;
        for (int trace = 0; trace < 500; ++trace)
            flat.insert(flat.end(), traceLength,
                        isRare ? random.below(10) / 9 + 0.02 * random.noise()
                               : 0.15 * (bit() + bit()) + 0.7 * bit());
        const auto readings = EyeReadings::of(flat, traceLength, shown);
        ASSERT_EQ(readings.value().levelCount(), 2) << isRare;
        EXPECT_FALSE(readings->eyes[0].width || readings->eyes[0].crossing) << "no transitions";
    }
    for (unsigned seed = 0; seed < 100; ++seed) {
        Random noise(seed);
        std::vector<double> noises(100 * traceLength), sine(100 * traceLength);
        for (std::size_t k = 0; k < sine.size(); ++k) {
            noises[k] = noise.noise();
            sine[k] = std::sin(0.37 * double(k) + seed);
        }
        EXPECT_FALSE(EyeReadings::of(noises, traceLength, shown)) << seed;
        EXPECT_FALSE(EyeReadings::of(sine, traceLength, shown)) << seed;
    }
}

TEST(EyeMeasurement, IsNotKnownOfTooLittleOrBadSamples)
{
    Eye eye;
    eye.traces = EyeReadings::minTraceCount - 1;
    EXPECT_FALSE(eye.read());
    eye.traces = 100;
    std::vector<double> samples = eye.samples();
    EXPECT_FALSE(EyeReadings::of(samples, traceLength, 1)->eyes[0].width) << "no neighbours";
    EXPECT_FALSE(EyeReadings::of(samples, traceLength, 0));
    EXPECT_TRUE(EyeReadings::of(samples, traceLength, 40)); // more symbols than samples
    for (const std::size_t length : {std::size_t(0), std::size_t(2), samples.size() + 1})
        EXPECT_FALSE(EyeReadings::of(samples, length, shown));
    for (std::size_t k = 0; k < samples.size(); k += 2 * traceLength)
        samples[k] = k % 3 == 0 ? nan : infinity; // every other trace
    EXPECT_TRUE(EyeReadings::of(samples, traceLength, shown));
    for (const double value : {nan, 1.0})
        EXPECT_FALSE(EyeReadings::of(std::vector<double>(6500, value), traceLength, shown));
}

std::vector<Complex> square(int side, double turn = 0.0)
{
    std::vector<Complex> points;
    for (int k = 0; k < side * side; ++k)
        points.push_back(std::polar(1.0, turn) *
                         Complex(2 * (k % side) - side + 1.0, 2 * (k / side) - side + 1.0));
    return points;
}

TEST(ConstellationMeasurement, GivesTheKnownFiguresOfImpairments)
{
    for (const auto& ideal : {std::vector<Complex>{-1.0, 1.0}, square(2), square(4), square(8),
                              square(8, 0.5)}) { // the last one is no grid
        double power = 0.0;
        for (const Complex& point : ideal)
            power += std::norm(point) / double(ideal.size());
        const auto read = [&](double noise, Complex gain, Complex offset, double imbalance,
                              double skew) {
            Random random;
            std::vector<double> i{nan, 0.0}, q{0.0, infinity};
            for (int k = 0; k < 20000; ++k) {
                const Complex ideally = ideal[random.below(unsigned(ideal.size()))];
                Complex point(ideally.real() * imbalance + std::sin(skew) * ideally.imag(),
                              std::cos(skew) * ideally.imag());
                point = point / std::sqrt(power) + offset +
                        noise / std::sqrt(2.0) * Complex(random.noise(), random.noise());
                i.push_back((gain * point).real());
                q.push_back((gain * point).imag());
            }
            return *ConstellationReadings::of(i, q, ideal);
        };
        const auto noisy = read(0.03, std::polar(7.0, 0.12), 0.0, 1.0, 0.0);
        EXPECT_NEAR(noisy.evmRms, 3.0, 0.05) << ideal.size();
        EXPECT_NEAR(noisy.mer, -20.0 * std::log10(0.03), 0.2);
        EXPECT_GT(noisy.evmPeak, 7.0);
        EXPECT_LT(noisy.evmPeak, 15.0);
        EXPECT_LT(noisy.originOffset, -60.0);
        const auto offset = read(0.01, 1.0, Complex(0.03, -0.04), 1.0, 0.0);
        EXPECT_NEAR(offset.originOffset, -26.0, 0.3);
        const auto skewed = read(0.001, 0.2, 0.0, 1.05, 2.0 * pi / 180.0);
        EXPECT_EQ(skewed.imbalance.has_value(), ideal.size() > 2);
        if (skewed.imbalance) {
            EXPECT_NEAR(*skewed.imbalance, 20.0 * std::log10(1.05), 0.02);
            EXPECT_NEAR(*skewed.quadratureError, 2.0, 0.1);
        }
    }
}

TEST(ConstellationMeasurement, IsNotKnownOfTooLittleOrBadPoints)
{
    const std::pair<std::size_t, double> cases[] = {{0, 1.0}, {15, 1.0}, {99, 0.0}, {99, 1e300}};
    for (const auto& [count, value] : cases) {
        const std::vector<double> axis(count, value);
        EXPECT_FALSE(ConstellationReadings::of(axis, axis, square(2))) << count;
    }
    EXPECT_FALSE(ConstellationReadings::of({1.0, 2.0}, {1.0, 2.0}, {}));
}

} // namespace
