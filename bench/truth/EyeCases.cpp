// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "Case.h"
#include "EyeSignal.h"

#include <algorithm>
#include <cmath>

namespace {

using Kind = Truth::Kind;
using Edge = EyeSignal::Edge;

constexpr double symbolRate = 1e6;

QString number(double value) { return QString::number(value, 'g', 12); }

/// Of a level with Gaussian edges, which reach into the symbols beside them: a neighbour of the
/// other level, there half of the time on either side, takes this part of the distance away.
double interference(const EyeSignal& signal)
{
    return signal.edge == Edge::Gaussian ? signal.step(-0.5) : 0.0;
}

void addEye(std::vector<Truth>& truths, const EyeSignal& signal, std::size_t low)
{
    const double sent = signal.levels[low + 1] - signal.levels[low];
    const double reach = interference(signal);
    const double distance = sent * (1.0 - 2.0 * reach);
    const double sigma = std::hypot(signal.noise, sent * reach * std::sqrt(0.5));
    const double count = signal.symbolCount;
    const double perLevel = count / static_cast<double>(signal.levels.size());
    const double trial = sigma / std::sqrt(2.0 * perLevel); // of a sigma
    const auto add = [&](const char* name, double value, double tolerance, double deviation) {
        truths.push_back({QStringLiteral("eye.eyes.%1.%2").arg(low).arg(QLatin1String(name)),
                          Kind::Value, value, tolerance, deviation});
    };
    const double height = distance - 6.0 * sigma;
    add("height", height, 0.02 * distance, 3.0 * std::sqrt(2.0) * trial);
    add("opening", std::max(height, 0.0) / distance, 0.02, 3.0 * std::sqrt(2.0) * trial / distance);
    if (sigma > 0.0) {
        const double q = distance / (2.0 * sigma);
        add("q", q, 0.02 * q, 0.5 * q / std::sqrt(perLevel));
    }
    if (signal.edge == Edge::Held || signal.isAlternating)
        return;
    const bool isOfTwo = signal.levels.size() == 2;
    // Rising edges come later by the lag, falling ones earlier: where they meet in mean.
    const double crossing = isOfTwo ? signal.step(-0.5 * signal.lag) : 0.5;
    add("crossing", crossing, 0.01, signal.noise / distance / std::sqrt(perLevel / 4.0));
    const double jitter = signal.edgeJitter(sent);
    add("jitter_rms", jitter, std::max(0.03 * jitter, 0.002), jitter / std::sqrt(count));
    if (!isOfTwo)
        return;
    // From the earliest to the latest: twice the mean of the largest of n Gaussian values (Cramer,
    // Mathematical Methods of Statistics, 28.6), or the sine's whole swing.
    const double root = std::sqrt(2.0 * std::log(0.5 * count));
    const double largest =
        root - (std::log(std::log(0.5 * count)) + std::log(4.0 * pi) - 2.0 * 0.577) / (2.0 * root);
    if (signal.sineJitter == 0.0)
        add("jitter_pp", 2.0 * largest * jitter, std::max(0.05 * 2.0 * largest * jitter, 0.01),
            std::sqrt(2.0) * pi / std::sqrt(6.0) / root * jitter);
    else
        add("jitter_pp", 2.0 * std::sqrt(2.0) * jitter, 0.03 * 2.0 * std::sqrt(2.0) * jitter, 0.0);
    add("width", 1.0 - 6.0 * jitter, 0.02, 6.0 * jitter / std::sqrt(count));
}

std::vector<Truth> truthsOf(const EyeSignal& signal)
{
    std::vector<Truth> truths;
    const auto size = signal.levels.size();
    truths.push_back({"eye.levels.#", Kind::Value, static_cast<double>(size)});
    const double perLevel = signal.symbolCount / static_cast<double>(size);
    for (std::size_t k = 0; k < size; ++k) {
        const std::size_t beside = k > 0 ? k - 1 : k + 1;
        const double distance = signal.levels[beside] - signal.levels[k]; // to the neighbour
        const double reach = interference(signal);
        const double sigma = std::hypot(signal.noise, distance * reach * std::sqrt(0.5));
        const QString path = QStringLiteral("eye.levels.%1.").arg(k);
        truths.push_back({path + "mean", Kind::Value, signal.levels[k] + distance * reach,
                          0.01 * std::abs(distance), sigma / std::sqrt(perLevel)});
        truths.push_back({path + "sigma", Kind::Value, sigma,
                          sigma > 0.0 ? 0.01 * sigma : 0.005 * std::abs(distance),
                          sigma / std::sqrt(2.0 * perLevel)});
    }
    for (std::size_t low = 0; low + 1 < size; ++low)
        addEye(truths, signal, low);
    if (signal.symbolCount >= 2000 && !signal.isAlternating && signal.edge != Edge::Held)
        truths.push_back(
            {"clock.offset_ppm", Kind::Value, signal.clockPpm, 5.0,
             1e6 * std::sqrt(24.0) * signal.edgeJitter(signal.levels[1] - signal.levels[0]) /
                 std::pow(signal.symbolCount, 1.5)});
    return truths;
}

Case caseOf(const char* group, const char* name, const EyeSignal& signal)
{
    Case result;
    result.group = QString::fromLatin1(group);
    result.name = QString::fromLatin1(name);
    result.isComplex = false;
    result.arguments = QStringList{"--format",      "rf32",
                                   "--symbol-rate", number(symbolRate),
                                   "--sample-rate", number(symbolRate * signal.samplesPerSymbol)};
    result.make = [signal](Random& random) { return signal.make(random); };
    result.truths = truthsOf(signal);
    return result;
}

EyeSignal noisy(double samplesPerSymbol, double q, double edgeWidth, double clockPpm = 0.0)
{
    EyeSignal signal;
    signal.samplesPerSymbol = samplesPerSymbol;
    signal.noise = 1.0 / q; // of two levels 2 apart
    signal.edgeWidth = edgeWidth;
    signal.clockPpm = clockPpm;
    return signal;
}

EyeSignal jittered(double samplesPerSymbol, double jitter, double sineJitter, double noise = 0.0)
{
    EyeSignal signal;
    signal.samplesPerSymbol = samplesPerSymbol;
    signal.jitter = jitter;
    signal.sineJitter = sineJitter;
    signal.noise = noise;
    return signal;
}

} // namespace

