// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

/// Where a signal is cut into segments, the traces of a time diagram.
///
/// A signal with frames is cut into its frames. Another one is cut near the wanted length, within
/// an eighth of it, where the signal is closest to zero: a diagram draws a line from a trace's
/// first sample to zero, and there it does not hide the signal. The last segment before the end, or
/// before samples that were left out, is what is left, up to an eighth longer than wanted.
class Segments
{
public:
    /// @param length  at least 1.
    void setLength(std::size_t length);
    std::size_t length() const { return m_length; }
    /// @param length  samples, at least 1, need not be whole: frame k starts at the first sample
    /// that
    ///                is not before k times this.
    void setFrameLength(std::optional<double> length) { m_frameLength = length; }
    std::optional<double> frameLength() const { return m_frameLength; }

    /// Samples that have to be known to end a segment that starts at a position.
    std::size_t neededCount(std::int64_t position) const;
    /// Of those, where the ones start among which the quietest one is looked for.
    std::size_t windowStart() const;
    /// Samples of the segment that starts at a position; 0: not known before more are known.
    /// @param known   samples from there on that are known, at most those needed.
    /// @param isAll   whether no more follow.
    /// @param window  those from windowStart on.
    std::size_t next(std::int64_t position, std::size_t known, bool isAll,
                     const std::vector<double>& window) const;

private:
    std::size_t tolerance() const { return m_length / 8; }

    std::size_t m_length = 1;
    std::optional<double> m_frameLength;
};
