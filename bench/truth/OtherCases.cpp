// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
// Frequency modulation, and what a signal measures over time.
#include "Case.h"
#include "FrequencySignal.h"

#include <algorithm>
#include <cmath>

namespace {

using Kind = Truth::Kind;

constexpr double symbolRate = 9600.0;
constexpr double sampleRate = 48000.0;
constexpr int second = 48000; // samples

QString number(double value) { return QString::number(value, 'g', 12); }

Case shiftKeying(const char* name, const FrequencySignal& signal)
{
    Case result;
    result.group = "Frequency modulation";
    result.name = QString::fromLatin1(name);
    // Carson's rule, and the offset.
    const double bandwidth = 2.0 * symbolRate * (signal.deviation + std::abs(signal.offset) + 1.5);
    result.arguments = QStringList{"--format",      "cf32",
                                   "--symbol-rate", number(symbolRate),
                                   "--sample-rate", number(symbolRate * signal.samplesPerSymbol),
                                   "--demod",       "fm",
                                   "--bandwidth",   number(bandwidth)};
    if (signal.bandwidthTime == 0.0) // steps of frequency, which the channel lets ring
        result.arguments += {"--eye-bandwidth", "1.5"};
    result.make = [signal](Random& random) { return signal.make(random); };
    // In the middle of the symbols, where Gaussian pulses do not reach their full height.
    const double deviation = symbolRate * signal.deviation * signal.share();
    const double index = 2.0 * signal.deviation * signal.share() / (signal.levelCount - 1.0);
    // Spread of single symbols: by the two beside them, and by noise, which moves the phase from
    // one sample to the next. What is half of a sum or difference of two levels' means has half of
    // it.
    const double beside = symbolRate * signal.deviation * (1.0 - signal.share()) * std::sqrt(0.5);
    const double snr = std::pow(10.0, signal.snr / 10.0) / signal.samplesPerSymbol;
    const double noise = symbolRate * signal.samplesPerSymbol / (2.0 * pi * std::sqrt(snr));
    const double trial =
        std::hypot(beside, noise) / std::sqrt(2.0 * signal.symbolCount / signal.levelCount);
    result.truths = {
        {"frequency_modulation.deviation", Kind::Value, deviation, 0.01 * deviation, trial},
        {"frequency_modulation.index", Kind::Value, index, 0.01 * index, index * trial / deviation},
        {"frequency_modulation.frequency_error", Kind::Value, symbolRate * signal.offset,
         0.01 * deviation, trial},
        {"eye.levels.#", Kind::Value, static_cast<double>(signal.levelCount)},
        {"clock.offset_ppm", Kind::Value, signal.clockPpm, 10.0}};
    return result;
}

/// A sinc under a Hann window, 24 of its zeros on either side.
/// @param bandwidth  in sample rates.
Signal lowPass(const Signal& signal, double bandwidth)
{
    const int reach = static_cast<int>(12.0 / bandwidth);
    const auto size = static_cast<int>(signal.size());
    Signal result(signal.size());
    for (int k = -reach; k <= reach; ++k) {
        const double x = 2.0 * pi * bandwidth * k;
        const double tap = 2.0 * bandwidth * (k == 0 ? 1.0 : std::sin(x) / x) *
                           (0.5 + 0.5 * std::cos(pi * k / (reach + 1.0)));
        for (int n = std::max(0, k); n < std::min(size, size + k); ++n)
            result[static_cast<std::size_t>(n)] += tap * signal[static_cast<std::size_t>(n - k)];
    }
    return result;
}

/// Audio of an FM receiver: bursts, and the noise of its discriminator between them, which is
/// louder and grows with frequency.
Case audio(const char* name, const FrequencySignal& burst, double channel, double bandwidth)
{
    constexpr int burstCount = 3;
    constexpr int pause = 2000; // symbols before and after each
    Case result;
    result.group = "Bursts in the audio of an FM receiver";
    result.name = QString::fromLatin1(name);
    result.isComplex = false;
    result.arguments = QStringList{"--format",      "rf32",
                                   "--symbol-rate", number(symbolRate),
                                   "--sample-rate", number(symbolRate * burst.samplesPerSymbol),
                                   "--squelch",     "auto"};
    result.make = [=](Random& random) {
        const double perSymbol = burst.samplesPerSymbol;
        const double noise = std::sqrt(perSymbol * std::pow(10.0, -burst.snr / 10.0));
        Signal received;
        const auto addPause = [&] {
            for (int n = 0; n < pause * perSymbol; ++n)
                received.push_back(noise * random.complexGauss());
        };
        for (int k = 0; k < burstCount; ++k) {
            addPause();
            const Signal sent = burst.make(random);
            received.insert(received.end(), sent.begin(), sent.end());
        }
        addPause();
        received = lowPass(received, channel / perSymbol);
        Signal heard(received.size());
        for (std::size_t n = 1; n < received.size(); ++n)
            heard[n] = perSymbol / (2.0 * pi) * std::arg(received[n] * std::conj(received[n - 1]));
        return lowPass(heard, bandwidth / perSymbol);
    };
    // Of 16 symbols all are of the burst or none, and the clock's band, 0.07 symbol rates, hears
    // the louder noise for 14 symbols more. Where blocks start is chance.
    const double ends = burstCount * 2.0;
    const double most = 32.0 * ends;
    const double trial = 16.0 * std::sqrt(ends);
    const double noiseCount = pause * (burstCount + 1.0);
    result.truths = {
        {"left_out.symbols", Kind::Value, noiseCount, most, trial},
        {"eye.traces", Kind::Value, double{burstCount} * burst.symbolCount, most, trial},
        {"eye.levels.#", Kind::Value, static_cast<double>(burst.levelCount)}};
    return result;
}

Case overTime(const char* name, std::function<double(double, Random&)> value,
              std::vector<Truth> truths)
{
    Case result;
    result.group = "Over time";
    result.name = QString::fromLatin1(name);
    result.isComplex = false;
    result.arguments = QStringList{"--format", "rf32", "--sample-rate", number(sampleRate)};
    result.make = [value = std::move(value)](Random& random) {
        const double phase = random.part();
        Signal signal;
        for (int n = 0; n < second; ++n)
            signal.emplace_back(value(n / sampleRate + phase, random));
        return signal;
    };
    result.truths = std::move(truths);
    return result;
}

} // namespace

