// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/measure/EyeReadings.h"

#include "workbench/measure/CrossingClock.h"
#include "workbench/measure/Statistics.h"

#include <array>

namespace {

constexpr std::size_t minCrossingCount = 8;
constexpr double minSeparation = 2.4; // of two levels, in the sum of their sigmas; noise has 1.4
constexpr double minShare = 0.04;     // of the traces, on a level
constexpr double maxUnevenness = 1.5; // of the distances between more than two levels
constexpr double outlyingPart = 0.02; // of the traces, on either side, whose levels do not count
constexpr double nearestPart = 0.02; // of the crossings of more than two levels, which do not count
constexpr int rounds = 20;           // of assigning the traces to levels

class Traces
{
public:
    Traces(const std::vector<double>& samples, std::size_t length)
        : m_samples(samples)
        , m_length(length)
    {
        for (std::size_t k = 0; k + length <= samples.size(); k += length) {
            bool isFinite = true;
            for (std::size_t i = 0; i < length; ++i)
                isFinite = isFinite && std::isfinite(samples[k + i]);
            if (isFinite)
                m_starts.push_back(k);
        }
    }
    /// Number of a trace, counting also those that are not finite.
    std::size_t number(std::size_t trace) const { return m_starts[trace] / m_length; }
    std::size_t count() const { return m_starts.size(); }
    double at(std::size_t trace, std::size_t index) const
    {
        return m_samples[m_starts[trace] + index];
    }
    std::size_t middle() const { return (m_length - 1) / 2; }

private:
    const std::vector<double>& m_samples;
    std::size_t m_length;
    std::vector<std::size_t> m_starts;
};

/// Levels in the middle of the traces, assigned to those of the symbols.
struct Levels
{
    std::vector<Statistics> levels;
    std::vector<double> bounds; // between neighbours

    std::size_t levelOf(double value) const
    {
        return static_cast<std::size_t>(std::upper_bound(bounds.begin(), bounds.end(), value) -
                                        bounds.begin());
    }
    /// Whether these levels spread so much less than as many other ones that it is not by chance.
    bool isClearerThan(const Levels& other) const
    {
        constexpr double clearly = 0.8;
        constexpr double negligible = 1e-3; // of the levels' distance: less ringing does not count
        double mine = 0.0, others = 0.0;
        for (const Statistics& level : levels)
            mine += level.deviation();
        for (const Statistics& level : other.levels)
            others += level.deviation();
        return levels.size() == other.levels.size() && mine < clearly * others &&
               others > negligible * (other.levels.back().mean() - other.levels.front().mean());
    }
    double separation(std::size_t low) const
    {
        const double sigmas = levels[low].deviation() + levels[low + 1].deviation();
        return (levels[low + 1].mean() - levels[low].mean()) / std::max(sigmas, 1e-300);
    }
};

/// Lloyd's algorithm from even levels (IEEE Trans. Inf. Theory 28(2), 1982).
std::optional<Levels> share(const std::vector<double>& sorted, std::size_t levelCount)
{
    const auto outliers =
        static_cast<std::size_t>(outlyingPart * static_cast<double>(sorted.size()));
    const double lowest = sorted[outliers];
    const double range = sorted[sorted.size() - 1 - outliers] - lowest;
    Levels result;
    for (std::size_t k = 1; k < levelCount; ++k)
        result.bounds.push_back(lowest +
                                range * static_cast<double>(k) / static_cast<double>(levelCount));
    std::vector<double> before;
    for (int round = 0; round < rounds && result.bounds != before; ++round) {
        before = result.bounds;
        result.levels.assign(levelCount, Statistics());
        for (const double value : sorted) {
            if (std::abs(value - lowest - 0.5 * range) <= range) // otherwise a click
                result.levels[result.levelOf(value)].add(value);
        }
        for (std::size_t k = 0; k + 1 < levelCount; ++k)
            result.bounds[k] = 0.5 * (result.levels[k].mean() + result.levels[k + 1].mean());
    }
    Statistics distances;
    for (std::size_t k = 0; k < levelCount; ++k) {
        const auto share = static_cast<double>(result.levels[k].count());
        if (share < minShare * static_cast<double>(sorted.size()))
            return std::nullopt;
        if (k + 1 < levelCount) {
            distances.add(result.levels[k + 1].mean() - result.levels[k].mean());
            if (!(result.separation(k) >= minSeparation))
                return std::nullopt;
        }
    }
    if (!(distances.lowest() > 0.0) || distances.highest() > maxUnevenness * distances.lowest())
        return std::nullopt;
    return result;
}

std::optional<Levels> levelsOf(std::vector<double> decided)
{
    std::sort(decided.begin(), decided.end());
    std::optional<Levels> levels;
    for (std::size_t count = EyeReadings::maxLevelCount; count >= 2 && !levels; --count)
        levels = share(decided, count);
    return levels;
}

/// Crossings of a level on one side of the middle, the nearest one of each trace: samples from the
/// middle.
struct Crossings
{
    Statistics direct;               // of transitions between neighbouring levels...
    std::vector<std::size_t> traces; // ...in these traces
    std::vector<double> places;
    std::vector<double> nearest; // of all traces

