// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/receiver/FirFilter.h"

#include "workbench/receiver/Vectors.h"

#include <algorithm>

namespace {

constexpr std::size_t vectors = 4;                          // that are taken at once...
constexpr std::size_t together = vectors * floatsWidth / 2; // ...which are so many samples

/// Groups of samples: each is the sum of the taps times the samples from it on. Each sum adds in
/// the order of the taps; they are taken side by side because one alone would wait for each of its
/// additions.
ORVANE_WIDEST void filter(const std::vector<float>& taps, float scale, const float* values,
                          std::size_t groups, float* output)
{
    for (std::size_t group = 0; group < groups; ++group) {
        Floats sums[vectors] = {};
        const float* place = values + group * 2 * together;
        for (const float tap : taps) {
            ORVANE_UNROLLED
            for (std::size_t n = 0; n < vectors; ++n) {
                Floats factors;
                load(place + n * floatsWidth, factors);
                sums[n] += tap * factors;
            }
            place += 2;
        }
        ORVANE_UNROLLED
        for (std::size_t n = 0; n < vectors; ++n)
            store(scale * sums[n], output + group * 2 * together + n * floatsWidth);
    }
}

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
    const std::size_t groups = (count + together - 1) / together;
    m_line.insert(m_line.end(), samples.begin(), samples.end());
    m_line.resize(kept + groups * together);
    samples.resize(groups * together);
    filter(m_taps, m_scale, reinterpret_cast<const float*>(m_line.data()), groups,
           reinterpret_cast<float*>(samples.data()));
    samples.resize(count);
    m_line.erase(m_line.begin(), m_line.begin() + static_cast<std::ptrdiff_t>(count));
    m_line.resize(kept);
}

void FirFilter::reset() { m_line.assign(m_taps.size() - 1, 0.0F); }
