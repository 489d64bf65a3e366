// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/feed/Counting.h"
#include "workbench/feed/Reception.h"
#include "workbench/feed/ViewFeeds.h"
#include "workbench/measure/Measurement.h"
#include "workbench/pipeline/Pipeline.h"

#include <QObject>

#include <functional>
#include <memory>
#include <optional>
#include <utility>

/// A signal, from its source to the values to which the views are bound: the samples that the
/// transport plays go to the time view, the eye, the constellation and the gate. When it stands
/// still, eye and constellation show exactly the gate.
///
/// GUI thread only.
class SignalFeed : public QObject
{
    Q_OBJECT
public:
    explicit SignalFeed(QObject* parent = nullptr);
    ~SignalFeed() override;

    /// Takes over a source, stops playing, shows the default span and waits for a signal.
    /// @param symbolRate  Bd, > 0; overrides what the source says.
    void open(std::unique_ptr<SignalSource> source, const ChannelChoice& channel,
              std::optional<double> symbolRate);
    bool isOpen() const { return m_pipeline != nullptr; }
    /// Facts about the source; meaningless until one was opened.
    const SignalFacts& source() const { return m_reception.source; }
    /// Format of the shown signal.
    const SignalFormat& format() const;
    /// Unit of the samples in the time view: "Hz" behind an FM demodulator, else empty.
    QString levelUnit() const { return m_reception.levelUnit(format()); }
    const TimeScale& scale() const { return m_views.time.scale(); }
    /// Runs work on the source while it is not read. There must be one.
    void changeSource(const std::function<void(SignalSource&)>& work)
    {
        m_pipeline->change(work);
        m_transport.goOn();
    }
    /// The current trouble with the source, if there is any.
    std::optional<Message> trouble() const
    {
        return m_pipeline ? m_pipeline->trouble() : std::nullopt;
    }
    bool hasFailed() const { return m_pipeline && m_pipeline->hasFailed(); }
    /// Whether a live source has ended.
    bool hasEnded() const { return source().isLive && m_transport.buffer().hasEnded(); }
    /// As in Pipeline.
    double leftOutPart() const { return m_pipeline ? m_pipeline->leftOutPart() : 0.0; }
    std::int64_t gapCount() const { return m_pipeline ? m_pipeline->gapCount() : 0; }

    /// Sets how this source and later ones are received, at the known symbol rate; the one in the
    /// settings is ignored. Settings that are invalid for a source are not used with it, nor are
    /// any with a source whose symbol clock is known.
    void setReceiver(const ReceiverSettings& settings);
    const ReceiverSettings& receiver() const { return m_reception.receiver; }
    /// Checks that the receiver can be used with the source.
    Result<void> checkReceiver() const { return m_reception.check(); }
    /// Reports of its stages for the shown samples: the newest report of each stage, preferably one
    /// in which it was locked.
    std::vector<StageReport> reports() const { return m_views.gate.reports(); }
    /// Sets the channel; one that the source lacks is ignored.
    void setChannel(const ChannelChoice& channel);
    const ChannelChoice& channel() const { return m_reception.channel; }
    /// Sets the symbol rate, Bd, that overrides that of the source, as in open; none: that of the
    /// source.
    void setSymbolRate(std::optional<double> symbolRate);
    /// The known symbol rate, Bd: from open or setSymbolRate, or that of the source.
    std::optional<double> symbolRate() const { return m_reception.symbolRate(); }
    bool isSymbolRateGiven() const { return m_reception.givenRate.has_value(); }

    Transport& transport() { return m_transport; }
    const Transport& transport() const { return m_transport; }
    EyeFeed& eye() { return m_views.eye; }
    const EyeFeed& eye() const { return m_views.eye; }
    TimeFeed& time() { return m_views.time; }
    const TimeFeed& time() const { return m_views.time; }
    IqFeed& iq() { return m_views.iq; }
    const IqFeed& iq() const { return m_views.iq; }
    const Gate& gate() const { return m_views.gate; }
    /// All symbols of the gate, while somebody counts them: those that are there when a sink is
    /// set, and all that are played from then on.
    void countWith(DensityFeed::Kind kind, DensityFeed::Sink sink)
    {
        m_counting.setSink(kind, std::move(sink), m_views.gate);
    }
    const DensityFeed& counted(DensityFeed::Kind kind) const { return m_counting.of(kind); }
    /// Forgets the symbols, and starts anew with what is there of the gate.
    void restartCounting()
    {
        m_counting.open(format(), m_views.eye.cut().bandwidth, source().isLive, isSeekable());
        emit countingRestarted();
    }
    /// Waits until all that was played is with those who count.
    void waitForCounted() { m_counting.wait(); }
    /// Fixes the gate between two times, s; samples of it that were already played count.
    void fixGate(double from, double to);
    /// Lets the gate follow the time view from now on.
    void releaseGate();

    /// Sets the shown time, s, also for other symbol rates; clamped to what can be shown.
    void setSpan(double seconds);
    /// Whether the time axis counts symbols, if they are known, or seconds. True at first.
    void setCountingSymbols(bool wanted)
    {
        m_views.time.setCountingSymbols(wanted);
        layOut();
    }
    double span() const { return m_views.time.span(); }
    /// Tells how far back the axis of the time view reaches, such as after a zoom; in its unit.
    void reachBack(double start);
    double segmentLength() const { return m_views.time.segmentLength(); }
    void setLevels(double lowest, double highest) { m_views.setLevels(lowest, highest); }
    /// Fits the levels to what is shown, and follows it. The owner of the views calls followLevels
    /// of the parts repeatedly.
    void fitLevels() { m_views.fitLevels(); }
    /// Whether samples were played since the source was opened or moved.
    bool hasPlayed() const { return m_hasPlayed; }
    /// Empties the views and shows the gate: the samples that were played stay.
    void showGate();
    /// Empties the views, as if no sample had come.
    void showNothing()
    {
        emit timeCleared();
        emit symbolsCleared();
        m_views.showNothing();
    }
    /// Whether its samples come again when they are gone to.
    bool isSeekable() const { return !source().isLive && m_transport.length(); }
    /// Of a signal that cannot, and stands still: shows the time about a place, s, of what was
    /// played while somebody counts. @return the time of the last sample that is shown; none where
    /// it is not kept any more.
    std::optional<double> showAround(double seconds);

signals:
    /// The time view, or eye and constellation, have to be emptied before the next samples.
    void timeCleared();
    void symbolsCleared();
    /// Some samples were played, also while the thread does nothing else.
    void played();
    /// Those who count have to forget all symbols, and to set their sinks again.
    void countingRestarted();

private:
    std::size_t play(std::size_t count);
    void jump();
    void reconfigure();
    void setScale();
    void layOut();
    void followBandwidth();

    ViewFeeds m_views;
    Reception m_reception;
    Counting m_counting;
    std::unique_ptr<Pipeline> m_pipeline;
    Transport m_transport;
    double m_periodLength = 0.0; // for which all parts are set up
    bool m_isSpanChosen = false; // otherwise the default
    bool m_hasPlayed = false;
};
