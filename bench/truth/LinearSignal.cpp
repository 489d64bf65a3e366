// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "LinearSignal.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int reach = 48; // symbols to either side; what is left out is below -60 dB

/// Root raised cosine pulse of unit energy, at a time in symbols.
double pulse(double u, double rollOff)
{
    const double a = rollOff;
    if (std::abs(u) < 1e-9)
        return 1.0 - a + 4.0 * a / pi;
    if (std::abs(std::abs(4.0 * a * u) - 1.0) < 1e-7)
        return a / std::sqrt(2.0) *
               ((1.0 + 2.0 / pi) * std::sin(pi / (4.0 * a)) +
                (1.0 - 2.0 / pi) * std::cos(pi / (4.0 * a)));
    return (std::sin(pi * u * (1.0 - a)) + 4.0 * a * u * std::cos(pi * u * (1.0 + a))) /
           (pi * u * (1.0 - 16.0 * a * a * u * u));
}

std::vector<Complex> ring(int count, double first)
{
    std::vector<Complex> points;
    points.reserve(static_cast<std::size_t>(count));
    for (int k = 0; k < count; ++k)
        points.push_back(std::polar(1.0, first + 2.0 * pi * k / count));
    return points;
}

std::vector<Complex> grid(int side)
{
    std::vector<Complex> points;
    const double scale = std::sqrt(1.5 / (side * side - 1.0)); // mean power 1
    for (int i = 0; i < side; ++i) {
        for (int q = 0; q < side; ++q)
            points.push_back(scale * Complex(2 * i - side + 1, 2 * q - side + 1));
    }
    return points;
}

} // namespace

std::vector<Complex> LinearSignal::pointsOf(Modulation modulation)
{
    switch (modulation) {
    case Modulation::Bpsk:
        return ring(2, 0.0);
    case Modulation::Psk8:
    case Modulation::Pi4Dqpsk:
        return ring(8, 0.0);
    case Modulation::Qam16:
        return grid(4);
    case Modulation::Qam64:
        return grid(8);
    default:
        return grid(2);
    }
}

Complex LinearSignal::axisI() const
{
    return std::polar(std::pow(10.0, imbalance / 40.0), 0.5 * quadrature * pi / 180.0);
}

Complex LinearSignal::axisQ() const
{
    return std::polar(std::pow(10.0, -imbalance / 40.0), (90.0 - 0.5 * quadrature) * pi / 180.0);
}

double LinearSignal::errorPower() const
{
    const Complex gain = 0.5 * (axisI() - Complex(0.0, 1.0) * axisQ());
    const Complex image = 0.5 * (axisI() + Complex(0.0, 1.0) * axisQ());
    const double noise = std::pow(10.0, -esN0 / 10.0);
    const double rounding = 1e-30; // an image of nothing but
    return (noise + std::max(std::norm(image) - rounding, 0.0) + std::pow(10.0, offset / 10.0)) /
           std::norm(gain);
}

double LinearSignal::leastDistance() const
{
    const std::vector<Complex> points = pointsOf(modulation);
    double least = none;
    for (std::size_t k = 1; k < points.size(); ++k)
        least = std::min(least, std::abs(points[k] - points[0]));
    return least;
}

std::vector<Complex> LinearSignal::symbols(Random& random, int count) const
{
    const std::vector<Complex> points = pointsOf(modulation);
    const Complex added = std::polar(std::pow(10.0, offset / 20.0), random.phase());
    std::vector<Complex> symbols;
    for (int k = 0; k < count; ++k) {
        // The points of pi/4 DQPSK take turns: four of the eight, then the other four.
        const bool isInTurns = modulation == Modulation::Pi4Dqpsk;
        const int index =
            isInTurns ? 2 * random.below(4) + k % 2 : random.below(static_cast<int>(points.size()));
        const Complex ideal = points[static_cast<std::size_t>(index)];
        symbols.push_back(ideal.real() * axisI() + ideal.imag() * axisQ() + added);
    }
    return symbols;
}

Complex LinearSignal::sample(const std::vector<Complex>& symbols, double time, double period) const
{
    const int count = static_cast<int>(symbols.size());
    const double delay = modulation == Modulation::Oqpsk ? 0.5 : 0.0; // of Q
    const double middle = time / period;
    Complex sum = 0.0;
    for (int k = std::max(0, static_cast<int>(middle) - reach);
         k < std::min(count, static_cast<int>(middle) + reach + 1); ++k) {
        const Complex symbol = symbols[static_cast<std::size_t>(k)];
        const double i = pulse(middle - k, rollOff);
        sum += delay > 0.0
                   ? Complex(symbol.real() * i, symbol.imag() * pulse(middle - k - delay, rollOff))
                   : symbol * i;
    }
    return sum;
}

/// Level of a burst at a time in symbols from its first one on.
double LinearSignal::ramp(double symbol) const
{
    if (gap == 0 || ends == Ends::Tails)
        return 1.0;
    constexpr double length = 2.0;
    const double outside = std::max(-symbol, symbol - symbolCount + 1.0) / length;
    return outside <= 0.0 ? 1.0 : outside >= 1.0 ? 0.0 : 0.5 + 0.5 * std::cos(pi * outside);
}

Signal LinearSignal::make(Random& random) const
{
    const bool isBurst = gap > 0;
    // Symbols beyond the ends: of a running signal as many as its pulses reach.
    const int beyond = isBurst && ends == Ends::Tails ? 0 : reach;
    const std::vector<Complex> sent = symbols(random, symbolCount + 2 * beyond);
    const double period = samplesPerSymbol / (1.0 + clockPpm * 1e-6);
    const double start = random.part(); // of the first sample, in symbols
    const double turn = random.phase();
    const double noise = std::sqrt(period * std::pow(10.0, -esN0 / 10.0));
    const auto count = static_cast<int>(period * (symbolCount + 2 * gap));
    Signal signal;
    for (int n = 0; n < count; ++n) {
        const double symbol = n / period + start - gap; // from the first one of the record
        const double decibels = drift * (static_cast<double>(n) / count - 0.5);
        Complex value = samplesPerSymbol == 1.0
                            ? sent[static_cast<std::size_t>(n) + static_cast<std::size_t>(beyond)]
                            : sample(sent, (symbol + beyond) * period, period) * ramp(symbol);
        value *= std::polar(std::pow(10.0, decibels / 20.0),
                            turn + 2.0 * pi * carrier * n / samplesPerSymbol);
        const bool isInside = symbol > -3.0 && symbol < symbolCount + 2.0;
        if (!isGapSilent || isInside)
            value += noise * random.complexGauss();
        signal.push_back(isGapSilent && !isInside ? 0.0 : value);
    }
    return signal;
}
