// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/receiver/FirFilter.h"
#include "workbench/receiver/ReceiverSource.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <utility>

namespace {

using Complex = std::complex<double>;
using Samples = std::vector<Complex>;
using Stage = StageReport::Stage;
using Quantity = StageReport::Quantity;
using Demodulation = ReceiverSettings::Demodulation;

constexpr double pi = 3.14159265358979323846;
constexpr double sampleRate = 48000.0;
constexpr std::size_t perSymbol = ReceiverSettings::samplesPerSymbol;
constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();

enum Scheme { bpsk, qpsk, psk8, qam16, qam64 };

Samples pointsOf(int scheme)
{
    return ReceiverSettings::pointsOf(static_cast<ReceiverSettings::Modulation>(scheme));
}

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
    std::normal_distribution<double> normal;
    Samples samples(count);
    for (auto& sample : samples)
        sample = {rms * normal(random), rms * normal(random)};
    return samples;
}

/// How symbols are sent, faint, in noise 40 dB below.
struct Signal
{
    double length = 8.0;                // of a symbol, samples
    double clock = 80e-6;               // by which symbols come faster
    double carrier = 110.0;             // Hz
    std::optional<double> rollOff = {}; // root raised cosine; none: a whole raised cosine of 0.35
    Demodulation demodulation = Demodulation::Linear; // that tells the symbols
};

double pulse(double t, std::optional<double> rollOff)
{
    t += 1e-7; // not where the formulas have gaps
    const double r = rollOff.value_or(0.35);
    if (!rollOff)
        return std::sin(pi * t) / (pi * t) * std::cos(pi * r * t) / (1.0 - 4.0 * r * r * t * t);
    return (std::sin(pi * t * (1.0 - r)) + 4.0 * r * t * std::cos(pi * t * (1.0 + r))) /
           (pi * t * (1.0 - 16.0 * r * r * t * t));
}

Samples randomSymbols(const Samples& points, std::size_t count)
{
    std::mt19937 random(3);
    Samples symbols(count);
    for (auto& symbol : symbols)
        symbol = points[random() % points.size()];
    return symbols;
}

Samples sent(const Samples& symbols, const Signal& signal)
{
    constexpr int reach = 12;
    Samples samples =
        noise(static_cast<std::size_t>(static_cast<double>(symbols.size()) * signal.length), 2e-4);
    double phase = 0.0;
    for (std::size_t n = 0; n < samples.size(); ++n) {
        const double time = 0.37 + static_cast<double>(n) * (1.0 + signal.clock) / signal.length;
        const int middle = static_cast<int>(time);
        const int end = std::min(middle + reach, static_cast<int>(symbols.size()));
        Complex sum = 0.0;
        for (int k = std::max(middle - reach, 0); k < end; ++k)
            sum += symbols[static_cast<std::size_t>(k)] * pulse(time - k, signal.rollOff);
        phase += 2.0 * pi * signal.carrier / sampleRate;
        if (signal.demodulation == Demodulation::Fm)
            phase += 2.0 * pi * std::exchange(sum, 1.0).real() / signal.length;
        const double amplitude = signal.demodulation == Demodulation::Am ? 1.0 : 0.03;
        samples[n] += std::polar(amplitude, phase) * sum;
    }
    return samples;
}

ReceiverSettings settingsFor(std::optional<int> scheme, double length = 8.0)
{
    ReceiverSettings settings;
    settings.isOn = true;
    settings.symbolRate = sampleRate / length;
    if (scheme)
        settings.modulation = static_cast<ReceiverSettings::Modulation>(*scheme);
    return settings;
}

