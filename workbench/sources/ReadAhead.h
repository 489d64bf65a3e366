// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/sources/SignalSource.h"

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>

/// Reads a signal on a thread of its own, so that who takes the samples waits for no file, device
/// or computation. Samples that nobody has taken yet wait in a queue.
///
/// A live signal goes on whether or not its samples are taken: with the queue full, whole blocks
/// are left out and counted, and the position leaps over them. One that could come faster than its
/// sample rate says, such as from a file through a pipe, is held back to that rate.
class ReadAhead : public SignalSource
{
public:
    /// What happens when the queue is full.
    enum class WhenFull {
        Wait, ///< nothing is read until samples are taken
        Drop  ///< blocks are left out
    };

    ReadAhead(std::unique_ptr<SignalSource> source, WhenFull whenFull);
    ~ReadAhead() override;

    /// The signal that is read. Only what does not change while it is read may be asked of it.
    SignalSource& input() { return *m_source; }
    const SignalSource& input() const { return *m_source; }
    /// Ends the thread and gives the signal back; the object is of no use then.
    std::unique_ptr<SignalSource> takeInput();
    /// Does something with the signal while it is not read. What was read ahead is read again where
    /// the signal can go back, so that it shows at once.
    void change(const std::function<void(SignalSource&)>& work);

    /// Samples to read at a time, and those that may wait to be taken; at least 1 each.
    void setLengths(std::size_t block, std::size_t queue);
    /// How long read waits where there are no samples yet; not at all at first.
    void setPatience(std::chrono::milliseconds patience);
    /// Lets a live signal go by, its samples count neither as taken nor as left out.
    void setDiscarding(bool discarding);
    /// Samples that can be taken without waiting.
    std::size_t waitingCount() const;

    QString name() const override { return m_source->name(); }
    double sampleRate() const override { return m_source->sampleRate(); }
    int channelCount() const override { return m_source->channelCount(); }
    bool isComplex() const override { return m_source->isComplex(); }
    std::optional<int> constellationChannel() const override
    {
        return m_source->constellationChannel();
    }
    std::optional<std::int64_t> sampleCount() const override;
    std::optional<double> symbolRate() const override { return m_source->symbolRate(); }
    std::optional<double> firstSymbol() const override { return m_source->firstSymbol(); }
    std::optional<double> frameLength() const override { return m_source->frameLength(); }
    bool isLive() const override { return m_source->isLive(); }
    /// Of any signal: whether all samples have been taken. False while the next ones are not there.
    bool hasEnded() const override;
    QString trouble() const override { return m_source->trouble(); }
    std::int64_t lostBlockCount() const override;

    std::int64_t position() const override;
    /// Takes what waits, a block at most.
    std::size_t read(std::vector<double>& block, std::size_t count) override;
    bool seek(std::int64_t position) override;

private:
    using Clock = std::chrono::steady_clock;
    using Lock = std::unique_lock<std::mutex>;
    struct Block
    {
        std::int64_t position;
        std::size_t count; // samples
        std::vector<double> values;
    };
    class Pause;

    void run();
    bool mayRead() const;
    void store(Block block);
    void note();
    void clear();

    std::unique_ptr<SignalSource> m_source;
    const WhenFull m_whenFull;

    mutable std::mutex m_mutex; // guards all below
    std::condition_variable m_changed;
    std::deque<Block> m_queue;
    std::size_t m_waiting = 0; // samples in the queue...
    std::size_t m_used = 0;    // ...of the first block of which these were taken
    std::size_t m_blockLength = 1024;
    std::size_t m_queueLength = 16384;
    std::chrono::milliseconds m_patience{0};
    std::int64_t m_next = 0; // position after the newest block
    std::optional<std::int64_t> m_sampleCount;
    std::int64_t m_dropCount = 0;
    bool m_isDiscarding = false;
    bool m_isReading = false;
    bool m_isAtEnd = false;
    bool m_isStopping = false;
    int m_pauseCount = 0;

    std::thread m_thread;
};
