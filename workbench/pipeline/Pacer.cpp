// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/pipeline/Pacer.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double msPerSecond = 1000.0;

} // namespace

Pacer::Pacer(double rate, std::int64_t maxCatchUp)
    : m_rate(rate)
    , m_maxCatchUp(maxCatchUp)
{}

void Pacer::start(std::int64_t nowMs)
{
    m_startMs = nowMs;
    m_taken = 0;
}

// Counts periods from the start, so that rounding to milliseconds does not add up.
std::int64_t Pacer::nextMs() const
{
    return m_startMs + std::llround(static_cast<double>(m_taken + 1) * msPerSecond / m_rate);
}

std::int64_t Pacer::takeDue(std::int64_t nowMs)
{
    // Half a millisecond early counts, because nextMs rounds.
    const double elapsed = static_cast<double>(nowMs - m_startMs) + 0.5;
    const auto ended = static_cast<std::int64_t>(elapsed * m_rate / msPerSecond);
    const std::int64_t due = std::max<std::int64_t>(ended - m_taken, 0);
    m_taken += due;
    return std::min(due, m_maxCatchUp);
}