/// A receiver that is fed with blocks of some lengths, and keeps what comes out.
struct Receiver
{
    explicit Receiver(const ReceiverSettings& settings) { chain.configure(settings, sampleRate); }
    void feed(const Samples& samples, const std::vector<std::size_t>& lengths = {4096})
    {
        std::size_t first = 0;
        for (std::size_t k = 0; first < samples.size(); ++k) {
            const auto end = std::min(first + lengths[k % lengths.size()], samples.size());
            BasebandBlock block;
            block.samples.assign(samples.begin() + static_cast<std::ptrdiff_t>(first),
                                 samples.begin() + static_cast<std::ptrdiff_t>(end));
            chain.process(block);
            take(block);
            for (const Stage stage : {Stage::Timing, Stage::Carrier})
                everLocked = everLocked || report(stage).isLocked.value_or(false);
            first = end;
        }
    }
    void finish()
    {
        BasebandBlock block;
        chain.finish(block);
        take(block);
    }
    void take(const BasebandBlock& block)
    {
        samples.insert(samples.end(), block.samples.begin(), block.samples.end());
        demodulated.insert(demodulated.end(), block.demodulated.begin(), block.demodulated.end());
    }
    StageReport report(Stage stage) const
    {
        return chain.reports()[static_cast<std::size_t>(stage)];
    }
    double reading(Stage stage, Quantity quantity) const
    {
        for (const auto& reading : report(stage).readings) {
            if (reading.quantity == quantity)
                return reading.value;
        }
        return noNumber;
    }
    /// What lies on the last symbols.
    Samples lastSymbols(std::size_t count) const
    {
        const std::size_t symbolCount = samples.size() / perSymbol;
        Samples symbols;
        for (std::size_t k = symbolCount - std::min(count, symbolCount); k < symbolCount; ++k)
            symbols.push_back(demodulated.empty() ? Complex(samples[k * perSymbol])
                                                  : double{demodulated[k * perSymbol]});
        return symbols;
    }

    ReceiverChain chain;
    bool everLocked = false;
    std::vector<std::complex<float>> samples;
    std::vector<float> demodulated;
};

const Complex& closest(const Samples& points, Complex symbol)
{
    return *std::min_element(points.begin(), points.end(), [symbol](Complex a, Complex b) {
        return std::norm(a - symbol) < std::norm(b - symbol);
    });
}

/// Modulation error ratio, dB.
double merOf(const Samples& symbols, const Samples& points)
{
    double power = 0.0;
    double error = 0.0;
    for (const Complex symbol : symbols) {
        power += std::norm(closest(points, symbol));
        error += std::norm(symbol - closest(points, symbol));
    }
    return 10.0 * std::log10(power / error);
}

/// Decisions about the last symbols that are not what was sent, of points that look the same after
/// a number of turns, for the turn and the delay that suit best.
std::size_t wrongCount(const Samples& received, const Samples& sent, const Samples& points,
                       int turns)
{
    constexpr std::size_t longest = 40;
    std::size_t least = received.size();
    for (std::size_t delay = 0; delay < 2 * longest; ++delay) {
        for (int turn = 0; turn < turns; ++turn) {
            const Complex back = std::polar(1.0, -2.0 * pi * turn / turns);
            std::size_t wrong = 0;
            for (std::size_t k = 2 * longest; k < received.size() && wrong < least; ++k) {
                const Complex decision = closest(points, received[k - longest]) * back;
                const Complex symbol = sent[sent.size() - received.size() + k - delay];
                wrong += std::norm(decision - symbol) > 1e-6 ? 1 : 0;
            }
            least = std::min(least, wrong);
        }
    }
    return least;
}

const int turnsOf[] = {2, 4, 8, 4, 4};

} // namespace

