// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/feed/IqFeed.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr double insiders = 0.99;           // part of the points that have to fit into the axes...
constexpr std::size_t magnitudeCount = 256; // ...of at most so many of a set

} // namespace

void IqFeed::open(const SignalFormat& format)
{
    m_hasQ = format.hasQ;
    m_hasDecisions = format.hasDecisions;
    m_isEmpty = true;
    m_taken.clear();
    m_open = Points();
    m_whole.clear();
    m_magnitudes.clear();
}

void IqFeed::setTrajectory(bool wanted)
{
    m_isTrajectory = wanted;
    m_magnitudes.clear(); // which belong to other points
}

void IqFeed::setGateLength(double samples)
{
    m_setLength = std::max<std::int64_t>(std::llround(samples / static_cast<double>(setCount)), 1);
}

/// Drops samples of sets that newer ones would push out of a view before it is painted.
void IqFeed::dropOld()
{
    std::int64_t newer = 0; // sets that end after the part
    for (std::size_t k = m_taken.size(); k-- > 0;) {
        BlockPart& part = m_taken[k];
        const std::int64_t first = part.position() / m_setLength;
        const std::int64_t last = (part.end() - 1) / m_setLength;
        if (k + 1 < m_taken.size() && m_taken[k + 1].position() / m_setLength != last)
            ++newer;
        if (newer + last - first <= setCount) {
            newer += last - first;
            continue;
        }
        const std::int64_t needed = last - std::max<std::int64_t>(setCount - newer, 0);
        const std::int64_t surplus =
            std::max<std::int64_t>(needed * m_setLength - part.position(), 0);
        part.first += static_cast<std::size_t>(surplus);
        part.count -= static_cast<std::size_t>(surplus);
        m_setNumber = part.position() / m_setLength;
        m_open = Points();
        m_taken.erase(m_taken.begin(), m_taken.begin() + static_cast<std::ptrdiff_t>(k));
        return;
    }
}

void IqFeed::fillSets(const BlockPart& part)
{
    for (BlockPart rest = part; rest.count > 0;) {
        const std::int64_t number = rest.position() / m_setLength;
        if (number != m_setNumber)
            endSet();
        m_setNumber = number;
        BlockPart here = rest;
        const std::int64_t left = (number + 1) * m_setLength - rest.position();
        here.count = std::min(rest.count, static_cast<std::size_t>(left));
        if (showsDecisions())
            takeSymbols(here);
        else
            takeSamples(here);
        rest.first += here.count;
        rest.count -= here.count;
    }
}

void IqFeed::takeSymbols(const BlockPart& part)
{
    part.forEachSymbol([this](const Symbol& symbol) {
        if (symbol.state == SymbolState::Good)
            add(symbol.value.real(), symbol.value.imag());
    });
}

void IqFeed::takeSamples(const BlockPart& part)
{
    const SignalBlock& block = *part.block;
    if (block.q.empty())
        return;
    for (std::size_t k = part.first; k < part.first + part.count; ++k) {
        if (block.isQuiet.empty() || block.isQuiet[k] == 0)
            add(block.i[k], block.q[k]);
    }
}

/// A silenced sample must not take the place of a point.
void IqFeed::add(double i, double q)
{
    if (!std::isfinite(i) || !std::isfinite(q))
        return;
    m_open.i.push_back(i);
    m_open.q.push_back(q);
}

// Takes a random point of each run of neighbours: a fixed step could be in step with the symbol
// clock and show only some of its phases.
void IqFeed::endSet()
{
    const std::size_t count = m_open.i.size();
    if (count > maxPointCount) {
        for (std::size_t k = 0; k < maxPointCount; ++k) {
            const std::size_t first = k * count / maxPointCount;
            const std::size_t next = (k + 1) * count / maxPointCount;
            const std::size_t chosen = first + m_choice() % (next - first);
            m_open.i[k] = m_open.i[chosen];
            m_open.q[k] = m_open.q[chosen];
        }
        m_open.i.resize(maxPointCount);
        m_open.q.resize(maxPointCount);
    }
    noteMagnitudes(m_open);
    m_whole.push_back(std::move(m_open));
    m_open = Points();
    if (!m_spare.empty()) {
        m_open = std::move(m_spare.back());
        m_spare.pop_back();
    }
    if (m_whole.size() > setCount) {
        keepMemory(std::move(m_whole.front()));
        m_whole.pop_front();
    }
}

