// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/glbase/GLStepLine.h"

#include <algorithm>
#include <cassert>
#include <limits>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace {

/// Levels per block, and blocks per block of the next layer.
constexpr std::size_t blockSize = 16;

GLStepLine::Extremes Joined(GLStepLine::Extremes a, GLStepLine::Extremes b)
{
    return {std::min(a.min, b.min), std::max(a.max, b.max)};
}

GLStepLine::Extremes Joined(GLStepLine::Extremes a, unsigned char level)
{
    return Joined(a, {level, level});
}

template<typename Item>
GLStepLine::Extremes ExtremesOfBlock(const Item* items, std::size_t count)
{
    GLStepLine::Extremes extremes{255, 0};
    for (std::size_t i = 0; i < count; ++i)
        extremes = Joined(extremes, items[i]);
    return extremes;
}

/// The extremes of ranges of items, a range after the other.
class Gathering
{
public:
    /// Takes items [first, last), all in one block.
    /// @param count  that may be read.
    template<typename Item>
    void Take(const Item* items, std::size_t count, std::size_t first, std::size_t last)
    {
#ifdef __SSE2__
        const std::size_t start = first / blockSize * blockSize;
        if (start + blockSize <= count) {
            TakeBlock(items + start, first - start, last - start);
            return;
        }
#endif
        for (; first < last; ++first)
            m_extremes = Joined(m_extremes, items[first]);
    }

    GLStepLine::Extremes Result() const
    {
#ifdef __SSE2__
        unsigned char lows[blockSize];
        unsigned char highs[blockSize];
        _mm_storeu_si128(reinterpret_cast<__m128i*>(lows), m_low);
        _mm_storeu_si128(reinterpret_cast<__m128i*>(highs), m_high);
        GLStepLine::Extremes result = m_extremes;
        for (std::size_t i = 0; i < blockSize; ++i)
            result = Joined(result, {lows[i], highs[i]});
        return result;
#else
        return m_extremes;
#endif
    }

private:
#ifdef __SSE2__
    /// Bytes [first, last) of 16 are 255, the others 0.
    static __m128i Inside(int first, int last)
    {
        const __m128i place = _mm_setr_epi8(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15);
        const auto below = [&place](int end) {
            return _mm_cmpgt_epi8(_mm_set1_epi8(static_cast<char>(end)), place);
        };
        return _mm_andnot_si128(below(first), below(last));
    }
    void TakeBytes(const void* bytes, const __m128i& forLow, const __m128i& forHigh)
    {
        const __m128i value = _mm_loadu_si128(static_cast<const __m128i*>(bytes));
        const __m128i all = _mm_set1_epi8(-1);
        m_low = _mm_min_epu8(m_low, _mm_or_si128(value, _mm_andnot_si128(forLow, all)));
        m_high = _mm_max_epu8(m_high, _mm_and_si128(value, forHigh));
    }
    void TakeBlock(const unsigned char* levels, std::size_t first, std::size_t last)
    {
        const __m128i inside = Inside(static_cast<int>(first), static_cast<int>(last));
        TakeBytes(levels, inside, inside);
    }
    void TakeBlock(const GLStepLine::Extremes* blocks, std::size_t first, std::size_t last)
    {
        static_assert(sizeof(GLStepLine::Extremes) == 2, "a minimum and a maximum by turns");
        static constexpr int half = 8;
        const __m128i minima = _mm_set1_epi16(0xff);
        for (int start = 0; start < 2 * half; start += half) {
            const auto part = [start](std::size_t index) {
                return 2 * std::clamp(static_cast<int>(index) - start, 0, half);
            };
            const __m128i inside = Inside(part(first), part(last));
            TakeBytes(blocks + start, _mm_and_si128(inside, minima),
                      _mm_andnot_si128(minima, inside));
        }
    }

    __m128i m_low = _mm_set1_epi8(-1);
    __m128i m_high = _mm_setzero_si128();
#endif
    GLStepLine::Extremes m_extremes{255, 0};
};

} // namespace

void GLStepLine::SetDestRect(int left, int top, int width, int height)
{
    if (width <= 0 || height <= 0) {
        m_destRect = QRect();
        return;
    }
    // A QRect keeps its right and bottom borders, which must fit into an int.
    constexpr int most = std::numeric_limits<int>::max();
    m_destRect = QRect(left, top, std::min(width, most - std::max(left, 0)),
                       std::min(height, most - std::max(top, 0)));
}

void GLStepLine::SetData(const unsigned char* levels, std::size_t count)
{
    if (!levels)
        count = 0;
    m_levels.assign(levels, levels + count);
    BuildPyramid();
}

void GLStepLine::BuildPyramid()
{
    m_blocks.clear();
    m_layerStarts.clear();
    const std::size_t count = m_levels.size();
    m_blocks.reserve(count / (blockSize - 1) + 16);
    for (std::size_t i = 0; i + blockSize <= count; i += blockSize)
        m_blocks.push_back(ExtremesOfBlock(m_levels.data() + i, blockSize));
    m_layerStarts.push_back(0);

    for (std::size_t end = m_blocks.size(); end - m_layerStarts.back() >= blockSize;
         end = m_blocks.size()) {
        const std::size_t start = m_layerStarts.back();
        m_layerStarts.push_back(end);
        for (std::size_t i = start; i + blockSize <= end; i += blockSize)
            m_blocks.push_back(ExtremesOfBlock(m_blocks.data() + i, blockSize));
    }
}

GLStepLine::Extremes GLStepLine::ExtremesOf(std::size_t first, std::size_t last) const
{
    assert(first < last && last <= m_levels.size());
    Gathering gathered;
    // At each layer, take what reaches beyond whole blocks at both ends and leave the rest to the
    // next layer. Only whole blocks are stored, so an end that is cut off stays in its own layer.
    const auto takeEnds = [&](const auto* items, std::size_t count, bool hasNextLayer) {
        if (first % blockSize != 0 || !hasNextLayer) {
            const std::size_t end = std::min((first / blockSize + 1) * blockSize, last);
            gathered.Take(items, count, first, end);
            first = end;
        }
        if (first < last && last % blockSize != 0) {
            const std::size_t start = last / blockSize * blockSize;
            gathered.Take(items, count, start, last);
            last = start;
        }
        first /= blockSize;
        last /= blockSize;
    };
    takeEnds(m_levels.data(), m_levels.size(), m_levels.size() >= blockSize);
    std::size_t layer = 0;
    while (first < last) {
        const std::size_t start = m_layerStarts[layer];
        takeEnds(m_blocks.data() + start, m_blocks.size() - start,
                 layer + 1 < m_layerStarts.size());
        ++layer;
    }
    return gathered.Result();
}

void GLStepLine::Expect(std::size_t level) const
{
#ifdef __GNUC__
    if (level >= m_levels.size())
        return;
    __builtin_prefetch(&m_levels[level]);
    for (const std::size_t start : m_layerStarts) {
        level /= blockSize;
        __builtin_prefetch(m_blocks.data() + start + level);
    }
#endif
}
