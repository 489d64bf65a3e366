// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/feed/IqValues.h"
#include "workbench/feed/LevelRange.h"
#include "workbench/pipeline/Transport.h"

#include <algorithm>
#include <random>

/// Writes the points of a constellation into the value tree: the good symbols when the receiver
/// decides on symbols, else the samples, decimated to what a view draws easily. Silenced samples
/// are never shown. A signal without Q has no points.
///
/// The points come in data sets, each of so much signal that those a view keeps cover the gate. The
/// axes are symmetric to 0, and I and Q have the same scale.
class IqFeed
{
public:
    static constexpr std::size_t maxPointCount = 2048; ///< of a data set
    static constexpr std::int64_t setCount = 100;      ///< that an IQ view keeps

    /// Starts with a new signal.
    void open(const SignalFormat& format);
    /// Shows the samples even if symbols are decided on: the trajectory between them.
    void setTrajectory(bool wanted);
    bool isTrajectory() const { return m_isTrajectory; }
    bool knowsSymbols() const { return m_hasDecisions; }
    /// Whether the signal has a Q.
    bool hasQ() const { return m_hasQ; }
    /// Whether the points are those of the symbols, at the instants of decision.
    bool showsDecisions() const { return m_hasDecisions && !m_isTrajectory; }
    /// Whether no point was written since the last start.
    bool isEmpty() const { return m_isEmpty; }
    /// Sets how many samples of the signal the points have to cover.
    void setGateLength(double samples);

    /// Takes samples that are played.
    void take(const BlockPart& part) { m_taken.push_back(part); }
    /// Writes the data sets that were completed since the last call.
    void notify();
    /// Writes the points of a gate only; the views must be empty.
    void show(const std::deque<BlockPart>& parts);

    /// Sets axes of I and Q in which a level of this magnitude fits.
    void setLevel(double level);
    /// Fits the axes to the points that are shown, except a few far out, and follows them.
    void fitLevels() { m_levels.follow(); }
    /// @param elapsed  s since the last call.
    void followLevels(double elapsed);
    const LevelRange& levels() const { return m_levels; }
    /// Positive ends of the axes of I and Q.
    double iEnd() const { return m_levels.highest() * std::max(m_aspect, 1.0); }
    double qEnd() const { return m_levels.highest() * std::max(1.0 / m_aspect, 1.0); }
    /// Sets the width of the plot divided by its height.
    void setAspect(double aspect);

private:
    struct Points
    {
        std::vector<double> i;
        std::vector<double> q;
    };

    void dropOld();
    void fillSets(const BlockPart& part);
    void takeSymbols(const BlockPart& part);
    void takeSamples(const BlockPart& part);
    void add(double i, double q);
    void endSet();
    void keepMemory(Points&& points);
    void noteMagnitudes(const Points& points);
    void showAxes();

    IqValues m_values;
    bool m_hasQ = true;
    bool m_hasDecisions = false;
    bool m_isEmpty = true;
    bool m_isTrajectory = false;
    std::int64_t m_setLength = 1;
    std::int64_t m_setNumber = 0;  // of the open set
    std::deque<BlockPart> m_taken; // since the last notification
    Points m_open;
    std::deque<Points> m_whole;  // sets to be written
    std::vector<Points> m_spare; // whose memory is used again
    std::minstd_rand m_choice;
    LevelRange m_levels{0.125};                  // of I and Q alike
    std::deque<std::vector<float>> m_magnitudes; // of some points of each shown set
    double m_aspect = 1.0;
};