/// A view that is fed in small sets takes as many of them again and again.
void IqFeed::keepMemory(Points&& points)
{
    if (points.i.capacity() > maxPointCount || m_spare.size() > setCount)
        return;
    points.i.clear();
    points.q.clear();
    m_spare.push_back(std::move(points));
}

/// A set without points is written, too, because it makes older sets age.
void IqFeed::notify()
{
    dropOld();
    for (const BlockPart& part : m_taken)
        fillSets(part);
    m_taken.clear();
    const std::vector<double> nowhere(1, std::numeric_limits<double>::quiet_NaN());
    for (Points& points : m_whole) {
        m_isEmpty = m_isEmpty && points.i.empty();
        m_values.notify(points.i.empty() ? nowhere : points.i,
                        points.i.empty() ? nowhere : points.q);
        keepMemory(std::move(points));
    }
    m_whole.clear();
}

void IqFeed::show(const std::deque<BlockPart>& parts)
{
    m_choice.seed();
    m_isEmpty = true;
    m_magnitudes.clear();
    m_taken.clear();
    m_open = Points();
    m_whole.clear();
    std::int64_t total = 0;
    for (const BlockPart& part : parts)
        total += static_cast<std::int64_t>(part.count);
    const std::int64_t length = std::max<std::int64_t>((total + setCount - 1) / setCount, 1);
    std::int64_t done = 0;
    for (BlockPart part : parts) {
        while (part.count > 0) {
            BlockPart here = part;
            here.count = std::min(part.count, static_cast<std::size_t>(length - done % length));
            if (showsDecisions())
                takeSymbols(here);
            else
                takeSamples(here);
            done += static_cast<std::int64_t>(here.count);
            part.first += here.count;
            part.count -= here.count;
            if (done % length == 0 || done == total)
                endSet();
        }
    }
    notify();
}

void IqFeed::noteMagnitudes(const Points& points)
{
    std::vector<float> magnitudes;
    if (m_magnitudes.size() >= setCount) {
        magnitudes = std::move(m_magnitudes.front());
        m_magnitudes.pop_front();
        magnitudes.clear();
    }
    const std::size_t step = points.i.size() / magnitudeCount + 1;
    magnitudes.reserve(points.i.size() / step + 1);
    for (std::size_t k = 0; k < points.i.size(); k += step)
        magnitudes.push_back(
            static_cast<float>(std::max(std::abs(points.i[k]), std::abs(points.q[k]))));
    m_magnitudes.push_back(std::move(magnitudes));
}

void IqFeed::followLevels(double elapsed)
{
    std::vector<float> all;
    for (const std::vector<float>& magnitudes : m_magnitudes)
        all.insert(all.end(), magnitudes.begin(), magnitudes.end());
    if (all.empty())
        return;
    const double outermost = static_cast<double>(all.size() - 1) * insiders;
    const auto chosen = all.begin() + static_cast<std::ptrdiff_t>(outermost);
    std::nth_element(all.begin(), chosen, all.end());
    if (m_levels.take({-*chosen, *chosen}, elapsed))
        showAxes();
}

void IqFeed::setLevel(double level)
{
    m_levels.fix(-level, level);
    showAxes();
}

void IqFeed::setAspect(double aspect)
{
    m_aspect = aspect;
    showAxes();
}

void IqFeed::showAxes() { m_values.setEnds(iEnd(), qEnd()); }
