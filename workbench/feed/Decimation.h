// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <vector>

/// Decimates segments for a diagram that has far fewer pixels than they have samples: of each group
/// of neighbours the lowest and the highest are kept, in the order in which they came, so that no
/// extreme is lost. What is not finite is kept only where a group has nothing else.
class Decimation
{
public:
    /// Samples for one that is kept, at least 1, which keeps all. Takes effect at the next segment.
    void setFactor(std::size_t factor);
    std::size_t factor() const { return m_wanted; }
    /// Forgets the open segment.
    void restart();

    /// Appends what is left of the next samples.
    /// @param markers  as of SegmentReader, and so are those that come out: a segment of n samples
    ///                 has two for each 2 * factor of them that it has begun.
    void run(const std::vector<double>& samples, const std::vector<double>& markers,
             std::vector<double>& thinSamples, std::vector<double>& thinMarkers);

private:
    void endGroup(std::vector<double>& samples, std::vector<double>& markers);

    std::size_t m_wanted = 1;
    std::size_t m_factor = 1;    // of the open segment
    std::size_t m_open = 0;      // samples that are missing to its end
    double m_marker = 0.0;       // still to be put out
    std::vector<double> m_group; // that is open
};
