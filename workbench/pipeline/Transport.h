// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/pipeline/BlockBuffer.h"
#include "workbench/pipeline/Pacer.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <functional>
#include <limits>

class Pipeline;

/// Plays a pipeline: tells 30 times a second how many samples are due, and hands them out. When the
/// program was held up, up to four periods are due at once, and the rest plays later. A recording
/// that does not come in time plays slower. GUI thread only.
class Transport : public QObject
{
    Q_OBJECT
public:
    static constexpr double rate = 30.0;              ///< Hz, at which samples become due
    static constexpr double maxPeriodLength = 131072; ///< samples that are due in a period at most
    static constexpr double minSpeed = 1e-9;
    static constexpr double maxSpeed = 10.0;
    /// The speed at which a signal plays as fast as it can be read and shown.
    static constexpr double fastest = std::numeric_limits<double>::infinity();

    /// Plays due samples with take. @return number of samples played.
    using Player = std::function<std::size_t(std::size_t count)>;

    explicit Transport(const Player& player, QObject* parent = nullptr);

    /// Stops, and plays this pipeline from its start from the next play on; null for none. It must
    /// outlive its use.
    void open(Pipeline* pipeline);
    /// To be called after the pipeline dropped its blocks: continues at the present time.
    void goOn();
    /// Like goOn, after the pipeline's format changed: the next samples do not follow those that
    /// were played.
    void reopen();

    bool isPlaying() const { return m_isPlaying; }
    /// Continues to play, from the start when the end was reached. Does nothing without a pipeline,
    /// and when a live signal has ended.
    void play();
    void pause();
    /// Goes to a time in the signal, s, clamped to its length. Does nothing with a live signal.
    void seek(double seconds);
    /// Plays exactly the samples of this time at once, however long it takes; fewer when the signal
    /// ends. The signal does not start over.
    void playThrough(double seconds);
    /// To be called when all samples were taken: goes to the start if the signal repeats and can;
    /// otherwise it has ended.
    void startOver(bool mayRepeat);

    /// Whether the signal starts over at its end; true at first.
    void setRepeat(bool repeat) { m_repeat = repeat; }
    bool repeat() const { return m_repeat; }
    /// Seconds of signal played in a second; 1 at first. A period has at most maxPeriodLength
    /// samples: beyond that, the signal plays slower than asked. A live signal has its own speed.
    void setSpeed(double speed)
    {
        m_speed = speed == fastest ? fastest : std::clamp(speed, minSpeed, maxSpeed);
    }
    double speed() const { return m_speed; }
    /// Longest time to wait for the pipeline.
    void setTimeout(std::chrono::milliseconds timeout) { m_timeout = timeout; }

    /// Index and time, s, of the next sample.
    std::int64_t position() const { return m_position; }
    double time() const { return m_time; }
    /// Length of the signal, s; none without a known end.
    std::optional<double> length() const;
    /// Number of samples that are due in a period.
    double periodLength() const;
    bool isAtEnd() const { return m_isAtEnd; }

    /// Takes the next samples, all of one block; none while there are none, and at the end.
    BlockPart take(std::size_t most);
    /// Number of samples that follow the next one without a gap, up to where playThrough stops,
    /// which counts as an end. Waits at most for the timeout.
    BlockBuffer::Ahead ahead(std::size_t count);
    /// The samples ahead.
    const BlockBuffer& buffer() const { return m_buffer; }
    /// Number of samples of a live signal that may wait; more are due sooner, as its clock may be
    /// fast.
    void setBacklog(double samples) { m_backlog = samples; }

    /// Plays the samples that have become due. The timer calls it.
    /// @param elapsedMs  since play().
    void advance(std::int64_t elapsedMs);

signals:
    void playingChanged(bool playing);
    /// playThrough has ended.
    void playedThrough();
    /// The next samples do not follow the last ones; not emitted when the signal starts over.
    void jumped();

private:
    bool goTo(double seconds);
    std::chrono::milliseconds timeout() const;
    void startTimer();

    Player m_player;
    Pipeline* m_pipeline = nullptr;
    QTimer m_timer;
    QElapsedTimer m_clock;
    Pacer m_pacer;
    std::chrono::milliseconds m_timeout{5};
    BlockBuffer m_buffer;
    std::int64_t m_position = 0;
    double m_time = 0.0;
    double m_credit = 0.0; // samples that are due
    std::size_t m_left;    // samples until playing through stops
    double m_backlog = 0.0;
    double m_speed = 1.0;
    bool m_isPlaying = false;
    bool m_isAtEnd = false;
    bool m_repeat = true;
};
