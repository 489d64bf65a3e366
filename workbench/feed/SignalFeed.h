// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/feed/EyeFeed.h"
#include "workbench/feed/IqFeed.h"
#include "workbench/feed/Measurements.h"
#include "workbench/feed/Pacer.h"
#include "workbench/feed/SegmentReader.h"
#include "workbench/feed/Thinning.h"
#include "workbench/feed/TimeScale.h"
#include "workbench/feed/TimeValues.h"
#include "workbench/receiver/ReceiverSource.h"
#include "workbench/sources/ReadAhead.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <chrono>
#include <functional>
#include <limits>
#include <memory>
#include <optional>

/// Plays a source into the values of the value tree: 30 notifications a second, each with the
/// samples of one period. Where the program was held up, a notification carries up to four periods,
/// and what is older plays later.
///
/// The source is read, and received where that is wanted, on threads of their own: nothing here
/// waits for them longer than its patience. A recording that they cannot deliver in time plays
/// slower; of a live signal whole blocks are left out and counted as drops. Where a notification
/// has far more samples than a view has pixels, the time diagram gets the extremes of groups of
/// neighbours.
///
/// Views bound to TimeValues, EyeValues or IqValues must be told of nothing else. GUI thread only.
class SignalFeed : public QObject
{
    Q_OBJECT
public:
    static constexpr double notificationRate = 30.0; ///< Hz
    static constexpr double minSpeed = 0.1;
    static constexpr double maxSpeed = 10.0;
    /// A speed: as fast as the source can be read and shown.
    static constexpr double fastest = std::numeric_limits<double>::infinity();

    explicit SignalFeed(QObject* parent = nullptr);
    ~SignalFeed() override;

    /// Takes over a source, stops playing, shows the default span and watches for a signal.
    /// @param symbolRate  Bd, > 0; overrides what the source says.
    void open(std::unique_ptr<SignalSource> source, const ChannelChoice& channel,
              std::optional<double> symbolRate);
    /// The signal that is shown: what the receiver makes of the source, if it is on. Null until one
    /// was opened.
    const SignalSource* source() const { return m_ahead.get(); }
    /// The source itself. Only what does not change while it is read may be asked of it.
    const SignalSource* input() const { return m_input; }
    /// Does something with the source while it is not read. Needs one.
    void changeInput(const std::function<void(SignalSource&)>& work);
    const TimeScale& scale() const { return m_scale; }

    /// Receives the source from now on, also the next ones: at the symbol rate that is known, the
    /// one in the settings does not count. Settings with a flaw for a source are not used with it,
    /// nor are any with one whose symbols' clock is known.
    void setReceiver(const ReceiverSettings& settings);
    const ReceiverSettings& receiver() const { return m_receiver; }
    /// Bd, as it is known: by what was said in open or setSymbolRate, or by the source.
    std::optional<double> symbolRate() const;
    /// Why the receiver cannot be used with the source: one sentence; empty when it can.
    QString receiverFlaw() const;
    /// How its stages do; none where it is not in use.
    std::vector<StageReport> receiverReports() const;

    bool isLive() const { return m_input && m_input->isLive(); }
    /// What is amiss with a live source just now, a sentence; empty when all is well.
    QString trouble() const { return m_input ? m_input->trouble() : QString(); }

    /// Whether a live source has no more samples.
    bool hasEnded() const { return isLive() && m_ahead->hasEnded(); }

    bool isPlaying() const { return m_playing; }
    /// Plays on; from the start when the end was reached. Nothing without a source.
    void play();
    void pause();
    /// Goes back to the start.
    void rewind();
    /// Goes to a time in the signal, s. Nothing where the source cannot.
    void seek(double seconds);
    /// Time of the next sample, s.
    double time() const { return static_cast<double>(position()) / m_scale.sampleRate; }
    /// s; none for a signal without a known end.
    std::optional<double> length() const;
    /// How long this thread may wait for the source at a time.
    void setPatience(std::chrono::milliseconds patience);
    /// Plays at once, however long it takes, and on to the end of the segment that is open then.
    /// Does not start over at the end.
    void playThrough(double seconds);
    /// What the timer does: delivers the periods that have passed.
    /// @param elapsedMs  since play().
    void advance(std::int64_t elapsedMs);

