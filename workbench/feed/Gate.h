// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/pipeline/Transport.h"

#include <deque>
#include <vector>

/// The stretch of signal of figures, pictures and exports: the newest samples that were played, as
/// many as the time view shows, or all samples between two times. Keeps the samples that were
/// played.
class Gate
{
public:
    /// Largest number of samples that are kept; older ones are dropped.
    static constexpr std::size_t maxSampleCount = std::size_t{1} << 22;

    /// Starts with a new signal, and follows it.
    /// @param sampleRate  Hz, of the signal.
    void open(double sampleRate);
    /// Like open, but a fixed gate stays fixed.
    void reopen(double sampleRate);
    /// Follows the newest samples from now on.
    /// @param length  of the whole signal, samples; none when it is not known.
    void follow(std::size_t count, std::optional<std::int64_t> length);
    /// Keeps the samples between two times, s, from now on.
    void fix(double from, double to);
    bool isFixed() const { return m_isFixed; }
    double fixedFrom() const { return m_from; }
    double fixedTo() const { return m_to; }

    /// Takes samples that are played. A fixed gate takes only samples within it that it has not
    /// taken before.
    /// @return the samples that were taken.
    BlockPart take(const BlockPart& part);
    /// Drops all samples.
    void clear();

    bool isEmpty() const { return m_parts.empty(); }
    std::size_t sampleCount() const { return m_count; }
    /// The samples, in the order in which they were played.
    const std::deque<BlockPart>& parts() const { return m_parts; }
    /// The samples in the order of time, in blocks that may reach beyond begin and end.
    std::vector<SignalBlockPtr> blocks() const;
    /// s, of the signal.
    double begin() const;
    double end() const;
    std::vector<double> samples() const;
    /// Reports of the receiver's stages for these samples: the newest report of each stage,
    /// preferably one in which it was locked.
    std::vector<StageReport> reports() const;

    /// What of a part is within it, taken or not.
    BlockPart within(const BlockPart& part) const;
    /// Whether what follows a part is not within it.
    bool endsWith(const BlockPart& part) const;

private:
    double indexOf(double time, const SignalBlock& block) const;
    void append(const BlockPart& part);
    void trim();

    double m_sampleRate = 1.0;
    bool m_isFixed = false;
    double m_from = 0.0; // s, when fixed
    double m_to = 0.0;
    std::size_t m_most = maxSampleCount; // samples
    std::deque<BlockPart> m_parts;
    std::size_t m_count = 0; // samples of them
};
