// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "SentSignal.h"

namespace {

using Stage = StageReport::Stage;
using Quantity = StageReport::Quantity;
using State = SymbolState;

constexpr Mod modulations[] = {Mod::Bpsk,  Mod::Qpsk,  Mod::Psk8,    Mod::Qam16,
                               Mod::Qam64, Mod::Oqpsk, Mod::Pi4Dqpsk};

// What is known where the noise is that of the samples alone.
void expectUndistorted(const Received& received, const Comparison& found, const Sending& sending,
                       double shift)
{
    // A matched filter passes a noise of one over the length of a symbol, and resampling takes
    // up to 0.6 dB off where there is none.
    const double gain = sending.rollOff ? 10.0 * std::log10(sending.length) : 0.3;
    EXPECT_NEAR(found.mer, 30.0 + gain, 0.4);
    // A straight line between samples an eighth of a symbol apart: 1/8 (pi / 8)^2 of a part.
    EXPECT_LT(found.torn, 0.02);
    // A slip of an eighth of a turn would be 0.12 Hz; noise moves it by a thousandth of that.
    const double carrier = sending.carrier + shift;
    EXPECT_NEAR(carrierOf(received), carrier, 0.02);
    EXPECT_EQ(report(received, Stage::Carrier).isLocked, true);
    EXPECT_TRUE(std::isnan(reading(received, Stage::Carrier, Quantity::AliasDistance)));
    // 64 symbols at 30 dB: 0.2 degrees each, which is 0.001 of a symbol rate.
    EXPECT_NEAR(reading(received, Stage::Carrier, Quantity::CarrierOffset), carrier, 6.0);
    EXPECT_LT(reading(received, Stage::Carrier, Quantity::PhaseError), 8.0);
    EXPECT_NEAR(reading(received, Stage::Gain, Quantity::Level), -30.46, 0.2);
}

TEST(Receiver, DecidesAsWasSent)
{
    const Samples four = {-0.3, -0.1, 0.1, 0.3};
    struct Row
    {
        Sending sending;
        std::optional<double> bandwidth = {};
        double shift = 0.0;
        double mer = 0.0; // dB, at least; 0: that of the noise that a filter passes
    };
    std::vector<Row> rows = {
        {{Mod::Bpsk, {}, 10.7, -80e-6, -90.0, 0.5}, 9000.0},
        {{Mod::Qpsk, {}, 3.3, -80e-6, 15900.0, 0.2}, {}, -15000.0},
        {{Mod::Qam16, {}, 21.0, 150e-6, -60.0, 0.35}, 5000.0},
        {{Mod::Oqpsk, {}, 6.0, 20e-6, 900.0, 0.35}, 12000.0, -400.0},
        {{Mod::Pi4Dqpsk, {}, 8.0, -20e-6, 2100.0, 0.35}, {}, -100.0},
        // Noise of 1e-3 makes 1e-3 (8 / 2 pi)^2 of frequency: 15.9 dB below levels of 0.25.
        {{{}, {-0.25, 0.25}, 8.0, 80e-6, 2000.0, {}, Demodulation::Fm}, {}, -2000.0, 15.9},
        {{{}, four, 10.3, -80e-6, 9000.0, {}, Demodulation::Fm}, 8000.0, -9000.0, 20.0},
        {{{}, four, 8.0, 80e-6, 0.0, 0.2, Demodulation::Fm}, {}, 0.0, 30.0},
        {{{}, {0.0, 1.0}, 8.0, 80e-6, -3000.0, {}, Demodulation::Am}, 9000.0, 3000.0, 27.0}};
    for (const Mod modulation : modulations)
        rows.push_back({{modulation}});
    for (const Row& row : rows) {
        SCOPED_TRACE(&row - rows.data());
        const Sending& sending = row.sending;
        ReceiverSettings settings = sending.settings();
        settings.bandwidth = row.bandwidth;
        settings.shift = row.shift;
        const Received received(settings, sending.samples());
        const Comparison found = compare(sending, received);
        // Edges are some symbols; what noise takes for unlocked, blocks of 32.
        EXPECT_GT(found.good, 94 * sending.count / 100);
        EXPECT_EQ(found.wrong, 0U);
        EXPECT_NEAR(double(received.symbols.size()), double(sending.count), 5.0);
        // Without a filter, 30 dB and 144 symbols tell an instant to 0.0010 (Cramer-Rao), and those
        // of magnitudes and frequencies, whose edges are not alike, tell less.
        EXPECT_LT(found.late, row.mer > 0.0 ? 0.03 : 0.003);
        EXPECT_EQ(report(received, Stage::Timing).isLocked, true);
        // As much over the 16 blocks of symbols that tell the rate: 0.005 of 256 is 20 ppm.
        EXPECT_NEAR(reading(received, Stage::Timing, Quantity::SymbolRateError),
                    1e6 * sending.clock, 60.0);
        EXPECT_LT(reading(received, Stage::Timing, Quantity::TimingError), 0.03);
        if (row.mer > 0.0)
            EXPECT_GT(found.mer, row.mer);
        else
            expectUndistorted(received, found, sending, row.shift);
    }
}

TEST(Receiver, SaysWhereTheCarrierMayBeAnother)
{
    // Few symbols of a pulse that is not known may not tell eighths apart: none is wrong in
    // silence.
    const Sending sending{Mod::Psk8, {}, 8.0, 0.0, 300.0, 0.2, Demodulation::Linear, 0.003, 400};
    ReceiverSettings settings = sending.settings();
    settings.rollOff.reset();
    const Samples all = sending.samples();
    int saidCount = 0;
    for (int first = 100; first < 2800; first += 90) {
        const Received received(
            settings, {all.begin() + first, all.begin() + first + std::ptrdiff_t{34} * 8});
        const double alias = reading(received, Stage::Carrier, Quantity::AliasDistance);
        saidCount += std::isnan(alias) ? 0 : 1;
        if (std::isnan(alias) && received.count(State::Good) > 8) {
            EXPECT_NEAR(carrierOf(received), sending.carrier, 100.0) << first; // else 750
        }
    }
    EXPECT_GT(saidCount, 0);
}

TEST(Receiver, LocksAgainAfterAGapAndWhereTheCarrierJumps)
{
    for (const Mod modulation : modulations) {
        const Sending before{modulation, {}, 8.0, 0.0, -40.0, 0.35};
        const Sending after{modulation, {}, 8.0, 60e-6, 150.0, 0.35};
        const Samples first = before.samples();
        const double start = double(first.size()) / sampleRate;
        const double end = start + 33333.0 / sampleRate;
        for (const double power : {0.0, 1e-5}) {
            SCOPED_TRACE(power);
            const Received received(after.settings(),
                                    joined({first, noise(33333, power), after.samples()}));
            EXPECT_GT(received.count(State::Good, 0.0, start), 5700U);
            EXPECT_LT(received.count(State::Good, start, end), 8U); // the last filter's reach
            const Comparison found = compare(after, received, end);
            EXPECT_GT(found.good, 5650U);
            EXPECT_LE(found.wrong, 2U); // where it rises
        }
        for (const double jump : {0.01, -0.03}) { // symbol rates
            Samples jumping = first;
            for (std::size_t n = first.size() / 2; n < first.size(); ++n)
                jumping[n] *= std::polar(1.0, 0.25 * pi * jump * double(n - first.size() / 2));
            const Comparison found = compare(before, Received(before.settings(), jumping));
            EXPECT_GT(found.good, 5400U) << jump;
            EXPECT_EQ(found.wrong, 0U) << jump;
        }
    }
}

TEST(Receiver, LocksToNothingWhereNothingIs)
{
    std::vector<ReceiverSettings> rows;
    for (const auto rollOff : {std::optional(0.35), std::optional<double>()}) {
        for (const Mod modulation : modulations)
            rows.push_back(Sending{modulation, {}, 8.0, 0.0, 0.0, rollOff}.settings());
        for (const auto demodulation : {Demodulation::Fm, Demodulation::Am}) {
            rows.push_back(Sending{{}, {}, 8.0, 0.0, 0.0, rollOff, demodulation}.settings());
            if (!rollOff)
                rows.back().bandwidth = 9000.0;
        }
    }
    for (const ReceiverSettings& settings : rows) {
        for (const double power : {0.0, 0.01}) {
            const Received received(settings, noise(200000, power));
            EXPECT_NEAR(double(received.symbols.size()), 25000.0, 50.0);
            // A carrier takes more than chance; a clock alone is seen in less than 1 % of noise.
            const bool isSure = settings.modulation || power == 0.0;
            EXPECT_LE(received.count(State::Good), isSure ? 0U : 250U) << &settings - rows.data();
        }
    }
}

TEST(Receiver, TellsBurstsFromWhatIsBetween)
{
    std::vector<Sending> rows = {{{}, {-0.25, 0.25}, 8.0, 0.0, -40.0, {}, Demodulation::Fm},
                                 {{}, {0.4, 1.0}, 8.0, 0.0, -40.0, {}, Demodulation::Am}};
    for (const Mod modulation : {Mod::Bpsk, Mod::Qpsk, Mod::Qam16, Mod::Oqpsk, Mod::Pi4Dqpsk})
        rows.push_back({modulation, {}, 8.0, 0.0, 300.0, 0.35});
    for (Sending& sending : rows) {
        sending.count = 2000;
        const Samples burst = sending.samples(); // at -30.5 dB
        const auto pause = [&](unsigned seed) { return noise(15000, 9e-7, seed); };
        const Samples samples =
            joined({pause(1), burst, pause(2), scaled(burst, 0.1), pause(3), burst, pause(4)});
        for (const bool hasSquelch : {true, false}) {
            if (!hasSquelch && (!sending.modulation || sending.modulation == Mod::Qam16))
                continue;
            SCOPED_TRACE(&sending - rows.data());
            ReceiverSettings settings = sending.settings();
            settings.hasAutoSquelch = !hasSquelch;
            if (hasSquelch)
                settings.squelch = -42.0;
            const Received received(settings, samples);
            std::size_t within = 0;
            for (const int k : {0, 1, 2}) {
                const auto found = compare(sending, received, (15000.0 + 31000.0 * k) / sampleRate);
                EXPECT_EQ(found.wrong, 0U) << k;
                // All but the edges: the pulse at both ends, or a first block without a clock.
                EXPECT_GE(found.good, hasSquelch ? (k == 1 ? 0U : 1920U) : 1800U) << k;
                EXPECT_TRUE(k != 1 || !hasSquelch || found.good == 0);
                within += found.good;
            }
            EXPECT_LE(received.count(State::Good) - within, 6U) << "beside the bursts";
            // A squelch opens and closes in groups of 8 symbols, and takes one more before and
            // after. Without one, all but the edges, up to 64 symbols, is silenced.
            EXPECT_NEAR(double(received.samples.size() - received.quietCount),
                        hasSquelch ? 32000.0 : 48000.0, hasSquelch ? 400.0 : 3 * 2 * 64 * 8.0);
            if (hasSquelch) {
                EXPECT_EQ(report(received, Stage::Squelch).isLocked, false) << "at the end";
            }
        }
    }
}

TEST(Receiver, MarksTheEdgesOfWhatIsCutOff)
{
    for (const double rollOff : {0.2, 0.35, 1.0}) {
        const Sending sending{Mod::Qpsk, {}, 8.0, 0.0, 20.0, rollOff};
        const Samples all = sending.samples();
        const Received received(sending.settings(), {all.begin() + 1003, all.begin() + 16007});
        // 2 / roll-off symbols: there the tails of the pulse are 40 dB down; 4 at least.
        const auto edge = static_cast<std::size_t>(std::max(std::ceil(2.0 / rollOff), 4.0));
        for (std::size_t k = 0; k < received.symbols.size(); ++k)
            EXPECT_EQ(received.symbols[k].state == State::Edge,
                      k < edge || k + edge >= received.symbols.size())
                << k;
    }
}

TEST(Receiver, GivesTheSameAtAnyLevelAndAfterGoingBackInUsedMemory)
{
    for (const auto demodulation : {Demodulation::Linear, Demodulation::Fm, Demodulation::Am}) {
        Sending sending{Mod::Qam16, {}, 7.3, 80e-6, -950.0, 0.35};
        if (demodulation != Demodulation::Linear)
            sending = {{}, {0.1, 0.4}, 7.3, 80e-6, -950.0, 0.35, demodulation};
        sending.count = 4000;
        const Samples samples = sending.samples();
        const Received whole(sending.settings(), samples);
        Received again(sending.settings());
        again.feed(samples);
        for (const SignalBlock& block : again.blocks)
            again.receiver.reuse(block);
        again.feed(samples);
        again.finish();
        ASSERT_EQ(again.samples.size(), 2 * whole.samples.size());
        EXPECT_TRUE(std::equal(whole.samples.begin(), whole.samples.end(),
                               again.samples.begin() + std::ptrdiff_t(whole.samples.size())));
        EXPECT_TRUE(std::equal(whole.points.rbegin(), whole.points.rend(), again.points.rbegin()));
        EXPECT_EQ(again.symbols.size(), 2 * whole.symbols.size());
        EXPECT_EQ(again.symbols.back().time, whole.symbols.back().time);
        for (const double factor : {1e-4, 1e3}) {
            const Received other(sending.settings(), scaled(samples, factor));
            ASSERT_EQ(other.symbols.size(), whole.symbols.size());
            for (std::size_t k = 0; k < whole.symbols.size(); ++k) {
                const double by = demodulation == Demodulation::Am ? factor : 1.0;
                const Complex value = Complex(whole.symbols[k].value);
                // Single precision, over some hundred sums.
                EXPECT_LT(std::abs(Complex(other.symbols[k].value) / by - value),
                          1e-4 * std::abs(value));
                EXPECT_EQ(other.symbols[k].state, whole.symbols[k].state);
            }
        }
    }
}

TEST(Receiver, DoesOnlyWhatIsSwitchedOn)
{
    Sending sending{Mod::Qpsk, {}, 8.0, 4e-3, 500.0};
    sending.count = 4000;
    const Samples samples = sending.samples();
    const auto with = [&](auto change) {
        ReceiverSettings settings = sending.settings();
        change(settings);
        return Received(settings, samples);
    };
    const auto all = with([](ReceiverSettings&) {});
    const auto amplitudeOf = [](const Received& received) {
        double power = 0.0;
        for (const Symbol& symbol : received.symbols)
            power += std::norm(symbol.value) / double(received.symbols.size());
        return std::sqrt(power);
    };
    EXPECT_NEAR(amplitudeOf(all), 1.0, 0.06); // its step is 5 %
    const auto plain = with([](ReceiverSettings& settings) { settings.hasGainControl = false; });
    EXPECT_NEAR(amplitudeOf(plain), sending.amplitude, 0.01 * sending.amplitude);
    EXPECT_EQ(plain.blocks.back().gain, 1.0);
    // A clock that is 0.4 % fast makes 0.4 % more samples of the signal.
    EXPECT_NEAR(double(all.samples.size()), 1.004 * double(samples.size()), 16.0);
    const auto free = with([](ReceiverSettings& settings) { settings.hasTimingRecovery = false; });
    EXPECT_EQ(free.samples.size(), samples.size());
    EXPECT_TRUE(free.symbols.empty());
    const auto turning = with([](ReceiverSettings& settings) { settings.modulation.reset(); });
    Complex mean = 0.0;
    for (const Symbol& symbol : turning.symbols)
        mean += std::pow(Complex(symbol.value) / double(std::abs(symbol.value)), 4);
    EXPECT_LT(std::abs(mean), 0.1 * double(turning.symbols.size()));
    EXPECT_EQ(turning.symbols.back().phase, 0.0);
    for (const double shift : {0.0, 1e9}) { // off, or flawed
        const auto off = with([&](ReceiverSettings& settings) {
            settings.isOn = shift > 0.0;
            settings.shift = shift;
        });
        EXPECT_EQ(off.points, samples);
    }
    // A tone as strong as the signal, at three quarters of the channel's width.
    Samples disturbed = samples;
    for (std::size_t k = 0; k < disturbed.size(); ++k)
        disturbed[k] += std::polar(sending.amplitude, 2.0 * pi * 9000.0 / sampleRate * double(k));
    ReceiverSettings narrow = sending.settings();
    narrow.bandwidth = 12000.0;
    EXPECT_GT(compare(sending, Received(narrow, disturbed)).mer, 30.0);
    EXPECT_FALSE(compare(sending, Received(sending.settings(), disturbed)).mer > 10.0);
    for (Complex& sample : disturbed = samples)
        sample += 0.05; // more than the signal
    ReceiverSettings centred = sending.settings();
    centred.removesDc = true;
    const Comparison found = compare(sending, Received(centred, disturbed));
    EXPECT_EQ(found.wrong, 0U);
    EXPECT_GT(found.mer, 25.0); // the mean of 2048 symbols of its own: -33 dB
}

TEST(Receiver, TakesTheSymbolsThatASourceKnows)
{
    std::vector<double> values;
    values.reserve(2000);
    for (int k = 0; k < 2000; ++k)
        values.push_back(std::sin(0.1 * k));
    const std::tuple<std::optional<double>, std::optional<double>, double> rows[] = {
        {6000.0, 3.25, 8.0}, {4321.0, 0.5, sampleRate / 4321.0}, {sampleRate, {}, 1.0}};
    for (const auto& [rate, first, length] : rows) {
        Receiver receiver(SignalFacts{"", sampleRate, 1, false, false, rate, first, {}}, 0, {});
        EXPECT_EQ(receiver.format().samplesPerSymbol, length);
        std::vector<SignalBlock> blocks;
        receiver.process(1000, values, blocks);
        receiver.finish(blocks);
        const double start = first.value_or(0.0);
        double number = std::ceil((1000.0 - start) / length);
        for (const SignalBlock& block : blocks) {
            for (const Symbol& symbol : block.symbols) {
                EXPECT_NEAR(symbol.position, start + length * number++, 1e-9);
                EXPECT_NEAR(symbol.time, symbol.position / sampleRate, 1e-12);
                EXPECT_EQ(symbol.state, State::Good);
                if (std::abs(symbol.position - 2000.0) < 900.0) { // ends are made up
                    EXPECT_NEAR(symbol.value.real(), std::sin(0.1 * (symbol.position - 1000.0)),
                                1e-3);
                }
            }
        }
        EXPECT_NEAR(number * length + start, 3000.0, length);
    }
}

TEST(ReceiverSettings, TellsWhatCannotBeReceived)
{
    using Settings = ReceiverSettings;
    const auto flawOf = [](auto member, double value) {
        Settings settings = Sending{Mod::Qpsk}.settings();
        settings.*member = value;
        return !settings.check(sampleRate);
    };
    for (const double value : {noNumber, infinity, -infinity, -1e300, 1e300})
        EXPECT_TRUE(flawOf(&Settings::shift, value)) << value;
    for (const double shift : {-48000.0, 48000.0})
        EXPECT_FALSE(flawOf(&Settings::shift, shift));
    EXPECT_TRUE(flawOf(&Settings::shift, 48001.0));
    const struct
    {
        std::optional<double> Settings::*member;
        std::vector<double> good;
        std::vector<double> bad;
    } rows[] = {{&Settings::bandwidth, {4.8, 47999.0}, {0.0, -1.0, 5e-324, 4.7, 48000.0}},
                {&Settings::squelch, {-150.0, 60.0}, {-151.0, 61.0}},
                {&Settings::rollOff, {0.01, 1.0}, {0.0, -0.1, 0.009, 1.01}},
                {&Settings::symbolRate, {0.48, 24000.0, 48000.0}, {0.0, -6000.0, 0.47, 24001.0}}};
    for (const auto& row : rows) {
        for (const double value : row.good)
            EXPECT_FALSE(flawOf(row.member, value)) << value;
        for (const double value : row.bad)
            EXPECT_TRUE(flawOf(row.member, value)) << value;
        for (const double value : {noNumber, infinity, -infinity, -1e300, 1e300})
            EXPECT_TRUE(flawOf(row.member, value)) << value;
    }
}

} // namespace