    /// Whether the signal starts over at its end; true at first.
    void setRepeat(bool repeat) { m_repeat = repeat; }
    bool repeat() const { return m_repeat; }
    /// Seconds of signal played in a second; 1 at first. More samples than a notification may carry
    /// are not played: the signal then runs slower than asked. A live one has its own speed.
    void setSpeed(double speed);
    double speed() const { return m_speed; }
    /// Nothing where the source has it not.
    void setChannel(const ChannelChoice& channel);
    const ChannelChoice& channel() const { return m_channel; }
    /// Time shown, s; clamped to what can be shown.
    void setSpan(double seconds);
    double span() const { return m_span; }
    void setLevels(double lowest, double highest);
    /// Symbol rate that overrides what the source says, as in open; none: what the source says.
    /// Needs a source, and plays on.
    void setSymbolRate(std::optional<double> symbolRate);
    /// Whether samples were notified since the source was opened, or since it was gone to another
    /// place by rewind or seek.
    bool hasPlayed() const { return !m_newest.empty(); }
    /// Lets the views forget what they show, as if no sample had come.
    void showNothing();
    /// The eye of the signal; blocks of signal are played into it, too.
    EyeFeed& eye() { return m_eye; }
    const EyeFeed& eye() const { return m_eye; }
    /// Its constellation: the channel's pair, also of two real channels.
    IqFeed& iq() { return m_iq; }
    const IqFeed& iq() const { return m_iq; }

    /// What the signal measures.
    Measurements measure() const;
    /// The newest samples of the time shown, as many as are kept: a million at least.
    std::vector<double> shownSamples() const;

    /// Index of the next sample.
    std::int64_t position() const { return m_reader ? m_reader->position() : 0; }
    /// Samples of a trace, for a source with frames of the frame.
    double segmentLength() const;
    /// Blocks of a live signal left out since it was opened, as a whole or for the eye only.
    std::int64_t dropCount() const;

    /// Whether to watch for a signal: for samples that differ. Silence has no levels that an axis
    /// could be fitted to.
    void setWatching(bool watching) { m_watching = watching; }

signals:
    void playingChanged(bool playing);
    /// What was watched for comes with the next notification; it is not watched for any more.
    void signalSeen();

private:
    double samplesPerPeriod() const;
    void build(std::unique_ptr<SignalSource> source);
    void rebuild();
    ReceiverSettings usedReceiver() const;
    ChannelChoice shownChannel() const;
    void openReader(std::int64_t position);
    void chooseSegmentLength();
    void setScale();
    void startTimer();
    double backlogToReduce() const;
    std::size_t deliver(std::size_t count);
    bool hasSignal() const;
    std::size_t readOn(std::size_t count);
    void keep(const std::vector<double>& samples);
    std::size_t shownCount(std::size_t most) const;
    std::vector<std::complex<double>> idealPoints() const;

    TimeValues m_values;
    EyeFeed m_eye;
    IqFeed m_iq;
    ReceiverSettings m_receiver;
    SignalSource* m_input = nullptr;         // somewhere within...
    ReceiverSource* m_received = nullptr;    // ...where there is one, which is within...
    ReadAhead* m_front = nullptr;            // before it; of a live signal
    std::unique_ptr<ReadAhead> m_ahead;      // ...this
    std::unique_ptr<SegmentReader> m_reader; // of m_ahead
    Thinning m_thinning;
    TimeScale m_scale;
    QTimer m_timer;
    QElapsedTimer m_clock;
    Pacer m_pacer;
    std::chrono::milliseconds m_patience{5};
    std::optional<double> m_symbolRate;
    ChannelChoice m_channel;
    bool m_playing = false;
    bool m_repeat = true;
    bool m_atEnd = false;
    bool m_watching = false;
    double m_speed = 1.0;
    double m_span = 1.0;
    double m_segmentLength = 1.0;
    double m_credit = 0.0;         // samples that are due
    SegmentReader::Part m_part;    // what comes at once
    std::vector<double> m_newest;  // samples
    std::vector<double> m_samples; // of the next notification
    std::vector<double> m_markers;
};
