// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/feed/EyeFeed.h"
#include "workbench/feed/Gate.h"
#include "workbench/feed/IqFeed.h"
#include "workbench/feed/TimeFeed.h"

/// The feeds of the three views and the gate, which all take the samples that are played.
struct ViewFeeds
{
    /// Starts with a new signal.
    void open(const SignalFormat& format, const TimeScale& scale,
              std::optional<double> frameLength);
    /// Lets the gate follow the shown time, unless it is fixed, and lets eye and points cover the
    /// gate.
    /// @param length  of the signal, s; none when it is not known.
    void layOut(double sampleRate, std::optional<double> length);
    /// Takes samples that are played.
    void take(const BlockPart& part);
    /// Writes the samples that were taken since the last call.
    void notify();
    /// The next samples do not follow those that were taken.
    void jump();
    /// Whether the samples of the gate are those of the shown time; a fixed gate may have been
    /// played long ago.
    bool showsTimeOfGate(double sampleRate) const;
    /// Shows the gate in empty views.
    void showGate(double sampleRate);
    void showNothing();

    void setLevels(double lowest, double highest);
    void fitLevels();

    TimeFeed time;
    EyeFeed eye;
    IqFeed iq;
    Gate gate;
};
