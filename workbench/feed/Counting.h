// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/feed/DensityFeed.h"
#include "workbench/feed/Gate.h"

#include <cstdint>
#include <optional>
#include <vector>

/// Gives all symbols that play to those who count them, and keeps the newest samples of a signal
/// that does not come again, so that the place of a symbol can be shown.
class Counting
{
public:
    /// A stretch of signal.
    struct Stretch
    {
        std::int64_t position = 0; ///< of the first sample
        double end = 0.0;          ///< time of the last one, s
        std::vector<double> samples;
    };

    /// Starts anew with another signal, or with other symbols of it.
    /// @param bandwidth     of the low-pass of the traces, as in EyeCut.
    /// @param comesAgain  whether samples can be had once more: then none is kept.
    void open(const SignalFormat& format, double bandwidth, bool isLive, bool comesAgain);
    /// Keeps the samples of the symbols that are kept, and of the shown time, s, before them.
    void follow(const SignalFormat& format, double shown);
    /// Tells a sink of the symbols that are in the gate, and of all that are played from then on;
    /// null: nobody counts.
    void setSink(DensityFeed::Kind kind, DensityFeed::Sink sink, const Gate& gate);
    const DensityFeed& of(DensityFeed::Kind kind) const
    {
        return kind == DensityFeed::Kind::Traces ? m_traces : m_points;
    }
    /// Whether traces are counted through another low-pass.
    bool isOfOtherBandwidth(double bandwidth) const
    {
        return m_traces.isOn() && m_traces.bandwidth() != bandwidth;
    }
    /// Takes what is played; what is in the gate counts.
    void take(const BlockPart& part, const Gate& gate);
    /// The recording is at its end.
    void finish() { m_traces.finish(); }
    /// Waits until all that was played is with the sinks.
    void wait();
    /// Keeps no sample of before.
    void jump() { m_history.clear(); }

    /// The kept samples about a time, s, or up to the newest. None where that one is not kept.
    std::optional<Stretch> around(double seconds, double length) const;

private:
    bool isOn() const { return m_traces.isOn() || m_points.isOn(); }

    DensityFeed m_traces{DensityFeed::Kind::Traces};
    DensityFeed m_points{DensityFeed::Kind::Points};
    Gate m_history;
    double m_sampleRate = 0.0;
    bool m_comesAgain = false;
};
