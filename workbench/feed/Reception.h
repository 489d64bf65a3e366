// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/receiver/ReceiverSettings.h"
#include "workbench/receiver/SignalBlock.h"
#include "workbench/sources/ChannelChoice.h"
#include "workbench/sources/SignalFacts.h"

/// Which channel of a signal is received, with which settings and symbol rate.
struct Reception
{
    /// Symbol rate, Bd: the one that was given, or that of the source.
    std::optional<double> symbolRate() const { return givenRate ? givenRate : source.symbolRate; }
    bool hasChannel(const ChannelChoice& wanted) const
    {
        return wanted.last() < source.valueCount();
    }
    /// Checks that the receiver can be used with the source; always true when the symbol clock is
    /// known, because then it is not used.
    Result<void> check() const;
    /// Settings for a pipeline. When the receiver is off, they hold only a given symbol rate and
    /// the bits of characters.
    ReceiverSettings used() const;
    /// Unit of the samples of what is received: "Hz" behind an FM demodulator, else empty.
    QString levelUnit(const SignalFormat& format) const;
    /// Samples of a frame; known only of signals that no receiver resamples.
    std::optional<double> frameLength(const SignalFormat& format) const;

    SignalFacts source;
    ChannelChoice channel;
    std::optional<double> givenRate; ///< Bd, overrides that of the source
    ReceiverSettings receiver;
};
