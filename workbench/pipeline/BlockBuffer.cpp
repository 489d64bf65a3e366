// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/pipeline/BlockBuffer.h"

#include "workbench/pipeline/Pipeline.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double sameSample = 1e-3; // samples: rounding error of times

} // namespace

void BlockBuffer::open(Pipeline* pipeline)
{
    m_pipeline = pipeline;
    clear(std::nullopt);
}

void BlockBuffer::clear(std::optional<double> start)
{
    m_blocks.clear();
    m_used = 0;
    m_start = start;
}

/// Fetches one more block; returns false while there is none.
bool BlockBuffer::fetch(Timeout timeout)
{
    while (SignalBlockPtr block = m_pipeline->take(timeout)) {
        if (m_start) { // from the first sample at or after it
            const double sampleRate = m_pipeline->format().sampleRate;
            const double before = std::ceil((*m_start - block->time) * sampleRate - sameSample);
            if (before >= static_cast<double>(block->count()))
                continue;
            m_used = static_cast<std::size_t>(std::max(before, 0.0));
            m_start.reset();
        }
        m_blocks.push_back(std::move(block));
        return true;
    }
    return false;
}

BlockPart BlockBuffer::take(std::size_t most, Timeout timeout)
{
    if (m_blocks.empty() && !fetch(timeout))
        return {};
    const SignalBlockPtr block = m_blocks.front();
    const BlockPart part{block, m_used, std::min(block->count() - m_used, most)};
    m_used += part.count;
    if (m_used == block->count()) {
        m_blocks.pop_front();
        m_used = 0;
    }
    return part;
}

BlockBuffer::Ahead BlockBuffer::ahead(std::size_t count, Timeout timeout)
{
    std::size_t known = 0;
    for (std::size_t k = 0; known < count; ++k) {
        if (k == m_blocks.size() && !fetch(timeout))
            return {known, m_pipeline->hasEnded()};
        const SignalBlock& block = *m_blocks[k];
        if (k > 0 && (block.isAfterGap || block.position != m_blocks[k - 1]->end()))
            return {known, true};
        known += block.count() - (k == 0 ? m_used : 0);
    }
    return {std::min(known, count), false};
}

void BlockBuffer::copyAhead(std::size_t first, std::size_t count,
                            std::vector<double>& samples) const
{
    first += m_used;
    for (const SignalBlockPtr& block : m_blocks) {
        const std::size_t skipped = std::min(first, block->count());
        const std::size_t here = std::min(count, block->count() - skipped);
        const auto start = block->samples.begin() + static_cast<std::ptrdiff_t>(skipped);
        samples.insert(samples.end(), start, start + static_cast<std::ptrdiff_t>(here));
        count -= here;
        first -= skipped;
    }
}

bool BlockBuffer::hasEnded() const { return m_blocks.empty() && m_pipeline->hasEnded(); }

std::size_t BlockBuffer::waitingCount() const
{
    std::size_t count = m_pipeline->waitingCount();
    for (const SignalBlockPtr& block : m_blocks)
        count += block->count();
    return count - m_used;
}
