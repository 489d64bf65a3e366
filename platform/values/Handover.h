// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <limits>
#include <mutex>
#include <optional>
#include <utility>

namespace values {

/// A bounded queue between two threads. It takes items until their total weight reaches a limit;
/// the last one may exceed it. What an item weighs, the caller says: 1, say, or its number of
/// samples. Any thread may call any operation.
template<class Item>
class Handover
{
public:
    /// Sets the total weight at which the queue is full; at least 1, and 1 at first: one item.
    /// @param rest  weight down to which items are taken before a thread that waits in push is
    ///              woken: it then has more to do at a time. None: woken by each item taken.
    void setLimit(std::size_t weight, std::size_t rest = std::numeric_limits<std::size_t>::max())
    {
        const Lock lock(m_mutex);
        m_limit = std::max<std::size_t>(weight, 1);
        m_rest = std::min(rest, m_limit - 1);
        m_changed.notify_all();
    }
    /// Adds an item; waits while the queue is full. Returns false, and drops the item, when the
    /// queue is closed.
    bool push(Item item, std::size_t weight)
    {
        Lock lock(m_mutex);
        const int run = m_run;
        m_changed.wait(lock, [&] { return m_isClosed || run != m_run || m_waiting < m_limit; });
        if (!m_isClosed && run == m_run)
            add(std::move(item), weight);
        return !m_isClosed;
    }
    /// Adds an item without waiting. Returns false, and drops the item, when the queue is full or
    /// closed.
    bool tryPush(Item item, std::size_t weight)
    {
        const Lock lock(m_mutex);
        if (m_isClosed || m_waiting >= m_limit)
            return false;
        add(std::move(item), weight);
        return true;
    }
    /// Tells the reader that no more items will follow.
    void finish()
    {
        const Lock lock(m_mutex);
        m_isFinished = true;
        m_changed.notify_all();
    }
    /// Takes the next item; waits for it until the timeout. Returns nothing after the timeout, and
    /// when the queue is closed, or finished and empty.
    std::optional<Item> pop(std::chrono::milliseconds timeout)
    {
        Lock lock(m_mutex);
        m_changed.wait_for(lock, timeout,
                           [this] { return m_isClosed || m_isFinished || !m_items.empty(); });
        if (m_isClosed || m_items.empty())
            return std::nullopt;
        Entry entry = std::move(m_items.front());
        m_items.pop_front();
        m_waiting -= entry.weight;
        if (m_waiting <= m_rest)
            m_changed.notify_all();
        return std::move(entry.item);
    }
    /// Drops all items, also those of threads that wait in push.
    void clear()
    {
        const Lock lock(m_mutex);
        m_items.clear();
        m_waiting = 0;
        ++m_run;
        m_changed.notify_all();
    }
    /// Ends all waiting. The queue stays closed until open, which empties it.
    void close()
    {
        const Lock lock(m_mutex);
        m_isClosed = true;
        m_changed.notify_all();
    }
    /// Opens a closed or finished queue again, empty.
    void open()
    {
        clear();
        const Lock lock(m_mutex);
        m_isClosed = false;
        m_isFinished = false;
    }
    /// Total weight of the items that wait.
    std::size_t waiting() const
    {
        const Lock lock(m_mutex);
        return m_waiting;
    }
    /// Whether all items have been taken and no more come.
    bool hasEnded() const
    {
        const Lock lock(m_mutex);
        return m_isFinished && m_items.empty();
    }

private:
    using Lock = std::unique_lock<std::mutex>;
    struct Entry
    {
        Item item;
        std::size_t weight;
    };

    void add(Item item, std::size_t weight)
    {
        m_items.push_back({std::move(item), weight});
        m_waiting += weight;
        m_changed.notify_all();
    }

    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<Entry> m_items;
    std::size_t m_waiting = 0; // weight
    std::size_t m_limit = 1;
    std::size_t m_rest = 0;
    int m_run = 0; // counts how often it was cleared
    bool m_isClosed = false;
    bool m_isFinished = false;
};

} // namespace values
