// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/feed/SignalFeed.h"

#include <algorithm>
#include <utility>

namespace {

constexpr double queuedPeriods = 4.0; // largest number that is due at once

} // namespace

SignalFeed::SignalFeed(QObject* parent)
    : QObject(parent)
    , m_transport([this](std::size_t count) { return play(count); })
{
    connect(&m_transport, &Transport::jumped, this, &SignalFeed::jump);
    connect(&m_transport, &Transport::playedThrough, this, &SignalFeed::showGate);
}

SignalFeed::~SignalFeed() { m_transport.disconnect(this); }

void SignalFeed::open(std::unique_ptr<SignalSource> source, const ChannelChoice& channel,
                      std::optional<double> symbolRate)
{
    m_transport.open(nullptr);
    m_reception = {source->facts(), channel, symbolRate, m_reception.receiver};
    m_isSpanChosen = false;
    m_pipeline.reset();
    m_pipeline = std::make_unique<Pipeline>(std::move(source), channel, m_reception.used());
    m_views.gate.open(format().sampleRate);
    m_transport.open(m_pipeline.get());
    setScale();
    layOut();
    restartCounting();
}

const SignalFormat& SignalFeed::format() const
{
    static const SignalFormat none;
    return m_pipeline ? m_pipeline->format() : none;
}

/// Receives with new settings, and continues where it was.
void SignalFeed::reconfigure()
{
    if (!m_pipeline)
        return;
    m_pipeline->configure(m_reception.channel, m_reception.used());
    m_views.gate.reopen(format().sampleRate);
    m_transport.reopen();
    setScale();
    layOut();
    restartCounting();
}

void SignalFeed::setReceiver(const ReceiverSettings& settings)
{
    if (m_reception.receiver == settings)
        return;
    m_reception.receiver = settings;
    reconfigure();
    if (m_pipeline)
        showNothing();
}

void SignalFeed::setChannel(const ChannelChoice& channel)
{
    if (m_pipeline && !m_reception.hasChannel(channel))
        return;
    m_reception.channel = channel;
    reconfigure();
}

void SignalFeed::setSymbolRate(std::optional<double> symbolRate)
{
    m_reception.givenRate = symbolRate;
    reconfigure();
    emit symbolsCleared();
    m_views.eye.show({});
    m_views.iq.show({});
}

void SignalFeed::setScale()
{
    const auto frameLength = m_reception.frameLength(format());
    m_views.open(
        format(),
        TimeScale::of(format().sampleRate, m_transport.length(), frameLength, symbolRate()),
        frameLength);
}

void SignalFeed::setSpan(double seconds)
{
    m_isSpanChosen = true;
    m_views.time.setSpan(seconds, m_transport.periodLength());
    layOut();
}

void SignalFeed::reachBack(double start)
{
    if (!m_views.time.reachBack(start))
        return;
    emit timeCleared();
    m_views.time.writeAgain();
}

void SignalFeed::fixGate(double from, double to)
{
    m_views.gate.fix(std::min(from, to), std::max(from, to));
    layOut();
    restartCounting();
}

void SignalFeed::releaseGate()
{
    m_views.gate.open(format().sampleRate);
    layOut();
    restartCounting();
}

/// Tells all dependent parts what is shown, and how much comes at a time.
void SignalFeed::layOut()
{
    m_periodLength = m_transport.periodLength();
    m_views.time.setSpan(m_isSpanChosen ? m_views.time.span() : scale().defaultSpan,
                         m_periodLength);
    if (!m_pipeline)
        return;
    m_views.layOut(format().sampleRate, m_transport.length());
    m_counting.follow(format(), m_views.time.span());
    m_pipeline->setQueueLength(static_cast<std::size_t>(queuedPeriods * m_periodLength));
    m_transport.setBacklog(1.2 * m_views.time.segmentLength() + 2.0 * m_periodLength);
}

/// Plays the next samples in one notification; fewer at the end of the source, or when they come
/// later.
std::size_t SignalFeed::play(std::size_t count)
{
    if (m_periodLength != m_transport.periodLength())
        layOut();
    followBandwidth();
    std::size_t done = 0;
    bool isFresh = false; // just started over: another end at once would loop for ever
    while (done < count && !m_transport.isAtEnd()) {
        const std::size_t open = m_views.time.openCount(m_transport);
        const BlockPart part =
            open > 0 ? m_transport.take(std::min(open, count - done)) : BlockPart();
        if (part.count > 0) {
            m_hasPlayed = true;
            m_views.take(part);
            m_counting.take(part, m_views.gate);
            done += part.count;
            isFresh = false;
        } else if (!m_transport.buffer().hasEnded()) {
            break;
        } else {
            m_counting.finish();
            m_transport.startOver(!isFresh);
            m_views.time.restart();
            isFresh = true;
        }
    }
    m_views.notify();
    emit played();
    return done;
}

void SignalFeed::jump()
{
    m_counting.jump();
    m_views.jump();
    m_hasPlayed = false;
}

void SignalFeed::showGate()
{
    followBandwidth();
    if (m_views.gate.isEmpty())
        return;
    if (m_views.showsTimeOfGate(format().sampleRate))
        emit timeCleared();
    emit symbolsCleared();
    m_views.showGate(format().sampleRate);
}

/// Traces of another low-pass look different.
void SignalFeed::followBandwidth()
{
    if (m_counting.isOfOtherBandwidth(m_views.eye.cut().bandwidth))
        restartCounting();
}

std::optional<double> SignalFeed::showAround(double seconds)
{
    const auto stretch = m_counting.around(seconds, m_views.time.span());
    if (!stretch)
        return std::nullopt;
    emit timeCleared();
    m_views.time.show(stretch->position, stretch->samples);
    return stretch->end;
}