std::vector<Case> eyeCases()
{
    const char* const two = "Eyes of two levels";
    const char* const more = "Eyes of three and four levels";
    std::vector<Case> cases;
    const auto add = [&](const char* group, const char* name, const EyeSignal& signal) {
        cases.push_back(caseOf(group, name, signal));
    };
    const auto with = [](EyeSignal signal, auto change) {
        change(signal);
        return signal;
    };
    const EyeSignal plain;
    add(two, "nrz-clean", plain);
    add(two, "nrz-q8-4.37", noisy(4.37, 8.0, 1.0));
    add(two, "nrz-q10-5", noisy(5.0, 10.0, 0.9, 128.0));
    add(two, "nrz-q12-8", noisy(8.0, 12.0, 0.7));
    add(two, "nrz-q15-10.4", noisy(10.4, 15.0, 0.6, -200.0));
    add(two, "nrz-q20-19.2", noisy(19.2, 20.0, 0.5));
    add(two, "nrz-q40-41.67", noisy(41.67, 40.0, 0.4, 50.0));
    add(two, "nrz-gaussian-q15",
        with(noisy(10.4, 15.0, 0.2), [](EyeSignal& signal) { signal.edge = Edge::Gaussian; }));
    add(two, "nrz-interference",
        with(noisy(8.0, 30.0, 0.25), [](EyeSignal& signal) { signal.edge = Edge::Gaussian; }));
    add(two, "nrz-400",
        with(noisy(8.0, 15.0, 0.7), [](EyeSignal& signal) { signal.symbolCount = 400; }));
    add(two, "nrz-20000",
        with(noisy(8.0, 15.0, 0.7, 400.0), [](EyeSignal& signal) { signal.symbolCount = 20000; }));
    add(two, "nrz-offset", with(noisy(5.0, 12.0, 0.9), [](EyeSignal& signal) {
            signal.levels = {0.3, 3.1};
            signal.noise = 2.8 / 24.0;
        }));
    add(two, "nrz-late-rise",
        with(noisy(10.4, 20.0, 0.6), [](EyeSignal& signal) { signal.lag = 0.08; }));
    add(two, "jitter0.01", jittered(10.4, 0.01, 0.0));
    add(two, "jitter0.02", jittered(8.0, 0.02, 0.0));
    add(two, "jitter0.05", jittered(19.2, 0.05, 0.0));
    add(two, "jitter-sine0.03", jittered(10.4, 0.0, 0.03));
    add(two, "jitter-noise", jittered(8.0, 0.02, 0.0, 1.0 / 20.0));
    add(two, "held-4.37", with(plain, [](EyeSignal& signal) {
            signal.samplesPerSymbol = 4.37;
            signal.edge = Edge::Held;
        }));
    add(two, "preamble", with(plain, [](EyeSignal& signal) { signal.isAlternating = true; }));
    add(more, "3-levels", with(noisy(8.0, 30.0, 0.7), [](EyeSignal& signal) {
            signal.levels = {-1.0, 0.0, 1.0};
        }));
    add(more, "4-levels", with(noisy(10.4, 40.0, 0.6), [](EyeSignal& signal) {
            signal.levels = {-1.0, -1.0 / 3.0, 1.0 / 3.0, 1.0};
        }));
    add(more, "4-levels-uneven", with(noisy(19.2, 40.0, 0.5, 128.0), [](EyeSignal& signal) {
            signal.levels = {-1.0, -0.35, 0.3, 1.0};
        }));
    return cases;
}
