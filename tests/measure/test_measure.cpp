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

std::optional<LevelReadings> levelOf(const std::vector<double>& samples, double sampleRate)
{
    return LevelReadings::of(samples.data(), samples.size(), sampleRate);
}

TEST(LevelMeasurement, GivesTheKnownFiguresOfASine)
{
    for (const double frequency : {50.0, 123.4, 3000.0}) {
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
        EXPECT_NEAR(readings->frequency.value_or(0.0), frequency, 1e-3 * frequency);
    }
}

TEST(LevelMeasurement, KnowsTheFrequencyOfPulsesHoweverShort)
{
    for (const double duty : {0.005, 0.03, 0.2, 0.5, 0.97}) {
        std::mt19937 random(1);
        std::normal_distribution<double> normal;
        std::vector<double> samples(48000);
        for (std::size_t k = 0; k < samples.size(); ++k)
            samples[k] = 5.0 + (double(k % 400) < 400.0 * duty ? 1.0 : 0.0) + 0.05 * normal(random);
        samples[5000] = duty < 0.02 ? 5.0 : 30.0; // a click, one pulse more at most
        EXPECT_NEAR(levelOf(samples, 48000.0)->frequency.value_or(0.0), 120.0, 1.1) << duty;
    }
}

TEST(LevelMeasurement, KnowsNoFrequencyOfWhatHasNone)
{
    for (unsigned seed = 0; seed < 200; ++seed) {
        std::mt19937 random(seed);
        std::normal_distribution<double> normal;
        std::vector<double> samples(2000);
        double smooth = 0.0;
        for (double& sample : samples)
            sample = smooth = 0.01 * double(seed % 100) * smooth + normal(random);
        EXPECT_FALSE(levelOf(samples, 1.0)->frequency) << seed;
    }
    EXPECT_FALSE(levelOf(std::vector<double>(100, 0.5), 1.0)->frequency);
    for (const std::vector<double>& none : {std::vector<double>(), {nan, infinity}})
        EXPECT_FALSE(levelOf(none, 1.0));
    EXPECT_EQ(levelOf({1e300, -1e300}, 1.0)->highest, 1e300);
}

constexpr int perSymbol = 32;
constexpr int shown = 2;

/// Traces of a random signal with straight edges, half a symbol long about their instants.
struct Eye
{
    int levels = 2;
    double noise = 0.0;  // rms at the samples
    double jitter = 0.0; // rms of the edges, symbols
    double shift = 0.0;  // of rising edges, symbols: late; of falling ones early
    double late = 0.0;   // all edges, symbols
    double ones = 1.0;   // noise of what is above the middle, over that of the rest
    std::size_t traces = 2000;

    std::vector<double> samples(unsigned seed = 1) const
    {
        std::mt19937 random(seed);
        std::normal_distribution<double> normal;
        std::vector<double> result;
        const auto level = [&] { return double(random() % unsigned(levels)); };
        for (std::size_t trace = 0; trace < traces; ++trace) {
            double symbols[4]; // middles at -1, 0 and 1 symbols, and the one after
            double edges[3];
            for (double& symbol : symbols)
                symbol = level();
            for (int k = 0; k < 3; ++k)
                edges[k] = k - 0.5 + jitter * normal(random) +
                           (symbols[k + 1] > symbols[k] ? shift : -shift) + late;
            for (int i = 0; i <= shown * perSymbol; ++i) {
                const double time = double(i) / perSymbol - 1.0;
                double value = symbols[0];
                for (int k = 0; k < 3; ++k)
                    value += (symbols[k + 1] - symbols[k]) *
                             std::clamp(2.0 * (time - edges[k]) + 0.5, 0.0, 1.0);
                result.push_back(value + (value > 0.5 ? ones : 1.0) * noise * normal(random));
            }
        }
        return result;
    }
    std::optional<EyeReadings> read(unsigned seed = 1) const
    {
        return EyeReadings::of(samples(seed), shown * perSymbol + 1, shown);
    }
};

