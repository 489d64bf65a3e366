// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/receiver/SignalBlock.h"

#include <algorithm>
#include <chrono>
#include <deque>
#include <optional>
#include <utility>

class Pipeline;

/// Consecutive samples of a block.
struct BlockPart
{
    std::int64_t position() const { return block->position + static_cast<std::int64_t>(first); }
    std::int64_t end() const { return position() + static_cast<std::int64_t>(count); }
    /// Whether its samples come right after those of another.
    bool follows(const BlockPart& other) const
    {
        return position() == other.end() && (first > 0 || !block->isAfterGap);
    }
    /// The first symbol whose middle is within, and the one after the last.
    auto symbols() const
    {
        const auto& all = block->symbols;
        const auto firstFrom = [&all](std::int64_t place) {
            return std::lower_bound(
                all.begin(), all.end(), static_cast<double>(place),
                [](const Symbol& symbol, double position) { return symbol.position < position; });
        };
        return std::make_pair(first == 0 ? all.begin() : firstFrom(position()),
                              first + count == block->count() ? all.end() : firstFrom(end()));
    }
    /// Calls work for each symbol whose middle is within, in order.
    template<class Work>
    void forEachSymbol(Work work) const
    {
        const auto [begin, last] = symbols();
        std::for_each(begin, last, work);
    }

    SignalBlockPtr block;
    std::size_t first = 0;
    std::size_t count = 0; ///< 0 without a block
};

/// Holds the blocks of a pipeline that have come but were not taken yet, so that callers can look
/// ahead.
class BlockBuffer
{
public:
    using Timeout = std::chrono::milliseconds;
    /// Number of samples that follow the next one without a gap.
    struct Ahead
    {
        std::size_t count; ///< samples, at most as many as asked for
        bool isAll;        ///< whether no more follow: the end, or a gap
    };

    /// Empties the buffer and takes blocks from this pipeline, which must outlive its use; null for
    /// none.
    void open(Pipeline* pipeline);
    /// Empties the buffer. From now on leaves out samples before a time, s; none: takes all.
    void clear(std::optional<double> start);

    /// Sets how long to wait for a block.
    Ahead ahead(std::size_t count, Timeout timeout);
    /// Takes the next samples, all of one block; none while there are none, and at the end.
    BlockPart take(std::size_t most, Timeout timeout);
    /// Appends samples ahead, starting at a distance from the next one.
    void copyAhead(std::size_t first, std::size_t count, std::vector<double>& samples) const;
    /// Whether all samples were taken and no more come.
    bool hasEnded() const;
    /// Number of samples that have come but were not taken.
    std::size_t waitingCount() const;

private:
    bool fetch(Timeout timeout);

    Pipeline* m_pipeline = nullptr;
    std::deque<SignalBlockPtr> m_blocks; // the first...
    std::size_t m_used = 0;              // ...from this sample on
    std::optional<double> m_start;       // set until a sample from there on has come
};
