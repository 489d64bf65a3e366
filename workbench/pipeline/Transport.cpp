// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/pipeline/Transport.h"

#include "workbench/pipeline/Pipeline.h"
#include "workbench/pipeline/Settling.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr std::int64_t maxCatchUp = 4; // periods
constexpr std::size_t noLimit = std::numeric_limits<std::size_t>::max();
constexpr double farthest = 1e18; // samples, whatever the time
constexpr auto longTime = std::chrono::hours(1);
constexpr auto liveTimeout = std::chrono::seconds(5); // when a live signal is played through

} // namespace

Transport::Transport(const Player& player, QObject* parent)
    : QObject(parent)
    , m_player(player)
    , m_pacer(rate, maxCatchUp)
    , m_left(noLimit)
{
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, [this] {
        advance(m_clock.elapsed());
        if (m_isPlaying)
            startTimer();
    });
}

void Transport::open(Pipeline* pipeline)
{
    pause();
    m_pipeline = pipeline;
    m_buffer.open(pipeline);
    m_position = 0;
    m_time = 0.0;
    m_credit = 0.0;
    m_isAtEnd = false;
    if (m_pipeline)
        m_pipeline->setDiscarding(m_pipeline->source().isLive);
    emit jumped();
}

void Transport::goOn()
{
    const bool wasAtEnd = m_isAtEnd;
    goTo(m_time);
    m_isAtEnd = wasAtEnd;
}

void Transport::reopen()
{
    goOn();
    emit jumped();
}

void Transport::play()
{
    if (!m_pipeline || m_isPlaying)
        return;
    const double halfSample = 0.5 / m_pipeline->format().sampleRate;
    if (m_isAtEnd || m_time > length().value_or(HUGE_VAL) - halfSample) {
        if (m_pipeline->source().isLive)
            return;
        m_credit = 0.0;
        goTo(0.0);
        emit jumped();
    }
    m_isPlaying = true;
    m_clock.start();
    m_pacer.start(0);
    m_pipeline->setDiscarding(false);
    startTimer();
    emit playingChanged(true);
}

void Transport::pause()
{
    if (!m_isPlaying)
        return;
    m_isPlaying = false;
    m_timer.stop();
    m_pipeline->setDiscarding(m_pipeline->source().isLive);
    emit playingChanged(false);
}

void Transport::seek(double seconds)
{
    if (!m_pipeline || m_pipeline->source().isLive || std::isnan(seconds))
        return;
    m_credit = 0.0;
    goTo(std::clamp(seconds, 0.0, length().value_or(farthest / m_pipeline->source().sampleRate)));
    emit jumped();
}

bool Transport::goTo(double seconds)
{
    m_buffer.clear(std::nullopt);
    m_isAtEnd = false;
    const SignalFacts& source = m_pipeline->source();
    const double start = seconds - settlingTime(source, m_pipeline->format());
    const double position = std::clamp(std::floor(start * source.sampleRate), 0.0, farthest);
    if (source.isLive || !m_pipeline->seek(static_cast<std::int64_t>(position)))
        return false;
    m_buffer.clear(seconds);
    m_time = seconds;
    m_position = std::llround(seconds * m_pipeline->format().sampleRate);
    return true;
}

void Transport::startOver(bool mayRepeat) { m_isAtEnd = !m_repeat || !mayRepeat || !goTo(0.0); }

std::optional<double> Transport::length() const
{
    return m_pipeline ? m_pipeline->length() : std::nullopt;
}

double Transport::periodLength() const
{
    const double speed = m_pipeline && m_pipeline->source().isLive ? 1.0 : m_speed;
    const double sampleRate = m_pipeline ? m_pipeline->format().sampleRate : 1.0;
    return std::min(sampleRate * speed / rate, maxPeriodLength);
}

void Transport::startTimer()
{
    const std::int64_t waitMs = m_pacer.nextMs() - m_clock.elapsed();
    m_timer.start(static_cast<int>(std::max<std::int64_t>(waitMs, 0)));
}

void Transport::advance(std::int64_t elapsedMs)
{
    if (!m_isPlaying)
        return;
    m_credit += static_cast<double>(m_pacer.takeDue(elapsedMs)) * periodLength();
    if (m_pipeline->source().isLive) // accumulated samples are taken little by little
        m_credit += std::max((static_cast<double>(m_buffer.waitingCount()) - m_backlog) / 8.0, 0.0);
    const double whole = std::floor(m_credit);
    m_credit -= static_cast<double>(m_player(static_cast<std::size_t>(whole)));
    m_credit = std::min(m_credit, std::max(static_cast<double>(maxCatchUp) * periodLength(), 1.0));
    if (m_isAtEnd)
        pause();
}

void Transport::playThrough(double seconds)
{
    if (!m_pipeline)
        return;
    const bool isLive = m_pipeline->source().isLive;
    const bool repeat = std::exchange(m_repeat, false);
    const auto timeout =
        std::exchange(m_timeout, isLive ? std::chrono::milliseconds(liveTimeout) : longTime);
    m_pipeline->setDiscarding(false);
    // What reaches the end of a recording ends there, however samples were rounded.
    const double sampleRate = m_pipeline->format().sampleRate;
    const bool isToEnd = m_time + seconds > length().value_or(HUGE_VAL) - 0.5 / sampleRate;
    const double wanted = isToEnd ? farthest : std::min(seconds * sampleRate, farthest);
    m_left = static_cast<std::size_t>(std::max(std::llround(wanted), 0LL));
    const auto period = static_cast<std::size_t>(std::ceil(periodLength()));
    while (m_left > 0 && !m_isAtEnd && m_player(std::min(m_left, period)) > 0) {
    }
    m_left = noLimit;
    m_timeout = timeout;
    m_repeat = repeat;
    m_pipeline->setDiscarding(isLive && !m_isPlaying);
    emit playedThrough();
}

/// Does not wait for the samples of a live signal, unless it is played through.
std::chrono::milliseconds Transport::timeout() const
{
    const bool isWaiting = !m_pipeline->source().isLive || m_left != noLimit;
    return isWaiting ? m_timeout : std::chrono::milliseconds(0);
}

BlockPart Transport::take(std::size_t most)
{
    const BlockPart part = m_buffer.take(std::min(most, m_left), timeout());
    if (part.count == 0)
        return part;
    m_position = part.end();
    m_time = part.block->time +
             static_cast<double>(part.first + part.count) / m_pipeline->format().sampleRate;
    if (m_left != noLimit)
        m_left -= part.count;
    return part;
}

BlockBuffer::Ahead Transport::ahead(std::size_t count)
{
    BlockBuffer::Ahead ahead = m_buffer.ahead(std::min(count, m_left), timeout());
    ahead.isAll = ahead.isAll || ahead.count == m_left;
    return ahead;
}
