// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/feed/EyeFeed.h"

#include "platform/base/Saturate.h"

#include <algorithm>
#include <cmath>

EyeFeed::EyeFeed() { restart(); }

void EyeFeed::open(const SignalFormat& format)
{
    m_cut.samplesPerSymbol = format.samplesPerSymbol;
    restart();
}

void EyeFeed::setSymbolCount(int count)
{
    m_cut.symbolCount = std::clamp(count, 1, EyeCut::maxSymbolCount);
    restart();
}

void EyeFeed::setBandwidth(double bandwidth)
{
    m_cut.bandwidth =
        bandwidth >= EyeCut::minBandwidth ? std::min(bandwidth, EyeCut::maxBandwidth) : 0.0;
    restart();
}

void EyeFeed::restart()
{
    m_cutter = std::make_unique<EyeCutter>(m_cut);
    m_kept.clear();
    setGateLength(m_gateLength);
}

void EyeFeed::setGateLength(double samples)
{
    m_gateLength = samples;
    if (m_cut.hasSymbols())
        m_cutter->setStep(stepFor(samples / m_cut.samplesPerSymbol));
}

/// A view counts one sample more for each trace.
std::int64_t EyeFeed::stepFor(double traceCount) const
{
    const std::size_t kept = capacity / (m_cutter->traceLength() + 1);
    return truncateSaturated<std::int32_t>(std::ceil(traceCount / static_cast<double>(kept)));
}

void EyeFeed::notify()
{
    m_cutter->takeTraces(capacity, m_samples, m_markers);
    if (m_samples.empty())
        return;
    m_kept.insert(m_kept.end(), m_samples.begin(), m_samples.end());
    const std::size_t surplus = m_kept.size() - std::min(m_kept.size(), capacity);
    m_kept.erase(m_kept.begin(), m_kept.begin() + static_cast<std::ptrdiff_t>(surplus));
    m_values.notify(m_samples, m_markers);
}

void EyeFeed::show(const std::deque<BlockPart>& parts)
{
    double traceCount = 0.0;
    for (const BlockPart& part : parts) {
        part.forEachSymbol([&traceCount](const Symbol& symbol) {
            traceCount += symbol.state == SymbolState::Good ? 1.0 : 0.0;
        });
    }
    restart();
    m_cutter->setStep(stepFor(traceCount));
    for (const BlockPart& part : parts)
        m_cutter->push(part);
    notify();
    setGateLength(m_gateLength);
}

void EyeFeed::setLevels(double lowest, double highest)
{
    m_levels.fix(lowest, highest);
    m_values.setY(lowest, highest);
}

void EyeFeed::followLevels(double elapsed)
{
    LevelExtremes shown;
    shown.add(m_kept.data(), m_kept.size());
    if (m_levels.take(shown, elapsed))
        m_values.setY(m_levels.lowest(), m_levels.highest());
}
