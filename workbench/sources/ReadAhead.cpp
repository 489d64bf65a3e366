// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/sources/ReadAhead.h"

#include <algorithm>
#include <utility>

namespace {

constexpr double paceTolerance = 1.02; // by which a device's clock may be faster than ours
constexpr double burstSeconds = 0.25;  // that may come at once

} // namespace

/// While it lives nobody reads the source, and its maker may use it.
class ReadAhead::Pause
{
public:
    explicit Pause(ReadAhead& owner)
        : m_owner(owner)
        , m_lock(owner.m_mutex)
    {
        ++m_owner.m_pauseCount;
        m_owner.m_changed.wait(m_lock, [this] { return !m_owner.m_isReading; });
    }
    ~Pause()
    {
        --m_owner.m_pauseCount;
        m_owner.m_changed.notify_all();
    }
    Pause(const Pause&) = delete;
    Pause& operator=(const Pause&) = delete;

private:
    ReadAhead& m_owner;
    Lock m_lock;
};

ReadAhead::ReadAhead(std::unique_ptr<SignalSource> source, WhenFull whenFull)
    : m_source(std::move(source))
    , m_whenFull(whenFull)
{
    clear();
    note();
    m_thread = std::thread([this] { run(); });
}

ReadAhead::~ReadAhead() { takeInput(); }

std::unique_ptr<SignalSource> ReadAhead::takeInput()
{
    {
        const Lock lock(m_mutex);
        m_isStopping = true;
    }
    m_changed.notify_all();
    if (m_thread.joinable())
        m_thread.join();
    return std::move(m_source);
}

void ReadAhead::run()
{
    Lock lock(m_mutex);
    const Clock::time_point start = Clock::now();
    const bool isPaced = m_whenFull == WhenFull::Drop;
    double taken = 0.0; // seconds of signal since start
    for (;;) {
        m_changed.wait(lock, [this] { return m_isStopping || mayRead(); });
        if (m_isStopping)
            return;
        m_isReading = true;
        Block block;
        const std::size_t count = m_blockLength;
        lock.unlock();
        block.position = m_source->position();
        block.count = m_source->read(block.values, count);
        lock.lock();
        m_isReading = false;
        m_changed.notify_all();
        m_isAtEnd = block.count == 0 && m_source->hasEnded();
        note();
        taken += static_cast<double>(block.count) / m_source->sampleRate();
        store(std::move(block));
        if (!isPaced)
            continue;
        // What comes late does not have to be made up for later.
        const std::chrono::duration<double> elapsed = Clock::now() - start;
        taken = std::max(taken, paceTolerance * elapsed.count());
        const double early = taken / paceTolerance - elapsed.count() - burstSeconds;
        if (early > 0.0)
            m_changed.wait_for(lock, std::chrono::duration<double>(early),
                               [this] { return m_isStopping; });
    }
}

bool ReadAhead::mayRead() const
{
    return m_pauseCount == 0 && !m_isAtEnd &&
           (m_isDiscarding || m_whenFull == WhenFull::Drop || m_waiting < m_queueLength);
}

void ReadAhead::store(Block block)
{
    if (block.count == 0)
        return;
    m_next = block.position + static_cast<std::int64_t>(block.count);
    if (m_isDiscarding)
        return;
    // Who waits keeps what was being read when the queue was made shorter.
    if (m_whenFull == WhenFull::Drop && m_waiting >= m_queueLength) {
        ++m_dropCount;
        return;
    }
    m_waiting += block.count;
    m_queue.push_back(std::move(block));
    m_changed.notify_all();
}

void ReadAhead::note() { m_sampleCount = m_source->sampleCount(); }

void ReadAhead::clear()
{
    m_queue.clear();
    m_waiting = 0;
    m_used = 0;
    m_isAtEnd = false;
    m_next = m_source->position();
}

void ReadAhead::change(const std::function<void(SignalSource&)>& work)
{
    const Pause pause(*this);
    const std::int64_t position =
        m_queue.empty() ? m_next : m_queue.front().position + static_cast<std::int64_t>(m_used);
    work(*m_source);
    if (m_source->seek(position))
        clear();
    note();
}

bool ReadAhead::seek(std::int64_t position)
{
    const Pause pause(*this);
    if (!m_source->seek(position))
        return false;
    clear();
    note();
    return true;
}

void ReadAhead::setLengths(std::size_t block, std::size_t queue)
{
    const Lock lock(m_mutex);
    m_blockLength = std::max<std::size_t>(block, 1);
    m_queueLength = std::max<std::size_t>(queue, 1);
    m_changed.notify_all();
}

void ReadAhead::setPatience(std::chrono::milliseconds patience)
{
    const Lock lock(m_mutex);
    m_patience = patience;
}

void ReadAhead::setDiscarding(bool discarding)
{
    const Lock lock(m_mutex);
    m_isDiscarding = discarding;
    if (discarding) {
        m_queue.clear();
        m_waiting = 0;
        m_used = 0;
    }
    m_changed.notify_all();
}

std::size_t ReadAhead::waitingCount() const
{
    const Lock lock(m_mutex);
    return m_waiting;
}

std::optional<std::int64_t> ReadAhead::sampleCount() const
{
    const Lock lock(m_mutex);
    return m_sampleCount;
}

bool ReadAhead::hasEnded() const
{
    const Lock lock(m_mutex);
    return m_isAtEnd && m_queue.empty();
}

std::int64_t ReadAhead::lostBlockCount() const
{
    const Lock lock(m_mutex);
    return m_dropCount + m_source->lostBlockCount();
}

std::int64_t ReadAhead::position() const
{
    const Lock lock(m_mutex);
    return m_queue.empty() ? m_next : m_queue.front().position + static_cast<std::int64_t>(m_used);
}

std::size_t ReadAhead::read(std::vector<double>& block, std::size_t count)
{
    block.clear();
    Lock lock(m_mutex);
    m_changed.wait_for(lock, m_patience, [this] { return !m_queue.empty() || m_isAtEnd; });
    if (m_queue.empty() || count == 0)
        return 0;
    Block& first = m_queue.front();
    const std::size_t width = first.values.size() / first.count;
    const std::size_t step = std::min(count, first.count - m_used);
    if (step == first.count) {
        block.swap(first.values);
    } else {
        const auto begin = first.values.begin() + static_cast<std::ptrdiff_t>(m_used * width);
        block.assign(begin, begin + static_cast<std::ptrdiff_t>(step * width));
    }
    m_used += step;
    m_waiting -= step;
    if (m_used == first.count) {
        m_queue.pop_front();
        m_used = 0;
    }
    m_changed.notify_all();
    return step;
}
