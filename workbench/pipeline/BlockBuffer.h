// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/receiver/SignalBlock.h"

#include <algorithm>
#include <chrono>
#include <deque>
#include <optional>

class Pipeline;

/// Some samples of a block that follow one another.
struct BlockPart
{
    std::int64_t position() const { return block->position + static_cast<std::int64_t>(first); }
    std::int64_t end() const { return position() + static_cast<std::int64_t>(count); }
    /// Calls work with each symbol whose middle is within, in order.
    template<class Work>
    void forEachSymbol(Work work) const
    {
        const auto& symbols = block->symbols;
        const auto firstFrom = [&symbols](std::int64_t place) {
            return std::lower_bound(
                symbols.begin(), symbols.end(), static_cast<double>(place),
                [](const Symbol& symbol, double position) { return symbol.position < position; });
        };
        const auto begin = first == 0 ? symbols.begin() : firstFrom(position());
        const auto last = first + count == block->count() ? symbols.end() : firstFrom(end());
        std::for_each(begin, last, work);
    }

    SignalBlockPtr block;
    std::size_t first = 0;
    std::size_t count = 0; ///< 0: none, also without a block
};

/// The blocks of a pipeline that have come and were not taken yet, to be looked at ahead.
class BlockBuffer
{
public:
    using Timeout = std::chrono::milliseconds;
    /// Samples that follow the next one without a gap.
    struct Ahead
    {
        std::size_t count; ///< samples, at most those asked for
        bool isAll;        ///< whether no more follow: the end or a gap
    };

    /// Empties it; what comes is of this pipeline, which must outlive its use. Null: none.
    void open(Pipeline* pipeline);
    /// Empties it. Leaves out later samples that lie before a time, s; none: takes all.
    void clear(std::optional<double> start);

    /// Waits for no more of a block than the timeout.
    Ahead ahead(std::size_t count, Timeout timeout);
    /// The next samples, those of one block; none while they are not there, and at the end.
    BlockPart take(std::size_t most, Timeout timeout);
    /// Appends samples ahead, from the one on that is so far from the next one.
    void copyAhead(std::size_t first, std::size_t count, std::vector<double>& samples) const;
    /// Whether all samples were taken and no more come.
    bool hasEnded() const;
    /// Samples that have come but were not taken.
    std::size_t waitingCount() const;

private:
    bool fetch(Timeout timeout);

    Pipeline* m_pipeline = nullptr;
    std::deque<SignalBlockPtr> m_blocks; // the first...
    std::size_t m_used = 0;              // ...from this sample on
    std::optional<double> m_start;       // while no sample from there on has come
};
