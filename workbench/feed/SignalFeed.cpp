// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/feed/SignalFeed.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr std::int64_t maxCatchUp = 4;

} // namespace

SignalFeed::SignalFeed(QObject* parent)
    : QObject(parent)
    , m_pacer(notificationRate, maxCatchUp)
{
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, [this] {
        advance(m_clock.elapsed());
        if (m_playing)
            startTimer();
    });
}

SignalFeed::~SignalFeed() = default;

void SignalFeed::open(std::unique_ptr<SignalSource> source, int channel,
                      std::optional<double> symbolRate)
{
    pause();
    m_reader.reset();
    m_source = std::move(source);
    m_channel = channel;
    m_dropCount = 0;
    m_watching = true;
    scaleFor(symbolRate);
    openReader(0);
    setSpan(m_scale.defaultSpan);
}

void SignalFeed::scaleFor(std::optional<double> symbolRate)
{
    m_scale = TimeScale::of(*m_source, symbolRate);
    m_values.setBaudrate(m_scale.samplesPerUnit);
    m_eye.open(*m_source, symbolRate);
    m_iq.open(*m_source, symbolRate);
}

void SignalFeed::setSymbolRate(std::optional<double> symbolRate)
{
    scaleFor(symbolRate);
    setSpan(m_span);
}

void SignalFeed::openReader(std::int64_t position)
{
    m_reader = std::make_unique<SegmentReader>(*m_source, m_channel);
    m_reader->seek(position);
    m_credit = 0.0;
    m_atEnd = false;
    chooseSegmentLength();
}

void SignalFeed::play()
{
    if (!m_source || m_playing)
        return;
    if (m_atEnd)
        rewind();
    m_playing = true;
    m_clock.start();
    m_pacer.start(0);
    startTimer();
    emit playingChanged(true);
}

void SignalFeed::pause()
{
    if (!m_playing)
        return;
    m_playing = false;
    m_timer.stop();
    emit playingChanged(false);
}

void SignalFeed::rewind()
{
    if (m_source)
        openReader(0);
}

void SignalFeed::startTimer()
{
    const std::int64_t waitMs = m_pacer.nextMs() - m_clock.elapsed();
    m_timer.start(static_cast<int>(std::max<std::int64_t>(waitMs, 0)));
}

void SignalFeed::advance(std::int64_t elapsedMs)
{
    if (!m_playing)
        return;
    const Pacer::Due due = m_pacer.takeDue(elapsedMs);
    if (due.dropped > 0)
        skip(due.dropped);
    m_credit += static_cast<double>(due.delivered) * samplesPerPeriod();
    const double whole = std::floor(m_credit);
    m_credit -= whole;
    deliver(static_cast<std::size_t>(whole));
    if (m_atEnd) {
        m_eye.finish();
        pause();
    }
}

void SignalFeed::playThrough(double seconds)
{
    if (!m_source)
        return;
    const bool repeat = std::exchange(m_repeat, false);
    const auto block = static_cast<std::size_t>(std::ceil(samplesPerPeriod()));
    auto left = static_cast<std::size_t>(std::ceil(seconds * m_scale.sampleRate));
    m_reader->setSegmentLength(std::min(m_reader->segmentLength(), left)); // few end late
    while (left > 0 && !m_atEnd) {
        left -= std::min(left, deliver(std::min(left, block)));
        m_eye.settle();
    }
    deliver(m_reader->openCount());
    m_eye.finish();
    chooseSegmentLength();
    m_repeat = repeat;
}

double SignalFeed::samplesPerPeriod() const
{
    return std::min(m_scale.sampleRate * m_speed / notificationRate, TimeScale::maxBlockLength);
}

void SignalFeed::skip(std::int64_t periods)
{
    const auto distance =
        static_cast<std::int64_t>(static_cast<double>(periods) * samplesPerPeriod());
    std::int64_t target = position() + distance;
    if (const auto count = m_source->sampleCount(); count && target >= *count)
        target = m_repeat ? target % *count : *count;
    if (m_reader->seek(target))
        m_dropCount += periods;
}

/// Delivers the next samples in one notification; fewer, and then at the end, when the source has
/// no more.
std::size_t SignalFeed::deliver(std::size_t count)
{
    m_samples.clear();
    m_markers.clear();
    bool isFresh = false; // just started over: another end right away would go on for ever
    while (m_samples.size() < count && !m_atEnd) {
        const std::size_t known = m_samples.size();
        readOn(count - known);
        const std::size_t got = m_samples.size() - known;
        if (m_samples.size() == count)
            break;
        m_atEnd = !m_repeat || (isFresh && got == 0) || !m_reader->seek(0);
        isFresh = true;
    }
    if (m_watching && hasSignal()) {
        m_watching = false;
        emit signalSeen();
    }
    if (!m_samples.empty())
        m_values.notify(m_samples, m_markers);
    m_iq.notify();
    return m_samples.size();
}

/// Reads the next samples; eye and constellation take them, too.
void SignalFeed::readOn(std::size_t count)
{
    const std::int64_t position = m_reader->position();
    m_block.clear();
    m_partner.clear();
    if (m_reader->read(count, m_block, m_markers, m_partner) == 0)
        return;
    m_samples.insert(m_samples.end(), m_block.begin(), m_block.end());
    m_eye.take(position, m_block);
    if (m_reader->isSecond())
        m_iq.take(position, m_partner, m_block);
    else
        m_iq.take(position, m_block, m_partner);
}

/// Whether the next notification has two finite samples that differ.
bool SignalFeed::hasSignal() const
{
    const double* first = nullptr;
    for (const double& sample : m_samples) {
        if (std::isfinite(sample) && first && sample != *first)
            return true;
        if (std::isfinite(sample))
            first = &sample;
    }
    return false;
}

void SignalFeed::setSpeed(double speed)
{
    m_speed = std::clamp(speed, minSpeed, maxSpeed);
    chooseSegmentLength();
}

void SignalFeed::setChannel(int channel)
{
    m_channel = channel;
    m_eye.restart();
    if (m_source)
        openReader(position());
}

void SignalFeed::setLevels(double lowest, double highest)
{
    m_values.setY(lowest, highest);
    m_eye.setLevels(lowest, highest);
    m_iq.setLevel(std::max(std::abs(lowest), std::abs(highest)));
}

void SignalFeed::setSpan(double seconds)
{
    m_span = std::clamp(seconds, m_scale.minSpan, m_scale.maxSpan);
    m_values.setX(-m_scale.span(m_span), 0.0);
    chooseSegmentLength();
}

double SignalFeed::segmentLength() const
{
    const auto frameLength = m_source ? m_source->frameLength() : std::nullopt;
    return frameLength ? *frameLength : m_segmentLength;
}

// A view shows whole segments: one a period scrolls smoothly; longer ones where the time shown
// would take too many of them.
void SignalFeed::chooseSegmentLength()
{
    const double forSpan = m_span * m_scale.sampleRate / TimeScale::maxSegmentCount;
    m_segmentLength = std::ceil(std::max(samplesPerPeriod(), forSpan));
    if (m_reader)
        m_reader->setSegmentLength(static_cast<std::size_t>(m_segmentLength));
}