TEST(EyeMeasurement, GivesTheKnownFiguresOfNoiseAndJitter)
{
    Eye eye;
    eye.noise = 0.03;
    const auto noisy = eye.read();
    ASSERT_TRUE(noisy);
    ASSERT_EQ(noisy->levelCount(), 2);
    EXPECT_NEAR(noisy->eyes[0].highLevel - noisy->eyes[0].lowLevel, 1.0, 0.01);
    EXPECT_NEAR(noisy->eyes[0].height, 1.0 - 6.0 * 0.03, 0.01);
    EXPECT_NEAR(noisy->eyes[0].opening, 82.0, 1.0);
    EXPECT_NEAR(noisy->eyes[0].q, 1.0 / 0.06, 0.7);
    EXPECT_LT(noisy->eyes[0].innerHeight, noisy->eyes[0].height);
    eye.ones = 2.0;
    EXPECT_NEAR(eye.read()->eyes[0].lowSigma, 0.03, 0.002);
    EXPECT_NEAR(eye.read()->eyes[0].highSigma, 0.06, 0.004);
    eye.ones = 1.0;
    EXPECT_NEAR(*noisy->eyes[0].crossing, 50.0, 1.0);
    // An edge of half a symbol turns noise into jitter, less what interpolation evens out.
    EXPECT_NEAR(*noisy->eyes[0].jitterRms, 0.015 * std::sqrt(2.0 / 3.0), 0.001);

    eye.noise = 0.0;
    eye.jitter = 0.02;
    const auto shaky = eye.read();
    EXPECT_NEAR(*shaky->eyes[0].jitterRms, 0.02, 0.001);
    EXPECT_NEAR(*shaky->eyes[0].width, 1.0 - 6.0 * 0.02, 0.01);
    EXPECT_NEAR(*shaky->eyes[0].jitterPeak, 6.6 * 0.02, 0.03);
    EXPECT_NEAR(shaky->eyes[0].opening, 100.0, 1e-6);

    eye.jitter = 0.0;
    eye.late = 0.1;
    EXPECT_NEAR(*eye.read()->eyes[0].crossingTime, -0.4, 0.005);
    eye.shift = 0.05; // edges of half a symbol: 0.05 / 0.5 of the way
    EXPECT_NEAR(*eye.read()->eyes[0].crossing, 40.0, 1.0);
}

TEST(EyeMeasurement, TellsFourLevelsFromTwoAndBothFromNone)
{
    Eye eye;
    eye.levels = 4;
    eye.noise = 0.04;
    const auto four = eye.read();
    ASSERT_TRUE(four);
    ASSERT_EQ(four->levelCount(), 4);
    for (const EyeReadings::Eye& each : four->eyes) {
        EXPECT_NEAR(each.height, 1.0 - 6.0 * 0.04, 0.03);
        EXPECT_NEAR(each.width.value_or(0.0), 2.0 / 3.0, 0.08); // of steep edges, a third off
        EXPECT_NEAR(each.crossing.value_or(0.0), 50.0, 2.0);
    }
    // Two levels with interference of the neighbours, which splits each.
    eye.levels = 2;
    eye.noise = 0.0;
    std::vector<double> split = eye.samples();
    for (std::size_t k = 0; k < split.size(); ++k)
        split[k] += (k / (shown * perSymbol + 1)) % 2 == 0 ? 0.1 : -0.1;
    EXPECT_EQ(EyeReadings::of(split, shown * perSymbol + 1, shown).value().levelCount(), 2);

    eye.noise = 0.03;
    std::vector<double> struck = eye.samples();
    for (std::size_t k = 0; k < 20 * 65; ++k)
        struck[k] += 50.0; // a click, of one trace in a hundred
    EXPECT_EQ(EyeReadings::of(struck, 65, 2).value().levelCount(), 2);
    eye.levels = 3;
    EXPECT_EQ(eye.read().value().levelCount(), 3);
    eye.levels = 8;
    EXPECT_FALSE(eye.read());
    // Minimum shift keying through a narrow Gaussian filter: its bits weigh on their neighbours.
    std::mt19937 bits(1);
    std::vector<double> narrow;
    for (int trace = 0; trace < 500; ++trace) {
        const auto bit = [&] { return bits() % 2 ? 1.0 : -1.0; };
        narrow.insert(narrow.end(), 65, 0.15 * (bit() + bit()) + 0.7 * bit());
    }
    EXPECT_EQ(EyeReadings::of(narrow, 65, 2).value().levelCount(), 2);

    for (unsigned seed = 0; seed < 100; ++seed) {
        std::mt19937 random(seed);
        std::normal_distribution<double> normal;
        std::vector<double> noise(65 * 100);
        std::vector<double> sine(65 * 100);
        for (std::size_t k = 0; k < noise.size(); ++k) {
            noise[k] = normal(random);
            sine[k] = std::sin(0.37 * double(k) + seed);
        }
        EXPECT_FALSE(EyeReadings::of(noise, 65, 2)) << seed;
        EXPECT_FALSE(EyeReadings::of(sine, 65, 2)) << seed;
    }
}

