// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/feed/SegmentReader.h"

#include <algorithm>
#include <cmath>

namespace {

/// First sample of the frame that starts at or after a position.
std::int64_t frameStartFrom(std::int64_t position, double frameLength)
{
    const double frame = std::ceil(static_cast<double>(position) / frameLength);
    return static_cast<std::int64_t>(std::ceil(frame * frameLength));
}

} // namespace

void SegmentReader::Part::clear()
{
    for (std::vector<double>* values : {&samples, &markers, &i, &q})
        values->clear();
}

SegmentReader::SegmentReader(SignalSource& source, const ChannelChoice& channel)
    : m_source(source)
    , m_channel(channel)
    , m_first(static_cast<std::size_t>(source.constellationChannel().value_or(channel.value & ~1)))
    , m_hasQ(m_first + 1 < static_cast<std::size_t>(source.valueCount()))
    , m_next(source.position())
{}

void SegmentReader::setSegmentLength(std::size_t length)
{
    m_wanted = std::max<std::size_t>(length, 1);
}

std::int64_t SegmentReader::position() const
{
    return m_next - static_cast<std::int64_t>(available());
}

std::size_t SegmentReader::read(std::size_t count, Part& part)
{
    std::size_t done = 0;
    while (done < count) {
        double marker = 0.0;
        if (m_open == 0) {
            m_open = nextSegmentLength();
            marker = static_cast<double>(m_open);
        }
        fill(std::min(m_open, count - done));
        const std::size_t step = std::min({m_open, count - done, available()});
        if (step == 0)
            break;
        const auto append = [&](std::vector<double>& target, const std::vector<double>& ahead) {
            const auto first = ahead.begin() + static_cast<std::ptrdiff_t>(m_used);
            target.insert(target.end(), first, first + static_cast<std::ptrdiff_t>(step));
        };
        append(part.samples, m_ahead);
        append(part.i, m_aheadI);
        if (m_hasQ)
            append(part.q, m_aheadQ);
        part.markers.push_back(marker);
        part.markers.insert(part.markers.end(), step - 1, 0.0);
        m_used += step;
        m_open -= step;
        done += step;
        if (m_isBroken && available() == 0)
            break;
    }
    return done;
}

bool SegmentReader::seek(std::int64_t position)
{
    if (const auto frameLength = m_source.frameLength())
        position = frameStartFrom(position, *frameLength);
    if (!m_source.seek(position))
        return false;
    m_used = m_ahead.size();
    dropUsed();
    m_open = 0;
    m_next = m_source.position();
    m_isBroken = false;
    return true;
}

void SegmentReader::dropUsed()
{
    for (std::vector<double>* ahead : {&m_ahead, &m_aheadI, &m_aheadQ}) {
        const std::size_t used = std::min(m_used, ahead->size());
        ahead->erase(ahead->begin(), ahead->begin() + static_cast<std::ptrdiff_t>(used));
    }
    m_used = 0;
}

// Reads on until so many samples are available, or no more can be had that continue them.
void SegmentReader::fill(std::size_t count)
{
    if (available() >= count)
        return;
    dropUsed();
    const auto valueCount = static_cast<std::size_t>(m_source.valueCount());
    while (m_ahead.size() < count) {
        m_isBroken = m_source.position() != m_next;
        if (m_isBroken && !m_ahead.empty())
            return;
        m_next = m_source.position();
        m_isBroken = false;
        const std::size_t got = m_source.read(m_block, count - m_ahead.size());
        if (got == 0)
            return;
        m_next += static_cast<std::int64_t>(got);
        for (std::size_t i = 0; i + valueCount <= m_block.size(); i += valueCount) {
            m_ahead.push_back(m_channel.of(&m_block[i]));
            m_aheadI.push_back(m_block[i + m_first]);
            if (m_hasQ)
                m_aheadQ.push_back(m_block[i + m_first + 1]);
        }
    }
}

// None while it is not known: then more samples are to come.
std::size_t SegmentReader::nextSegmentLength()
{
    if (const auto frameLength = m_source.frameLength())
        return static_cast<std::size_t>(frameStartFrom(position() + 1, *frameLength) - position());
    const std::size_t tolerance = m_wanted / 8;
    fill(m_wanted + tolerance + 1);
    if (available() > m_wanted + tolerance)
        return quietestBoundary(m_wanted - tolerance, m_wanted + tolerance);
    return m_isBroken || m_source.hasEnded() ? available() : 0;
}

// Where the signal is closest to zero; amid equals, such as silence, the middle. NaN is never it.
std::size_t SegmentReader::quietestBoundary(std::size_t first, std::size_t last) const
{
    const auto level = [this](std::size_t i) { return std::abs(m_ahead[m_used + i]); };
    std::size_t best = first + (last - first) / 2;
    for (std::size_t i = first; i <= last; ++i) {
        if (level(i) < level(best) || std::isnan(level(best)))
            best = i;
    }
    return best;
}
