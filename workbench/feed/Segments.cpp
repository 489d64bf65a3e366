// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/feed/Segments.h"

#include <algorithm>
#include <cmath>

namespace {

/// Where the signal is closest to zero; in silence, the middle. Never a NaN.
std::size_t quietest(const std::vector<double>& samples)
{
    std::size_t best = samples.size() / 2;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        if (std::abs(samples[i]) < std::abs(samples[best]) || std::isnan(samples[best]))
            best = i;
    }
    return best;
}

} // namespace

void Segments::setLength(std::size_t length) { m_length = std::max<std::size_t>(length, 1); }

std::size_t Segments::neededCount(std::int64_t position) const
{
    if (!m_frameLength)
        return m_length + tolerance() + 1;
    const double frame = std::ceil(static_cast<double>(position + 1) / *m_frameLength);
    return static_cast<std::size_t>(static_cast<std::int64_t>(std::ceil(frame * *m_frameLength)) -
                                    position);
}

std::size_t Segments::windowStart() const { return m_length - tolerance(); }

std::size_t Segments::next(std::int64_t position, std::size_t known, bool isAll,
                           const std::vector<double>& window) const
{
    if (known < neededCount(position))
        return isAll ? known : 0;
    return m_frameLength ? known : windowStart() + quietest(window);
}