TEST(EyeMeasurement, IsNotKnownOfTooLittleOrBadSamples)
{
    Eye eye;
    eye.traces = 31;
    EXPECT_FALSE(eye.read());
    eye.traces = 100;
    std::vector<double> samples = eye.samples();
    EXPECT_FALSE(EyeReadings::of(samples, 65, 1)->eyes[0].width) << "no neighbours in a trace";
    for (const std::size_t length : {std::size_t(0), std::size_t(2), samples.size() + 1})
        EXPECT_FALSE(EyeReadings::of(samples, length, 2));
    EXPECT_FALSE(EyeReadings::of(samples, 65, 0));
    EXPECT_TRUE(EyeReadings::of(samples, 65, 40)); // more symbols than samples
    for (std::size_t k = 0; k < samples.size(); k += 130)
        samples[k] = k % 3 == 0 ? nan : infinity; // every other trace
    EXPECT_TRUE(EyeReadings::of(samples, 65, 2));
    EXPECT_FALSE(EyeReadings::of(std::vector<double>(6500, nan), 65, 2));
    EXPECT_FALSE(EyeReadings::of(std::vector<double>(6500, 1.0), 65, 2));
}

std::vector<Complex> square(int side)
{
    std::vector<Complex> points;
    for (int k = 0; k < side * side; ++k)
        points.emplace_back(2.0 * (k % side) - side + 1.0, 2.0 * (k / side) - side + 1.0);
    return points;
}

TEST(ConstellationMeasurement, GivesTheKnownFiguresOfImpairments)
{
    for (const auto& ideal : {std::vector<Complex>{-1.0, 1.0}, square(2), square(4), square(8)}) {
        double power = 0.0;
        for (const Complex& point : ideal)
            power += std::norm(point) / double(ideal.size());
        const auto read = [&](double noise, Complex gain, Complex offset, double imbalance,
                              double skew) {
            std::mt19937 random(3);
            std::normal_distribution<double> normal;
            std::vector<double> i, q;
            for (int k = 0; k < 20000; ++k) {
                const Complex ideally = ideal[random() % ideal.size()] / std::sqrt(power);
                Complex point(ideally.real() * imbalance + std::sin(skew) * ideally.imag(),
                              std::cos(skew) * ideally.imag());
                point += offset + noise / std::sqrt(2.0) * Complex(normal(random), normal(random));
                point *= gain;
                i.push_back(point.real());
                q.push_back(point.imag());
            }
            return *ConstellationReadings::of(i, q, ideal);
        };
        const auto noisy = read(0.03, std::polar(7.0, 0.05), 0.0, 1.0, 0.0);
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

TEST(ConstellationMeasurement, IsTheSameHoweverTheConstellationIsTurned)
{
    const Complex turn = std::polar(1.0, 0.5); // no grid any more
    std::vector<Complex> turned = square(8);
    for (Complex& point : turned)
        point *= turn;
    std::mt19937 random(5);
    std::normal_distribution<double> normal;
    std::vector<double> i[2], q[2];
    for (int k = 0; k < 2048; ++k) {
        const Complex point = square(8)[random() % 64] + Complex(normal(random), normal(random));
        for (const int way : {0, 1}) {
            i[way].push_back((way ? point * turn : point).real());
            q[way].push_back((way ? point * turn : point).imag());
        }
    }
    const auto straight = ConstellationReadings::of(i[0], q[0], square(8));
    const auto oblique = ConstellationReadings::of(i[1], q[1], turned);
    EXPECT_NEAR(straight->evmRms, oblique->evmRms, 1e-9);
    EXPECT_NEAR(straight->evmPeak, oblique->evmPeak, 1e-9);
    EXPECT_NEAR(straight->originOffset, oblique->originOffset, 1e-6);
}

TEST(ConstellationMeasurement, IsNotKnownOfTooLittleOrBadPoints)
{
    const auto of = [](const std::vector<double>& i, const std::vector<double>& q) {
        return ConstellationReadings::of(i, q, square(2)).has_value();
    };
    EXPECT_FALSE(of({}, {}));
    EXPECT_FALSE(of(std::vector<double>(15, 1.0), std::vector<double>(15, 1.0)));
    EXPECT_FALSE(of(std::vector<double>(99, 0.0), std::vector<double>(99, 0.0)));
    EXPECT_FALSE(of(std::vector<double>(99, nan), std::vector<double>(99, infinity)));
    EXPECT_FALSE(of(std::vector<double>(99, 1e300), std::vector<double>(99, 1e300)));
    EXPECT_FALSE(ConstellationReadings::of({1.0, 2.0}, {1.0, 2.0}, {}));
}

} // namespace
