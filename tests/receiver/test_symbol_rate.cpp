// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "SentSignal.h"
#include "workbench/receiver/SymbolRateEstimate.h"
#include "workbench/sources/ModulationSource.h"

namespace {

using Signal = SymbolRateEstimate::Signal;
using Verdict = SymbolRateEstimate::Verdict;

/// Rectangular symbols of -1 and 1 through a short low-pass, with noise.
/// @param code  what a symbol is sent as, sample rate / symbol rate * its length samples long.
Signal data(double samplesPerSymbol, const std::vector<double>& code, double noise,
            std::size_t count = 40000)
{
    Random random(7);
    std::vector<double> bits(
        static_cast<std::size_t>(static_cast<double>(count) / samplesPerSymbol) + 2);
    for (double& bit : bits)
        bit = random.below(2) == 0 ? -1.0 : 1.0;
    Signal signal{{}, false, sampleRate};
    double level = 0.0;
    for (std::size_t i = 0; i < count; ++i) {
        const double time = static_cast<double>(i) / samplesPerSymbol;
        const double part = time - std::floor(time);
        level +=
            0.4 * (bits[static_cast<std::size_t>(time)] *
                       code[static_cast<std::size_t>(part * static_cast<double>(code.size()))] -
                   level);
        signal.samples.emplace_back(level + noise * random.noise());
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
    return 5.0 * slope / (2.0 * pi * inPiece);
}

} // namespace

TEST(SymbolRate, IsFoundForLinearModulationsWhateverTheirCarrier)
{
    for (const auto scheme : {ModulationKind::Bpsk, ModulationKind::Qam16}) {
        ModulationSettings settings;
        settings.modulation = scheme;
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
    burst.samples = joined({noise(20000, 8.0), burst.samples, noise(20000, 8.0)});
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
                EXPECT_TRUE(estimate.message().sentence.contains(
                    QString::number(*estimate.otherRate, 'g', 7) + " Bd: "));
            }
        }
    }
}

TEST(SymbolRate, IsNotSureOfWhatHasNoSymbols)
{
    Random random(11);
    for (int seed = 0; seed < 12; ++seed) {
        const double turn = 2.0 * pi * (300.0 + 450.0 * seed) / sampleRate; // a sample
        const auto sine = [&](std::size_t i) { return std::sin(turn * double(i)); };
        const auto white = [&](std::size_t) { return random.noise(); };
        double level = 0.0;
        const auto colored = [&](std::size_t) { return level += 0.3 * (white(0) - level); };
        const auto noisySine = [&](std::size_t i) { return sine(i) + 0.01 * white(i); };
        const auto hum = [&](std::size_t i) { return (1.0 + 0.7 * sine(i)) * colored(i); };
        const auto square = [&](auto i) { return std::copysign(1.0, sine(i)) + 0.03 * white(i); };
        const auto uneven = [&](std::size_t i) { return (i % 4 == 0 ? 1.2 : 1.0) * colored(i); };
        const std::pair<const char*, Signal> cases[] = {
            {"white", {noise(9000, 2.0, unsigned(seed)), true, sampleRate}},
            {"coloured", made(colored, 20000)},
            {"sine", made(noisySine, 9000)},
            {"hum on noise", made(hum, 20000)},
            {"square wave", made(square, 20000)},
            {"uneven converter", made(uneven, 20000)}};
        for (const auto& [name, signal] : cases) {
            const auto estimate = SymbolRateEstimate::of(signal);
            EXPECT_NE(estimate.verdict, Verdict::Sure) << name << seed;
            EXPECT_FALSE(estimate.otherRate) << name << seed;
        }
    }
}

TEST(SymbolRate, IsNoneForBadInputAndWhereItIsEnded)
{
    for (const std::size_t count : {0U, 1U, 1023U, 1024U, 5000U}) {
        for (const double value : {0.0, 1.0, noNumber, infinity, 1e308, 5e-324}) {
            for (const bool isComplex : {false, true}) {
                const auto signal =
                    made([value](std::size_t) { return Complex(value, value); }, count, isComplex);
                EXPECT_EQ(SymbolRateEstimate::of(signal).verdict, Verdict::None) << value;
            }
        }
    }
    Signal good = data(10.0, {1.0}, 0.05);
    good.samples[777] = Complex(noNumber, infinity);
    expectSure(SymbolRateEstimate::of(good), sampleRate / 10.0);
    EXPECT_EQ(SymbolRateEstimate::of(good, [](double) { return false; }).verdict, Verdict::None);
    for (const double rate : {0.0, -1.0, noNumber, infinity}) {
        good.sampleRate = rate;
        EXPECT_EQ(SymbolRateEstimate::of(good).verdict, Verdict::None) << rate;
    }
}
