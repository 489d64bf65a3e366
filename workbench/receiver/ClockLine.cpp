// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/receiver/ClockLine.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

using Spectra = std::array<ClockSpectra::Spectrum, 2>;

constexpr double minPeriods = 32.0; // of a symbol rate that a part has at least

struct Peak
{
    double strength = 0.0;
    std::size_t bin = 0;
    const ClockSpectra::Spectrum* of = nullptr;
};

Peak highestOf(const Spectra& spectra, std::size_t first, std::size_t end)
{
    Peak peak;
    for (const ClockSpectra::Spectrum& spectrum : spectra) {
        for (std::size_t bin = first; bin < end; ++bin) {
            if (spectrum.strength[bin] > peak.strength)
                peak = {spectrum.strength[bin], bin, &spectrum};
        }
    }
    return peak;
}

/// The fundamental of which a peak is a multiple; the peak itself when there is none. Sharp edges
/// give multiples that may be as strong.
Peak fundamentalOf(const Spectra& spectra, const Peak& peak, std::size_t firstBin)
{
    constexpr double least = 0.25; // of the strength of the multiple
    for (std::size_t divisor = 4; divisor > 1; --divisor) {
        const std::size_t middle = (peak.bin + divisor / 2) / divisor;
        if (middle <= firstBin)
            continue;
        const Peak lower = highestOf(spectra, middle - 1, middle + 2);
        if (lower.strength > least * peak.strength)
            return lower;
    }
    return peak;
}

/// Position of a peak between bins.
double placeOf(const Peak& peak)
{
    const double left = std::sqrt(peak.of->strength[peak.bin - 1]);
    const double right = std::sqrt(peak.of->strength[peak.bin + 1]);
    const double bend = left - 2.0 * std::sqrt(peak.strength) + right;
    // A fundamental need not be a peak.
    const double offset = bend < 0.0 ? std::clamp(0.5 * (left - right) / bend, -0.5, 0.5) : 0.0;
    return static_cast<double>(peak.bin) + offset;
}

/// Whether a line lies where converters have spurious lines.
bool isOfConverter(const ClockSpectra& part, double bin)
{
    const double all = part.duration() * part.sampleRate();
    return std::min(std::abs(bin - all / 2.0), std::abs(bin - all / 4.0)) < 0.5;
}

/// Strength of the strongest line, beyond what noise gives, that contradicts a line: at a simple
/// fraction of its frequency, or elsewhere, where weaker lines count less. Multiples are expected,
/// and lines far below it come from frames.
double rivalOf(const Spectra& spectra, double bin, double line)
{
    constexpr double lowestPart = 0.2;
    const auto first = static_cast<std::size_t>(lowestPart * bin) + 4;
    double rival = 0.0;
    for (const ClockSpectra::Spectrum& spectrum : spectra) {
        const double noise =
            std::log(100.0 * static_cast<double>(2 * spectrum.strength.size())); // 1 in 100
        for (std::size_t other = first; other < spectrum.strength.size(); ++other) {
            const double strength = spectrum.strength[other] - noise;
            const double ratio = static_cast<double>(other) / bin;
            const double multiple = std::round(ratio);
            if (strength <= 0.0 ||
                (multiple >= 1.0 && std::abs(ratio - multiple) * bin <= 3.0 * multiple))
                continue;
            bool isFraction = false;
            for (const double fraction : {1.0 / 4.0, 1.0 / 3.0, 1.0 / 2.0, 2.0 / 3.0, 3.0 / 2.0})
                isFraction = isFraction || std::abs(ratio - fraction) * bin <= 3.0;
            rival =
                std::max(rival, isFraction ? strength : strength * std::min(strength / line, 1.0));
        }
    }
    return rival;
}

