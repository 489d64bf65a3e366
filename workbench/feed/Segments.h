// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

/// Where a signal is cut into segments, the traces of a time diagram.
///
/// A signal with frames is cut into its frames. Any other is cut within an eighth of the wanted
/// length where it is closest to zero: a diagram draws a line from the first sample of a trace to
/// zero, which hides least there. The last segment before the end, or before lost samples, is the
/// rest, up to an eighth longer than wanted.
class Segments
{
public:
    /// @param length  at least 1.
    void setLength(std::size_t length);
    std::size_t length() const { return m_length; }
    /// @param length  samples, at least 1, with a fraction: frame k starts at the first sample at
    ///                or after k times this.
    void setFrameLength(std::optional<double> length) { m_frameLength = length; }
    std::optional<double> frameLength() const { return m_frameLength; }

    /// Number of samples that have to be known to end a segment that starts at a position.
    std::size_t neededCount(std::int64_t position) const;
    /// Index at which the window starts in which the quietest sample is searched for.
    std::size_t windowStart() const;
    /// Number of samples of the segment that starts at a position; 0 when more samples have to be
    /// known.
    /// @param known   number of known samples from there on, at most those needed.
    /// @param isAll   whether no more follow.
    /// @param window  the samples from windowStart on.
    std::size_t next(std::int64_t position, std::size_t known, bool isAll,
                     const std::vector<double>& window) const;

private:
    std::size_t tolerance() const { return m_length / 8; }

    std::size_t m_length = 1;
    std::optional<double> m_frameLength;
};
