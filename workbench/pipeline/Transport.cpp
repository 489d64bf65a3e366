// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/pipeline/Transport.h"

#include "workbench/pipeline/Pipeline.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr std::int64_t maxCatchUp = 4; // periods
constexpr std::size_t noLimit = std::numeric_limits<std::size_t>::max();
constexpr double farthest = 1e18; // samples, whatever the time
// Symbols received before a place that is gone to: filters, timing and carrier settle in them.
constexpr double settlingSymbols = 4096.0;
constexpr double sameSample = 1e-3; // samples: what times are rounded by
constexpr auto longTime = std::chrono::hours(1);
constexpr auto livePatience = std::chrono::seconds(5); // of who plays a live signal through

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

Transport::~Transport() = default;

void Transport::open(Pipeline* pipeline)
{
    pause();
    m_pipeline = pipeline;
    m_blocks.clear();
    m_used = 0;
    m_position = 0;
    m_time = 0.0;
    m_isArriving = false;
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
    if (m_isAtEnd) {
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
    m_blocks.clear();
    m_used = 0;
    m_isAtEnd = false;
    const SourceFacts& source = m_pipeline->source();
    const SignalFormat& format = m_pipeline->format();
    const double settling =
        source.firstSymbol ? 0.0 : settlingSymbols * format.samplesPerSymbol / format.sampleRate;
    const double position =
        std::clamp(std::floor((seconds - settling) * source.sampleRate), 0.0, farthest);
    if (source.isLive || !m_pipeline->seek(static_cast<std::int64_t>(position)))
        return false;
    m_time = seconds;
    m_isArriving = true;
    m_position = std::llround(seconds * m_pipeline->format().sampleRate);
    return true;
}

void Transport::startOver(bool mayRepeat) { m_isAtEnd = !m_repeat || !mayRepeat || !goTo(0.0); }

std::optional<double> Transport::length() const
{
    const auto count = m_pipeline ? m_pipeline->sampleCount() : std::nullopt;
    if (!count)
        return std::nullopt;
    return static_cast<double>(*count) / m_pipeline->source().sampleRate;
}

void Transport::setSpeed(double speed)
{
    m_speed = speed == fastest ? fastest : std::clamp(speed, minSpeed, maxSpeed);
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
    if (m_pipeline->source().isLive) // what has piled up is taken little by little
        m_credit += std::max((static_cast<double>(waitingCount()) - m_backlog) / 8.0, 0.0);
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
    const auto patience =
        std::exchange(m_patience, isLive ? std::chrono::milliseconds(livePatience) : longTime);
    m_pipeline->setDiscarding(false);
    const double wanted = std::min(seconds * m_pipeline->format().sampleRate, farthest);
    m_left = static_cast<std::size_t>(std::max(std::llround(wanted), 0LL));
    const auto period = static_cast<std::size_t>(std::ceil(periodLength()));
    while (m_left > 0 && !m_isAtEnd && m_player(std::min(m_left, period)) > 0) {
    }
    m_left = noLimit;
    m_patience = patience;
    m_repeat = repeat;
    m_pipeline->setDiscarding(isLive && !m_isPlaying);
    emit playedThrough();
}

/// One more block; false while there is none.
bool Transport::fetch()
{
    const auto patience = m_pipeline->source().isLive && m_left == noLimit
                              ? std::chrono::milliseconds(0)
                              : m_patience;
    while (SignalBlockPtr block = m_pipeline->take(patience)) {
        if (m_isArriving) { // at the first sample that is not before the time gone to
            const double sampleRate = m_pipeline->format().sampleRate;
            const double before = std::ceil((m_time - block->time) * sampleRate - sameSample);
            if (before >= static_cast<double>(block->count()))
                continue;
            m_used = static_cast<std::size_t>(std::max(before, 0.0));
            m_isArriving = false;
        }
        m_blocks.push_back(std::move(block));
        return true;
    }
    return false;
}

BlockPart Transport::take(std::size_t most)
{
    if (m_blocks.empty() && !fetch())
        return {};
    const SignalBlockPtr block = m_blocks.front();
    const BlockPart part{block, m_used, std::min({block->count() - m_used, most, m_left})};
    m_used += part.count;
    m_position = part.position() + static_cast<std::int64_t>(part.count);
    m_time = block->time + static_cast<double>(m_used) / m_pipeline->format().sampleRate;
    if (m_left != noLimit)
        m_left -= part.count;
    if (m_used == block->count()) {
        m_blocks.pop_front();
        m_used = 0;
    }
    return part;
}

Transport::Ahead Transport::ahead(std::size_t count)
{
    const bool isLimited = m_left <= count;
    count = std::min(count, m_left);
    std::size_t known = 0;
    for (std::size_t k = 0; known < count; ++k) {
        if (k == m_blocks.size() && !fetch())
            return {known, m_pipeline->hasEnded()};
        const SignalBlock& block = *m_blocks[k];
        if (k > 0 && (block.isAfterGap || block.position != m_blocks[k - 1]->end()))
            return {known, true};
        known += block.count() - (k == 0 ? m_used : 0);
    }
    return {std::min(known, count), isLimited};
}

void Transport::copyAhead(std::size_t first, std::size_t count, std::vector<double>& samples) const
{
    first += m_used;
    for (const SignalBlockPtr& block : m_blocks) {
        const std::size_t here = std::min(count, block->count() - std::min(first, block->count()));
        const auto start =
            block->samples.begin() + static_cast<std::ptrdiff_t>(std::min(first, block->count()));
        samples.insert(samples.end(), start, start + static_cast<std::ptrdiff_t>(here));
        count -= here;
        first -= std::min(first, block->count());
    }
}

bool Transport::hasEnded() const { return m_blocks.empty() && m_pipeline->hasEnded(); }

std::size_t Transport::waitingCount() const
{
    std::size_t count = m_pipeline->waitingCount();
    for (const SignalBlockPtr& block : m_blocks)
        count += block->count();
    return count - m_used;
}
