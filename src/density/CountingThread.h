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

/// A Counter on a thread of its own. Any thread may call any operation; those that are told in a
/// callback must not call back.
class ORVANE_API CountingThread
{
public:
    /// Traces or points, one after the other.
    struct Block
    {
        std::vector<float> samples; ///< a last one that is not whole counts as torn
        /// Number of the first symbol; the others follow it one by one.
        std::int64_t firstSymbol = 0;
        std::int64_t torn = 0; ///< traces that were left out before
    };
    /// Samples that wait to be counted, 64 MB: half a second of 1 MBd in traces of 33 samples. A
    /// block may exceed it.
    static constexpr std::size_t mostWaiting = std::size_t{16} << 20;

    explicit CountingThread(const Counter::Settings& settings);
    /// Leaves out what waits, and ends the thread.
    ~CountingThread();
    CountingThread(const CountingThread&) = delete;
    CountingThread& operator=(const CountingThread&) = delete;

    /// Hands a block over; waits while too much waits, as for a recording, which loses nothing.
    void push(Block block);
    /// Likewise, but where too much waits its symbols are left out, and counted as torn: false.
    bool tryPush(Block block);
    /// Forgets all symbols, those that wait as well.
    void clear();
    /// Runs on the counter before the blocks that wait, in the order of the calls.
    void order(std::function<void(Counter&)> order);
    /// Asks for a snapshot.
    /// @param ready  called on the counting thread; not when the counter goes before.
    void requestSnapshot(std::function<void(SnapshotPtr)> ready);
    /// Waits until all that was handed over is counted. Not from the counting thread.
    void wait();

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace density