TEST(Receiver, DecidesAsWasSent)
{
    constexpr std::size_t symbolCount = 10000;
    const Samples four = {-0.3, -0.1, 0.1, 0.3};
    const struct
    {
        std::optional<int> scheme;
        Samples levels; // that are demodulated, of none
        Signal signal;
        std::optional<double> bandwidth;
        double shift;
        double mer; // dB, at least
    } rows[] = {
        {bpsk, {}, {}, {}, 0.0, 33.0},
        {qpsk, {}, {}, {}, 0.0, 35.0},
        {psk8, {}, {}, {}, 0.0, 35.0},
        {qam16, {}, {}, {}, 0.0, 31.0},
        {qam64, {}, {}, {}, 0.0, 30.0},
        {bpsk, {}, {10.7, -80e-6, -90.0, 0.5}, 9000.0, 0.0, 42.0},
        {qpsk, {}, {3.3, -80e-6, 15900.0, 0.2}, {}, -15000.0, 25.0},
        {qam16, {}, {21.0, 150e-6, -60.0, 0.35}, 5000.0, 0.0, 31.0},
        {{}, {-0.25, 0.25}, {8.0, 80e-6, 2000.0, {}, Demodulation::Fm}, {}, -2000.0, 20.0},
        {{}, four, {10.3, -80e-6, 9000.0, {}, Demodulation::Fm}, 8000.0, -9000.0, 20.0},
        {{}, four, {8.0, 80e-6, 0.0, 0.2, Demodulation::Fm}, {}, 0.0, 20.0},
        {{}, {0.0, 1.0}, {8.0, 80e-6, -3000.0, {}, Demodulation::Am}, 9000.0, 3000.0, 20.0}};
    for (const auto& row : rows) {
        SCOPED_TRACE(&row - rows);
        const Samples points = row.scheme ? pointsOf(*row.scheme) : row.levels;
        const Samples symbols = randomSymbols(points, symbolCount);
        ReceiverSettings settings = settingsFor(row.scheme, row.signal.length);
        settings.demodulation = row.signal.demodulation;
        settings.rollOff = row.signal.rollOff;
        settings.bandwidth = row.bandwidth;
        settings.shift = row.shift;
        Receiver receiver(settings);
        receiver.feed(sent(symbols, row.signal));
        EXPECT_EQ(receiver.report(Stage::Timing).isLocked, true);
        EXPECT_NEAR(receiver.reading(Stage::Timing, Quantity::SymbolRateError),
                    1e6 * row.signal.clock, 60.0);
        EXPECT_LT(receiver.reading(Stage::Timing, Quantity::TimingError), 3e-3);
        if (row.scheme) {
            EXPECT_EQ(receiver.report(Stage::Carrier).isLocked, true);
            EXPECT_NEAR(receiver.reading(Stage::Carrier, Quantity::CarrierOffset),
                        row.signal.carrier + row.shift, 3.0);
            EXPECT_LT(receiver.reading(Stage::Carrier, Quantity::PhaseError), 3.0);
            EXPECT_NEAR(receiver.reading(Stage::Gain, Quantity::Level), -30.7, 0.6);
        }
        receiver.finish();
        EXPECT_NEAR(static_cast<double>(receiver.samples.size()), perSymbol * symbolCount, 300.0);
        const Samples received = receiver.lastSymbols(6000);
        EXPECT_EQ(wrongCount(received, symbols, points, row.scheme ? turnsOf[*row.scheme] : 1), 0U);
        EXPECT_GT(merOf(received, points), row.mer);
    }
}

TEST(Receiver, LocksAgainAfterAGap)
{
    for (const int scheme : {bpsk, qpsk, psk8, qam16}) {
        const Samples points = pointsOf(scheme);
        const Samples symbols = randomSymbols(points, 6000);
        const Samples before = sent(symbols, {8.0, 0.0, -40.0});
        const Samples after = sent(symbols, {8.0, 60e-6, 150.0});
        for (const double rms : {0.0, 2e-3}) {
            SCOPED_TRACE(scheme);
            SCOPED_TRACE(rms);
            Receiver receiver(settingsFor(scheme));
            const auto lockedCount = [&receiver] {
                return receiver.report(Stage::Timing).isLocked.value_or(false) +
                       receiver.report(Stage::Carrier).isLocked.value_or(false);
            };
            receiver.feed(before);
            EXPECT_EQ(lockedCount(), 2);
            receiver.feed(noise(33333, rms));
            EXPECT_EQ(lockedCount(), 0);
            receiver.feed(after);
            EXPECT_EQ(lockedCount(), 2);
            receiver.finish();
            EXPECT_EQ(wrongCount(receiver.lastSymbols(3500), symbols, points, turnsOf[scheme]), 0U);
        }
    }
}

TEST(Receiver, LocksToNothingWhereNothingIs)
{
    ReceiverSettings filtered = settingsFor(qpsk);
    filtered.bandwidth = 7000.0;
    filtered.rollOff = 0.35;
    ReceiverSettings fm = filtered;
    fm.demodulation = Demodulation::Fm;
    ReceiverSettings am = settingsFor({});
    am.demodulation = Demodulation::Am;
    std::vector<ReceiverSettings> rows = {filtered, fm, am};
    for (const int scheme : {bpsk, qpsk, psk8, qam16, qam64})
        rows.push_back(settingsFor(scheme));
    for (const ReceiverSettings& settings : rows) {
        SCOPED_TRACE(&settings - rows.data());
        for (const double rms : {0.0, 0.1}) {
            Receiver receiver(settings);
            receiver.feed(noise(200000, rms), {1024});
            EXPECT_FALSE(receiver.everLocked) << rms;
        }
    }
}

