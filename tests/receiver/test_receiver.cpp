// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/receiver/ReceiverSource.h"
#include "workbench/sources/ModulationSource.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

namespace {

using Samples = std::vector<std::complex<double>>;
using Stage = StageReport::Stage;
using Quantity = StageReport::Quantity;

constexpr double pi = 3.14159265358979323846;
constexpr double sampleRate = 48000.0;
constexpr double symbolRate = 6000.0;
constexpr std::size_t perSymbol = ReceiverSettings::samplesPerSymbol;

/// A complex signal from memory.
class MemorySource : public SignalSource
{
public:
    explicit MemorySource(Samples samples)
        : m_samples(std::move(samples))
    {}
    QString name() const override { return QStringLiteral("memory"); }
    double sampleRate() const override { return ::sampleRate; }
    int channelCount() const override { return 1; }
    bool isComplex() const override { return true; }
    std::optional<std::int64_t> sampleCount() const override
    {
        return static_cast<std::int64_t>(m_samples.size());
    }
    std::int64_t position() const override { return static_cast<std::int64_t>(m_position); }
    std::size_t read(std::vector<double>& block, std::size_t count) override
    {
        block.clear();
        count = std::min(count, m_samples.size() - m_position);
        for (std::size_t k = 0; k < count; ++k, ++m_position) {
            block.push_back(m_samples[m_position].real());
            block.push_back(m_samples[m_position].imag());
        }
        return count;
    }
    bool seek(std::int64_t position) override
    {
        m_position = std::min(static_cast<std::size_t>(position), m_samples.size());
        return true;
    }

private:
    Samples m_samples;
    std::size_t m_position = 0;
};

Samples noise(std::size_t count, double rms)
{
    std::mt19937 random(7);
    std::normal_distribution<double> normal(0.0, rms);
    Samples samples(count);
    for (auto& sample : samples)
        sample = {normal(random), normal(random)};
    return samples;
}

/// Symbols of a modulation, faint and off their carrier by a frequency in Hz.
Samples modulated(int scheme, double offset, std::size_t count)
{
    ModulationSettings settings;
    settings.scheme = static_cast<ModulationSettings::Scheme>(scheme);
    settings.sampleRate = sampleRate;
    ModulationSource source(settings);
    std::vector<double> block;
    source.read(block, count);
    Samples samples;
    for (std::size_t k = 0; k < count; ++k)
        samples.push_back(
            std::polar(0.03, 2.0 * pi * offset * static_cast<double>(k) / sampleRate + 0.4) *
            std::complex<double>(block[2 * k], block[2 * k + 1]));
    return samples;
}

/// Carriers between two frequencies, in Hz, as random bits ask.
Samples keyed(double frequency, double deviation, std::size_t symbolCount)
{
    std::mt19937 random(3);
    Samples samples;
    double phase = 0.0;
    for (std::size_t k = 0; k < symbolCount; ++k) {
        const double turn = frequency + (random() % 2 == 0 ? deviation : -deviation);
        for (std::size_t i = 0; i < perSymbol; ++i)
            samples.push_back(std::polar(0.5, phase += 2.0 * pi * turn / sampleRate));
    }
    return samples;
}

ReceiverSettings settingsFor(int scheme)
{
    ReceiverSettings settings;
    settings.isOn = true;
    settings.symbolRate = symbolRate;
    settings.modulation = static_cast<ReceiverSettings::Modulation>(scheme);
    return settings;
}

StageReport reportOf(const ReceiverSource& source, Stage stage)
{
    for (const StageReport& report : source.reports()) {
        if (report.stage == stage)
            return report;
    }
    return {};
}

double readingOf(const StageReport& report, Quantity quantity)
{
    for (const auto& reading : report.readings) {
        if (reading.quantity == quantity)
            return reading.value;
    }
    return std::numeric_limits<double>::quiet_NaN();
}

/// Reads on, in blocks of odd length.
std::vector<double> readFrom(ReceiverSource& source, std::size_t sampleCount)
{
    std::vector<double> result;
    std::vector<double> block;
    const auto width = static_cast<std::size_t>(source.valueCount());
    while (result.size() < sampleCount * width &&
           source.read(block, std::min<std::size_t>(333, sampleCount - result.size() / width)) > 0)
        result.insert(result.end(), block.begin(), block.end());
    return result;
}

/// Modulation error ratio, dB, of what lies on symbols, from one of them on.
double merOf(const std::vector<double>& values, int scheme, std::size_t firstSymbol)
{
    const auto points =
        ReceiverSettings::pointsOf(static_cast<ReceiverSettings::Modulation>(scheme));
    double error = 0.0;
    double count = 0.0;
    for (std::size_t k = 2 * perSymbol * firstSymbol; k + 1 < values.size(); k += 2 * perSymbol) {
        double closest = std::numeric_limits<double>::infinity();
        for (const auto& point : points)
            closest = std::min(closest,
                               std::norm(std::complex<double>(values[k], values[k + 1]) - point));
        error += closest;
        count += 1.0;
    }
    return 10.0 * std::log10(count / error);
}

} // namespace

TEST(Receiver, FindsTheSymbolsOfEachModulation)
{
    for (int scheme = 0; scheme < ReceiverSettings::modulationNames().size(); ++scheme) {
        SCOPED_TRACE(scheme);
        constexpr double offset = 120.0;
        ReceiverSource source(std::make_unique<MemorySource>(modulated(scheme, offset, 80000)), 0,
                              settingsFor(scheme));
        const auto values = readFrom(source, 70000);
        EXPECT_GT(merOf(values, scheme, 4000), 22.0);
        const StageReport timing = reportOf(source, Stage::Timing);
        EXPECT_EQ(timing.isLocked, true);
        EXPECT_LT(std::abs(readingOf(timing, Quantity::SymbolRateError)), 200.0);
        const StageReport carrier = reportOf(source, Stage::Carrier);
        EXPECT_EQ(carrier.isLocked, true);
        EXPECT_NEAR(readingOf(carrier, Quantity::CarrierOffset), offset, 15.0);
    }
}

