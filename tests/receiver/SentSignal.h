// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/measure/Regression.h"
#include "workbench/receiver/Receiver.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <random>

// Signals whose symbols, clock, carrier and noise are known, and what a receiver makes of them.

using Complex = std::complex<double>;
using Samples = std::vector<Complex>;
using Mod = ReceiverSettings::Modulation;
using Demodulation = ReceiverSettings::Demodulation;

constexpr double pi = 3.14159265358979323846;
constexpr double sampleRate = 48000.0;

const double noNumber = std::nan("");
constexpr double infinity = std::numeric_limits<double>::infinity();

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

/// @param power  mean, of a complex sample.
inline Samples noise(std::size_t count, double power, unsigned seed = 7)
{
    Random random(seed);
    const double rms = std::sqrt(0.5 * power);
    Samples samples(count);
    for (Complex& sample : samples)
        sample = {rms * random.noise(), rms * random.noise()};
    return samples;
}

inline Complex closest(const Samples& points, Complex symbol)
{
    return *std::min_element(points.begin(), points.end(), [symbol](Complex a, Complex b) {
        return std::norm(a - symbol) < std::norm(b - symbol);
    });
}

/// Random symbols as they are sent.
struct Sending
{
    std::optional<Mod> modulation;
    Samples levels = {};                // without one: amplitudes, or frequencies in symbol rates
    double length = 8.0;                // of a symbol, samples
    double clock = 80e-6;               // part by which symbols come faster
    double carrier = 110.0;             // Hz
    std::optional<double> rollOff = {}; // root raised cosine; none: a whole raised cosine of 0.35
    Demodulation demodulation = Demodulation::Linear; // that tells the symbols
    double noise = 1e-3; // power at a sample, against the symbols' of a mean power of 1
    std::size_t count = 6000;
    double amplitude = 0.03;
    double phase = 0.3; // of the carrier, rad

    Samples points() const { return modulation ? modulationKinds::points(*modulation) : levels; }
    bool isOffset() const { return modulation == Mod::Oqpsk; }
    double symbolRate() const { return sampleRate / length; } // nominal
    /// Number of the symbol whose middle is at a time.
    double symbolAt(double time) const { return 0.37 + time * symbolRate() * (1.0 + clock); }

    Samples symbols() const
    {
        Random random(3);
        const Samples all = points();
        Samples result(count);
        for (std::size_t k = 0; k < count; ++k) {
            result[k] = all[random.below(unsigned(all.size()))];
            if (modulation == Mod::Pi4Dqpsk)
                result[k] *= std::polar(1.0, 0.25 * pi * static_cast<double>(k % 8));
        }
        return result;
    }

    Samples samples() const
    {
        constexpr int reach = 16;
        const Samples sent = symbols();
        Samples result =
            ::noise(static_cast<std::size_t>(static_cast<double>(count) * length), noise);
        double turn = phase;
        for (std::size_t n = 0; n < result.size(); ++n) {
            const double time = symbolAt(static_cast<double>(n) / sampleRate);
            const int middle = static_cast<int>(time);
            Complex sum = 0.0;
            for (int k = std::max(middle - reach, 0);
                 k < std::min(middle + reach, static_cast<int>(count)); ++k) {
                const Complex symbol = sent[static_cast<std::size_t>(k)];
                sum += isOffset() ? Complex(symbol.real() * pulse(time - k),
                                            symbol.imag() * pulse(time - k - 0.5))
                                  : symbol * pulse(time - k);
            }
            turn += 2.0 * pi * carrier / sampleRate;
            if (demodulation == Demodulation::Fm)
                turn += 2.0 * pi * std::exchange(sum, 1.0).real() / length;
            result[n] = amplitude * (result[n] + std::polar(1.0, turn) * sum);
        }
        return result;
    }

    double pulse(double t) const
    {
        t += 1e-7; // not where the formulas have gaps
        const double r = rollOff.value_or(0.35);
        if (!rollOff)
            return std::sin(pi * t) / (pi * t) * std::cos(pi * r * t) / (1.0 - 4.0 * r * r * t * t);
        return (std::sin(pi * t * (1.0 - r)) + 4.0 * r * t * std::cos(pi * t * (1.0 + r))) /
               (pi * t * (1.0 - 16.0 * r * r * t * t));
    }

    ReceiverSettings settings() const
    {
        ReceiverSettings result;
        result.isOn = true;
        result.symbolRate = symbolRate();
        result.modulation = modulation;
        result.rollOff = rollOff;
        result.demodulation = demodulation;
        return result;
    }
};

/// What a receiver makes of complex samples, in one piece.
struct Received
{
    explicit Received(const ReceiverSettings& settings)
        : receiver(SignalFacts{"", sampleRate, 1, true, false, {}, {}, {}}, 0, settings)
    {}
    Received(const ReceiverSettings& settings, const Samples& input)
        : Received(settings)
    {
        feed(input);
        finish();
    }

    void feed(const Samples& input, std::int64_t position = 0)
    {
        constexpr std::size_t length = 4096;
        for (std::size_t first = 0; first < input.size(); first += length) {
            std::vector<double> values;
            for (std::size_t n = first; n < std::min(first + length, input.size()); ++n)
                values.insert(values.end(), {input[n].real(), input[n].imag()});
            receiver.process(position + static_cast<std::int64_t>(first), values, blocks);
        }
    }

