// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/feed/IqFeed.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr double margin = 1.25; // shown, of the level that fits
constexpr double sameRate = 1e-9;
constexpr double insiders = 0.99; // part of the points that decide on it

} // namespace

void IqFeed::open(const SignalSource& source, std::optional<double> symbolRate)
{
    m_samplesPerSymbol.reset();
    if (source.constellationChannel()) {
        // It is not of the signal that the symbols are of.
    } else if (!symbolRate && source.symbolRate() && source.firstSymbol()) {
        m_samplesPerSymbol = source.sampleRate() / *source.symbolRate();
        m_firstSymbol = *source.firstSymbol();
    } else if (symbolRate && std::abs(*symbolRate / source.sampleRate() - 1.0) < sameRate) {
        m_samplesPerSymbol = 1.0;
        m_firstSymbol = 0.0;
    }
    m_i.clear();
    m_q.clear();
    m_newestI.clear();
    m_newestQ.clear();
}

void IqFeed::setTrajectory(bool wanted)
{
    m_isTrajectory = wanted;
    m_newestI.clear();
    m_newestQ.clear();
}

void IqFeed::take(std::int64_t position, const std::vector<double>& i, const std::vector<double>& q)
{
    const auto add = [&](std::size_t index) {
        m_i.push_back(i[index]);
        if (!q.empty())
            m_q.push_back(q[index]);
    };
    if (!showsDecisions()) {
        for (std::size_t index = 0; index < i.size(); ++index)
            add(index);
        return;
    }
    // A symbol is the sample that is nearest to its middle.
    const double start = static_cast<double>(position) - 0.5 - m_firstSymbol;
    for (double symbol = std::max(std::ceil(start / *m_samplesPerSymbol), 0.0);; ++symbol) {
        const double index = std::floor(symbol * *m_samplesPerSymbol - start);
        if (index >= static_cast<double>(i.size()))
            break;
        add(static_cast<std::size_t>(index));
    }
}

void IqFeed::notify()
{
    leaveOutGaps();
    if (m_i.empty())
        return;
    thinOut();
    keep();
    if (m_fitLeft > 0)
        fitLevel();
    m_values.notify(m_i, m_q);
    m_i.clear();
    m_q.clear();
}

void IqFeed::showNothing()
{
    constexpr int keptCount = 100; // data sets, by an IQ diagram
    const std::vector<double> nowhere(1, std::numeric_limits<double>::quiet_NaN());
    m_newestI.clear();
    m_newestQ.clear();
    for (int k = 0; k < keptCount; ++k)
        m_values.notify(nowhere, nowhere);
}

/// What is no point must not put out one that is.
void IqFeed::leaveOutGaps()
{
    std::size_t count = 0;
    for (std::size_t k = 0; k < m_i.size(); ++k) {
        if (!std::isfinite(m_i[k]) || (!m_q.empty() && !std::isfinite(m_q[k])))
            continue;
        m_i[count] = m_i[k];
        if (!m_q.empty())
            m_q[count] = m_q[k];
        ++count;
    }
    m_i.resize(count);
    m_q.resize(std::min(m_q.size(), count));
}

void IqFeed::keep()
{
    const auto add = [](std::vector<double>& kept, const std::vector<double>& points) {
        kept.insert(kept.end(), points.begin(), points.end());
        const std::size_t surplus = kept.size() - std::min(kept.size(), maxPointCount);
        kept.erase(kept.begin(), kept.begin() + static_cast<std::ptrdiff_t>(surplus));
    };
    add(m_newestI, m_i);
    add(m_newestQ, m_q);
}

std::optional<ConstellationReadings>
IqFeed::measure(const std::vector<std::complex<double>>& ideal) const
{
    if (!showsDecisions())
        return std::nullopt;
    return ConstellationReadings::of(m_newestI, m_newestQ, ideal);
}

// One point of each run of neighbours, at random: a fixed step would see but some phases of a
// symbol clock that it is in step with.
void IqFeed::thinOut()
{
    const std::size_t count = m_i.size();
    if (count <= maxPointCount)
        return;
    for (std::size_t k = 0; k < maxPointCount; ++k) {
        const std::size_t first = k * count / maxPointCount;
        const std::size_t next = (k + 1) * count / maxPointCount;
        const std::size_t chosen = first + m_choice() % (next - first);
        m_i[k] = m_i[chosen];
        if (!m_q.empty())
            m_q[k] = m_q[chosen];
    }
    m_i.resize(maxPointCount);
    m_q.resize(std::min(m_q.size(), maxPointCount));
}

void IqFeed::fit()
{
    m_fitLeft = fitCount;
    m_levels.clear();
}

void IqFeed::fitLevel()
{
    --m_fitLeft;
    for (std::size_t k = 0; k < m_i.size(); ++k) {
        const double level = std::max(std::abs(m_i[k]), m_q.empty() ? 0.0 : std::abs(m_q[k]));
        if (std::isfinite(level))
            m_levels.push_back(level);
    }
    if (m_levels.empty())
        return;
    const double outermost = static_cast<double>(m_levels.size() - 1) * insiders;
    const auto chosen = m_levels.begin() + static_cast<std::ptrdiff_t>(outermost);
    std::nth_element(m_levels.begin(), chosen, m_levels.end());
    if (*chosen > 0.0)
        setLevel(margin * *chosen);
}

void IqFeed::setLevel(double level)
{
    m_level = level;
    showAxes();
}

void IqFeed::setAspect(double aspect)
{
    m_aspect = aspect;
    showAxes();
}

void IqFeed::showAxes()
{
    m_values.setEnds(m_level * std::max(m_aspect, 1.0), m_level * std::max(1.0 / m_aspect, 1.0));
}
