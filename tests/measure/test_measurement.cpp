// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
// What of a signal is measured, and what is left out; the figures themselves are compared with the
// truth of many signals by bench_truth.
#include "SerialLine.h"
#include "workbench/measure/MeasurementMaker.h"

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
    return Measurement::of(shared(received.blocks), from, to, setup);
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

TEST(Measurement, IsOfAllOfARecordingLongerThanIsKept)
{
    // QPSK of 20 dB, two samples a symbol, and noise that wanders: 1 at the start, 0.5 at the end.
    constexpr int blockCount = 1300, symbolCount = 1000;
    Measurement::Setup setup;
    setup.format.sampleRate = 2.0;
    setup.format.samplesPerSymbol = 2.0;
    setup.format.hasQ = setup.format.hasDecisions = setup.hasCarrierRecovery = true;
    setup.symbolRate = 1.0;
    setup.modulation = ReceiverSettings::Modulation::Qpsk;
    Measurement::Maker maker(0.0, always, setup);
    Random random;
    double number = 0.0, square = 0.0;
    for (int k = 0; k < blockCount; ++k) {
        SignalBlock block;
        block.time = number;
        block.position = std::int64_t(2.0 * number);
        block.isAfterGap = k == 0;
        const double noise = 0.1 * std::sqrt(0.5) * (1.0 - 0.5 * k / blockCount);
        for (int n = 0; n < symbolCount; ++n, number += 1.0) {
            const Complex off = noise * Complex(random.noise(), random.noise());
            square += std::norm(off) / blockCount / symbolCount;
            Symbol symbol;
            symbol.value =
                std::complex<float>(off + std::sqrt(0.5) * Complex(random.below(2) * 2.0 - 1.0,
                                                                   random.below(2) * 2.0 - 1.0));
            symbol.position = 2.0 * number;
            symbol.time = number;
            symbol.phase = 1e-3 * number + 7.0;
            symbol.level = 1.0;
            symbol.state = SymbolState::Good;
            block.symbols.push_back(symbol);
            const double late = 2e-6 * number; // symbols
            block.clock.push_back({number, number - late});
            block.samples.insert(block.samples.end(), {double{symbol.value.real()}, 0.0});
        }
        maker.add(block);
    }
    const Measurement result = maker.finish();
    EXPECT_EQ(result.constellation.symbols, blockCount * symbolCount);
    // Gains of 256 symbols each fit a 512th of the power at most.
    EXPECT_NEAR(*result.constellation.evmRms, std::sqrt(square), 1e-3 * std::sqrt(square));
    // sqrt(12 / N^3) times a phase's deviation, 0.07 at most: 2e-10; four times.
    EXPECT_NEAR(*result.carrier.offset, 1e-3 / (2.0 * pi), 1e-10);
    EXPECT_NEAR(*result.clock.offset, -2.0, 1e-4); // a million roundings
    EXPECT_EQ(result.notes.size(), 1) << "the eye is that of a part";
    EXPECT_GT(result.eye.traces, 100000);
    const auto& levels = result.eye.levels;
    ASSERT_EQ(levels.size(), 2U);
    // Of some dozens of stretches from start to end: the means of a ramp's squares, 1 / 48 apart.
    EXPECT_NEAR(levels[0].sigma, std::sqrt(0.5 * square), 0.03 * std::sqrt(0.5 * square));
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

TEST(Measurement, CountsOnlyWhatIsWithinItsLimits)
{
    Samples ramp(48000);
    for (std::size_t k = 0; k < ramp.size(); ++k)
        ramp[k] = double(k);
    const ReceiverSettings off;
    const Received received(off, ramp);
    const auto result = measured(received, off, 0.1, 0.2);
    EXPECT_EQ(result.start, 0.1);
    EXPECT_EQ(result.stop, 0.2);
    EXPECT_EQ(result.time.minimum, 4800.0);
    EXPECT_EQ(result.time.maximum, 9599.0);
    EXPECT_EQ(measured(received, off, 0.9, always).stop, 1.0);

    // What comes later is of another noise and carrier.
    Sending sending{Mod::Qpsk, {}, 8.0, 0.0, 40.0, 0.35};
    const Samples before = sending.samples();
    sending.noise = 0.3;
    sending.carrier = 90.0;
    const Received both(sending.settings(), joined({before, sending.samples()}));
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
    const Samples burst = sending.samples();
    ReceiverSettings settings = sending.settings();
    settings.squelch = -45.0;
    const Received received(settings, joined({burst, Samples(16000), burst}));
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

TEST(Measurement, KeepsItsFiguresWhereSamplesAreMissing)
{
    for (const Mod modulation : {Mod::Qam16, Mod::Oqpsk}) {
        for (const int variant : {0, 1, 2, 3}) {
            SCOPED_TRACE(100 * int(modulation) + variant);
            Sending sending{modulation, {}, 7.3, 40e-6, 110.0, 0.35};
            // The mean of 2048 symbols that is taken off is wrong by a part of 2.4e-4 by chance.
            sending.noise = variant == 3 ? 0.02 : 0.003;
            sending.count = 10000;
            if (variant == 1)
                sending.rollOff.reset();
            ReceiverSettings settings = sending.settings();
            if (variant >= 2)
                settings.bandwidth = 10000.0;
            settings.removesDc = variant == 3;
            const Samples samples = sending.samples();
            const auto whole = measured(Received(settings, samples), settings).constellation;
            Received torn(settings);
            std::size_t symbols = 0;
            constexpr std::size_t length = 8000;
            for (std::size_t first = 0; first + length < samples.size(); first += 11111) {
                const auto begin = samples.begin() + std::ptrdiff_t(first);
                torn.feed({begin, begin + std::ptrdiff_t(length)}, std::int64_t(first));
                symbols += length / 7;
            }
            torn.finish();
            const auto result = measured(torn, settings).constellation;
            ASSERT_TRUE(whole.mer && result.mer);
            EXPECT_NEAR(*result.mer, *whole.mer, 0.5);
            // The largest of as many errors deviates by a twelfth.
            EXPECT_NEAR(*result.evmPeak / *whole.evmPeak, 1.0, 0.3);
            EXPECT_GT(result.symbols, std::int64_t(symbols * 8 / 10));
        }
    }
}

} // namespace
