// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/pipeline/Transport.h"

#include <deque>
#include <vector>

/// The stretch of signal that figures, pictures and exports are of: the newest samples that were
/// played, as many as the time view shows, or all between two times. Keeps what was played of it.
class Gate
{
public:
    /// Samples that are kept at most, the newest.
    static constexpr std::size_t maxSampleCount = std::size_t{1} << 22;

    /// Starts anew with a signal, following it.
    /// @param sampleRate  Hz, of the signal.
    void open(double sampleRate);
    /// As open, but stays fixed where it is.
    void reopen(double sampleRate);
    /// The newest samples from now on.
    /// @param length  of the whole signal, samples; none where it is not known.
    void follow(std::size_t count, std::optional<std::int64_t> length);
    /// Keeps the samples between two times, s, from now on.
    void fix(double from, double to);
    bool isFixed() const { return m_isFixed; }
    double fixedFrom() const { return m_from; }
    double fixedTo() const { return m_to; }

    /// Takes what is played. Where the gate is fixed, what is within and was not taken before.
    /// @return what was taken of it.
    BlockPart take(const BlockPart& part);
    /// Forgets what was played.
    void clear();

    bool isEmpty() const { return m_parts.empty(); }
    std::size_t sampleCount() const { return m_count; }
    /// The samples, in the order in which they were played.
    const std::deque<BlockPart>& parts() const { return m_parts; }
    /// The same in the order of time: what is not from begin to end in them does not count.
    std::vector<SignalBlockPtr> blocks() const;
    /// s, of the signal.
    double begin() const;
    double end() const;
    std::vector<double> samples() const;
    /// How the receiver's stages did while the samples came through: the newest report of each, or
    /// the newest of one that was locked.
    std::vector<StageReport> reports() const;

    /// What of a part is within it, taken or not.
    BlockPart within(const BlockPart& part) const;

private:
    void append(const BlockPart& part);
    void trim();

    double m_sampleRate = 1.0;
    bool m_isFixed = false;
    double m_from = 0.0; // where it is fixed
    double m_to = 0.0;
    std::size_t m_most = maxSampleCount; // samples
    std::deque<BlockPart> m_parts;
    std::size_t m_count = 0; // samples of them
};
