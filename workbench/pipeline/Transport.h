// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/pipeline/Pacer.h"
#include "workbench/receiver/SignalBlock.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <chrono>
#include <deque>
#include <functional>
#include <limits>

class Pipeline;

/// Some samples of a block that follow one another.
struct BlockPart
{
    std::int64_t position() const { return block->position + static_cast<std::int64_t>(first); }
    std::int64_t end() const { return position() + static_cast<std::int64_t>(count); }
    /// Calls work with each symbol whose middle is within, in order.
    template<class Work>
    void forEachSymbol(Work work) const
    {
        for (const Symbol& symbol : block->symbols) {
            const bool isFrom = first == 0 || symbol.position >= static_cast<double>(position());
            const bool isTo =
                first + count == block->count() || symbol.position < static_cast<double>(end());
            if (isFrom && isTo)
                work(symbol);
        }
    }

    SignalBlockPtr block;
    std::size_t first = 0;
    std::size_t count = 0; ///< 0: none, also without a block
};

/// Plays a pipeline: says 30 times a second how many samples are due, and hands them out. Where the
/// program was held up, up to four periods are due at once, and what is older plays later. A
/// recording that cannot be had in time plays slower. GUI thread only.
class Transport : public QObject
{
    Q_OBJECT
public:
    static constexpr double rate = 30.0;              ///< Hz, of what is due
    static constexpr double maxPeriodLength = 131072; ///< samples that are due in a period at most
    static constexpr double minSpeed = 0.1;
    static constexpr double maxSpeed = 10.0;
    /// A speed: as fast as the signal can be read and shown.
    static constexpr double fastest = std::numeric_limits<double>::infinity();

    /// Plays samples that are due, with take. @return how many it has played.
    using Player = std::function<std::size_t(std::size_t count)>;
    /// What follows the next sample without a gap.
    struct Ahead
    {
        std::size_t count; ///< samples, at most those asked for
        bool isAll;        ///< whether no more follow: the end, a gap, or where playThrough stops
    };

    explicit Transport(const Player& player, QObject* parent = nullptr);
    ~Transport() override;

    /// Stops, and plays this one from its start when told to; null: none. It must outlive its use.
    void open(Pipeline* pipeline);
    /// The pipeline forgot what waited: goes on at the present time.
    void goOn();
    /// As goOn, where the pipeline's format changed: what comes does not follow what was played.
    void reopen();

    bool isPlaying() const { return m_isPlaying; }
    /// Plays on; from the start when the end was reached. Nothing without a pipeline.
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
    void setSpeed(double speed);
    double speed() const { return m_speed; }
    /// How long may be waited for the pipeline at a time.
    void setPatience(std::chrono::milliseconds patience) { m_patience = patience; }

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
    /// Looks ahead; waits for it as long as there is patience.
    Ahead ahead(std::size_t count);
    /// Appends samples ahead, from the first one on that is so far from the next one.
    void copyAhead(std::size_t first, std::size_t count, std::vector<double>& samples) const;
    /// Whether all samples were taken. Needs a pipeline, as does the next one.
    bool hasEnded() const;
    /// Samples that have come but were not taken.
    std::size_t waitingCount() const;
    /// Of a live signal, whose clock is not ours: samples that may wait; more are due sooner.
    void setBacklog(double samples) { m_backlog = samples; }

    /// What the timer does: lets play what has become due.
    /// @param elapsedMs  since play().
    void advance(std::int64_t elapsedMs);

signals:
    void playingChanged(bool playing);
    /// What was to be played through is.
    void playedThrough();
    /// What comes next does not follow what was played, unless the signal starts over.
    void jumped();

private:
    bool goTo(double seconds);
    bool fetch();
    void startTimer();

    Player m_player;
    Pipeline* m_pipeline = nullptr;
    QTimer m_timer;
    QElapsedTimer m_clock;
    Pacer m_pacer;
    std::chrono::milliseconds m_patience{5};
    std::deque<SignalBlockPtr> m_blocks; // the first...
    std::size_t m_used = 0;              // ...from this sample on
    std::int64_t m_position = 0;
    double m_time = 0.0;
    double m_credit = 0.0; // samples that are due
    std::size_t m_left;    // samples until playing through stops
    double m_backlog = 0.0;
    double m_speed = 1.0;
    bool m_isArriving = false; // was gone to a time, of which no sample has come yet
    bool m_isPlaying = false;
    bool m_isAtEnd = false;
    bool m_repeat = true;
};
