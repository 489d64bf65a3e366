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

SegmentReader::SegmentReader(SignalSource& source, int channel)
    : m_source(source)
    , m_channel(static_cast<std::size_t>(channel))
{}

void SegmentReader::setSegmentLength(std::size_t length)
{
    m_wanted = std::max<std::size_t>(length, 1);
}

std::int64_t SegmentReader::position() const
{
    return m_source.position() - static_cast<std::int64_t>(available());
}

std::size_t SegmentReader::read(std::size_t count, std::vector<double>& samples,
                                std::vector<double>& markers, std::vector<double>& partner)
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
        append(samples, m_ahead);
        if (!m_aheadPartner.empty())
            append(partner, m_aheadPartner);
        markers.push_back(marker);
        markers.insert(markers.end(), step - 1, 0.0);
        m_used += step;
        m_open -= step;
        done += step;
    }
    return done;
}

bool SegmentReader::seek(std::int64_t position)
{
    if (const auto frameLength = m_source.frameLength())
        position = frameStartFrom(position, *frameLength);
    if (!m_source.seek(position))
        return false;
    m_ahead.clear();
    m_aheadPartner.clear();
    m_used = 0;
    m_open = 0;
    return true;
}

// Reads on until so many samples are available, or none are left.
void SegmentReader::fill(std::size_t count)
{
    if (available() >= count)
        return;
    for (std::vector<double>* ahead : {&m_ahead, &m_aheadPartner}) {
        const std::size_t used = std::min(m_used, ahead->size());
        ahead->erase(ahead->begin(), ahead->begin() + static_cast<std::ptrdiff_t>(used));
    }
    m_used = 0;
    const auto valueCount = static_cast<std::size_t>(m_source.valueCount());
    const std::size_t partner = m_channel ^ 1U;
    while (m_ahead.size() < count && m_source.read(m_block, count - m_ahead.size()) > 0) {
        for (std::size_t i = 0; i + valueCount <= m_block.size(); i += valueCount) {
            m_ahead.push_back(m_block[i + m_channel]);
            if (partner < valueCount)
                m_aheadPartner.push_back(m_block[i + partner]);
        }
    }
}

std::size_t SegmentReader::nextSegmentLength()
{
    if (const auto frameLength = m_source.frameLength())
        return static_cast<std::size_t>(frameStartFrom(position() + 1, *frameLength) - position());
    const std::size_t tolerance = m_wanted / 8;
    fill(m_wanted + tolerance + 1);
    if (available() <= m_wanted + tolerance)
        return available();
    return quietestBoundary(m_wanted - tolerance, m_wanted + tolerance);
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
