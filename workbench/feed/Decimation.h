// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <vector>

/// Decimates segments for a diagram with far fewer pixels than samples: keeps the lowest and the
/// highest of each group of neighbours, in their order, so that no extreme is lost. A value that is
/// not finite is kept only when a group has no other.
class Decimation
{
public:
    /// Sets how many samples there are for one that is kept, at least 1, which keeps all. Takes
    /// effect at the next segment.
    void setFactor(std::size_t factor);
    std::size_t factor() const { return m_wanted; }
    /// Drops the open segment.
    void restart();

    /// Takes the next samples, and appends those that are kept.
    /// @param markers  as in the value tree, for input and output: a segment of n samples keeps two
    ///                 for each begun group of 2 * factor samples.
    void run(const std::vector<double>& samples, const std::vector<double>& markers,
             std::vector<double>& thinSamples, std::vector<double>& thinMarkers);

private:
    void endGroup(std::vector<double>& samples, std::vector<double>& markers);

    std::size_t m_wanted = 1;
    std::size_t m_factor = 1;    // of the open segment
    std::size_t m_open = 0;      // samples missing to its end
    double m_marker = 0.0;       // marker still to be put out
    std::vector<double> m_group; // open group
};