/// Probability that noise reaches a value of an F distribution with 2 and 2 * count degrees of
/// freedom in any of some tries.
double falseAlarm(double ratio, double count, double tries)
{
    const double once = std::exp(-count * std::log1p(ratio / count));
    return -std::expm1(tries * std::log1p(-std::min(once, 1.0 - 1e-16)));
}

} // namespace

ClockLine ClockLine::of(const ClockSpectra& part)
{
    constexpr double minFill = 0.6; // of bandwidth over rate: a narrower band has no room for it
    constexpr double maxFill = 1.8;
    constexpr double maxRepetition = 0.3;
    const auto& spectra = part.spectra();
    ClockLine line;
    line.isPeriodic = part.isPeriodic();
    const double lowest = std::max(part.bandwidth() / 4.0, minPeriods / part.duration());
    const double highest = std::min(part.bandwidth() * 2.5, 0.5 * part.sampleRate());
    const auto firstBin = static_cast<std::size_t>(std::ceil(lowest * part.duration()));
    const auto endBin = std::min(static_cast<std::size_t>(highest * part.duration()) + 1,
                                 spectra[0].strength.size() - 1);
    if (firstBin >= endBin)
        return line;
    Peak best = highestOf(spectra, firstBin, endBin);
    if (!best.of)
        return line;
    best = fundamentalOf(spectra, best, firstBin);
    line.strength = best.strength;
    line.binCount = 2 * (endBin - firstBin);
    const double bin = placeOf(best);
    line.steadiness = best.of->steadiness(bin);
    line.symbolCount = bin;
    line.duration = part.duration();
    line.start = part.start();
    line.rate = bin / part.duration();
    line.rivalStrength = rivalOf(spectra, bin, line.strength);
    const double fill = part.bandwidth() / line.rate;
    line.isPlain = fill >= minFill && fill <= maxFill && !part.isHollow(line.rate) &&
                   !isOfConverter(part, bin) && part.repetition(line.rate) < maxRepetition;
    return line;
}

bool ClockLine::isBetterThan(const ClockLine& other) const
{
    constexpr double clear = 100.0;
    const auto clearness = [](const ClockLine& line) {
        return std::min({line.strength - line.rivalStrength, line.steadiness, clear});
    };
    const double here = clearness(*this);
    const double there = clearness(other);
    return here > there || (here == there && duration > other.duration);
}

bool ClockLine::isPlainAmong(const std::vector<ClockLine>& lines, double whole) const
{
    constexpr double least = 20.0;     // of the strength
    constexpr double shortPart = 16.0; // number of parts that would fill the signal
    bool isConfirmed = duration * shortPart > whole;
    int count = 0;
    int plainCount = 0;
    for (const ClockLine& other : lines) {
        if (other.isPeriodic && other.duration >= duration)
            return false; // a line of one frame is found in all
        const double bins = std::min(duration, other.duration);
        if (rate * other.duration < 2.0 * minPeriods || // too short for the line
            std::min(other.strength - other.rivalStrength, other.steadiness) < least)
            continue;
        if (std::abs(other.rate - 2.0 * rate) * bins < 2.0 ||
            std::abs(other.rate - rate / 2.0) * bins < 2.0)
            return false;
        if (std::abs(other.rate - rate) * bins > 0.5)
            continue;
        ++count;
        plainCount += other.isPlain ? 1 : 0;
        isConfirmed = isConfirmed ||
                      (other.duration == duration && std::abs(other.start - start) >= duration);
    }
    return isPlain && isConfirmed && 4 * plainCount >= 3 * count;
}

double ClockLine::falseAlarm(double tries) const
{
    // Number of bins that a level is averaged over, so that its own error counts.
    constexpr double levelCount = 40.0;
    constexpr double pieceCount = 15.0;
    return std::max(::falseAlarm(strength, levelCount, tries),
                    ::falseAlarm(steadiness, pieceCount, tries));
}

double ClockLine::clearness() const
{
    return std::max(1.0 - rivalStrength / std::max(strength, 1.0), 0.0);
}
