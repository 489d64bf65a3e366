// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/sources/ChannelChoice.h"
#include "workbench/sources/SignalSource.h"

#include <cstddef>
#include <cstdint>
#include <vector>

/// Reads a channel of a source, I or Q of it where complex, and cuts it into segments, the traces
/// of a diagram. Beside the samples stand markers: where a segment starts its number of samples, 0
/// elsewhere. With them come the I and Q that a constellation shows.
///
/// A source with frames is cut into its frames. Another one is cut near the wanted length, within
/// an eighth of it, where the signal is closest to zero: a diagram draws a line from a trace's
/// first sample to zero, and there it does not hide the signal. The last segment before the end, or
/// before samples that were left out, is what is left, up to an eighth longer than wanted.
class SegmentReader
{
public:
    /// What is read; the markers are as many as the samples, I and Q are those of the same samples.
    struct Part
    {
        void clear();

        std::vector<double> samples;
        std::vector<double> markers;
        std::vector<double> i;
        std::vector<double> q; ///< none where the signal is not one of a pair
    };

    /// @param channel  of the source, which must outlive the reader.
    SegmentReader(SignalSource& source, const ChannelChoice& channel);

    /// Wanted length of segments of a source without frames, at least 1. Takes effect at the next
    /// segment.
    void setSegmentLength(std::size_t length);
    std::size_t segmentLength() const { return m_wanted; }

    /// Index of the next sample.
    std::int64_t position() const;
    /// Samples that are missing to the end of the open segment; 0 between segments.
    std::size_t openCount() const { return m_open; }

    /// Appends the next samples.
    /// @return samples appended; fewer than asked, also none, at the end, before samples that were
    ///         left out, and while the source has no more.
    std::size_t read(std::size_t count, Part& part);
    /// Goes to a sample, and on from there to the start of a frame where the source has frames. A
    /// new segment starts there. False, and nothing moves, when the source cannot.
    bool seek(std::int64_t position);

private:
    void fill(std::size_t count);
    void dropUsed();
    std::size_t available() const { return m_ahead.size() - m_used; }
    std::size_t nextSegmentLength();
    std::size_t quietestBoundary(std::size_t first, std::size_t last) const;

    SignalSource& m_source;
    ChannelChoice m_channel;
    std::size_t m_first; // of the constellation's pair
    bool m_hasQ;
    std::size_t m_wanted = 1;
    std::size_t m_open = 0;
    std::vector<double> m_ahead; // the channel's samples read from the source...
    std::vector<double> m_aheadI;
    std::vector<double> m_aheadQ;
    std::size_t m_used = 0;  // ...of which these were passed on
    std::int64_t m_next = 0; // position after them
    bool m_isBroken = false; // the source goes on elsewhere
    std::vector<double> m_block;
};
