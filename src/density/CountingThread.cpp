// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "density/CountingThread.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>
#include <utility>

namespace density {

struct CountingThread::Private
{
    using Lock = std::unique_lock<std::mutex>;
    using Order = std::function<void(Counter&)>;

    explicit Private(const Counter::Settings& settings)
        : counter(settings)
        , length(counter.kept().length())
    {}

    std::size_t symbolsOf(const Block& block) const
    {
        return (block.samples.size() + length - 1) / length;
    }
    void add(Block block)
    {
        waiting += block.samples.size();
        blocks.push_back(std::move(block));
        changed.notify_all();
    }
    void count(const Block& block)
    {
        counter.addTorn(block.torn);
        std::int64_t symbol = block.firstSymbol;
        for (std::size_t k = 0; k < block.samples.size(); k += length)
            counter.add(block.samples.data() + k, std::min(length, block.samples.size() - k),
                        symbol++);
    }
    void run()
    {
        Lock lock(mutex);
        while (!isEnding) {
            if (!orders.empty()) {
                const Order order = std::move(orders.front());
                orders.pop_front();
                work(lock, [&] { order(counter); });
            } else if (!blocks.empty()) {
                const Block block = std::move(blocks.front());
                blocks.pop_front();
                work(lock, [&] { count(block); });
                waiting -= block.samples.size();
                changed.notify_all();
            } else {
                changed.wait(lock);
            }
        }
    }
    template<class Work>
    void work(Lock& lock, const Work& work)
    {
        isBusy = true;
        const std::int64_t torn = std::exchange(leftOut, 0);
        lock.unlock();
        counter.addTorn(torn);
        work();
        lock.lock();
        isBusy = false;
        changed.notify_all();
    }

    Counter counter; // of the thread
    const std::size_t length;
    std::mutex mutex;
    std::condition_variable changed;
    std::deque<Order> orders;
    std::deque<Block> blocks;
    std::size_t waiting = 0;  // samples
    std::int64_t leftOut = 0; // symbols
    bool isBusy = false;
    bool isEnding = false;
    std::thread thread;
};

CountingThread::CountingThread(const Counter::Settings& settings)
    : d(std::make_unique<Private>(settings))
{
    d->thread = std::thread([this] { d->run(); });
}

CountingThread::~CountingThread()
{
    {
        const Private::Lock lock(d->mutex);
        d->isEnding = true;
        d->changed.notify_all();
    }
    d->thread.join();
}

void CountingThread::push(Block block)
{
    Private::Lock lock(d->mutex);
    d->changed.wait(lock, [this] { return d->waiting < mostWaiting || d->isEnding; });
    d->add(std::move(block));
}

bool CountingThread::tryPush(Block block)
{
    const Private::Lock lock(d->mutex);
    if (d->waiting >= mostWaiting) {
        d->leftOut += static_cast<std::int64_t>(d->symbolsOf(block)) + block.torn;
        return false;
    }
    d->add(std::move(block));
    return true;
}

void CountingThread::clear()
{
    const Private::Lock lock(d->mutex);
    for (const Block& block : d->blocks)
        d->waiting -= block.samples.size();
    d->blocks.clear();
    d->leftOut = 0;
    d->orders.emplace_back([](Counter& counter) { counter.clear(); });
    d->changed.notify_all();
}

void CountingThread::order(std::function<void(Counter&)> order)
{
    const Private::Lock lock(d->mutex);
    d->orders.push_back(std::move(order));
    d->changed.notify_all();
}

bool CountingThread::hasWaiting() const
{
    const Private::Lock lock(d->mutex);
    return !d->blocks.empty();
}

void CountingThread::requestSnapshot(std::function<void(SnapshotPtr)> ready)
{
    order([ready = std::move(ready)](Counter& counter) { ready(counter.snapshot()); });
}

void CountingThread::wait()
{
    Private::Lock lock(d->mutex);
    d->changed.wait(lock, [this] {
        return d->isEnding || (d->orders.empty() && d->blocks.empty() && !d->isBusy);
    });
}

} // namespace density