    bool areEnough() const { return direct.count() >= minCrossingCount; }
    /// Distance from the middle that all but a part of the crossings keep.
    double distance(double part)
    {
        const auto index = static_cast<std::ptrdiff_t>(part * static_cast<double>(nearest.size()));
        std::nth_element(nearest.begin(), nearest.begin() + index, nearest.end());
        return nearest[static_cast<std::size_t>(index)];
    }
};

Crossings crossings(const Traces& traces, const Levels& levels, std::size_t low, double level,
                    std::size_t reach, int direction)
{
    Crossings found;
    for (std::size_t k = 0; k < traces.count(); ++k) {
        const auto at = [&](std::size_t distance) {
            return traces.at(k, direction > 0 ? traces.middle() + distance
                                              : traces.middle() - distance);
        };
        for (std::size_t step = 0; step < reach; ++step) {
            const double inner = at(step) - level;
            const double outer = at(step + 1) - level;
            if ((inner > 0.0) == (outer > 0.0))
                continue;
            found.nearest.push_back(static_cast<double>(step) + inner / (inner - outer));
            const std::size_t here = levels.levelOf(at(0));
            const std::size_t there = levels.levelOf(at(reach));
            if (std::min(here, there) == low && std::max(here, there) == low + 1) {
                found.direct.add(found.nearest.back());
                found.traces.push_back(traces.number(k));
                found.places.push_back(direction * found.nearest.back());
            }
            break;
        }
    }
    return found;
}

struct Jitter
{
    double rms, peakToPeak; // symbols
};

/// Jitter of crossings relative to the clock that fits them or, when that is not known, to that of
/// their traces.
Jitter jitterOf(const Crossings& found, const std::vector<EyeReadings::Instant>& instants,
                double symbolLength)
{
    std::vector<crossingClock::Crossing> times;
    for (std::size_t k = 0; k < found.traces.size() && !instants.empty(); ++k) {
        const EyeReadings::Instant& instant = instants[found.traces[k]];
        times.push_back(
            {instant.run, instant.symbol, instant.late + found.places[k] / symbolLength});
    }
    const crossingClock::Offsets offsets = crossingClock::offsetsOf(times);
    Statistics statistics;
    for (const double offset : offsets.values)
        statistics.add(offset);
    if (statistics.count() == 0)
        return {found.direct.deviation() / symbolLength, found.direct.range() / symbolLength};
    const auto count = static_cast<double>(statistics.count());
    const double free = count - static_cast<double>(offsets.fittedCount);
    return {statistics.deviation() * std::sqrt(count / free), statistics.range()};
}

struct Meeting
{
    double level = 0.0;
    double time = 0.0; // samples from the middle
};

/// Where the mean rising and the mean falling trace between two levels meet, left of the middle.
std::optional<Meeting> meeting(const Traces& traces, const Levels& levels, std::size_t low,
                               std::size_t reach)
{
    std::vector<Statistics> rising(reach + 1);
    std::vector<Statistics> falling(reach + 1);
    for (std::size_t k = 0; k < traces.count(); ++k) {
        const std::size_t now = levels.levelOf(traces.at(k, traces.middle()));
        const std::size_t before = levels.levelOf(traces.at(k, traces.middle() - reach));
        if (std::min(now, before) != low || std::max(now, before) != low + 1)
            continue;
        for (std::size_t i = 0; i <= reach; ++i)
            (now > before ? rising : falling)[i].add(traces.at(k, traces.middle() - reach + i));
    }
    if (rising[0].count() < minCrossingCount || falling[0].count() < minCrossingCount)
        return std::nullopt;
    for (std::size_t i = 0; i < reach; ++i) {
        const double before = rising[i].mean() - falling[i].mean();
        const double after = rising[i + 1].mean() - falling[i + 1].mean();
        if (before <= 0.0 && after > 0.0) {
            const double part = before / (before - after);
            return Meeting{rising[i].mean() + part * (rising[i + 1].mean() - rising[i].mean()),
                           static_cast<double>(i) + part - static_cast<double>(reach)};
        }
    }
    return std::nullopt;
}

EyeReadings::Eye measure(const Traces& traces, const Levels& levels, std::size_t low,
                         std::size_t symbolLength, bool hasNeighbours,
                         const std::vector<EyeReadings::Instant>& instants)
{
    const Statistics& below = levels.levels[low];
    const Statistics& above = levels.levels[low + 1];
    EyeReadings::Eye eye;
    eye.lowLevel = below.mean();
    eye.highLevel = above.mean();
    eye.lowSigma = below.deviation();
    eye.highSigma = above.deviation();
    const double distance = eye.highLevel - eye.lowLevel;
    eye.height = distance - 3.0 * (eye.lowSigma + eye.highSigma);
    eye.innerHeight = above.lowest() - below.highest();
    eye.opening = 100.0 * std::max(eye.height, 0.0) / distance;
    eye.q = levels.separation(low);
    if (!hasNeighbours)
        return eye;

    const auto unit = static_cast<double>(symbolLength);
    double threshold = eye.lowLevel + 0.5 * distance;
    if (const auto crossing = meeting(traces, levels, low, symbolLength)) {
        threshold = crossing->level;
        eye.crossing = 100.0 * (crossing->level - eye.lowLevel) / distance;
        eye.crossingTime = crossing->time / unit;
    }
    Crossings left = crossings(traces, levels, low, threshold, symbolLength, -1);
    Crossings right = crossings(traces, levels, low, threshold, symbolLength, 1);
    if (!left.areEnough() || !right.areEnough())
        return eye;
    const Jitter onLeft = jitterOf(left, instants, unit);
    const Jitter onRight = jitterOf(right, instants, unit);
    const double width =
        levels.bounds.size() == 1
            ? (left.direct.mean() + right.direct.mean()) / unit - 3.0 * (onLeft.rms + onRight.rms)
            : (left.distance(nearestPart) + right.distance(nearestPart)) / unit;
    eye.width = std::max(width, 0.0);
    eye.jitterRms = std::sqrt(0.5 * (onLeft.rms * onLeft.rms + onRight.rms * onRight.rms));
    eye.jitterPeak = std::max(onLeft.peakToPeak, onRight.peakToPeak);
    return eye;
}

} // namespace

std::optional<EyeReadings> EyeReadings::of(const std::vector<double>& samples,
                                           std::size_t traceLength, int symbolCount,
                                           const std::vector<double>& nearest,
                                           const std::vector<Instant>& instants)
{
    if (traceLength < 3 || symbolCount < 1)
        return std::nullopt;
    const Traces traces(samples, traceLength);
    if (traces.count() < minTraceCount)
        return std::nullopt;
    std::vector<double> decided; // levels in the middle
    for (std::size_t k = 0; k < traces.count(); ++k)
        decided.push_back(traces.at(k, traces.middle()));
    std::optional<Levels> levels = levelsOf(decided);
    if (nearest.size() == traces.count()) {
        const std::optional<Levels> others = levelsOf(nearest);
        if (others && (!levels || others->isClearerThan(*levels)))
            levels = others;
    }
    if (!levels)
        return std::nullopt;
    EyeReadings readings;
    const std::size_t symbolLength = (traceLength - 1) / static_cast<std::size_t>(symbolCount);
    for (std::size_t low = 0; low < levels->bounds.size(); ++low)
        readings.eyes.push_back(measure(traces, *levels, low, symbolLength,
                                        symbolCount > 1 && symbolLength > 1, instants));
    return readings;
}
