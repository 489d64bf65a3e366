// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/receiver/FirFilter.h"

#include "workbench/receiver/WeightedSums.h"

#include <algorithm>

namespace {

constexpr std::size_t quads = 8;            // that are taken at once...
constexpr std::size_t together = 2 * quads; // ...which are so many samples

} // namespace

FirFilter::FirFilter(const std::vector<float>& taps, float scale)
    : m_taps(taps.rbegin(), taps.rend())
    , m_scale(scale)
{
    reset();
}

void FirFilter::process(std::vector<std::complex<float>>& samples)
{
    const std::size_t count = samples.size();
    const std::size_t kept = m_line.size();
    m_line.insert(m_line.end(), samples.begin(), samples.end());
    m_line.resize(kept + (count + together - 1) / together * together);
    for (std::size_t n = 0; n < count; n += together) {
        const auto* values = reinterpret_cast<const float*>(&m_line[n]);
        const auto sums = weightedSums(std::make_index_sequence<quads>(), m_taps, values, 4, 2);
        for (std::size_t k = n; k < std::min(n + together, count); ++k) {
            const Quad& sum = sums[(k - n) / 2];
            const std::size_t part = 2 * (k % 2);
            samples[k] = {m_scale * sum[part], m_scale * sum[part + 1]};
        }
    }
    m_line.erase(m_line.begin(), m_line.begin() + static_cast<std::ptrdiff_t>(count));
    m_line.resize(kept);
}

void FirFilter::reset() { m_line.assign(m_taps.size() - 1, 0.0F); }
