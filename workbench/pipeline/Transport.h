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

/// Plays a pipeline: says 30 times a second how many samples are due, and hands them out. Where the
/// program was held up, up to four periods are due at once, and what is older plays later. A
/// recording that cannot be had in time plays slower. GUI thread only.
class Transport : public QObject
{
    Q_OBJECT
public:
    static constexpr double rate = 30.0;              ///< Hz, of what is due
    static constexpr double maxPeriodLength = 131072; ///< samples that are due in a period at most
    static constexpr double minSpeed = 1e-9;
    static constexpr double maxSpeed = 10.0;
    /// A speed: as fast as the signal can be read and shown.
    static constexpr double fastest = std::numeric_limits<double>::infinity();

    /// Plays samples that are due, with take. @return how many it has played.
    using Player = std::function<std::size_t(std::size_t count)>;

    explicit Transport(const Player& player, QObject* parent = nullptr);

    /// Stops, and plays this one from its start when told to; null: none. It must outlive its use.
    void open(Pipeline* pipeline);
    /// The pipeline forgot what waited: goes on at the present time.
    void goOn();
    /// As goOn, where the pipeline's format changed: what comes does not follow what was played.
    void reopen();

    bool isPlaying() const { return m_isPlaying; }
    /// Plays on; from the start when the end was reached, or gone to. Nothing without a pipeline,
    /// and where a live signal has ended.
    void play();
    void pause();
    /// Goes to a time in the signal, s; clamped to it. Nothing where the signal cannot.
    void seek(double seconds);
    /// Plays exactly so many samples as this time has, at once, however long it takes; fewer where
    /// the signal ends. It does not start over.
    void playThrough(double seconds);
    /// All was taken: goes to the start where the signal is to repeat, may and can; else it has
    /// come to its end.
    void startOver(bool mayRepeat);

    /// Whether the signal starts over at its end; true at first.
    void setRepeat(bool repeat) { m_repeat = repeat; }
    bool repeat() const { return m_repeat; }
    /// Seconds of signal played in a second; 1 at first. More samples than a period may have are
    /// not played: the signal then runs slower than asked. A live one has its own speed.
    void setSpeed(double speed)
    {
        m_speed = speed == fastest ? fastest : std::clamp(speed, minSpeed, maxSpeed);
    }
    double speed() const { return m_speed; }
    /// How long may be waited for the pipeline at a time.
    void setTimeout(std::chrono::milliseconds timeout) { m_timeout = timeout; }

    /// Of the next sample: its index, and its time, s.
    std::int64_t position() const { return m_position; }
    double time() const { return m_time; }
    /// s; none for a signal without a known end.
    std::optional<double> length() const;
    /// Samples that are due in a period.
    double periodLength() const;
    bool isAtEnd() const { return m_isAtEnd; }

    /// The next samples, those of one block; none while they are not there, and at the end.
    BlockPart take(std::size_t most);
    /// Samples that follow the next one without a gap, up to where playThrough stops, which is an
    /// end, too. Waits for it as long as the timeout says.
    BlockBuffer::Ahead ahead(std::size_t count);
    /// The samples that were looked at ahead.
    const BlockBuffer& buffer() const { return m_buffer; }
    /// Of a live signal, whose clock is not ours: samples that may wait; more are due sooner.
    void setBacklog(double samples) { m_backlog = samples; }

    /// Plays the samples that have become due. Called by the timer.
    /// @param elapsedMs  since play().
    void advance(std::int64_t elapsedMs);

signals:
    void playingChanged(bool playing);
    /// playThrough has ended.
    void playedThrough();
    /// The next samples do not follow the last ones; not where the signal starts over.
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