    /// Joins the blocks.
    void finish()
    {
        receiver.finish(blocks);
        for (const SignalBlock& block : blocks) {
            samples.insert(samples.end(), block.samples.begin(), block.samples.end());
            for (std::size_t k = 0; k < block.q.size(); ++k)
                points.emplace_back(block.i[k], block.q[k]);
            for (std::size_t k = 0; k < block.count(); ++k)
                quietCount += !block.isQuiet.empty() && block.isQuiet[k] ? 1 : 0;
            symbols.insert(symbols.end(), block.symbols.begin(), block.symbols.end());
        }
    }

    std::size_t count(SymbolState state, double from = 0.0, double to = 1e9) const
    {
        return static_cast<std::size_t>(
            std::count_if(symbols.begin(), symbols.end(), [=](const Symbol& symbol) {
                return symbol.state == state && symbol.time >= from && symbol.time < to;
            }));
    }

    Receiver receiver;
    std::vector<SignalBlock> blocks;
    std::vector<double> samples;
    Samples points;
    std::size_t quietCount = 0;
    std::vector<Symbol> symbols;
};

inline std::vector<SignalBlockPtr> shared(const std::vector<SignalBlock>& blocks)
{
    std::vector<SignalBlockPtr> result;
    for (const SignalBlock& block : blocks)
        result.push_back(std::make_shared<const SignalBlock>(block));
    return result;
}

inline Samples joined(std::initializer_list<Samples> parts)
{
    Samples result;
    for (const Samples& part : parts)
        result.insert(result.end(), part.begin(), part.end());
    return result;
}

inline Samples scaled(Samples samples, double factor)
{
    for (Complex& sample : samples)
        sample *= factor;
    return samples;
}

/// Good symbols against those that were sent.
struct Comparison
{
    std::size_t good = 0;
    std::size_t wrong = 0; // decisions, for the turn of the whole that suits best
    double late = 0.0;     // r.m.s. by which they were taken too early or late, symbols
    double mer = 0.0;      // dB
    double torn = 0.0;     // r.m.s. of symbols against the samples about them
};

/// @param at  s, where what was sent starts.
inline Comparison compare(const Sending& sending, const Received& received, double at = 0.0)
{
    const Samples points = sending.points();
    const Samples sent = sending.symbols();
    const double scale = sending.demodulation == Demodulation::Fm   ? sending.symbolRate()
                         : sending.demodulation == Demodulation::Am ? sending.amplitude
                                                                    : 0.0;
    Comparison result;
    std::size_t right[8] = {};
    double power = 0.0, error = 0.0;
    for (const Symbol& symbol : received.symbols) {
        const double place = sending.symbolAt(symbol.time - at);
        const double part = sending.isOffset() ? 0.5 : 1.0;
        const double nearest = part * std::round(place / part);
        const double whole = std::floor(nearest);
        if (symbol.state != SymbolState::Good || whole < 0.0 || whole + 1.0 >= double(sent.size()))
            continue;
        const auto k = static_cast<std::size_t>(whole);
        // A quarter of a turn makes I of Q, which is half a symbol late.
        const Complex meant =
            nearest > whole ? Complex(sent[k].imag(), -sent[k + 1].real()) : sent[k];
        const Complex value = Complex(symbol.value) / (scale > 0.0 ? scale : symbol.level);
        const Complex decided = closest(points, value);
        for (int turn = 0; turn < (sending.modulation ? 8 : 1); ++turn)
            right[turn] +=
                std::abs(decided / symbol.turn * std::polar(1.0, 0.25 * pi * turn) - meant) < 1e-3;
        ++result.good;
        result.late += (place - nearest) * (place - nearest);
        power += std::norm(decided);
        error += std::norm(value - decided);
        const auto n = static_cast<std::size_t>(symbol.position);
        if (scale == 0.0 && n + 1 < received.points.size()) {
            const double rest = symbol.position - double(n);
            const Complex sample =
                (1.0 - rest) * received.points[n] + rest * received.points[n + 1];
            const Complex off = sample * symbol.turn - Complex(symbol.value);
            result.torn += sending.isOffset() ? off.real() * off.real() : std::norm(off);
        }
    }
    const double good = double(std::max<std::size_t>(result.good, 1));
    result.wrong = result.good - *std::max_element(std::begin(right), std::end(right));
    result.late = std::sqrt(result.late / good);
    result.torn = std::sqrt(result.torn / good);
    result.mer = 10.0 * std::log10(power / error);
    return result;
}

/// How a stage did in the middle of the signal.
inline const StageReport& report(const Received& received, StageReport::Stage stage)
{
    const auto middle = received.blocks.begin() + std::ptrdiff_t(received.blocks.size() / 2);
    return middle->reports.at(static_cast<std::size_t>(stage));
}

inline double reading(const Received& received, StageReport::Stage stage,
                      StageReport::Quantity quantity)
{
    for (const auto& reading : report(received, stage).readings) {
        if (reading.quantity == quantity)
            return reading.value;
    }
    return std::nan("");
}

/// Hz of the carrier that was taken off.
inline double carrierOf(const Received& received)
{
    Regression line;
    for (const Symbol& symbol : received.symbols) {
        if (symbol.state == SymbolState::Good)
            line.add(symbol.time, symbol.phase);
    }
    const auto slope = line.slope();
    return slope ? slope->value / (2.0 * pi) : std::nan("");
}
