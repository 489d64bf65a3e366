// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/feed/TimeFeed.h"

#include <algorithm>
#include <cmath>

namespace {

// Beyond these numbers of samples, of a period or of all that is shown, samples are decimated,
// unless too few would be left for a picture.
constexpr double manyOfPeriod = 16384.0;
constexpr double manyOfSpan = 2097152.0;
constexpr double fewOfSpan = 8192.0;
constexpr double spareSpans = 2.0; // that are written of a longer segment

} // namespace

void TimeFeed::open(const TimeScale& scale, std::optional<double> frameLength)
{
    m_scale = scale;
    m_segments.setFrameLength(frameLength);
    m_shown.clear();
    m_shownCount = 0.0;
    forget();
    restart();
}

// A view shows whole segments: one per period scrolls smoothly; they are longer when the shown time
// would take too many.
void TimeFeed::setSpan(double seconds, double periodLength)
{
    m_span = std::clamp(seconds, m_scale.minSpan, m_scale.maxSpan);
    m_scale.setUnit(m_span, m_countsSymbols);
    const double samples = m_span * m_scale.sampleRate;
    m_segments.setLength(static_cast<std::size_t>(
        std::ceil(std::max(periodLength, samples / TimeScale::maxSegmentCount))));
    const double many = std::max(periodLength / manyOfPeriod, samples / manyOfSpan);
    m_decimation.setFactor(static_cast<std::size_t>(
        std::max(std::floor(std::min(std::ceil(many), samples / fewOfSpan)), 1.0)));
    m_values.setBaudrate(m_scale.samplesPerUnit / static_cast<double>(m_decimation.factor()));
    m_values.setX(-m_scale.span(m_span), 0.0);
}

/// Number of the newest samples that the axis shows.
double TimeFeed::shownCount() const { return std::max(m_span * m_scale.sampleRate, m_reach); }

bool TimeFeed::reachBack(double start)
{
    m_reach = -start * m_scale.samplesPerUnit;
    return m_reach > m_written;
}

double TimeFeed::segmentLength() const
{
    return m_segments.frameLength().value_or(static_cast<double>(m_segments.length()));
}

void TimeFeed::restart()
{
    m_open = 0;
    m_decimation.restart();
}

std::size_t TimeFeed::openCount(Transport& transport)
{
    if (m_open > 0)
        return m_open;
    const std::int64_t position = transport.position();
    const std::size_t needed = m_segments.neededCount(position);
    const BlockBuffer::Ahead ahead = transport.ahead(needed);
    m_window.clear();
    if (ahead.count == needed && !m_segments.frameLength())
        transport.buffer().copyAhead(m_segments.windowStart(), needed - m_segments.windowStart(),
                                     m_window);
    begin(m_segments.next(position, ahead.count, ahead.isAll, m_window));
    return m_open;
}

void TimeFeed::begin(std::size_t count)
{
    m_open = count;
    m_hidden = 0;
    const double wanted = std::ceil(spareSpans * shownCount());
    if (wanted < static_cast<double>(count) && !m_segments.frameLength()) {
        m_hidden = count - static_cast<std::size_t>(wanted);
        m_written = std::min(m_written, wanted);
    }
    m_marker = static_cast<double>(count - m_hidden);
}

void TimeFeed::take(const BlockPart& part)
{
    remember(part);
    noteLevels({static_cast<double>(part.count), {}, part});
    add(&part.block->samples[part.first], part.count);
}

/// Keeps the newest segments: with hidden samples, a view shows less than one.
void TimeFeed::remember(const BlockPart& part)
{
    m_newest.push_back(part);
    m_newestCount += static_cast<double>(part.count);
    const double most = 3.0 * segmentLength();
    for (; m_newestCount - static_cast<double>(m_newest.front().count) > most; m_newest.pop_front())
        m_newestCount -= static_cast<double>(m_newest.front().count);
}

void TimeFeed::forget()
{
    m_newest.clear();
    m_newestCount = 0.0;
    m_written = HUGE_VAL;
}

