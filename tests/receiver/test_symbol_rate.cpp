// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/receiver/SymbolRateEstimate.h"
#include "workbench/sources/ModulationSource.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace {

using Complex = std::complex<double>;
using Signal = SymbolRateEstimate::Signal;
using Verdict = SymbolRateEstimate::Verdict;

constexpr double sampleRate = 48e3;

/// Rectangular symbols of -1 and 1 through a short low-pass, with noise.
/// @param code  what a symbol is sent as, sample rate / symbol rate * its length samples long.
Signal data(double samplesPerSymbol, const std::vector<double>& code, double noise,
            std::size_t count = 40000)
{
    std::mt19937 random(7);
    std::normal_distribution<double> gauss;
    std::vector<double> bits(
        static_cast<std::size_t>(static_cast<double>(count) / samplesPerSymbol) + 2);
    for (double& bit : bits)
        bit = random() % 2 == 0 ? -1.0 : 1.0;
    Signal signal{{}, false, sampleRate};
    double level = 0.0;
    for (std::size_t i = 0; i < count; ++i) {
        const double time = static_cast<double>(i) / samplesPerSymbol;
        const double part = time - std::floor(time);
        level +=
            0.4 * (bits[static_cast<std::size_t>(time)] *
                       code[static_cast<std::size_t>(part * static_cast<double>(code.size()))] -
                   level);
        signal.samples.emplace_back(level + noise * gauss(random));
    }
    return signal;
}

template<class Next>
Signal made(Next next, std::size_t count, bool isComplex = false)
{
    Signal signal{{}, isComplex, sampleRate};
    for (std::size_t i = 0; i < count; ++i)
        signal.samples.push_back(next(i));
    return signal;
}

void expectSure(const SymbolRateEstimate& estimate, double symbolRate, double tolerance = 1e-3)
{
    EXPECT_EQ(estimate.verdict, Verdict::Sure) << symbolRate << " Bd: " << estimate.confidence;
    EXPECT_NEAR(estimate.symbolRate, symbolRate, tolerance * symbolRate);
    EXPECT_FALSE(estimate.otherRate) << symbolRate;
}

/// Five deviations of the slope through the phases of 16 pieces of a clock line, relative to the
/// symbol rate. Of random bits half of the edges are there: the line of n symbols has as much
/// power as n times its noise, and its phase a deviation of 1 / sqrt(2 n) at most.
double toleranceOf(double symbolCount)
{
    const double inPiece = 0.75 * symbolCount / 16.0; // of what the window leaves
    const double slope = std::sqrt(12.0 / std::pow(16.0, 3.0) / (2.0 * inPiece)); // rad a piece
    return 5.0 * slope / (2.0 * M_PI * inPiece);
}

} // namespace

TEST(SymbolRate, IsFoundForLinearModulationsWhateverTheirCarrier)
{
    for (const auto scheme :
         {ModulationSettings::Scheme::Bpsk, ModulationSettings::Scheme::Qam16}) {
        ModulationSettings settings;
        settings.scheme = scheme;
        settings.snrDb = 15.0;
        settings.sampleRate = sampleRate;
        ModulationSource source(settings);
        ReceiverSettings receiver;
        receiver.isOn = true;
        receiver.shift = 517.0;
        const auto estimate = SymbolRateEstimate::ofSource(source, 0, receiver);
        expectSure(estimate, sampleRate / ModulationSource::samplesPerSymbol);
        EXPECT_EQ(source.position(), 0) << "the source stays where it was";
    }
}

TEST(SymbolRate, IsFoundForPulsesOfAnyLengthAndInABurst)
{
    for (const double samplesPerSymbol : {5.0, 9.6, 40.0})
        expectSure(SymbolRateEstimate::of(data(samplesPerSymbol, {1.0}, 0.05)),
                   sampleRate / samplesPerSymbol, toleranceOf(32768.0 / samplesPerSymbol));
    Signal burst = data(10.0, {1.0}, 0.05, 8000);
    std::mt19937 random(3);
    std::normal_distribution<double> gauss;
    const auto noise = made([&](std::size_t) { return 2.0 * gauss(random); }, 20000).samples;
    burst.samples.insert(burst.samples.begin(), noise.begin(), noise.end());
    burst.samples.insert(burst.samples.end(), noise.begin(), noise.end());
    expectSure(SymbolRateEstimate::of(burst), sampleRate / 10.0);
}

