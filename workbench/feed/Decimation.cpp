// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/feed/Decimation.h"

#include <algorithm>
#include <cmath>

void Decimation::setFactor(std::size_t factor) { m_wanted = std::max<std::size_t>(factor, 1); }

void Decimation::restart()
{
    m_open = 0;
    m_group.clear();
}

void Decimation::run(const std::vector<double>& samples, const std::vector<double>& markers,
                     std::vector<double>& thinSamples, std::vector<double>& thinMarkers)
{
    for (std::size_t k = 0; k < samples.size(); ++k) {
        if (markers[k] > 0.0) {
            restart();
            m_factor = m_wanted;
            m_open = static_cast<std::size_t>(markers[k]);
            m_marker = markers[k];
            if (m_factor > 1) {
                const std::size_t group = 2 * m_factor;
                m_marker = 2.0 * static_cast<double>((m_open + group - 1) / group);
            }
        }
        if (m_factor == 1) { // all up to the next segment
            const auto first = static_cast<std::ptrdiff_t>(k);
            const auto next = std::find_if(markers.begin() + first + 1, markers.end(),
                                           [](double marker) { return marker > 0.0; });
            thinSamples.insert(thinSamples.end(), samples.begin() + first,
                               samples.begin() + (next - markers.begin()));
            thinMarkers.insert(thinMarkers.end(), markers.begin() + first, next);
            k = static_cast<std::size_t>(next - markers.begin()) - 1;
            continue;
        }
        m_group.push_back(samples[k]);
        m_open -= std::min<std::size_t>(m_open, 1);
        if (m_group.size() == 2 * m_factor || m_open == 0)
            endGroup(thinSamples, thinMarkers);
    }
}

void Decimation::endGroup(std::vector<double>& samples, std::vector<double>& markers)
{
    std::size_t lowest = 0;
    std::size_t highest = 0;
    for (std::size_t k = 1; k < m_group.size(); ++k) {
        const double sample = m_group[k];
        if (!std::isfinite(sample))
            continue;
        if (sample < m_group[lowest] || !std::isfinite(m_group[lowest]))
            lowest = k;
        if (sample >= m_group[highest] || !std::isfinite(m_group[highest]))
            highest = k;
    }
    samples.push_back(m_group[std::min(lowest, highest)]);
    samples.push_back(m_group[std::max(lowest, highest)]);
    markers.push_back(m_marker);
    markers.push_back(0.0);
    m_marker = 0.0;
    m_group.clear();
}