std::vector<Case> otherCases()
{
    const double rms = std::sqrt(0.5);
    const double half = 0.8 * 0.8 / 2.0;
    return {
        shiftKeying("2fsk", {2, 0.5, 0.0, 0.02, 10.0, 128.0, 40.0, 4000}),
        shiftKeying("gfsk", {2, 0.25, 0.5, -0.03, 8.0, -50.0, 40.0, 4000}),
        shiftKeying("gmsk0.3", {2, 0.25, 0.3, 0.0, 6.667, 0.0, 40.0, 4000}),
        shiftKeying("4fsk", {4, 0.75, 0.0, 0.05, 16.0, 50.0, 40.0, 4000}),
        // The channel passes what Carson's rule says; the audio goes up to half the symbol rate and
        // a bit, or to twice of it.
        audio("audio-narrow", {2, 0.25, 0.5, 0.0, 5.0, 50.0, 25.0, 480}, 0.8, 0.6),
        audio("audio-wide", {2, 0.25, 0.5, 0.05, 10.0, -50.0, 25.0, 1000}, 1.0, 2.0),
        audio("audio-4fsk", {4, 0.75, 0.5, 0.0, 10.0, 0.0, 30.0, 1500}, 1.5, 1.5),
        // The mean over a part of a period, and how near a sample comes to the peak.
        overTime("sine",
                 [](double t, Random&) { return 0.1 + 0.8 * std::sin(2.0 * pi * 997.3 * t); },
                 {{"time.mean", Kind::Value, 0.1, 5e-4},
                  {"time.minimum", Kind::Value, -0.7, 1e-4},
                  {"time.maximum", Kind::Value, 0.9, 1e-4},
                  {"time.peak_to_peak", Kind::Value, 1.6, 2e-4},
                  {"time.rms", Kind::Value, std::sqrt(half + 0.01), 5e-4},
                  {"time.rms_ac", Kind::Value, 0.8 * rms, 5e-4},
                  {"time.frequency", Kind::Value, 997.3, 0.01}}),
        // Edges lie between samples: a sample in the second.
        overTime("square",
                 [](double t, Random&) { return std::fmod(100.7 * t, 1.0) < 0.5 ? 0.5 : -0.5; },
                 {{"time.mean", Kind::Value, 0.0, 0.01},
                  {"time.peak_to_peak", Kind::Value, 1.0, 1e-6},
                  {"time.rms", Kind::Value, 0.5, 1e-6},
                  {"time.frequency", Kind::Value, 100.7, 100.7 / second}}),
        overTime("pulses",
                 [](double t, Random& random) {
                     return (std::fmod(50.3 * t, 1.0) < 0.02 ? 1.0 : 0.0) + 0.02 * random.gauss();
                 },
                 {{"time.mean", Kind::Value, 0.02, 0.001},
                  {"time.frequency", Kind::Value, 50.3, 50.3 * 2.0 / second}}),
        overTime("noise", [](double, Random& random) { return 0.3 + 0.2 * random.gauss(); },
                 {{"time.mean", Kind::Value, 0.3, 2e-4, 0.2 / std::sqrt(second)},
                  {"time.rms_ac", Kind::Value, 0.2, 2e-4, 0.2 / std::sqrt(2.0 * second)},
                  {"time.frequency", Kind::Nothing}}),
        overTime("constant", [](double, Random&) { return 0.25; },
                 {{"time.mean", Kind::Value, 0.25, 1e-7},
                  {"time.rms", Kind::Value, 0.25, 1e-7},
                  {"time.rms_ac", Kind::Value, 0.0, 1e-7},
                  {"time.peak_to_peak", Kind::Value, 0.0, 1e-7},
                  {"time.frequency", Kind::Nothing},
                  {"symbol_rate.value", Kind::Nothing},
                  {"constellation.mer_db", Kind::Nothing}}),
    };
}
