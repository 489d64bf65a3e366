// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/receiver/ReceiverSettings.h"
#include "workbench/receiver/SignalBlock.h"
#include "workbench/sources/ChannelChoice.h"
#include "workbench/sources/SignalFacts.h"

#include <cstdint>
#include <memory>
#include <vector>

/// From the samples of a source to the blocks that are shown and measured: the channel is chosen,
/// received where that is wanted, and its symbols are found. What comes out does not depend on the
/// lengths of the blocks that go in, nor on their level.
///
/// One thread at a time.
class Receiver
{
public:
    /// @param input     what the signal is that is received.
    /// @param channel   which exists.
    /// @param settings  also where they are off: then only the bits of a character count, and their
    ///                  symbol rate, over that of the input. With a flaw they count as off.
    Receiver(const SignalFacts& input, const ChannelChoice& channel,
             const ReceiverSettings& settings);
    ~Receiver();

    const SignalFormat& format() const;
    /// Samples that come out for one that goes in.
    double ratio() const;

    /// Takes the next samples of the input, and appends the blocks that are ready.
    /// @param position  of the first sample. Where it does not follow the last one, what was open
    ///                  is finished first and everything is found anew, but for the DC offset where
    ///                  it is a later one: samples were lost.
    /// @param values    as SignalSource::read gives them.
    void process(std::int64_t position, const std::vector<double>& values,
                 std::vector<SignalBlock>& blocks);
    /// No more samples come: appends what was held back.
    void finish(std::vector<SignalBlock>& blocks);
    /// Forgets the signal.
    void reset();

private:
    SignalFacts m_input;
    std::unique_ptr<class SignalPath> m_path;
    std::int64_t m_next = 0; // position of the sample that would follow
    bool m_isStarted = false;
};
