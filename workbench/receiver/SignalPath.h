// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/receiver/SignalBlock.h"

#include <vector>

/// A way from samples to blocks; see Receiver, which chooses one.
class SignalPath
{
public:
    virtual ~SignalPath() = default;

    virtual const SignalFormat& format() const = 0;
    /// Takes samples that follow those of the last call, or are the first since reset.
    virtual void process(const std::vector<double>& values, std::vector<SignalBlock>& blocks) = 0;
    /// No samples follow: appends what was held back.
    virtual void finish(std::vector<SignalBlock>& blocks) = 0;
    /// Starts anew at a sample of the input.
    /// @param goesOn  whether it is of the same signal as before, later: what does not depend on
    ///                samples that are missing, such as a DC offset, is still known.
    virtual void reset(std::int64_t position, bool goesOn) = 0;
};
