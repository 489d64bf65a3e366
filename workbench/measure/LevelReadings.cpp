// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/measure/LevelReadings.h"

#include "workbench/measure/Statistics.h"

namespace {

constexpr double hysteresis = 0.3; // of the r.m.s.
constexpr std::size_t minPeriodCount = 3;
constexpr double maxUnevenness = 0.1;

std::optional<double> frequencyOf(const std::vector<double>& samples, double sampleRate,
                                  double mean, double threshold)
{
    Statistics periods;
    std::optional<double> last; // crossing, samples
    double crossing = 0.0;
    bool isBelow = false; // has been far enough
    for (std::size_t k = 1; k < samples.size(); ++k) {
        const double before = samples[k - 1] - mean;
        const double now = samples[k] - mean;
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

std::optional<LevelReadings> LevelReadings::of(const std::vector<double>& samples,
                                               double sampleRate)
{
    Statistics statistics;
    for (const double sample : samples) {
        if (std::isfinite(sample))
            statistics.add(sample);
    }
    if (statistics.count() == 0)
        return std::nullopt;
    LevelReadings readings;
    readings.mean = statistics.mean();
    readings.lowest = statistics.lowest();
    readings.highest = statistics.highest();
    readings.acRms = statistics.deviation();
    readings.rms = std::hypot(readings.mean, readings.acRms);
    if (readings.acRms > 0.0)
        readings.frequency =
            frequencyOf(samples, sampleRate, readings.mean, hysteresis * readings.acRms);
    return readings;
}
