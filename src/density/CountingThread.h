// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "density/Counter.h"
#include "foundations/Export.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

namespace density {

/// A Counter on a thread of its own. Any thread may call any operation, but callbacks must not call
/// this object, except for hasWaiting.
class ORVANE_API CountingThread
{
public:
    /// Traces or points, one after the other.
    struct Block
    {
        std::vector<float> samples; ///< an incomplete last one counts as torn
        /// Number of the first symbol; the others follow it one by one.
        std::int64_t firstSymbol = 0;
        std::int64_t torn = 0; ///< number of traces that were left out before
    };
    /// Samples that wait to be counted, 64 MB: half a second of 1 MBd in traces of 33 samples. A
    /// block may exceed it.
    static constexpr std::size_t mostWaiting = std::size_t{16} << 20;

    explicit CountingThread(const Counter::Settings& settings);
    /// Drops blocks that wait, and ends the thread.
    ~CountingThread();
    CountingThread(const CountingThread&) = delete;
    CountingThread& operator=(const CountingThread&) = delete;

    /// Hands a block over; waits while too many samples wait. For recordings, which must not lose
    /// symbols.
    void push(Block block);
    /// Hands a block over without waiting. When too many samples wait, its symbols are left out and
    /// counted as torn, and the result is false.
    bool tryPush(Block block);
    /// Forgets all symbols, also those that wait.
    void clear();
    /// Runs an order on the counter before the blocks that wait. Orders run in the order of the
    /// calls.
    void order(std::function<void(Counter&)> order);
    /// Whether blocks wait to be counted. During an order: whether it comes before some.
    bool hasWaiting() const;
    /// Asks for a snapshot.
    /// @param ready  called on the counting thread; not called when this object is destroyed
    ///               before.
    void requestSnapshot(std::function<void(SnapshotPtr)> ready);
    /// Waits until all blocks are counted. Must not be called on the counting thread.
    void wait();

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace density
