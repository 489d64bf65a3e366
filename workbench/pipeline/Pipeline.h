// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/values/Handover.h"
#include "workbench/receiver/Receiver.h"
#include "workbench/sources/SignalSource.h"

#include <atomic>
#include <functional>
#include <thread>

/// Reads a source on one thread and receives it on another, so that who takes the blocks waits for
/// no file, device or computation.
///
/// A recording waits while its blocks are not taken. A live signal goes on: where too much of it
/// waits to be received, all that comes is left out until most of that is done. A few long gaps
/// cost fewer symbols than many short ones, as the loops have to be found anew after each. One that
/// could come faster than its sample rate, such as from a file through a pipe, is held back to that
/// rate.
///
/// To be used by one thread.
class Pipeline
{
public:
    /// @param channel   which the source has.
    /// @param settings  as in Receiver.
    Pipeline(std::unique_ptr<SignalSource> source, const ChannelChoice& channel,
             const ReceiverSettings& settings);
    ~Pipeline();

    const SignalFacts& source() const { return m_facts; }
    const SignalFormat& format() const { return m_format; }
    /// Samples of the source, as far as it is known by now.
    std::optional<std::int64_t> sampleCount() const;
    /// As in SignalSource.
    QString trouble() const;
    bool hasFailed() const { return m_lacksMemory || m_source->hasFailed(); }
    /// Of a live signal, since it is taken or was configured: the part of its samples that was left
    /// out or lost, 0 to 1...
    double leftOutPart() const;
    /// ...and in how many places.
    std::int64_t gapCount() const { return m_gapCount; }

    /// Receives otherwise from now on. What waits is forgotten: go on with seek.
    void configure(const ChannelChoice& channel, const ReceiverSettings& settings);
    /// Does something with the source while it is not read. What waits is forgotten: go on with
    /// seek.
    void change(const std::function<void(SignalSource&)>& work);
    /// Forgets what waits and goes to a sample of the source; false where it cannot.
    bool seek(std::int64_t position);

    /// Samples of the signal that may wait to be taken.
    void setQueueLength(std::size_t samples) { m_output.setLimit(samples); }
    /// Lets a live signal go by: its samples count neither as taken nor as left out.
    void setDiscarding(bool discarding);

    /// The next block; none while it is not there within the patience, and after the end.
    SignalBlockPtr take(std::chrono::milliseconds patience);
    /// Whether all blocks have been taken and no more come.
    bool hasEnded() const { return m_output.hasEnded(); }
    /// Samples of the signal that can be taken without waiting.
    std::size_t waitingCount() const { return m_output.waiting(); }

private:
    struct Input
    {
        std::int64_t position;
        std::vector<double> values;
    };

    void start();
    void stop();
    std::thread thread(void (Pipeline::*work)(), void (Pipeline::*end)());
    void endInput();
    void endOutput();
    void build(const ChannelChoice& channel, const ReceiverSettings& settings);
    void read();
    void receive();
    bool pass(std::vector<SignalBlock>& blocks);
    bool hasRoom();
    void hand(Input input, std::size_t count, std::int64_t lost);
    void countAnew();

    std::unique_ptr<SignalSource> m_source; // the reading thread's while that runs
    const SignalFacts m_facts;
    std::unique_ptr<Receiver> m_receiver; // the receiving thread's, likewise
    SignalFormat m_format;
    values::Handover<Input> m_input;
    values::Handover<SignalBlockPtr> m_output;
    std::thread m_reading;
    std::thread m_receiving;
    std::size_t m_blockLength = 1; // samples to read at a time
    std::size_t m_inputLimit = 1;  // samples from which on too much waits to be received
    bool m_isLeavingOut = false;   // the reading thread's
    std::atomic<bool> m_isStopping = false;
    std::atomic<bool> m_isDiscarding = false;
    std::atomic<bool> m_lacksMemory = false;
    std::atomic<std::int64_t> m_sampleCount = -1; // of the source; negative: not known
    std::atomic<std::int64_t> m_gapCount = 0;
    std::atomic<std::int64_t> m_takenCount = 0;   // samples of the source...
    std::atomic<std::int64_t> m_leftOutCount = 0; // ...and those that were not taken
};
