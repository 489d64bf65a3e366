// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/feed/EyeCutter.h"
#include "workbench/feed/EyeValues.h"
#include "workbench/feed/LevelRange.h"

/// Writes the traces of an eye into the value tree: so many of all possible traces that those an
/// eye view keeps cover the gate.
class EyeFeed
{
public:
    /// Largest number of samples that an eye view can keep.
    static constexpr std::size_t capacity = 10000;

    EyeFeed();

    /// Starts with a new signal.
    void open(const SignalFormat& format);
    /// Sets the number of symbols of a trace, clamped to 1 to EyeCut::maxSymbolCount. Starts anew.
    void setSymbolCount(int count);
    /// Bandwidth of the low-pass before the eye, see EyeCut: none below EyeCut::minBandwidth, at
    /// most EyeCut::maxBandwidth. Starts anew.
    void setBandwidth(double bandwidth);
    const EyeCut& cut() const { return m_cut; }
    /// Sets how many samples of the signal the traces have to cover.
    void setGateLength(double samples);

    /// Takes samples that are played, after those of the last call or anywhere else.
    void take(const BlockPart& part) { m_cutter->push(part); }
    /// Writes the traces that were cut since the last call, in one notification.
    void notify();
    /// Writes the traces of a gate only; the views must be empty.
    void show(const std::deque<BlockPart>& parts);
    /// Whether there was no trace since the last start.
    bool isEmpty() const { return m_kept.empty(); }

    void setLevels(double lowest, double highest);
    /// Fits the axis to the levels of the newest traces, and follows them.
    void fitLevels() { m_levels.follow(); }
    /// @param elapsed  s since the last call.
    void followLevels(double elapsed);
    const LevelRange& levels() const { return m_levels; }

private:
    void restart();
    std::int64_t stepFor(double traceCount) const;

    EyeValues m_values;
    EyeCut m_cut;
    LevelRange m_levels{0.05};
    std::unique_ptr<EyeCutter> m_cutter;
    double m_gateLength = 1.0;
    std::vector<double> m_kept; // newest traces
    std::vector<double> m_samples;
    std::vector<double> m_markers;
};
