// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
// Signals of known figures through a receiver, and what is measured of them.
#include "SerialLine.h"
#include "receiver/SentSignal.h"
#include "workbench/measure/Measurement.h"

#include <QJsonArray>

namespace {

constexpr double always = 1e9; // s
using State = SymbolState;

Measurement measured(const Received& received, const ReceiverSettings& settings, double from = 0.0,
                     double to = always)
{
    Measurement::Setup setup;
    setup.format = received.receiver.format();
    setup.sampleRate = sampleRate;
    setup.symbolRate = settings.symbolRate;
    setup.modulation = settings.modulation;
    setup.hasCarrierRecovery = settings.isOn && settings.modulation;
    setup.isFm = settings.isOn && settings.demodulation == Demodulation::Fm;
    std::vector<SignalBlockPtr> blocks;
    for (const SignalBlock& block : received.blocks)
        blocks.push_back(std::make_shared<const SignalBlock>(block));
    return Measurement::of(blocks, from, to, setup);
}

Measurement measured(const Sending& sending)
{
    return measured(Received(sending.settings(), sending.samples()), sending.settings());
}

TEST(Measurement, GivesTheKnownFiguresOfConstellations)
{
    struct Row
    {
        Mod modulation;
        double noise;           // at a sample; an eighth of it passes the filter
        double imbalance = 1.0; // gain of I against that of Q
        double skew = 0.0;      // degrees
        Complex offset = 0.0;
    };
    const Row rows[] = {{Mod::Bpsk, 0.3},
                        {Mod::Qpsk, 0.01},
                        {Mod::Qam16, 0.4}, // where noise reaches the neighbours
                        {Mod::Psk8, 0.1},
                        {Mod::Qam16, 0.05},
                        {Mod::Qam64, 0.01},
                        {Mod::Oqpsk, 0.05},
                        {Mod::Pi4Dqpsk, 0.05},
                        {Mod::Qpsk, 0.001, 1.05},
                        {Mod::Qam16, 0.001, 1.0, 2.0},
                        {Mod::Qam16, 0.001, 1.0, 0.0, {0.03, -0.04}}};
    for (const Row& row : rows) {
        SCOPED_TRACE(&row - rows);
        Sending sending{row.modulation, {}, 8.0, 40e-6, 0.0, 0.35};
        sending.noise = row.noise;
        sending.phase = 0.0; // axes of the signal are those of its samples
        Samples samples = sending.samples();
        const double skew = row.skew * pi / 180.0;
        for (Complex& sample : samples)
            sample = Complex(sample.real() * row.imbalance + std::sin(skew) * sample.imag(),
                             std::cos(skew) * sample.imag()) +
                     sending.amplitude * row.offset;
        const auto result =
            measured(Received(sending.settings(), samples), sending.settings()).constellation;
        ASSERT_TRUE(result.mer);
        // Of a d + b d* the part b is an error.
        const Complex b = 0.5 * (row.imbalance - Complex(std::cos(skew), -std::sin(skew)));
        const double error = row.noise / sending.length + std::norm(b) + std::norm(row.offset);
        const double mer = -10.0 * std::log10(error);
        EXPECT_NEAR(*result.mer, mer, 0.3); // chance: 4.34 / sqrt(6000) = 0.06, four times
        EXPECT_NEAR(*result.evmRms, std::sqrt(error), 0.035 * std::sqrt(error));
        EXPECT_NEAR(double(result.symbols), 5986.0, 6.0); // without the ends
        const bool isNoiseAlone = error == row.noise / sending.length;
        // The largest of so many errors of noise (Gumbel), which deviates by a twelfth.
        const double largest = std::sqrt(error * (std::log(6000.0) + 0.577));
        EXPECT_NEAR(*result.evmPeak / largest, isNoiseAlone ? 1.0 : 0.7, 0.3);
        const double offset = 20.0 * std::log10(std::abs(row.offset));
        EXPECT_NEAR(std::max(*result.offset, -45.0), std::max(offset, -45.0), 0.3); // beside noise
        EXPECT_EQ(result.imbalance.has_value(), row.modulation != Mod::Bpsk);
        // The noisiest row's axes deviate by sqrt(0.05 / 6000): 0.03 dB and 0.17 degrees.
        EXPECT_NEAR(std::abs(result.imbalance.value_or(0.0)), 20.0 * std::log10(row.imbalance),
                    0.12);
        EXPECT_NEAR(std::abs(result.quadrature.value_or(0.0)), row.skew, 0.5);
    }
}

TEST(Measurement, KnowsCarrierAndClockAndHowWell)
{
    for (const double noise : {0.01, 0.1}) {
        for (const std::size_t count : {2000U, 8000U}) {
            Sending sending{Mod::Qpsk, {}, 8.0, 40e-6, 310.0, 0.35};
            sending.noise = noise;
            sending.count = count;
            const Measurement result = measured(sending);
            const double snr = sending.length / noise; // Es/N0
            const double symbols = double(count), period = 1.0 / sending.symbolRate();
            const double carrierBound =
                std::sqrt(6.0 / (4.0 * pi * pi * period * period * std::pow(symbols, 3.0) * snr));
            const double xi = 1.0 / 12.0 + 0.35 * 0.35 * (0.25 - 2.0 / pi / pi);
            const double clockBound =
                std::sqrt(12.0 / std::pow(symbols, 3.0) / (8.0 * pi * pi * xi * snr)) * 1e6;
            ASSERT_TRUE(result.carrier.deviation && result.clock.deviation);
            // Four deviations, which are above the bound.
            EXPECT_NEAR(*result.carrier.offset, sending.carrier, 4.0 * *result.carrier.deviation);
            EXPECT_NEAR(*result.clock.offset, 1e6 * sending.clock, 4.0 * *result.clock.deviation);
            EXPECT_NEAR(*result.carrier.deviation / carrierBound, 1.4, 0.7);
            EXPECT_NEAR(*result.clock.deviation / clockBound, 1.4, 0.7);
        }
    }
}

/// Edges of a symbol's length between two levels, with jitter and noise.
Samples edges(std::size_t count, double length, double jitter, double noise)
{
    std::mt19937 random(5);
    std::normal_distribution<double> normal;
    std::vector<double> levels(count), times(count);
    for (std::size_t k = 0; k < count; ++k) {
        levels[k] = random() % 2 ? 0.7 : 0.1;
        times[k] = double(k) + jitter * normal(random);
    }
    Samples samples;
    for (double n = 0.0; n < double(count) * length; n += 1.0) {
        const double time = n / length + 0.23;
        const auto before = std::size_t(std::max(time - 2.0, 0.0));
        double value = levels[before];
        for (std::size_t k = before + 1; k < std::min(count, std::size_t(time) + 3); ++k)
            value += (levels[k] - levels[k - 1]) * 0.5 *
                     (1.0 + std::sin(pi * std::clamp(time - times[k], -0.5, 0.5)));
        samples.push_back(value + noise * normal(random));
    }
    return samples;
}

TEST(Measurement, GivesTheKnownFiguresOfEyes)
{
    for (const auto& [jitter, noise] : {std::pair(0.0, 0.02), std::pair(0.03, 0.005)}) {
        ReceiverSettings settings; // off
        settings.symbolRate = 4500.0;
        const Received received(settings, edges(8000, sampleRate / 4500.0, jitter, noise));
        const auto eye = measured(received, settings).eye;
        ASSERT_EQ(eye.levels.size(), 2U);
        const auto& e = eye.eyes[0];
        const double distance = 0.6, slope = 0.5 * pi * distance; // a symbol, of the edges
        const double sigmas = 6.0 * noise, shaken = std::hypot(jitter, noise / slope);
        EXPECT_NEAR(eye.levels[0].mean, 0.1, 0.004);
        EXPECT_NEAR(eye.levels[1].mean, 0.7, 0.004);
        // Of 4000 traces: 1 / sqrt(8000), four times.
        EXPECT_NEAR(eye.levels[0].sigma, noise, 0.06 * noise);
        EXPECT_NEAR(eye.levels[1].sigma, noise, 0.06 * noise);
        EXPECT_NEAR(*e.height, distance - sigmas, 0.02 * distance);
        EXPECT_NEAR(*e.opening, 1.0 - sigmas / distance, 0.02);
        EXPECT_NEAR(*e.q, distance / (2.0 * noise), 0.06 * distance / (2.0 * noise));
        EXPECT_NEAR(e.crossing.value_or(0.0), 0.5, 0.01);
        EXPECT_NEAR(e.jitterRms.value_or(0.0), shaken, 0.08 * shaken);
        EXPECT_NEAR(e.width.value_or(0.0), 1.0 - 6.0 * shaken, 0.02);
        EXPECT_NEAR(e.jitterPeak.value_or(0.0) / shaken, 6.8, 1.5); // of 2000 crossings
        EXPECT_NEAR(*eye.instant, 0.5, 0.01);
    }
}

TEST(Measurement, OpensTheEyeOfCharactersOutOfStep)
{
    const SerialLine lines[] = {{0.7, 0.1, 0.01},             // rests high
                                {-0.3, 0.3, 0.01, 7, -0.01},  // rests low
                                {0.7, 0.1, 0.01, 9, 0.0, 5}}; // with framing errors
    for (const SerialLine& line : lines) {
        SCOPED_TRACE(&line - lines);
        ReceiverSettings settings; // off
        settings.symbolRate = line.symbolRate;
        const Samples samples = line.samples();
        const auto smeared = measured(Received(settings, samples), settings).eye;
        EXPECT_LT(smeared.eyes.empty() ? 0.0 : smeared.eyes[0].width.value_or(0.0), 0.1);
        settings.characterBits = line.bits;
        const Received received(settings, samples);
        EXPECT_EQ(received.figures(), Received(settings, samples, {977, 13}).figures());
        const Measurement result = measured(received, settings);
        ASSERT_EQ(result.eye.levels.size(), 2U);
        const auto& eye = result.eye.eyes[0];
        EXPECT_NEAR(result.eye.levels[0].mean, std::min(line.rest, line.active), 0.002);
        EXPECT_NEAR(result.eye.levels[1].mean, std::max(line.rest, line.active), 0.002);
        // Of some 2000 traces each: 1 / sqrt(4000), four times.
        EXPECT_NEAR(result.eye.levels[0].sigma, line.noise, 0.07 * line.noise);
        EXPECT_NEAR(result.eye.levels[1].sigma, line.noise, 0.07 * line.noise);
        EXPECT_NEAR(*eye.opening, 1.0 - 6.0 * line.noise / 0.6, 0.02);
        // Noise moves an edge of slope pi by 0.0053, and the start edge as much.
        EXPECT_NEAR(eye.width.value_or(0.0), 1.0 - 6.0 * std::sqrt(2.0) * 0.0053, 0.02);
        ASSERT_TRUE(result.clock.deviation);
        EXPECT_LT(*result.clock.deviation, 100.0);
        EXPECT_NEAR(*result.clock.offset, 1e6 * line.clock, 4.0 * *result.clock.deviation);
        const auto wrong = line.broken > 0 ? line.count / line.broken : 0;
        EXPECT_GE(result.eye.traces, std::int64_t(line.count - wrong) * line.bits);
        EXPECT_EQ(result.leftOut.symbols, std::int64_t(wrong) * (line.bits + 2));
    }
}

TEST(Measurement, FindsNoCharactersInNoiseOrAtRest)
{
    Samples steps = noise(100000, 1.0);
    for (Complex& sample : steps)
        sample = sample.real() > 0.0 ? 1.0 / 128.0 : 0.0; // the converter's last bit
    ReceiverSettings settings;
    settings.symbolRate = 4100.0;
    settings.characterBits = 8;
    for (const Samples& samples : {noise(100000, 1.0), steps, Samples(100000, 0.7),
                                   SerialLine{0.7, 0.1, 0.01, 8, 0.0, 0, 0}.samples()}) {
        const Received received(settings, samples);
        EXPECT_TRUE(std::none_of(received.symbols.begin(), received.symbols.end(),
                                 [](const Symbol& s) { return s.state == State::Good; }));
    }
}

TEST(Measurement, GivesTheKnownFiguresOfFrequencyModulation)
{
    for (const Samples& levels : {Samples{-0.25, 0.25}, Samples{-0.3, -0.1, 0.1, 0.3}}) {
        Sending sending{{}, levels, 9.1, 40e-6, 120.0, {}, Demodulation::Fm};
        sending.noise = 1e-4;
        const auto frequency = measured(sending).frequency;
        // Noise makes 0.013 of a symbol rate, 3000 symbols of the outer levels 1.2 Hz of that.
        EXPECT_NEAR(*frequency.deviation, levels.back().real() * sending.symbolRate(), 5.0);
        EXPECT_NEAR(*frequency.error, 120.0, 5.0);
        EXPECT_NEAR(*frequency.index, (levels[1] - levels[0]).real(), 0.002);
    }
}

TEST(Measurement, CountsOnlyWhatIsWithinItsLimits)
{
    Samples ramp(48000);
    for (std::size_t k = 0; k < ramp.size(); ++k)
        ramp[k] = double(k);
    const ReceiverSettings off;
    const Received received(off, ramp, {1000});
    const auto result = measured(received, off, 0.1, 0.2);
    EXPECT_EQ(result.start, 0.1);
    EXPECT_EQ(result.stop, 0.2);
    EXPECT_EQ(result.time.minimum, 4800.0);
    EXPECT_EQ(result.time.maximum, 9599.0);
    EXPECT_EQ(measured(received, off, 0.9, always).stop, 1.0);

    // What comes later is of another noise and carrier.
    Sending sending{Mod::Qpsk, {}, 8.0, 0.0, 40.0, 0.35};
    Samples samples = sending.samples();
    sending.noise = 0.3;
    sending.carrier = 90.0;
    const Samples after = sending.samples();
    samples.insert(samples.end(), after.begin(), after.end());
    const Received both(sending.settings(), samples);
    const auto first = measured(both, sending.settings(), 0.2, 0.9);
    EXPECT_EQ(first.constellation.symbols, 4200);
    EXPECT_EQ(first.eye.traces, 4200);
    EXPECT_EQ(first.leftOut.symbols, 0);
    EXPECT_NEAR(*first.constellation.mer, 39.0, 0.3);
    EXPECT_NEAR(*first.carrier.offset, 40.0, 0.01); // else between the two
    EXPECT_NEAR(*first.clock.offset, 0.0, 1.0);
}

/// Paths of all that is null.
QStringList nullsOf(const QJsonValue& value, const QString& path = {})
{
    if (value.isNull())
        return {path};
    QStringList nulls;
    const QString below = path.isEmpty() ? path : path + '.';
    const QJsonObject members = value.toObject();
    for (const QString& name : members.keys())
        nulls += nullsOf(members[name], below + name);
    int index = 0;
    for (const auto& member : value.toArray())
        nulls += nullsOf(member, below + QString::number(index++));
    return nulls;
}

TEST(Measurement, SaysWhyAFigureIsMissing)
{
    Sending qpsk{Mod::Qpsk};
    qpsk.count = 1000;
    const Sending fm{{}, {-0.25, 0.25}, 8.0, 0.0, 0.0, {}, Demodulation::Fm};
    ReceiverSettings off, timed, unclear = qpsk.settings();
    timed.symbolRate = 6000.0;
    unclear.modulation.reset();
    const Samples signal = qpsk.samples();
    const struct
    {
        ReceiverSettings settings;
        Samples samples;
        QString missing, reason, present; // paths
    } rows[] = {
        {off, {}, "time.mean", "there are no samples", "start"},
        {off, signal, "eye.instant", "the symbol rate is not known", "time.rms"},
        {off, signal, "symbol_rate.value", "the symbol rate is not known", "time.mean"},
        {timed, signal, "constellation.modulation", "the modulation is not known", "time.rms"},
        {timed, signal, "carrier.offset", "the receiver recovers no carrier", "clock.offset_ppm"},
        {unclear, signal, "constellation.mer_db", "the modulation is not known", "time.rms"},
        {qpsk.settings(), noise(20000, 0.1), "constellation.evm_rms", "the receiver is not locked",
         "symbol_rate.value"},
        {qpsk.settings(),
         {signal.begin(), signal.begin() + 400},
         "clock.offset_ppm",
         "there are too few symbols",
         "time.rms"},
        {qpsk.settings(), signal, "frequency_modulation.index",
         "the signal was not demodulated as FM", "constellation.mer_db"},
        {fm.settings(), fm.samples(), "constellation.mer_db",
         "the symbols are not those of a constellation", "frequency_modulation.index"}};
    for (const auto& row : rows) {
        const QJsonObject json = measured(Received(row.settings, row.samples), row.settings).json();
        const QJsonObject reasons = json["reasons"].toObject();
        QStringList nulls = nullsOf(json);
        nulls.sort();
        EXPECT_EQ(reasons.keys(), nulls) << &row - rows;
        EXPECT_EQ(reasons[row.missing].toString(), row.reason) << &row - rows;
        const QStringList path = row.present.split('.');
        EXPECT_TRUE(json[path[0]].isDouble() || json[path[0]].toObject()[path[1]].isDouble())
            << qPrintable(row.present) << &row - rows;
        for (const QString& reason : reasons.keys())
            EXPECT_FALSE(reasons[reason].toString().isEmpty());
    }
}

TEST(Measurement, CountsWhatIsLeftOut)
{
    Sending sending{Mod::Qpsk, {}, 8.0, 0.0, 30.0, 0.35};
    sending.count = 2000;
    Samples samples = sending.samples();
    const Samples burst = samples;
    samples.resize(32000);
    samples.insert(samples.end(), burst.begin(), burst.end());
    ReceiverSettings settings = sending.settings();
    settings.squelch = -45.0;
    const Received received(settings, samples);
    const auto all = measured(received, settings);
    EXPECT_EQ(all.leftOut.samples, std::int64_t(received.quietCount));
    EXPECT_EQ(all.leftOut.symbols,
              std::int64_t(received.count(State::Edge) + received.count(State::Unlocked)));
    EXPECT_GT(all.leftOut.symbols, 20);
    EXPECT_EQ(all.constellation.symbols, std::int64_t(received.count(State::Good)));
    EXPECT_NEAR(all.time.rmsAc.value_or(0.0), sending.amplitude * std::sqrt(0.5), 2e-3)
        << "quiet samples do not count";
    EXPECT_TRUE(all.leftOut.reason.contains("the squelch is closed"));
    const auto middle = measured(received, settings, 0.05, 0.3);
    EXPECT_EQ(middle.leftOut.samples + middle.leftOut.symbols, 0);
    EXPECT_TRUE(middle.leftOut.reason.isEmpty());
}

TEST(Measurement, GivesTheLevelsOfAPreamble)
{
    // 1010 as a sine has no levels but at the instants of decision.
    for (const double length : {2.5, 8.0, 9.6}) {
        Samples samples;
        for (double n = 0.0; n < 2000.0 * length; n += 1.0)
            samples.emplace_back(0.2 + 0.5 * std::cos(pi * (n / length - 0.3)));
        ReceiverSettings settings;
        settings.symbolRate = sampleRate / length;
        const Received received(settings, samples);
        const auto eye = measured(received, settings).eye;
        EXPECT_NEAR(double(eye.traces), 1990.0, 8.0);
        ASSERT_EQ(eye.levels.size(), 2U);
        EXPECT_NEAR(eye.levels[0].mean, -0.3, 1e-3);
        EXPECT_NEAR(eye.levels[1].mean, 0.7, 1e-3);
        EXPECT_LT(eye.levels[0].sigma + eye.levels[1].sigma, 1e-3);
    }
}

} // namespace
