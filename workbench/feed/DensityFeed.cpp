// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/feed/DensityFeed.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <utility>

namespace {

// Samples that may wait to be cut: of a recording little, so that the window waits for little.
constexpr std::size_t mostWaiting = std::size_t{1} << 18;
constexpr std::size_t mostWaitingLive = std::size_t{1} << 22;
constexpr std::size_t batchLength = std::size_t{1} << 18; // samples

} // namespace

DensityFeed::~DensityFeed() { stop(); }

void DensityFeed::stop()
{
    if (!m_thread.joinable())
        return;
    m_isStopping = true;
    m_items.close();
    m_thread.join();
    m_isStopping = false;
}

void DensityFeed::setSink(Sink sink)
{
    stop();
    m_sink = std::move(sink);
    open(m_format, m_bandwidth, m_isLive);
}

void DensityFeed::open(const SignalFormat& format, double bandwidth, bool isLive)
{
    stop();
    m_format = format;
    m_bandwidth = bandwidth;
    m_isLive = isLive;
    m_items.open();
    m_items.setLimit(m_isLive ? mostWaitingLive : mostWaiting);
    m_leftOut = 0;
    m_times.clear();
    m_nextNumber = 0;
    m_batch = Batch();
    m_told.reset();
    m_edges.reset();
    m_runEnd = 0;
    m_cutter.reset();
    if (!m_sink || !(m_format.samplesPerSymbol > 0.0))
        return;
    m_cutter = std::make_unique<SymbolCutter>(
        m_format, m_bandwidth, perSymbol,
        [this](const SymbolCutter::Place& place) { takePlace(place); },
        [this](const Symbol& symbol, bool isTorn) { takeEdge(symbol, isTorn); });
    if (!m_isLive) {
        m_told.emplace(period());
        m_edges.emplace(period());
    }
    m_thread = std::thread([this] { run(); });
}

void DensityFeed::take(const BlockPart& part)
{
    if (m_thread.joinable() && part.count > 0)
        give(part);
}

void DensityFeed::finish()
{
    if (m_thread.joinable())
        give(BlockPart());
}

void DensityFeed::give(const BlockPart& part)
{
    Item item{part, m_leftOut, nullptr};
    if (!m_isLive) {
        m_items.push(std::move(item), part.count);
    } else if (m_items.tryPush(std::move(item), part.count)) {
        m_leftOut = 0;
    } else if (part.block) {
        part.forEachSymbol([this](const Symbol&) { ++m_leftOut; });
    }
}

void DensityFeed::wait()
{
    if (!m_thread.joinable())
        return;
    const auto isReached = std::make_shared<std::promise<void>>();
    m_items.push({BlockPart(), std::exchange(m_leftOut, 0), isReached}, 0);
    isReached->get_future().wait();
}

void DensityFeed::run()
{
    constexpr auto longTime = std::chrono::hours(1);
    while (!m_isStopping) {
        const auto item = m_items.pop(longTime);
        if (!item)
            continue;
        m_batch.torn += item->leftOut;
        if (item->isReached) {
            flush();
            item->isReached->set_value();
        } else {
            process(item->part);
        }
    }
}

void DensityFeed::process(const BlockPart& part)
{
    if (part.block && m_told)
        followRun(part);
    if (m_kind == Kind::Traces && !part.block)
        m_cutter->finish();
    else if (m_kind == Kind::Traces)
        m_cutter->add(*part.block, part.first, part.count);
    else if (part.block && m_format.hasDecisions)
        part.forEachSymbol([this](const Symbol& symbol) { takePoint(symbol); });
    flush();
}

/// Tells who remembers what was met where the signal is gone back in.
void DensityFeed::followRun(const BlockPart& part)
{
    if (part.position() < m_runEnd) {
        m_cutter->finish();
        m_told->startRun();
        m_edges->startRun();
    }
    m_runEnd = part.end();
}

bool DensityFeed::isNew(double time) { return !m_told || m_told->add(time); }

std::int64_t DensityFeed::number(double time)
{
    const Lock lock(m_mutex);
    m_times.push_back(time);
    if (m_times.size() > mostTimes)
        m_times.pop_front();
    return m_nextNumber++;
}

void DensityFeed::takePlace(const SymbolCutter::Place& place)
{
    if (!isNew(place.symbol.time))
        return;
    const std::int64_t symbol = number(place.symbol.time);
    if (!place.isWhole)
        return tear();
    const std::vector<double>& trace = m_cutter->trace();
    m_single.assign(trace.begin(), trace.end());
    add(symbol, m_single.data(), m_single.size());
}

/// Without a trace. Where a recording was left or gone to, there may be one later; of a live signal
/// what is missing does not come.
void DensityFeed::takeEdge(const Symbol& symbol, bool isTorn)
{
    if (!m_edges || (isTorn && m_edges->add(symbol.time)))
        tear();
}

void DensityFeed::takePoint(const Symbol& symbol)
{
    if (!isNew(symbol.time))
        return;
    const std::int64_t index = number(symbol.time);
    if (symbol.state != SymbolState::Good)
        return tear();
    const float point[] = {symbol.value.real(), symbol.value.imag()};
    add(index, point, 2);
}

void DensityFeed::add(std::int64_t symbol, const float* samples, std::size_t count)
{
    const bool isLong = m_batch.samples.size() >= batchLength;
    if (!m_batch.samples.empty() && (isLong || symbol != m_batchEnd))
        flush();
    if (m_batch.samples.empty())
        m_batch.firstSymbol = symbol;
    m_batch.samples.insert(m_batch.samples.end(), samples, samples + count);
    m_batchEnd = symbol + 1;
}

void DensityFeed::tear()
{
    if (!m_batch.samples.empty())
        flush();
    ++m_batch.torn;
}

void DensityFeed::flush()
{
    if (m_batch.samples.empty() && m_batch.torn == 0)
        return;
    m_sink(std::exchange(m_batch, Batch()), !m_isLive);
}

std::optional<double> DensityFeed::timeOf(std::int64_t symbol) const
{
    const Lock lock(m_mutex);
    const std::int64_t first = m_nextNumber - static_cast<std::int64_t>(m_times.size());
    if (symbol < first || symbol >= m_nextNumber)
        return std::nullopt;
    return m_times[static_cast<std::size_t>(symbol - first)];
}

std::optional<std::int64_t> DensityFeed::symbolAt(double seconds) const
{
    const Lock lock(m_mutex);
    // Not in the order of time: after a leap back the numbers go on.
    const auto found = std::find_if(m_times.rbegin(), m_times.rend(), [&](double time) {
        return std::abs(time - seconds) < 0.5 * period();
    });
    if (found == m_times.rend())
        return std::nullopt;
    return m_nextNumber - 1 - (found - m_times.rbegin());
}
