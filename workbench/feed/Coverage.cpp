// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/feed/Coverage.h"

#include <iterator>

bool Coverage::add(double time)
{
    const auto next = m_spans.upper_bound(time);
    const auto before = next == m_spans.begin() ? m_spans.end() : std::prev(next);
    if (before != m_spans.end() && time < before->second)
        return false;
    // Between neighbours 0.2 periods are left; more than another half of that is a gap.
    const double gap = 0.75 * m_reach;
    auto span = before;
    if (before != m_spans.end() && time - m_reach - before->second < gap)
        before->second = time + m_reach;
    else
        span = m_spans.emplace(time - m_reach, time + m_reach).first;
    if (next != m_spans.end() && next->first - span->second < gap) {
        span->second = next->second;
        m_spans.erase(next);
    }
    return true;
}
