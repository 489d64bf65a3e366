// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/feed/EyeFeed.h"
#include "workbench/feed/Gate.h"
#include "workbench/feed/IqFeed.h"
#include "workbench/feed/TimeFeed.h"

/// The feeds of the three views and the gate, which all take the samples that play.
struct ViewFeeds
{
    /// Starts anew with a signal.
    void open(const SignalFormat& format, const TimeScale& scale,
              std::optional<double> frameLength);
    /// Lets the gate follow the time shown, unless it is fixed, and eye and points cover the gate.
    /// @param length  of the signal, s; none where it is not known.
    void layOut(double sampleRate, std::optional<double> length);
    /// Takes samples that are played.
    void take(const BlockPart& part);
    /// Puts out what was taken since the last call.
    void notify();
    /// The next samples do not follow those that were taken.
    void jump();
    /// Whether the samples of the gate are those of the time shown: what was fixed may have come by
    /// long ago.
    bool showsTimeOfGate(double sampleRate) const;
    /// Shows the gate in views that were emptied.
    void showGate(double sampleRate);
    void showNothing();

    void setLevels(double lowest, double highest);
    void fitLevels();

    TimeFeed time;
    EyeFeed eye;
    IqFeed iq;
    Gate gate;
};
