// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/feed/DensityFeed.h"
#include "workbench/feed/Reception.h"
#include "workbench/feed/ViewFeeds.h"
#include "workbench/measure/Measurement.h"
#include "workbench/pipeline/Pipeline.h"

#include <QObject>

#include <functional>
#include <memory>
#include <optional>

/// A signal, from its source to the values that the views are bound to: what the transport plays
/// goes to the time view, the eye, the constellation and the gate. Where it stands still, eye and
/// constellation are those of the gate, and nothing else.
///
/// GUI thread only.
class SignalFeed : public QObject
{
    Q_OBJECT
public:
    explicit SignalFeed(QObject* parent = nullptr);
    ~SignalFeed() override;

    /// Takes over a source, stops playing, shows the default span and watches for a signal.
    /// @param symbolRate  Bd, > 0; overrides what the source says.
    void open(std::unique_ptr<SignalSource> source, const ChannelChoice& channel,
              std::optional<double> symbolRate);
    bool isOpen() const { return m_pipeline != nullptr; }
    /// Facts about the source; meaningless until one was opened.
    const SignalFacts& source() const { return m_reception.source; }
    /// Of what is shown.
    const SignalFormat& format() const;
    /// Of the samples that are shown over time: "Hz" of those of an FM demodulator, else empty.
    QString levelUnit() const;
    const TimeScale& scale() const { return m_views.time.scale(); }
    /// Does something with the source while it is not read. Needs one.
    void changeSource(const std::function<void(SignalSource&)>& work);
    /// The current trouble with the source, if there is any.
    std::optional<Message> trouble() const
    {
        return m_pipeline ? m_pipeline->trouble() : std::nullopt;
    }
    bool hasFailed() const { return m_pipeline && m_pipeline->hasFailed(); }
    /// Whether a live source has no more samples.
    bool hasEnded() const { return source().isLive && m_transport.buffer().hasEnded(); }
    /// As in Pipeline.
    double leftOutPart() const { return m_pipeline ? m_pipeline->leftOutPart() : 0.0; }
    std::int64_t gapCount() const { return m_pipeline ? m_pipeline->gapCount() : 0; }

    /// Receives the source from now on, also the next ones: at the symbol rate that is known, the
    /// one in the settings does not count. Settings with a flaw for a source are not used with it,
    /// nor are any with one whose symbols' clock is known.
    void setReceiver(const ReceiverSettings& settings);
    const ReceiverSettings& receiver() const { return m_reception.receiver; }
    /// Whether the receiver can be used with the source.
    Result<void> checkReceiver() const { return m_reception.check(); }
    /// How its stages did while the samples that are shown came through: the newest report of
    /// each, or the newest of one that was locked.
    std::vector<StageReport> reports() const { return m_views.gate.reports(); }
    /// Ignores a channel that the source lacks.
    void setChannel(const ChannelChoice& channel);
    const ChannelChoice& channel() const { return m_reception.channel; }
    /// Symbol rate that overrides what the source says, as in open; none: what the source says.
    void setSymbolRate(std::optional<double> symbolRate);
    /// Bd, as it is known: by what was said in open or setSymbolRate, or by the source.
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
    void countWith(DensityFeed::Kind kind, DensityFeed::Sink sink);
    const DensityFeed& counted(DensityFeed::Kind kind) const
    {
        return kind == DensityFeed::Kind::Traces ? m_traces : m_points;
    }
    /// Forgets the symbols, and starts anew with what is there of the gate.
    void restartCounting();
    /// Waits until all that was played is with those who count.
    void waitForCounted();
    /// The gate is what lies between two times, s, from now on; what was played before of it
    /// counts.
    void fixGate(double from, double to);
    /// Lets the gate follow the time view from now on.
    void releaseGate();

    /// Time shown, s, from now on, also of another symbol rate; clamped to what can be shown.
    void setSpan(double seconds);
    /// Whether the time axis counts symbols where they are known; else seconds. True at first.
    void setCountingSymbols(bool wanted);
    double span() const { return m_views.time.span(); }
    double segmentLength() const { return m_views.time.segmentLength(); }
    void setLevels(double lowest, double highest) { m_views.setLevels(lowest, highest); }
    /// Fits the levels to what is shown, and follows it. Whoever shows it calls the parts'
    /// followLevels now and then.
    void fitLevels() { m_views.fitLevels(); }
    /// Whether samples were played since the source was opened, or since it was gone to another
    /// place.
    bool hasPlayed() const { return m_hasPlayed; }
    /// Lets the views forget what they show, and shows the gate: what is played stays.
    void showGate();
    /// Lets the views forget what they show, as if no sample had come.
    void showNothing();
    /// Whether its samples come again when they are gone to.
    bool isSeekable() const { return !source().isLive && m_transport.length(); }
    /// Of a signal that cannot, and stands still: shows the time about a place, s, of what was
    /// played while somebody counts. @return the time of the last sample that is shown; none where
    /// it is not kept any more.
    std::optional<double> showAround(double seconds);

signals:
    /// The time view, or eye and constellation, are to be emptied; what comes is to be seen alone.
    void timeCleared();
    void symbolsCleared();
    /// Those who count have to forget all symbols, and to set their sinks again.
    void countingRestarted();

private:
    std::size_t play(std::size_t count);
    void jump();
    void reconfigure();
    void setScale();
    void layOut();
    void followBandwidth();
    void takeCounted(const BlockPart& part);

    ViewFeeds m_views;
    Reception m_reception;
    DensityFeed m_traces{DensityFeed::Kind::Traces};
    DensityFeed m_points{DensityFeed::Kind::Points};
    Gate m_history; // of a signal that is counted, and does not come again
    std::unique_ptr<Pipeline> m_pipeline;
    Transport m_transport;
    double m_periodLength = 0.0; // that all is laid out for
    bool m_isSpanChosen = false; // else it is the usual one
    bool m_hasPlayed = false;
};