TEST(Receiver, LocksToNothingInNoise)
{
    for (int scheme = 0; scheme < ReceiverSettings::modulationNames().size(); ++scheme) {
        SCOPED_TRACE(scheme);
        ReceiverSource source(std::make_unique<MemorySource>(noise(200000, 0.1)), 0,
                              settingsFor(scheme));
        std::vector<double> block;
        while (source.read(block, 4096) > 0) {
            EXPECT_NE(reportOf(source, Stage::Carrier).isLocked, true);
            EXPECT_NE(reportOf(source, Stage::Timing).isLocked, true);
        }
    }
}

TEST(Receiver, FollowsABurstFromItsStartAndLetsItGo)
{
    constexpr int qpsk = 1;
    Samples samples = noise(120000, 1e-3);
    const Samples burst = modulated(qpsk, -40.0, 40000);
    std::transform(burst.begin(), burst.end(), samples.begin() + 40000, samples.begin() + 40000,
                   std::plus<>());
    ReceiverSource source(std::make_unique<MemorySource>(samples), 0, settingsFor(qpsk));
    readFrom(source, 41000);
    const auto values = readFrom(source, 38000);
    EXPECT_GT(merOf(values, qpsk, 200), 18.0);
    EXPECT_EQ(reportOf(source, Stage::Carrier).isLocked, true);
    readFrom(source, 30000);
    EXPECT_EQ(reportOf(source, Stage::Carrier).isLocked, false);
}

TEST(Receiver, ShowsTheFrequencyBesideItsSignal)
{
    ReceiverSettings settings;
    settings.isOn = true;
    settings.symbolRate = symbolRate;
    settings.shift = -2000.0;
    settings.demodulation = ReceiverSettings::Demodulation::Fm;
    ReceiverSource source(std::make_unique<MemorySource>(keyed(2000.0, 1500.0, 4000)), 0, settings);
    ASSERT_EQ(source.valueCount(), 3);
    EXPECT_EQ(source.constellationChannel(), 1);
    EXPECT_EQ(source.firstSymbol(), 0.0);
    const auto values = readFrom(source, 24000);
    ASSERT_EQ(values.size(), 3U * 24000U);
    for (std::size_t k = 3 * perSymbol * 1000; k < values.size(); k += 3 * perSymbol) {
        EXPECT_NEAR(std::abs(values[k]), 1500.0 / symbolRate, 0.03); // in symbol rates
        EXPECT_NEAR(std::hypot(values[k + 1], values[k + 2]), 0.5, 0.05);
    }
}

TEST(Receiver, GivesTheSameAgainAfterGoingBack)
{
    constexpr int qpsk = 1;
    ReceiverSource source(std::make_unique<MemorySource>(modulated(qpsk, 10.0, 30000)), 0,
                          settingsFor(qpsk));
    const auto once = readFrom(source, 9001);
    EXPECT_EQ(source.position(), 9001);
    ASSERT_TRUE(source.seek(0));
    EXPECT_EQ(readFrom(source, 9001), once);
    ASSERT_TRUE(source.seek(15003));
    EXPECT_EQ(source.position() % static_cast<std::int64_t>(perSymbol), 0);
    EXPECT_FALSE(source.seek(-1));
}

TEST(Receiver, StaysFiniteWhateverComesIn)
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    for (const double value : {std::nan(""), infinity, -infinity, 1e300, 1e-300, 0.0}) {
        for (const auto demodulation :
             {ReceiverSettings::Demodulation::Linear, ReceiverSettings::Demodulation::Fm,
              ReceiverSettings::Demodulation::Am}) {
            ReceiverSettings settings = settingsFor(3);
            settings.demodulation = demodulation;
            settings.bandwidth = 9000.0;
            settings.rollOff = 0.3;
            Samples samples = modulated(3, 0.0, 24000);
            std::fill(samples.begin() + 8000, samples.begin() + 16000, value);
            ReceiverSource source(std::make_unique<MemorySource>(samples), 0, settings);
            const auto values = readFrom(source, 30000);
            EXPECT_GT(values.size(), 40000U);
            EXPECT_TRUE(std::all_of(values.begin(), values.end(),
                                    [](double v) { return std::isfinite(v); }));
        }
    }
}

TEST(Receiver, TellsWhatCannotBeReceived)
{
    const double nan = std::nan("");
    const auto flawOf = [](auto change) {
        ReceiverSettings settings = settingsFor(0);
        change(settings);
        return settings.flaw(sampleRate);
    };
    EXPECT_EQ(flawOf([](auto&) {}), QString());
    EXPECT_NE(flawOf([](auto& s) { s.symbolRate = sampleRate; }), QString());
    EXPECT_NE(flawOf([](auto& s) { s.symbolRate = 0.0; }), QString());
    EXPECT_NE(flawOf([nan](auto& s) { s.symbolRate = nan; }), QString());
    EXPECT_NE(flawOf([nan](auto& s) { s.shift = nan; }), QString());
    EXPECT_NE(flawOf([](auto& s) { s.bandwidth = -1.0; }), QString());
    EXPECT_NE(flawOf([](auto& s) { s.rollOff = 7.0; }), QString());
}
