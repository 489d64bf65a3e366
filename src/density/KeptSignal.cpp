// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "density/KeptSignal.h"

#include <algorithm>

namespace density {

KeptSignal::KeptSignal(std::size_t length, std::size_t capacity)
    : m_length(length)
    , m_capacity(capacity)
{}

void KeptSignal::add(const float* samples, std::int64_t symbol)
{
    if (count() < m_capacity) {
        m_samples.insert(m_samples.end(), samples, samples + m_length);
        m_symbols.push_back(symbol);
        return;
    }
    std::copy(samples, samples + m_length, m_samples.data() + m_next * m_length);
    m_symbols[m_next] = symbol;
    m_next = m_next + 1 < m_capacity ? m_next + 1 : 0;
}

void KeptSignal::clear()
{
    m_samples.clear();
    m_symbols.clear();
    m_next = 0;
}

std::size_t KeptSignal::placeOf(std::size_t age) const
{
    return (m_next + count() - 1 - age) % count();
}

const float* KeptSignal::at(std::size_t age) const
{
    return m_samples.data() + placeOf(age) * m_length;
}

std::int64_t KeptSignal::symbolAt(std::size_t age) const { return m_symbols[placeOf(age)]; }

KeptSignal KeptSignal::newest(std::size_t most) const
{
    const std::size_t kept = std::min(most, count());
    KeptSignal copy(m_length, std::max<std::size_t>(kept, 1));
    copy.m_samples.reserve(kept * m_length);
    copy.m_symbols.reserve(kept);
    for (std::size_t age = kept; age-- > 0;)
        copy.add(at(age), symbolAt(age));
    return copy;
}

} // namespace density
