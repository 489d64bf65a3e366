// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/feed/Coverage.h"

#include <algorithm>
#include <iterator>

void Coverage::startRun()
{
    for (const auto& [begin, end] : m_run)
        join(m_earlier, begin, end);
    m_run.clear();
}

bool Coverage::add(double time)
{
    const auto next = m_earlier.upper_bound(time);
    if (next != m_earlier.begin() && time < std::prev(next)->second)
        return false;
    join(m_run, time - m_reach, time + m_reach);
    return true;
}

void Coverage::join(Spans& spans, double begin, double end) const
{
    // Between neighbours 0.2 periods are left; more than another half of that is a gap.
    const double gap = 0.75 * m_reach;
    auto next = spans.upper_bound(begin);
    const auto before = next == spans.begin() ? spans.end() : std::prev(next);
    auto span = before;
    if (before != spans.end() && begin - before->second < gap)
        before->second = std::max(before->second, end);
    else
        span = spans.emplace(begin, end).first;
    while (next != spans.end() && next->first - span->second < gap) {
        span->second = std::max(span->second, next->second);
        next = spans.erase(next);
    }
}
