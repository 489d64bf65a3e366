// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/feed/Counting.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr double keptSymbols = 1.1e5; // some more than those who count keep

} // namespace

void Counting::open(const SignalFormat& format, double bandwidth, bool isLive, bool comesAgain)
{
    m_sampleRate = format.sampleRate;
    m_comesAgain = comesAgain;
    m_traces.open(format, bandwidth, isLive);
    m_points.open(format, 0.0, isLive);
    m_history.clear();
}

void Counting::follow(const SignalFormat& format, double shown)
{
    const double symbols = keptSymbols * std::max(format.samplesPerSymbol, 1.0);
    m_history.follow(static_cast<std::size_t>(symbols + shown * format.sampleRate), std::nullopt);
}

void Counting::setSink(DensityFeed::Kind kind, DensityFeed::Sink sink, const Gate& gate)
{
    DensityFeed& feed = kind == DensityFeed::Kind::Traces ? m_traces : m_points;
    feed.setSink(std::move(sink));
    const bool isNew = m_history.isEmpty();
    for (const BlockPart& part : gate.parts()) {
        feed.take(part);
        if (isNew && !m_comesAgain)
            m_history.take(part);
        if (gate.endsWith(part))
            feed.finish();
    }
    if (!isOn())
        m_history.clear();
}

void Counting::take(const BlockPart& part, const Gate& gate)
{
    if (!isOn())
        return;
    const BlockPart counted = gate.within(part);
    m_traces.take(counted);
    m_points.take(counted);
    // The last symbols would wait for what follows them.
    if (counted.count > 0 && gate.endsWith(counted))
        m_traces.finish();
    if (!m_comesAgain)
        m_history.take(part);
}

void Counting::wait()
{
    m_traces.wait();
    m_points.wait();
}

std::optional<Counting::Stretch> Counting::around(double seconds, double length) const
{
    if (m_history.isEmpty())
        return std::nullopt;
    const auto timeOf = [this](const BlockPart& part, std::size_t sample) {
        return part.block->time + static_cast<double>(part.first + sample) / m_sampleRate;
    };
    // Next to the newest sample the time is not in the middle, so that the stretch is whole.
    const BlockPart& newest = m_history.parts().back();
    const double stop = std::min(seconds + 0.5 * length, timeOf(newest, newest.count));
    Stretch stretch;
    for (const BlockPart& part : m_history.parts()) {
        const double time = timeOf(part, 0);
        const auto indexOf = [&](double place) {
            return static_cast<std::size_t>(std::clamp(std::ceil((place - time) * m_sampleRate),
                                                       0.0, static_cast<double>(part.count)));
        };
        const std::size_t first = indexOf(stop - length), last = indexOf(stop);
        if (first == last)
            continue;
        if (stretch.samples.empty())
            stretch.position = part.position() + static_cast<std::int64_t>(first);
        const double* from = &part.block->samples[part.first];
        stretch.samples.insert(stretch.samples.end(), from + first, from + last);
        stretch.end = time + static_cast<double>(last) / m_sampleRate;
    }
    if (stretch.samples.empty() || stretch.end < seconds)
        return std::nullopt;
    return stretch;
}
