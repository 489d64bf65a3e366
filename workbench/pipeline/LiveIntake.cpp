// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/pipeline/LiveIntake.h"

#include <algorithm>
#include <thread>

namespace {

using Seconds = std::chrono::duration<double>;

constexpr double waitingSeconds = 0.5; // of signal that may wait
constexpr double maxWaiting = 4e6;     // samples of it
constexpr std::size_t roomPart = 4;    // of them: leaving out ends when fewer wait
constexpr double paceTolerance = 1.02; // by which a device's clock may be faster than ours
constexpr double burstSeconds = 0.25;  // of signal that may come at once

} // namespace

LiveIntake::LiveIntake(double sampleRate)
    : m_sampleRate(sampleRate)
    , m_limit(static_cast<std::size_t>(std::clamp(waitingSeconds * sampleRate, 1.0, maxWaiting)))
{}

void LiveIntake::start()
{
    m_start = Clock::now();
    m_seconds = 0.0;
    m_isLeavingOut = false;
    countAnew();
}

bool LiveIntake::hasRoom(std::size_t waiting)
{
    const bool wasLeavingOut = m_isLeavingOut;
    m_isLeavingOut = waiting >= (wasLeavingOut ? m_limit / roomPart + 1 : m_limit);
    m_gapCount += m_isLeavingOut && !wasLeavingOut ? 1 : 0;
    return !m_isLeavingOut;
}

void LiveIntake::count(std::size_t samples, bool isTaken, std::int64_t lost)
{
    m_gapCount += lost > 0 ? 1 : 0;
    m_leftOutCount += lost;
    (isTaken ? m_takenCount : m_leftOutCount) += static_cast<std::int64_t>(samples);
}

// Samples that come late are not made up for.
void LiveIntake::holdBack(std::size_t count, const std::atomic<bool>& isStopping)
{
    constexpr std::chrono::milliseconds slice(5);
    const Seconds elapsed = Clock::now() - m_start;
    m_seconds = std::max(m_seconds + static_cast<double>(count) / m_sampleRate,
                         paceTolerance * elapsed.count());
    const Seconds early(m_seconds / paceTolerance - elapsed.count() - burstSeconds);
    const Clock::time_point end = Clock::now() + std::chrono::duration_cast<Clock::duration>(early);
    while (!isStopping && Clock::now() < end)
        std::this_thread::sleep_for(std::min<Clock::duration>(slice, end - Clock::now()));
}

void LiveIntake::countAnew()
{
    m_gapCount = 0;
    m_takenCount = 0;
    m_leftOutCount = 0;
}

double LiveIntake::leftOutPart() const
{
    const auto leftOut = static_cast<double>(m_leftOutCount);
    return leftOut > 0.0 ? leftOut / (leftOut + static_cast<double>(m_takenCount)) : 0.0;
}
