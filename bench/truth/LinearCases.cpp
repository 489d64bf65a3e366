// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "Bounds.h"
#include "Case.h"
#include "LinearSignal.h"

#include <algorithm>
#include <cmath>

namespace {

using Modulation = LinearSignal::Modulation;
using Kind = Truth::Kind;

constexpr double symbolRate = 12500.0;

struct Name
{
    const char* name;
    Modulation modulation;
};
constexpr Name names[] = {{"bpsk", Modulation::Bpsk},        {"qpsk", Modulation::Qpsk},
                          {"8psk", Modulation::Psk8},        {"16qam", Modulation::Qam16},
                          {"64qam", Modulation::Qam64},      {"oqpsk", Modulation::Oqpsk},
                          {"pi4dqpsk", Modulation::Pi4Dqpsk}};

QString nameOf(Modulation modulation)
{
    for (const Name& name : names) {
        if (name.modulation == modulation)
            return QString::fromLatin1(name.name);
    }
    return QString();
}

QString number(double value) { return QString::number(value, 'g', 12); }

std::vector<Truth> truthsOf(const LinearSignal& signal)
{
    std::vector<Truth> truths;
    const double count = signal.symbolCount;
    const double power = signal.errorPower();
    const double evm = std::sqrt(power);
    const double mer = -10.0 * std::log10(power);
    // Of a mean of squares of complex Gaussian errors.
    const double relative = 1.0 / std::sqrt(count);
    if (power <= 0.0) {
        truths.push_back({"constellation.mer_db", Kind::AtLeast, bounds::floorDb});
        truths.push_back(
            {"constellation.evm_rms", Kind::Value, 0.0, std::pow(10.0, -bounds::floorDb / 20.0)});
    } else {
        const double drift = signal.drift > 0.0 ? 0.5 : 0.0; // followed or not: see the text
        truths.push_back(
            {"constellation.mer_db", Kind::Value, mer, 0.3 + drift, bounds::mer(count)});
        truths.push_back({"constellation.evm_rms", Kind::Value, evm, (0.03 + 0.1 * drift) * evm,
                          0.5 * relative * evm});
    }
    // Largest of as many magnitudes whose squares are exponential (Gumbel's limit), where none
    // comes near to another point.
    const double logarithm = std::log(count) + 0.577;
    const double peak = evm * std::sqrt(logarithm);
    const bool isOfNoise = signal.imbalance == 0.0 && signal.quadrature == 0.0 &&
                           signal.drift == 0.0 && std::isinf(signal.offset);
    if (power > 0.0 && isOfNoise && 1.3 * peak < 0.5 * signal.leastDistance())
        truths.push_back({"constellation.evm_peak", Kind::Value, peak, 0.05 * peak,
                          0.5 * pi / std::sqrt(6.0) * evm / std::sqrt(logarithm)});
    const double kept = signal.gap > 0 ? 0.8 : count < 1000.0 ? 0.5 : 0.9;
    truths.push_back({"constellation.symbols", Kind::AtLeast, kept * count});
    if (signal.samplesPerSymbol < 2.0)
        return truths;
    // To an estimate of time and phase, errors of the transmitter are as good as noise.
    const double esN0 = 1.0 / std::max(power, std::pow(10.0, -bounds::floorDb / 10.0));
    const double part = bounds::phasePart(LinearSignal::pointsOf(signal.modulation), esN0);
    const double carrier = symbolRate * bounds::carrier(count, esN0, part);
    truths.push_back({"carrier.offset", Kind::Value, symbolRate * signal.carrier, 3.0 * carrier,
                      0.25 * carrier});
    // 5 ppm at 20 dB and 2,000 symbols; the bound says how it grows with shorter records and noise.
    const double clock =
        5.0 * std::max(1.0, std::pow(2000.0 / count, 1.5)) * std::max(1.0, std::sqrt(100.0 / esN0));
    truths.push_back({"clock.offset_ppm", Kind::Value, signal.clockPpm, clock,
                      bounds::clock(count, esN0, signal.rollOff)});
    return truths;
}

Case caseOf(const char* group, const QString& name, const LinearSignal& signal,
            const QStringList& more = {})
{
    Case result;
    result.group = QString::fromLatin1(group);
    result.name = nameOf(signal.modulation) + QLatin1Char('-') + name;
    result.arguments = QStringList{"--format",      "cf32",
                                   "--symbol-rate", number(symbolRate),
                                   "--sample-rate", number(symbolRate * signal.samplesPerSymbol),
                                   "--modulation",  nameOf(signal.modulation)};
    if (signal.samplesPerSymbol >= 2.0)
        result.arguments += {"--roll-off", number(signal.rollOff)};
    result.arguments += more;
    result.make = [signal](Random& random) { return signal.make(random); };
    result.truths = truthsOf(signal);
    return result;
}

struct Row
{
    const char* name;
    LinearSignal signal;
};

/// Modulation, roll-off, samples a symbol, clock, carrier, Es/N0 and symbols, each value of each
/// somewhere.
const std::vector<Row>& runningSignals()
{
    static const std::vector<Row> rows = {
        // clang-format off
        {"clean",      {Modulation::Qpsk, 0.35, 4.0, 0.0, 0.0, LinearSignal::none, 2000}},
        {"10dB",       {Modulation::Qpsk, 0.35, 4.0, 0.0, 0.0, 10.0, 2000}},
        {"15dB",       {Modulation::Qpsk, 0.35, 4.0, 0.0, 0.0, 15.0, 2000}},
        {"20dB",       {Modulation::Qpsk, 0.35, 4.0, 0.0, 0.0, 20.0, 2000}},
        {"26dB",       {Modulation::Qpsk, 0.35, 4.0, 0.0, 0.0, 26.0, 2000}},
        {"30dB",       {Modulation::Qpsk, 0.35, 4.0, 0.0, 0.0, 30.0, 2000}},
        {"36dB",       {Modulation::Qpsk, 0.35, 4.0, 0.0, 0.0, 36.0, 2000}},
        {"200",        {Modulation::Qpsk, 0.35, 4.0, 0.0, 0.0, 20.0, 200}},
        {"500",        {Modulation::Qpsk, 0.2, 4.37, 50.0, 0.003, 20.0, 500}},
        {"20000",      {Modulation::Qpsk, 0.35, 4.0, -50.0, 0.11, 20.0, 20000}},
        {"2sps",       {Modulation::Qpsk, 0.35, 2.0, 50.0, -0.003, 20.0, 2000}},
        {"3.2sps",     {Modulation::Qpsk, 0.5, 3.2, 128.0, 0.11, 26.0, 2000}},
        {"6.667sps",   {Modulation::Qpsk, 0.2, 6.667, -200.0, -0.14, 20.0, 2000}},
        {"20sps",      {Modulation::Qpsk, 0.35, 20.0, 400.0, 0.14, 20.0, 2000}},
        {"carrier0.3", {Modulation::Qpsk, 0.35, 4.0, 0.0, 0.3, 20.0, 2000}},
        {"carrier0.49",{Modulation::Qpsk, 0.35, 4.0, 0.0, -0.49, 20.0, 2000}},
        {"500ppm",     {Modulation::Qpsk, 0.35, 5.3, 500.0, 0.0, 20.0, 10000}},
        {"10dB",       {Modulation::Bpsk, 0.35, 8.0, 0.0, 0.0, 10.0, 2000}},
        {"carrier0.3", {Modulation::Bpsk, 0.5, 10.0, -50.0, -0.3, 20.0, 2000}},
        {"300",        {Modulation::Bpsk, 0.2, 4.0, 0.0, 0.003, 15.0, 300}},
        {"15dB",       {Modulation::Psk8, 0.35, 4.0, 0.0, 0.0, 15.0, 2000}},
        {"26dB",       {Modulation::Psk8, 0.2, 5.3, 128.0, 0.11, 26.0, 2000}},
        {"carrier0.3", {Modulation::Psk8, 0.35, 4.0, 0.0, 0.3, 20.0, 2000}},
        {"10dB",       {Modulation::Qam16, 0.35, 4.0, 0.0, 0.0, 10.0, 4000}},
        {"15dB",       {Modulation::Qam16, 0.35, 4.0, 0.0, 0.0, 15.0, 2000}},
        {"20dB",       {Modulation::Qam16, 0.35, 4.0, 0.0, 0.0, 20.0, 2000}},
        {"30dB",       {Modulation::Qam16, 0.2, 4.37, 128.0, 0.11, 30.0, 2000}},
        {"500",        {Modulation::Qam16, 0.5, 8.0, -200.0, -0.14, 26.0, 500}},
        {"carrier0.3", {Modulation::Qam16, 0.35, 3.2, 50.0, 0.3, 26.0, 5000}},
        {"20dB",       {Modulation::Qam64, 0.35, 4.0, 0.0, 0.0, 20.0, 4000}},
        {"26dB",       {Modulation::Qam64, 0.35, 4.0, 0.0, 0.0, 26.0, 4000}},
        {"30dB",       {Modulation::Qam64, 0.2, 4.37, -50.0, 0.11, 30.0, 4000}},
        {"36dB",       {Modulation::Qam64, 0.35, 6.667, 128.0, -0.003, 36.0, 2000}},
        {"clean",      {Modulation::Qam64, 0.2, 5.3, 400.0, 0.14, LinearSignal::none, 4000}},
        {"15dB",       {Modulation::Oqpsk, 0.35, 4.0, 0.0, 0.003, 15.0, 2000}},
        {"26dB",       {Modulation::Oqpsk, 0.5, 6.667, 128.0, 0.11, 26.0, 2000}},
        {"20dB",       {Modulation::Pi4Dqpsk, 0.35, 4.0, 0.0, 0.0, 20.0, 2000}},
        {"26dB",       {Modulation::Pi4Dqpsk, 0.35, 5.3, -200.0, -0.11, 26.0, 2000}},
        {"1sps",       {Modulation::Qpsk, 0.35, 1.0, 0.0, 0.0, 20.0, 2000}},
        {"1sps",       {Modulation::Qam16, 0.35, 1.0, 0.0, 0.001, 26.0, 2000}},
        // clang-format on
    };
    return rows;
}

std::vector<Case> running()
{
    std::vector<Case> cases;
    for (const Row& row : runningSignals()) {
        const LinearSignal& signal = row.signal;
        cases.push_back(caseOf("Linear modulation, cut out of a running signal",
                               QString::fromLatin1(row.name), signal));
        const bool isAlone =
            signal.modulation == Modulation::Oqpsk || signal.modulation == Modulation::Pi4Dqpsk;
        if (signal.samplesPerSymbol >= 2.0 && !isAlone) // peers have loops for the others
            cases.back().linear = signal;
    }
    return cases;
}

/// Bursts amid noise or silence.
std::vector<Case> bursts()
{
    std::vector<Case> cases;
    const auto add = [&](const char* name, LinearSignal signal, int gap, LinearSignal::Ends ends,
                         bool isSilent, const QStringList& more = {}) {
        signal.gap = gap;
        signal.ends = ends;
        signal.isGapSilent = isSilent;
        cases.push_back(caseOf("Bursts", QString::fromLatin1(name), signal, more));
    };
    const auto tails = LinearSignal::Ends::Tails;
    const auto ramps = LinearSignal::Ends::Ramps;
    const LinearSignal qpsk = {Modulation::Qpsk, 0.35, 4.0, 0.0, 0.003, 26.0, 0};
    const auto lasting = [](LinearSignal signal, int symbolCount) {
        signal.symbolCount = symbolCount;
        return signal;
    };
    const QStringList squelch = {"--squelch", "-5"};
    add("burst64", lasting(qpsk, 64), 100, tails, true);
    add("burst64-squelch", lasting(qpsk, 64), 100, tails, false, squelch);
    add("burst128-noise", lasting(qpsk, 128), 100, ramps, false);
    add("burst128-squelch", lasting(qpsk, 128), 100, ramps, false, squelch);
    add("burst300-silence", lasting(qpsk, 300), 200, ramps, true);
    add("burst300-noise", lasting(qpsk, 300), 200, tails, false);
    add("burst1000-noise", lasting(qpsk, 1000), 300, tails, false);
    add("burst1000-squelch", lasting(qpsk, 1000), 300, ramps, false, squelch);
    add("burst1000", {Modulation::Qam16, 0.35, 5.3, 50.0, 0.11, 30.0, 1000}, 300, tails, false,
        squelch);
    add("burst300", {Modulation::Bpsk, 0.35, 8.0, 0.0, 0.0, 20.0, 300}, 150, ramps, false, squelch);
    return cases;
}

/// Errors of the transmitter, and slow changes.
std::vector<Case> transmitters()
{
    std::vector<Case> cases;
    const auto impaired = [&](const char* name, LinearSignal signal, double imbalance,
                              double quadrature, double offset) {
        signal.imbalance = imbalance;
        signal.quadrature = quadrature;
        signal.offset = offset;
        Case result = caseOf("Errors of the transmitter", QString::fromLatin1(name), signal);
        // Least squares of a Gaussian error on each axis, and of its mean.
        const double trial = std::pow(10.0, -signal.esN0 / 20.0) / std::sqrt(signal.symbolCount);
        const double decibels = 20.0 / std::log(10.0);
        const double gain = std::norm(0.5 * (signal.axisI() - Complex(0.0, 1.0) * signal.axisQ()));
        if (std::isfinite(offset))
            result.truths.push_back(
                {"constellation.offset_db", Kind::Value, offset - 10.0 * std::log10(gain), 0.5,
                 decibels * std::sqrt(0.5) * trial / std::pow(10.0, offset / 20.0)});
        result.truths.push_back({"constellation.imbalance_db", Kind::Magnitude, imbalance, 0.1,
                                 decibels * std::sqrt(2.0) * trial});
        result.truths.push_back({"constellation.quadrature_deg", Kind::Magnitude, quadrature, 0.2,
                                 180.0 / pi * std::sqrt(2.0) * trial});
        cases.push_back(result);
    };
    const LinearSignal qpsk = {Modulation::Qpsk, 0.35, 4.0, 50.0, 0.003, 26.0, 4000};
    impaired("offset-20dB", qpsk, 0.0, 0.0, -20.0);
    impaired("imbalance0.5", qpsk, 0.5, 0.0, -LinearSignal::none);
    impaired("quadrature3", qpsk, 0.0, 3.0, -LinearSignal::none);
    impaired("all", {Modulation::Qam16, 0.35, 4.37, 0.0, 0.11, 30.0, 4000}, 0.5, 3.0, -30.0);
    impaired("all", {Modulation::Qam64, 0.2, 5.3, 0.0, 0.0, 36.0, 4000}, 0.2, 1.0, -30.0);

    LinearSignal drifting = {Modulation::Qpsk, 0.35, 4.0, 0.0, 0.0, 20.0, 4000};
    drifting.drift = 1.0;
    cases.push_back(caseOf("Errors of the transmitter", "drift1dB", drifting));
    return cases;
}

/// Figures whose own deviations are compared with how they scatter.
std::vector<Case> scatters()
{
    std::vector<Case> cases;
    for (const LinearSignal& signal :
         {LinearSignal{Modulation::Qpsk, 0.35, 4.37, 50.0, 0.01, 20.0, 1000},
          {Modulation::Qam16, 0.35, 4.0, 0.0, 0.003, 26.0, 2000}}) {
        Case scatter = caseOf("Reported deviations", "scatter", signal);
        scatter.truths = {
            {"carrier.deviation", Kind::Scatter, 0.0, 0.0, 0.0, "carrier.offset"},
            {"clock.deviation_ppm", Kind::Scatter, 0.0, 0.0, 0.0, "clock.offset_ppm"}};
        scatter.leastTrials = 20;
        const std::vector<Truth> values = truthsOf(signal);
        scatter.truths.insert(scatter.truths.end(), values.end() - 2, values.end());
        cases.push_back(scatter);
    }
    return cases;
}

/// Forms of one signal that must measure the same.
std::vector<Case> forms()
{
    std::vector<Case> cases;
    const auto same = [](const char* path, double tolerance) {
        return Truth{QString::fromLatin1(path), Kind::Same, 0.0, tolerance};
    };
    Case searched = caseOf("Forms of one signal", "auto",
                           {Modulation::Qpsk, 0.35, 4.37, 0.0, 0.01, 20.0, 4000});
    searched.arguments[searched.arguments.indexOf("--symbol-rate") + 1] = "auto";
    searched.truths.resize(2); // MER and EVM
    // Ten times what the bound of the clock leaves.
    searched.truths.push_back({"symbol_rate.value", Kind::Value, symbolRate, 5e-6 * symbolRate});
    searched.truths.push_back(
        {"symbol_rate.deviation", Kind::Scatter, 0.0, 0.0, 0.0, "symbol_rate.value"});
    cases.push_back(searched);

    const LinearSignal plain = {Modulation::Qpsk, 0.35, 4.37, 50.0, 0.01, 20.0, 2000};
    Case levels = caseOf("Forms of one signal", "levels", plain);
    for (const double level : {1e-4, 1e3}) {
        levels.forms.emplace_back([level](Signal signal) {
            for (Complex& sample : signal)
                sample *= level;
            return signal;
        });
    }
    // The numbers have 24 bits, whatever their level. Sums of some four hundred products, which is
    // what filters make of a symbol, round by their root, were all roundings alike in direction.
    const double rounding = 20.0 * std::pow(2.0, -24.0);
    const double evm = std::sqrt(plain.errorPower());
    levels.truths = {same("constellation.mer_db", 20.0 / std::log(10.0) * rounding / evm),
                     same("constellation.evm_rms", rounding),
                     same("carrier.offset", 1e-6 * symbolRate * plain.carrier),
                     same("clock.offset_ppm", 0.01)};
    cases.push_back(levels);
    Case start = caseOf("Forms of one signal", "start137", plain);
    start.forms.emplace_back(
        [](const Signal& signal) { return Signal(signal.begin() + 137, signal.end()); });
    // 1.6 % of the symbols are others: figures move by an eighth of a trial's deviation.
    start.truths = {same("constellation.mer_db", 4.34 / std::sqrt(2000.0)),
                    same("constellation.evm_rms", 0.5 * 0.1 / std::sqrt(2000.0)),
                    same("carrier.offset", 2.0 * symbolRate * bounds::carrier(2000.0, 100.0)),
                    same("clock.offset_ppm", 2.0 * bounds::clock(2000.0, 100.0, 0.35))};
    cases.push_back(start);
    return cases;
}

} // namespace

std::vector<Case> linearCases()
{
    std::vector<Case> cases = running();
    for (const auto& more : {bursts(), transmitters(), scatters(), forms()})
        cases.insert(cases.end(), more.begin(), more.end());
    return cases;
}