TEST(Receiver, GivesTheSameInBlocksOfAnyLength)
{
    for (const auto demodulation : {Demodulation::Linear, Demodulation::Fm, Demodulation::Am}) {
        ReceiverSettings settings = settingsFor(qpsk, 7.3);
        settings.demodulation = demodulation;
        settings.bandwidth = 12000.0;
        settings.shift = 1000.0;
        settings.rollOff = 0.35;
        const Samples samples =
            sent(randomSymbols(pointsOf(qpsk), 4000), {7.3, 80e-6, -950.0, 0.35});
        Receiver whole(settings);
        whole.feed(samples, {samples.size()});
        whole.finish();
        EXPECT_GT(whole.samples.size(), perSymbol * 3900);
        const std::vector<std::vector<std::size_t>> rows = {
            {1}, {7}, {333}, {10000}, {1, 0, 5000, 2, 77}};
        for (const auto& lengths : rows) {
            Receiver receiver(settings);
            receiver.feed(samples, lengths);
            receiver.finish();
            EXPECT_EQ(receiver.samples, whole.samples) << lengths[0];
            EXPECT_EQ(receiver.demodulated, whole.demodulated) << lengths[0];
        }
    }
}

TEST(Receiver, GivesTheSameAgainAfterGoingBack)
{
    const Samples samples = sent(randomSymbols(pointsOf(qpsk), 4000), {});
    ReceiverSource source(std::make_unique<MemorySource>(samples), 0, settingsFor(qpsk));
    const auto readOn = [&source] {
        std::vector<double> values;
        std::vector<double> block;
        while (values.size() < 2 * 9001 && source.read(block, 9001 - values.size() / 2) > 0)
            values.insert(values.end(), block.begin(), block.end());
        return values;
    };
    const auto once = readOn();
    EXPECT_EQ(source.position(), 9001);
    ASSERT_TRUE(source.seek(0));
    EXPECT_EQ(readOn(), once);
    ASSERT_TRUE(source.seek(15003));
    EXPECT_EQ(source.position() % static_cast<std::int64_t>(perSymbol), 0);
    EXPECT_FALSE(source.seek(-1));
}

TEST(Receiver, SilencesWhatIsBetweenBursts)
{
    const Samples points[] = {pointsOf(qpsk), {-0.25, 0.25}};
    for (const auto demodulation : {Demodulation::Linear, Demodulation::Fm}) {
        const bool isFm = demodulation == Demodulation::Fm;
        const Samples symbols = randomSymbols(points[isFm], 2000);
        const Samples burst = sent(symbols, {8.0, 0.0, -40.0, {}, demodulation});
        Samples samples = noise(60000, 1e-3); // 27 dB below it
        std::copy(burst.begin(), burst.end(), samples.begin() + 20000);
        std::copy(burst.begin(), burst.end(), samples.begin() + 40000);
        ReceiverSettings settings = settingsFor(isFm ? std::nullopt : std::optional<int>(qpsk));
        settings.demodulation = demodulation;
        settings.squelch = -42.0;
        ReceiverSource source(std::make_unique<MemorySource>(samples), 0, settings);
        Samples heard;
        std::vector<double> values;
        for (std::size_t k = 0; source.read(values, 1) > 0; ++k) {
            const Complex symbol(values[0], isFm ? 0.0 : values[1]);
            if (k % perSymbol == 0 && std::isfinite(std::abs(symbol)))
                heard.push_back(symbol);
        }
        EXPECT_NEAR(static_cast<double>(heard.size()), 4000.0, 40.0);
        std::size_t farCount = 0;
        for (const Complex symbol : heard)
            farCount +=
                std::abs(symbol - closest(points[isFm], symbol)) > 0.3 * std::abs(points[isFm][0])
                    ? 1
                    : 0;
        EXPECT_LT(farCount, 200U); // where bursts start and end
        EXPECT_EQ(source.reports()[static_cast<std::size_t>(Stage::Squelch)].isLocked, false);
    }
}

