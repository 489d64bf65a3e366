// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/feed/EyeFeed.h"
#include "workbench/feed/IqFeed.h"
#include "workbench/feed/Pacer.h"
#include "workbench/feed/SegmentReader.h"
#include "workbench/feed/TimeScale.h"
#include "workbench/feed/TimeValues.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <memory>
#include <optional>

/// Plays a source into the values of the value tree: 30 notifications a second, each with the
/// samples of one period. Where the program was held up, a notification carries up to four periods;
/// what is older is skipped, counted as drops, and the trace ends there.
///
/// Views bound to TimeValues, EyeValues or IqValues must be told of nothing else. GUI thread only.
class SignalFeed : public QObject
{
    Q_OBJECT
public:
    static constexpr double notificationRate = 30.0; ///< Hz
    static constexpr double minSpeed = 0.1;
    static constexpr double maxSpeed = 10.0;

    explicit SignalFeed(QObject* parent = nullptr);
    ~SignalFeed() override;

    /// Takes over a source, stops playing, shows the default span and watches for a signal.
    /// @param channel     one of the source's values, see SegmentReader.
    /// @param symbolRate  Bd, > 0; overrides what the source says.
    void open(std::unique_ptr<SignalSource> source, int channel, std::optional<double> symbolRate);
    /// Null until one was opened.
    SignalSource* source() const { return m_source.get(); }
    const TimeScale& scale() const { return m_scale; }

    bool isPlaying() const { return m_playing; }
    /// Plays on; from the start when the end was reached. Nothing without a source.
    void play();
    void pause();
    /// Goes back to the start.
    void rewind();
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
    /// are not played: the signal then runs slower than asked.
    void setSpeed(double speed);
    double speed() const { return m_speed; }
    void setChannel(int channel);
    int channel() const { return m_channel; }
    /// Time shown, s; clamped to what can be shown.
    void setSpan(double seconds);
    double span() const { return m_span; }
    void setLevels(double lowest, double highest);
    /// Symbol rate that overrides what the source says, as in open; none: what the source says.
    /// Needs a source, and plays on.
    void setSymbolRate(std::optional<double> symbolRate);
    /// The eye of the signal; blocks of signal are played into it, too.
    EyeFeed& eye() { return m_eye; }
    const EyeFeed& eye() const { return m_eye; }
    /// Its constellation: the channel's pair, also of two real channels.
    IqFeed& iq() { return m_iq; }

    /// Index of the next sample.
    std::int64_t position() const { return m_reader ? m_reader->position() : 0; }
    /// Samples of a trace, for a source with frames of the frame.
    double segmentLength() const;
    /// Periods skipped since the source was opened, as a whole or for the eye only.
    std::int64_t dropCount() const { return m_dropCount + m_eye.dropCount(); }

    /// Whether to watch for a signal: for samples that differ. Silence has no levels that an axis
    /// could be fitted to.
    void setWatching(bool watching) { m_watching = watching; }

signals:
    void playingChanged(bool playing);
    /// What was watched for comes with the next notification; it is not watched for any more.
    void signalSeen();

private:
    double samplesPerPeriod() const;
    void openReader(std::int64_t position);
    void chooseSegmentLength();
    void scaleFor(std::optional<double> symbolRate);
    void startTimer();
    void skip(std::int64_t periods);
    std::size_t deliver(std::size_t count);
    bool hasSignal() const;
    void readOn(std::size_t count);

    TimeValues m_values;
    EyeFeed m_eye;
    IqFeed m_iq;
    std::unique_ptr<SignalSource> m_source;
    std::unique_ptr<SegmentReader> m_reader; // of m_source
    TimeScale m_scale;
    QTimer m_timer;
    QElapsedTimer m_clock;
    Pacer m_pacer;
    int m_channel = 0;
    bool m_playing = false;
    bool m_repeat = true;
    bool m_atEnd = false;
    bool m_watching = false;
    double m_speed = 1.0;
    double m_span = 1.0;
    double m_segmentLength = 1.0;
    double m_credit = 0.0; // samples that are due, less than one
    std::int64_t m_dropCount = 0;
    std::vector<double> m_samples; // of the next notification
    std::vector<double> m_markers;
    std::vector<double> m_block;   // what comes at once...
    std::vector<double> m_partner; // ...and beside it the other of the pair
};
