// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/measure/LevelReadings.h"

#include "workbench/measure/Statistics.h"

namespace {

constexpr int rounds = 10;           // of finding the levels
constexpr double closeEnough = 0.01; // of their distance
constexpr double hysteresis = 0.2;   // of the distance of the levels, on either side
constexpr std::size_t minPeriodCount = 3;
constexpr double maxUnevenness = 0.1;

struct Levels
{
    double middle() const { return 0.5 * (low + high); }
    double distance() const { return high - low; }

    double low = 0.0;
    double high = 0.0;
};

/// The means below and above the middle between them (Lloyd, IEEE Trans. Inf. Theory 28(2), 1982),
/// from a first middle on.
Levels levelsOf(const double* samples, std::size_t count, const Statistics& all, double start)
{
    Levels levels{start, start};
    for (int round = 0; round < rounds; ++round) {
        const double middle = levels.middle();
        double sum = 0.0; // of what is above, about the mean; of what is below it is the opposite
        double above = 0.0;
        for (std::size_t k = 0; k < count; ++k) {
            const bool isAbove = samples[k] > middle && samples[k] <= all.highest();
            sum += isAbove ? samples[k] - all.mean() : 0.0;
            above += isAbove ? 1.0 : 0.0;
        }
        const double below = static_cast<double>(all.count()) - above;
        levels.low = all.mean() - sum / std::max(below, 1.0);
        levels.high = all.mean() + sum / std::max(above, 1.0);
        if (std::abs(levels.middle() - middle) <= closeEnough * levels.distance())
            break;
    }
    return levels;
}

std::optional<double> frequencyOf(const double* samples, std::size_t count, double sampleRate,
                                  const Levels& levels)
{
    const double middle = levels.middle();
    const double threshold = hysteresis * levels.distance();
    Statistics periods;
    std::optional<double> last; // crossing, samples
    double crossing = 0.0;
    bool isBelow = false; // has been far enough
    for (std::size_t k = 1; k < count; ++k) {
        const double before = samples[k - 1] - middle;
        const double now = samples[k] - middle;
        if (!std::isfinite(now) || !std::isfinite(before)) {
            last.reset();
            isBelow = false;
            continue;
        }
        if (before <= 0.0 && now > 0.0)
            crossing = static_cast<double>(k) - now / (now - before);
        if (now < -threshold)
            isBelow = true;
        if (!isBelow || now < threshold)
            continue;
        isBelow = false;
        if (last)
            periods.add(crossing - *last);
        last = crossing;
    }
    if (periods.count() < minPeriodCount || periods.deviation() > maxUnevenness * periods.mean())
        return std::nullopt;
    return sampleRate / periods.mean();
}

} // namespace

std::optional<LevelReadings> LevelReadings::of(const double* samples, std::size_t count,
                                               double sampleRate)
{
    Statistics statistics;
    for (std::size_t k = 0; k < count; ++k) {
        if (std::isfinite(samples[k]))
            statistics.add(samples[k]);
    }
    if (statistics.count() == 0)
        return std::nullopt;
    LevelReadings readings;
    readings.mean = statistics.mean();
    readings.lowest = statistics.lowest();
    readings.highest = statistics.highest();
    readings.acRms = statistics.deviation();
    readings.rms = std::hypot(readings.mean, readings.acRms);
    if (!(readings.acRms > 0.0))
        return readings;
    // From the mean on a click is no level; from the middle of the extremes on noise is none, in
    // which the shortest pulses hide.
    const Levels levels = levelsOf(samples, count, statistics, readings.mean);
    readings.frequency = frequencyOf(samples, count, sampleRate, levels);
    if (readings.frequency)
        return readings;
    const Levels others =
        levelsOf(samples, count, statistics, 0.5 * readings.lowest + 0.5 * readings.highest);
    if (std::abs(others.middle() - levels.middle()) > hysteresis * levels.distance())
        readings.frequency = frequencyOf(samples, count, sampleRate, others);
    return readings;
}
