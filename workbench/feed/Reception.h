// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/receiver/ReceiverSettings.h"
#include "workbench/sources/ChannelChoice.h"
#include "workbench/sources/SignalFacts.h"

/// Which part of a signal is received, and how; and what that means for the signal.
struct Reception
{
    /// Bd, as it is known: as it was given, or as the source says.
    std::optional<double> symbolRate() const { return givenRate ? givenRate : source.symbolRate; }
    bool hasChannel(const ChannelChoice& wanted) const
    {
        return wanted.last() < source.valueCount();
    }
    /// Whether the receiver can be used with the source; any can where the symbols' clock is known,
    /// as it is not used.
    Result<void> check() const;
    /// The receiver as a pipeline takes it: off it knows no symbol rate but one that was given, and
    /// the bits of characters.
    ReceiverSettings used() const;

    SignalFacts source;
    ChannelChoice channel;
    std::optional<double> givenRate; ///< Bd, over what the source says
    ReceiverSettings receiver;
};
