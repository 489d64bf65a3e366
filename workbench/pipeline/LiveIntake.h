// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>

/// How the samples of a live signal are taken: no faster than its sample rate, and none while too
/// many of them wait to be received. Counts what was left out or lost.
///
/// Counts may be read, and counted anew, from any thread; all else is for the one that reads.
class LiveIntake
{
public:
    /// @param sampleRate  Hz.
    explicit LiveIntake(double sampleRate);

    /// Samples from which on too many wait.
    std::size_t limit() const { return m_limit; }
    /// Starts anew.
    void start();
    /// Whether the next samples are to be taken. Once they are not, they are left out until most
    /// of what waits was received: a few long gaps cost fewer symbols than many short ones, as the
    /// loops have to be found anew after each.
    bool hasRoom(std::size_t waiting);
    /// Counts samples that were taken or left out, and those that were lost just before them.
    void count(std::size_t samples, bool isTaken, std::int64_t lost);
    /// Waits where samples came faster than their rate, such as from a file through a pipe.
    /// @param count  of samples since the last call.
    /// @param isStopping  ends the wait.
    void holdBack(std::size_t count, const std::atomic<bool>& isStopping);

    void countAnew();
    std::int64_t gapCount() const { return m_gapCount; }
    /// Part of the samples that was left out or lost, 0 to 1.
    double leftOutPart() const;

private:
    using Clock = std::chrono::steady_clock;

    const double m_sampleRate;
    const std::size_t m_limit;
    Clock::time_point m_start = Clock::now();
    double m_seconds = 0.0; // of signal since then, as far as its clock may be fast
    bool m_isLeavingOut = false;
    std::atomic<std::int64_t> m_gapCount = 0;
    std::atomic<std::int64_t> m_takenCount = 0;
    std::atomic<std::int64_t> m_leftOutCount = 0;
};
