// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/glbase/KeptPixels.h"

#include <algorithm>
#include <cstring>

/// Calls use(pixels of the picture, index in the memory, count) for each row of each place.
template<class Use>
void KeptPixels::ForEachRow(const PixelTarget& pixels, const Use& use) const
{
    std::size_t index = 0;
    for (const QRect& place : m_places) {
        const auto width = static_cast<std::size_t>(place.width());
        for (int y = place.top(); y <= place.bottom(); ++y, index += width)
            use(pixels.Row(y) + place.left(), index, width);
    }
}

// Returns false where not all pixels of the places may be written.
bool KeptPixels::Take(const PixelTarget& pixels, const std::vector<QRect>& places)
{
    std::size_t count = 0;
    for (const QRect& place : places) {
        const auto holds = [&place](const QRect& part) { return part.contains(place); };
        if (!std::any_of(pixels.Clip().begin(), pixels.Clip().end(), holds))
            return false;
        count += static_cast<std::size_t>(place.width()) * static_cast<std::size_t>(place.height());
    }
    if (m_places == places && m_medium == pixels.GetMedium())
        return true;
    m_places = places;
    m_medium = pixels.GetMedium();
    m_below.resize(count);
    m_drawn.resize(count);
    m_met = {};
    return true;
}

bool KeptPixels::Put(const PixelTarget& pixels)
{
    if (m_met[0].below.size() != m_below.size())
        return false;
    m_sources.clear();
    bool isMet = true;
    ForEachRow(pixels, [&](const QRgb* below, std::size_t index, std::size_t width) {
        const QRgb* const expected = m_met[0].below.data() + index;
        const bool isSame = std::memcmp(below, expected, width * sizeof(QRgb)) == 0;
        m_sources.push_back((isSame ? m_met[0].drawn : m_drawn).data() + index);
        for (std::size_t i = 0; i < width && !isSame && isMet; ++i) {
            const auto knows = [&](const Meeting& met) { return met.below[index + i] == below[i]; };
            const auto met = std::find_if(m_met.begin(), m_met.end(), knows);
            isMet = met != m_met.end();
            if (isMet)
                m_drawn[index + i] = met->drawn[index + i];
        }
    });
    auto source = m_sources.begin();
    if (isMet)
        ForEachRow(pixels, [&source](QRgb* row, std::size_t, std::size_t width) {
            std::copy_n(*source++, width, row);
        });
    return isMet;
}

void KeptPixels::Read(const PixelTarget& pixels, std::vector<QRgb>& result) const
{
    ForEachRow(pixels, [&result](const QRgb* row, std::size_t index, std::size_t width) {
        std::copy_n(row, width, result.data() + index);
    });
}

void KeptPixels::Learn(const PixelTarget& pixels)
{
    Read(pixels, m_drawn);
    if (m_met[0].below.size() != m_below.size()) {
        m_met.fill({m_below, m_drawn});
        return;
    }
    for (std::size_t i = 0; i < m_below.size(); ++i) {
        const auto knows = [&](const Meeting& met) { return met.below[i] == m_below[i]; };
        if (std::none_of(m_met.begin(), m_met.end(), knows)) {
            m_met[m_next].below[i] = m_below[i];
            m_met[m_next].drawn[i] = m_drawn[i];
        }
    }
    m_next = m_next + 1 < m_met.size() ? m_next + 1 : 1;
}