TEST(Receiver, StaysFiniteWhateverComesIn)
{
    const Samples good = sent(randomSymbols(pointsOf(qam16), 3000), {});
    for (const double value : {noNumber, infinity, -infinity, 1e300, 1e-300, 0.0}) {
        for (const auto demodulation : {Demodulation::Linear, Demodulation::Fm, Demodulation::Am}) {
            ReceiverSettings settings = settingsFor(qam16);
            settings.demodulation = demodulation;
            settings.bandwidth = 9000.0;
            settings.rollOff = 0.3;
            Samples samples = good;
            std::fill(samples.begin() + 8000, samples.begin() + 16000, value);
            Receiver receiver(settings);
            receiver.feed(samples);
            receiver.finish();
            EXPECT_GT(receiver.samples.size(), 20000U);
            const auto isFinite = [](const std::complex<float>& sample) {
                return std::isfinite(sample.real()) && std::isfinite(sample.imag());
            };
            EXPECT_TRUE(std::all_of(receiver.samples.begin(), receiver.samples.end(), isFinite));
            EXPECT_TRUE(
                std::all_of(receiver.demodulated.begin(), receiver.demodulated.end(), isFinite));
        }
    }
}

TEST(FirFilter, GivesWhatAPlainSumGivesInBlocksOfAnyLength)
{
    const std::vector<float> taps = {0.7F, -0.2F, 0.31F, 1e-3F, 0.9F};
    std::vector<std::complex<float>> input(5); // the last ones of them before the signal
    FirFilter filter(taps, 3.0F);
    for (const std::size_t count : {1, 15, 0, 16, 17, 40}) {
        std::vector<std::complex<float>> block;
        for (std::size_t k = 0; k < count; ++k) {
            const auto x = static_cast<float>(input.size());
            input.emplace_back(std::sin(x), std::cos(1.3F * x));
            block.push_back(input.back());
        }
        filter.process(block);
        ASSERT_EQ(block.size(), count);
        for (std::size_t k = 0; k < count; ++k) {
            std::complex<float> sum;
            for (std::size_t tap = taps.size(); tap-- > 0;) // the oldest sample first
                sum += taps[tap] * input[input.size() - count + k - tap];
            EXPECT_EQ(block[k], 3.0F * sum) << count << ' ' << k;
        }
    }
}

TEST(Receiver, TellsWhatCannotBeReceived)
{
    using Settings = ReceiverSettings;
    const auto flawOf = [](auto member, double value) {
        Settings settings = settingsFor(qpsk);
        settings.*member = value;
        return !settings.flaw(sampleRate).isEmpty();
    };
    for (const double value : {noNumber, infinity, -infinity, -1e300, 1e300}) {
        EXPECT_TRUE(flawOf(&Settings::shift, value)) << value;
        EXPECT_TRUE(flawOf(&Settings::bandwidth, value)) << value;
        EXPECT_TRUE(flawOf(&Settings::squelch, value)) << value;
        EXPECT_TRUE(flawOf(&Settings::rollOff, value)) << value;
        EXPECT_TRUE(flawOf(&Settings::symbolRate, value)) << value;
    }
    const struct
    {
        std::optional<double> Settings::*member;
        std::vector<double> good;
        std::vector<double> bad;
    } rows[] = {{&Settings::bandwidth, {1.0, 47999.0}, {0.0, -1.0, 48000.0}},
                {&Settings::rollOff, {0.01, 1.0}, {0.0, -0.1, 1.01}},
                {&Settings::symbolRate, {0.48, 24000.0}, {0.0, -6000.0, 0.47, 24001.0, 48000.0}}};
    for (const auto& row : rows) {
        for (const double value : row.good)
            EXPECT_FALSE(flawOf(row.member, value)) << value;
        for (const double value : row.bad)
            EXPECT_TRUE(flawOf(row.member, value)) << value;
    }
    for (const double shift : {-24000.0, 24000.0})
        EXPECT_FALSE(flawOf(&Settings::shift, shift));
    EXPECT_TRUE(flawOf(&Settings::shift, 48001.0));
}