TEST(SymbolRate, NamesBothRatesOfBitsThatAreSentInHalves)
{
    using Code = SymbolRateEstimate::Code;
    for (const auto& [code, halves] : {std::pair(Code::Manchester, std::vector{1.0, -1.0}),
                                       std::pair(Code::ReturnToZero, std::vector{1.0, 0.0})}) {
        const bool isManchester = code == Code::Manchester;
        for (const double samplesPerBit : {16.0, 19.2, 40.0}) {
            for (const double turn : {0.0, 0.3}) { // of a carrier, rad a sample
                Signal signal = data(samplesPerBit, halves, 0.03);
                signal.isComplex = turn != 0.0;
                for (std::size_t i = 0; i < signal.samples.size(); ++i)
                    signal.samples[i] *= std::polar(1.0, turn * static_cast<double>(i));
                const auto estimate = SymbolRateEstimate::of(signal);
                const double bits = sampleRate / samplesPerBit;
                if (!isManchester && estimate.verdict == Verdict::Sure) { // of its bits
                    expectSure(estimate, bits);
                    continue;
                }
                EXPECT_EQ(estimate.verdict, Verdict::Unsure) << samplesPerBit;
                EXPECT_EQ(estimate.code, code) << samplesPerBit;
                EXPECT_NEAR(estimate.symbolRate, isManchester ? 2.0 * bits : bits, 1e-3 * bits);
                ASSERT_TRUE(estimate.otherRate) << samplesPerBit;
                EXPECT_NEAR(*estimate.otherRate, isManchester ? bits : 2.0 * bits, 1e-3 * bits);
                EXPECT_TRUE(estimate.sentence().contains(
                    QString::number(*estimate.otherRate, 'g', 7) + " Bd: "));
            }
        }
    }
}

TEST(SymbolRate, IsNotSureOfWhatHasNoSymbols)
{
    std::mt19937 random(11);
    std::normal_distribution<double> gauss;
    for (int seed = 0; seed < 12; ++seed) {
        const double tone = 300.0 + 450.0 * seed;
        const auto turn = [tone](std::size_t i) {
            return 2.0 * M_PI * tone * static_cast<double>(i) / sampleRate;
        };
        double level = 0.0;
        const auto colored = [&](std::size_t) { return level += 0.3 * (gauss(random) - level); };
        const std::vector<std::pair<const char*, Signal>> cases{
            {"white",
             made([&](std::size_t) { return Complex(gauss(random), gauss(random)); }, 9000, true)},
            {"coloured", made(colored, 20000)},
            {"sine",
             made([&](std::size_t i) { return std::sin(turn(i)) + 0.01 * gauss(random); }, 9000)},
            {"hum on noise",
             made([&](std::size_t i) { return (1.0 + 0.7 * std::sin(turn(i))) * colored(i); },
                  20000)},
            {"square wave", made(
                                [&](std::size_t i) {
                                    return (std::sin(turn(i)) > 0.0 ? 1.0 : -1.0) +
                                           0.03 * gauss(random);
                                },
                                20000)},
            {"uneven converter",
             made([&](std::size_t i) { return (i % 4 == 0 ? 1.2 : 1.0) * colored(i); }, 20000)}};
        for (const auto& [name, signal] : cases) {
            const auto estimate = SymbolRateEstimate::of(signal);
            EXPECT_NE(estimate.verdict, Verdict::Sure) << name << seed;
            EXPECT_FALSE(estimate.otherRate) << name << seed;
        }
    }
}

TEST(SymbolRate, IsNoneForBadInputAndWhereItIsEnded)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinity = std::numeric_limits<double>::infinity();
    for (const std::size_t count : {0U, 1U, 1023U, 1024U, 5000U}) {
        for (const double value : {0.0, 1.0, nan, infinity, 1e308, 5e-324}) {
            for (const bool isComplex : {false, true}) {
                const auto signal =
                    made([value](std::size_t) { return Complex(value, value); }, count, isComplex);
                EXPECT_EQ(SymbolRateEstimate::of(signal).verdict, Verdict::None) << value;
            }
        }
    }
    Signal good = data(10.0, {1.0}, 0.05);
    good.samples[777] = Complex(nan, infinity);
    expectSure(SymbolRateEstimate::of(good), sampleRate / 10.0);
    EXPECT_EQ(SymbolRateEstimate::of(good, [](double) { return false; }).verdict, Verdict::None);
    for (const double rate : {0.0, -1.0, nan, infinity}) {
        good.sampleRate = rate;
        EXPECT_EQ(SymbolRateEstimate::of(good).verdict, Verdict::None) << rate;
    }
}
