// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/receiver/SignalBlock.h"
#include "workbench/sources/SignalFacts.h"

#include <utility>
#include <vector>

/// A way from samples to blocks; see Receiver, which chooses one.
class SignalPath
{
public:
    virtual ~SignalPath() = default;

    const SignalFormat& format() const { return m_format; }
    /// Takes samples that follow those of the last call, or are the first since reset.
    virtual void process(const std::vector<double>& values, std::vector<SignalBlock>& blocks) = 0;
    /// No samples follow: appends what was held back.
    virtual void finish(std::vector<SignalBlock>& blocks) = 0;
    /// Starts anew at a sample of the input.
    /// @param goesOn  whether it is of the same signal as before, later: what does not depend on
    ///                samples that are missing, such as a DC offset, is still known.
    virtual void reset(std::int64_t position, bool goesOn) = 0;

protected:
    explicit SignalPath(const SignalFacts& input)
        : m_input(input)
    {}
    /// Appends a block that follows the last one, but for the first one since m_isAfterGap was set.
    void append(SignalBlock block, std::vector<SignalBlock>& blocks)
    {
        block.isAfterGap = std::exchange(m_isAfterGap, false);
        blocks.push_back(std::move(block));
    }

    const SignalFacts m_input;
    SignalFormat m_format; ///< of what comes out
    bool m_isAfterGap = true;
};