void TimeFeed::add(const double* samples, std::size_t count)
{
    if (count == 0)
        return;
    const std::size_t hidden = std::min(m_hidden, count);
    m_hidden -= hidden;
    m_open -= std::min(m_open, hidden);
    samples += hidden;
    count -= hidden;
    if (count == 0)
        return;
    m_newSamples.assign(samples, samples + count);
    m_newMarkers.assign(count, 0.0);
    m_newMarkers.front() = m_marker;
    m_marker = 0.0;
    m_open -= std::min(m_open, count);
    m_decimation.run(m_newSamples, m_newMarkers, m_samples, m_markers);
}

void TimeFeed::notify()
{
    findLevels();
    if (!m_samples.empty())
        m_values.notify(m_samples, m_markers);
    m_samples.clear();
    m_markers.clear();
}

void TimeFeed::noteLevels(const Stretch& stretch)
{
    if (stretch.count == 0.0)
        return;
    m_shown.push_back(stretch);
    m_shownCount += stretch.count;
    while (m_shownCount - m_shown.front().count >= m_span * m_scale.sampleRate) {
        m_shownCount -= m_shown.front().count;
        m_shown.pop_front();
    }
}

/// Levels that newer ones have pushed out by now are never looked for.
void TimeFeed::findLevels()
{
    for (auto stretch = m_shown.rbegin(); stretch != m_shown.rend() && stretch->part.block;
         ++stretch) {
        stretch->levels.add(&stretch->part.block->samples[stretch->part.first],
                            stretch->part.count);
        stretch->part = {};
    }
}

void TimeFeed::setLevels(double lowest, double highest)
{
    m_levels.fix(lowest, highest);
    m_values.setY(lowest, highest);
}

void TimeFeed::followLevels(double elapsed)
{
    LevelExtremes shown;
    for (const Stretch& stretch : m_shown)
        shown.add(stretch.levels);
    if (m_levels.take(shown, elapsed))
        m_values.setY(m_levels.lowest(), m_levels.highest());
}

void TimeFeed::show(std::int64_t position, const std::vector<double>& samples)
{
    forget();
    restart();
    m_shown.clear();
    m_shownCount = 0.0;
    addAll(position, samples);
    notify();
}

void TimeFeed::writeAgain()
{
    std::deque<BlockPart> parts;
    parts.swap(m_newest);
    forget();
    restart();
    m_samples.clear();
    m_markers.clear();
    m_shown.clear();
    m_shownCount = 0.0;
    std::vector<double> run; // samples that follow one another
    for (std::size_t k = 0; k < parts.size(); ++k) {
        const BlockPart& part = parts[k];
        const auto first = part.block->samples.begin() + static_cast<std::ptrdiff_t>(part.first);
        run.insert(run.end(), first, first + static_cast<std::ptrdiff_t>(part.count));
        remember(part);
        if (k + 1 < parts.size() && parts[k + 1].follows(part))
            continue;
        addAll(part.end() - static_cast<std::int64_t>(run.size()), run);
        run.clear();
    }
    notify();
}

/// Adds samples, with the rest of them as the last segment.
void TimeFeed::addAll(std::int64_t position, const std::vector<double>& samples)
{
    for (std::size_t done = 0; done < samples.size();) {
        const auto here = position + static_cast<std::int64_t>(done);
        const std::size_t left = samples.size() - done;
        const std::size_t needed = m_segments.neededCount(here);
        const auto first = samples.begin() + static_cast<std::ptrdiff_t>(done);
        m_window.clear();
        if (needed <= left && !m_segments.frameLength())
            m_window.assign(first + static_cast<std::ptrdiff_t>(m_segments.windowStart()),
                            first + static_cast<std::ptrdiff_t>(needed));
        begin(m_segments.next(here, std::min(left, needed), true, m_window));
        const std::size_t count = m_open;
        Stretch stretch{static_cast<double>(count), {}, {}};
        stretch.levels.add(&samples[done], count);
        noteLevels(stretch);
        add(&samples[done], count);
        done += count;
    }
}
