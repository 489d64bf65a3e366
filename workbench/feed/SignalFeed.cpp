// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/feed/SignalFeed.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr double queuedPeriods = 4.0; // largest number that is due at once
constexpr double keptSymbols = 1.1e5; // of a live signal: those that who counts keeps

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

QString SignalFeed::levelUnit() const
{
    const bool isFm = m_reception.receiver.isOn && format().isDemodulated &&
                      m_reception.receiver.demodulation == ReceiverSettings::Demodulation::Fm;
    return isFm ? QStringLiteral("Hz") : QString();
}

void SignalFeed::changeSource(const std::function<void(SignalSource&)>& work)
{
    m_pipeline->change(work);
    m_transport.goOn();
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
    // Frames are known only for signals that no receiver resamples.
    const bool isAsItIs = format().sampleRate == m_reception.source.sampleRate;
    const auto frameLength = isAsItIs ? m_reception.source.frameLength : std::nullopt;
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

void SignalFeed::setCountingSymbols(bool wanted)
{
    m_views.time.setCountingSymbols(wanted);
    layOut();
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
    const double symbols = keptSymbols * std::max(format().samplesPerSymbol, 1.0);
    const double shown = m_views.time.span() * format().sampleRate;
    m_history.follow(static_cast<std::size_t>(symbols + shown), std::nullopt);
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
            takeCounted(part);
            done += part.count;
            isFresh = false;
        } else if (!m_transport.buffer().hasEnded()) {
            break;
        } else {
            m_traces.finish();
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
    m_history.clear();
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

void SignalFeed::showNothing()
{
    emit timeCleared();
    emit symbolsCleared();
    m_views.showNothing();
}

void SignalFeed::countWith(DensityFeed::Kind kind, DensityFeed::Sink sink)
{
    DensityFeed& feed = kind == DensityFeed::Kind::Traces ? m_traces : m_points;
    feed.setSink(std::move(sink));
    const bool isNew = m_history.isEmpty();
    for (const BlockPart& part : m_views.gate.parts()) {
        feed.take(part);
        if (isNew && !isSeekable())
            m_history.take(part);
    }
    if (!m_traces.isOn() && !m_points.isOn())
        m_history.clear();
}

void SignalFeed::waitForCounted()
{
    m_traces.wait();
    m_points.wait();
}

void SignalFeed::restartCounting()
{
    m_traces.open(format(), m_views.eye.cut().bandwidth, source().isLive);
    m_points.open(format(), 0.0, source().isLive);
    m_history.clear();
    emit countingRestarted();
}

/// Traces of another low-pass look different.
void SignalFeed::followBandwidth()
{
    if (m_traces.isOn() && m_traces.bandwidth() != m_views.eye.cut().bandwidth)
        restartCounting();
}

void SignalFeed::takeCounted(const BlockPart& part)
{
    if (!m_traces.isOn() && !m_points.isOn())
        return;
    const BlockPart counted = m_views.gate.within(part);
    m_traces.take(counted);
    m_points.take(counted);
    if (!isSeekable())
        m_history.take(part);
}

std::optional<double> SignalFeed::showAround(double seconds)
{
    const double rate = format().sampleRate;
    const double half = 0.5 * m_views.time.span();
    std::vector<double> samples;
    std::optional<std::int64_t> position;
    double end = 0.0;
    for (const BlockPart& part : m_history.parts()) {
        const double time = part.block->time + static_cast<double>(part.first) / rate;
        const auto indexOf = [&](double place) {
            return static_cast<std::size_t>(
                std::clamp(std::ceil((place - time) * rate), 0.0, static_cast<double>(part.count)));
        };
        const std::size_t first = indexOf(seconds - half), last = indexOf(seconds + half);
        if (first == last)
            continue;
        if (!position)
            position = part.position() + static_cast<std::int64_t>(first);
        const double* from = &part.block->samples[part.first];
        samples.insert(samples.end(), from + first, from + last);
        end = time + static_cast<double>(last) / rate;
    }
    if (!position || end < seconds)
        return std::nullopt;
    emit timeCleared();
    m_views.time.show(*position, samples);
    return end;
}
