// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/SymbolRateSearch.h"

#include "workbench/feed/SignalFeed.h"

#include <algorithm>

SymbolRateSearch::~SymbolRateSearch() { cancel(); }

void SymbolRateSearch::cancel()
{
    m_isCanceled = true;
    if (m_thread.joinable())
        m_thread.join();
    m_isCanceled = false;
}

void SymbolRateSearch::start(SignalFeed& feed)
{
    cancel();
    SymbolRateEstimate::Signal signal;
    feed.changeSource([&](SignalSource& source) {
        constexpr auto length = static_cast<std::int64_t>(SymbolRateEstimate::maxSampleCount);
        const auto here = static_cast<std::int64_t>(feed.transport().time() * source.sampleRate());
        const std::int64_t last = source.sampleCount().value_or(here + length) - length;
        signal = SymbolRateEstimate::signalOf(
            source, feed.channel(), feed.receiver(),
            std::clamp<std::int64_t>(here - length / 2, 0, std::max<std::int64_t>(last, 0)));
    });
    m_thread = std::thread([this, signal = std::move(signal)] {
        const auto estimate =
            SymbolRateEstimate::of(signal, [this](double) { return !m_isCanceled; });
        if (!m_isCanceled)
            QMetaObject::invokeMethod(this, [this, estimate] { emit found(estimate); });
    });
}
