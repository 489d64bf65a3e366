// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/player/SymbolRateSearch.h"

#include "workbench/feed/SignalFeed.h"

#include <algorithm>

void SymbolRateSearch::start(SignalFeed& feed)
{
    m_feed = &feed;
    m_isElsewhere = false;
    m_best = SymbolRateEstimate();
    Stretches stretches;
    feed.changeSource([&](SignalSource& source) {
        constexpr auto length = static_cast<std::int64_t>(SymbolRateEstimate::maxSampleCount);
        const auto here =
            static_cast<std::int64_t>(feed.transport().time() * source.facts().sampleRate);
        const std::int64_t last = source.sampleCount().value_or(here + length) - length;
        m_first = std::clamp<std::int64_t>(here - length / 2, 0, std::max<std::int64_t>(last, 0));
        stretches.push_back(
            SymbolRateEstimate::signalOf(source, feed.channel(), feed.receiver(), m_first));
    });
    look(std::move(stretches));
}

void SymbolRateSearch::look(Stretches stretches)
{
    m_work.start([this, stretches = std::move(stretches)](const Background::IsWanted& isWanted) {
        SymbolRateEstimate best;
        for (const SymbolRateEstimate::Signal& signal : stretches) {
            const auto estimate =
                SymbolRateEstimate::of(signal, [&](double) { return isWanted(); });
            if (estimate.isBetterThan(best))
                best = estimate;
            if (best.verdict == SymbolRateEstimate::Verdict::Sure || !isWanted())
                break;
        }
        return [this, best] { judge(best); };
    });
}

void SymbolRateSearch::judge(const SymbolRateEstimate& estimate)
{
    if (estimate.isBetterThan(m_best))
        m_best = estimate;
    if (m_best.verdict != SymbolRateEstimate::Verdict::Sure && !m_isElsewhere) {
        m_isElsewhere = true;
        if (Stretches stretches = elsewhere(); !stretches.empty()) {
            look(std::move(stretches));
            return;
        }
    }
    emit found(m_best);
}

SymbolRateSearch::Stretches SymbolRateSearch::elsewhere()
{
    Stretches stretches;
    m_feed->changeSource([&](SignalSource& source) {
        for (const std::int64_t place :
             SymbolRateEstimate::otherPlaces(source, m_feed->channel(), m_first))
            stretches.push_back(
                SymbolRateEstimate::signalOf(source, m_feed->channel(), m_feed->receiver(), place));
    });
    return stretches;
}
