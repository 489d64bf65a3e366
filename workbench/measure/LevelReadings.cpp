// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/measure/LevelReadings.h"

namespace {

constexpr int rounds = 10;           // of the search for the levels
constexpr double closeEnough = 0.01; // of their distance
constexpr double hysteresis = 0.2;   // of the distance of the levels, on either side
constexpr std::size_t minPeriodCount = 3;
constexpr double maxUnevenness = 0.1;

} // namespace

LevelMeter::Periods::Periods(const Levels& levels)
    : m_middle(levels.middle())
    , m_threshold(hysteresis * levels.distance())
    , m_before(std::numeric_limits<double>::quiet_NaN())
{}

void LevelMeter::Periods::add(double sample)
{
    const double before = m_before;
    const double now = sample - m_middle;
    const double place = m_place;
    m_before = now;
    m_place += 1.0;
    if (!std::isfinite(now) || !std::isfinite(before)) {
        m_last.reset();
        m_isBelow = false;
        return;
    }
    if (before <= 0.0 && now > 0.0)
        m_crossing = place - now / (now - before);
    if (now < -m_threshold)
        m_isBelow = true;
    if (!m_isBelow || now < m_threshold)
        return;
    m_isBelow = false;
    if (m_last)
        m_periods.add(m_crossing - *m_last);
    m_last = m_crossing;
}

std::optional<double> LevelMeter::Periods::frequency(double sampleRate) const
{
    if (m_periods.count() < minPeriodCount ||
        m_periods.deviation() > maxUnevenness * m_periods.mean())
        return std::nullopt;
    return sampleRate / m_periods.mean();
}

void LevelMeter::add(double sample)
{
    const bool isFinite = std::isfinite(sample);
    if (isFinite)
        m_all.add(sample);
    for (Periods& periods : m_periods)
        periods.add(sample);
    if (!m_periods.empty())
        return;
    m_first.push_back(sample);
    if (isFinite)
        m_ofFirst.add(sample);
    if (m_first.size() < mostForLevels)
        return;
    if (m_ofFirst.deviation() > 0.0)
        m_periods = periods();
    m_ofFirst = {}; // when all are equal, the levels are searched for in the next samples
    m_first.clear();
}

/// The means below and above the middle between them (Lloyd, IEEE Trans. Inf. Theory 28(2), 1982),
/// starting at a middle.
LevelMeter::Levels LevelMeter::levelsFrom(double start) const
{
    Levels levels{start, start};
    for (int round = 0; round < rounds; ++round) {
        const double middle = levels.middle();
        // Of values above, relative to the mean; of values below it is the negative.
        double sum = 0.0;
        double above = 0.0;
        for (const double sample : m_first) {
            const bool isAbove = sample > middle && sample <= m_ofFirst.highest();
            sum += isAbove ? sample - m_ofFirst.mean() : 0.0;
            above += isAbove ? 1.0 : 0.0;
        }
        const double below = static_cast<double>(m_ofFirst.count()) - above;
        levels.low = m_ofFirst.mean() - sum / std::max(below, 1.0);
        levels.high = m_ofFirst.mean() + sum / std::max(above, 1.0);
        if (std::abs(levels.middle() - middle) <= closeEnough * levels.distance())
            break;
    }
    return levels;
}

std::vector<LevelMeter::Periods> LevelMeter::periods() const
{
    // Starting at the mean, a click does not become a level; starting at the middle of the
    // extremes, noise that hides the shortest pulses does not.
    const Levels levels = levelsFrom(m_ofFirst.mean());
    const Levels others = levelsFrom(0.5 * m_ofFirst.lowest() + 0.5 * m_ofFirst.highest());
    std::vector<Periods> result = {Periods(levels)};
    if (std::abs(others.middle() - levels.middle()) > hysteresis * levels.distance())
        result.emplace_back(others);
    for (Periods& periods : result) {
        for (const double sample : m_first)
            periods.add(sample);
    }
    return result;
}

std::optional<LevelReadings> LevelMeter::readings(double sampleRate) const
{
    if (isEmpty())
        return std::nullopt;
    LevelReadings readings;
    readings.mean = m_all.mean();
    readings.lowest = m_all.lowest();
    readings.highest = m_all.highest();
    readings.acRms = m_all.deviation();
    readings.rms = std::hypot(readings.mean, readings.acRms);
    if (!(readings.acRms > 0.0))
        return readings;
    for (const Periods& found : m_periods.empty() ? periods() : m_periods) {
        if (!readings.frequency)
            readings.frequency = found.frequency(sampleRate);
    }
    return readings;
}

std::optional<LevelReadings> LevelReadings::of(const double* samples, std::size_t count,
                                               double sampleRate)
{
    LevelMeter meter;
    for (std::size_t k = 0; k < count; ++k)
        meter.add(samples[k]);
    return meter.readings(sampleRate);
}
