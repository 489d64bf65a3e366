// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/values/Handover.h"
#include "workbench/pipeline/LiveIntake.h"
#include "workbench/pipeline/SpareBlocks.h"
#include "workbench/receiver/Receiver.h"
#include "workbench/sources/SignalSource.h"

#include <atomic>
#include <functional>
#include <thread>

/// Reads a source on one thread and receives it on another, so that the consumer of the blocks does
/// not wait for files, devices or computations.
///
/// A recording waits while its blocks are not taken; a live signal goes on, see LiveIntake.
///
/// One thread may use it.
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
    /// Length of the source, s, if it is known already.
    std::optional<double> length() const;
    /// As in SignalSource.
    std::optional<Message> trouble() const;
    bool hasFailed() const { return m_lacksMemory || m_source->hasFailed(); }
    /// Part of the samples of a live signal that was left out or lost since the start or the last
    /// configuration, 0 to 1...
    double leftOutPart() const { return m_intake.leftOutPart(); }
    /// ...and the number of gaps.
    std::int64_t gapCount() const { return m_intake.gapCount(); }

    /// Receives with other settings from now on. Drops the blocks that wait; continue with seek.
    void configure(const ChannelChoice& channel, const ReceiverSettings& settings);
    /// Runs work on the source while it is not read. Drops the blocks that wait; continue with
    /// seek.
    void change(const std::function<void(SignalSource&)>& work);
    /// Drops the blocks that wait and goes to a sample of the source; false when that is not
    /// possible.
    bool seek(std::int64_t position);

    /// Sets how many samples of the signal may wait to be taken.
    void setQueueLength(std::size_t samples);
    /// Discards a live signal: its samples count neither as taken nor as left out.
    void setDiscarding(bool discarding);

    /// Takes the next block; null when none comes within the timeout, and after the end.
    SignalBlockPtr take(std::chrono::milliseconds timeout)
    {
        return m_output.pop(timeout).value_or(nullptr);
    }
    /// Whether all blocks have been taken and no more come.
    bool hasEnded() const { return m_output.hasEnded(); }
    /// Number of samples that can be taken without waiting.
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
    void hand(Input input, std::size_t count, std::int64_t lost);

    std::unique_ptr<SignalSource> m_source; // belongs to the reading thread while that runs
    const SignalFacts m_facts;
    LiveIntake m_intake;
    std::shared_ptr<SpareBlocks> m_spare = std::make_shared<SpareBlocks>();
    std::unique_ptr<Receiver> m_receiver; // belongs to the receiving thread, likewise
    SignalFormat m_format;
    values::Handover<Input> m_input;
    values::Handover<std::vector<double>> m_usedValues; // whose memory is read into again
    values::Handover<SignalBlockPtr> m_output;
    std::thread m_reading;
    std::thread m_receiving;
    std::size_t m_blockLength = 1; // samples to read at a time
    std::atomic<bool> m_isStopping = false;
    std::atomic<bool> m_isDiscarding = false;
    std::atomic<bool> m_lacksMemory = false;
    std::atomic<std::int64_t> m_sampleCount = -1; // of the source; negative: not known
};
