// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/glbase/GLStepLine.h"

#include <algorithm>
#include <cassert>
#include <limits>

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
    Extremes extremes{255, 0};
    // At each layer, take what reaches beyond whole blocks at both ends and leave the rest to the
    // next layer. Only whole blocks are stored, so an end that is cut off stays in its own layer.
    const auto takeEnds = [&](const auto* items, bool hasNextLayer) {
        while (first < last && (first % blockSize != 0 || !hasNextLayer))
            extremes = Joined(extremes, items[first++]);
        while (first < last && last % blockSize != 0)
            extremes = Joined(extremes, items[--last]);
        first /= blockSize;
        last /= blockSize;
    };
    takeEnds(m_levels.data(), m_levels.size() >= blockSize);
    std::size_t layer = 0;
    while (first < last) {
        takeEnds(m_blocks.data() + m_layerStarts[layer], layer + 1 < m_layerStarts.size());
        ++layer;
    }
    return extremes;
}
