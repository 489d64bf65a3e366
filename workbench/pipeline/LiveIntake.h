// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>

/// Decides which samples of a live signal are taken: no faster than its sample rate, and none while
/// too many wait to be received. Counts the samples that were left out or lost.
///
/// Counts may be read and reset from any thread; all other operations belong to the thread that
/// reads.
class LiveIntake
{
public:
    /// @param sampleRate  Hz.
    explicit LiveIntake(double sampleRate);

    /// Number of waiting samples from which on no more are taken.
    std::size_t limit() const { return m_limit; }
    /// Starts anew.
    void start();
    /// Whether to take the next samples. Once too many wait, samples are left out until most of the
    /// waiting ones were received: a few long gaps cost fewer symbols than many short ones, because
    /// the loops have to lock again after each.
    bool hasRoom(std::size_t waiting);
    /// Counts samples that were taken or left out, and those that were lost just before them.
    void count(std::size_t samples, bool isTaken, std::int64_t lost);
    /// Waits if samples came faster than their rate, for example from a file through a pipe.
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
    double m_seconds = 0.0; // of signal since then, allowing for a fast clock
    bool m_isLeavingOut = false;
    std::atomic<std::int64_t> m_gapCount = 0;
    std::atomic<std::int64_t> m_takenCount = 0;
    std::atomic<std::int64_t> m_leftOutCount = 0;
};
