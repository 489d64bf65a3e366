// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/receiver/ReceiverSettings.h"
#include "workbench/receiver/SignalBlock.h"
#include "workbench/sources/ChannelChoice.h"
#include "workbench/sources/SignalFacts.h"

#include <cstdint>
#include <memory>
#include <vector>

/// Turns the samples of a source into the blocks that are shown and measured: selects the channel,
/// receives it if wanted, and finds its symbols. The output does not depend on the lengths of the
/// input blocks, nor on their level.
///
/// One thread at a time.
class Receiver
{
public:
    /// @param input     facts about the signal.
    /// @param channel   which exists.
    /// @param settings  if off, only the bits of a character count, and the symbol rate, which
    ///                  overrides that of the input. Invalid settings count as off.
    Receiver(const SignalFacts& input, const ChannelChoice& channel,
             const ReceiverSettings& settings);
    ~Receiver();

    const SignalFormat& format() const;
    /// Number of output samples for each input sample.
    double ratio() const;

    /// Takes the next input samples, and appends the blocks that are ready.
    /// @param position  of the first sample. If it does not follow the last one, open blocks are
    ///                  finished first and everything is found anew; after a loss, when the
    ///                  position is a later one, only the DC offset is kept.
    /// @param values    as SignalSource::read gives them.
    void process(std::int64_t position, const std::vector<double>& values,
                 std::vector<SignalBlock>& blocks);
    /// Ends the signal: appends the samples that were held back.
    void finish(std::vector<SignalBlock>& blocks);
    /// Forgets the signal.
    void reset();
    /// Takes a block that nobody needs any more: later ones use its memory.
    void reuse(SignalBlock block);

private:
    SignalFacts m_input;
    std::unique_ptr<class SignalPath> m_path;
    std::int64_t m_next = 0; // position of the sample that should follow
    bool m_isStarted = false;
};
