// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/feed/IqValues.h"
#include "workbench/feed/LevelRange.h"
#include "workbench/pipeline/Transport.h"

#include <algorithm>
#include <random>

/// Puts the points of a constellation into the values of the value tree: those of symbols that can
/// be trusted where the receiver decides on symbols, else the samples, thinned out to what a view
/// draws at ease. What a squelch silences is never shown. A signal without Q has no points.
///
/// The points come in data sets, each of as much signal that those a view keeps cover the gate. The
/// axes cross in the middle, and I and Q have the same scale.
class IqFeed
{
public:
    static constexpr std::size_t maxPointCount = 2048; ///< of a data set
    static constexpr std::int64_t setCount = 100;      ///< that an IQ view keeps

    /// Starts anew with a signal.
    void open(const SignalFormat& format);
    /// Shows the samples also where symbols are decided on: the trajectory between them.
    void setTrajectory(bool wanted);
    bool isTrajectory() const { return m_isTrajectory; }
    bool knowsSymbols() const { return m_hasDecisions; }
    /// Whether the signal has a Q.
    bool hasQ() const { return m_hasQ; }
    /// Whether the points are those of the symbols, at the instants of decision.
    bool showsDecisions() const { return m_hasDecisions && !m_isTrajectory; }
    /// Whether no point was put out since it was started anew, or shown.
    bool isEmpty() const { return m_isEmpty; }
    /// Samples of the signal that the points are to cover.
    void setGateLength(double samples);

    /// Takes what is played.
    void take(const BlockPart& part);
    /// Puts out the data sets that have become whole since the last call.
    void notify();
    /// Puts out the points of a gate, and no others: the views were emptied before.
    void show(const std::deque<BlockPart>& parts);

    /// Shows the square of I and Q in which a level of this magnitude fits.
    void setLevel(double level);
    /// Fits the axes to the points that are shown, whatever few of them lie far out, and follows.
    void fitLevels() { m_levels.follow(); }
    /// @param elapsed  s since the last call.
    void followLevels(double elapsed);
    const LevelRange& levels() const { return m_levels; }
    /// Where the axes end in the positive: of I and of Q.
    double iEnd() const { return m_levels.highest() * std::max(m_aspect, 1.0); }
    double qEnd() const { return m_levels.highest() * std::max(1.0 / m_aspect, 1.0); }
    /// Width of the plot divided by its height.
    void setAspect(double aspect);

private:
    struct Points
    {
        std::vector<double> i;
        std::vector<double> q;
    };

    void takeSymbols(const BlockPart& part);
    void takeSamples(const BlockPart& part);
    void add(double i, double q);
    void endSet();
    void noteMagnitudes(const Points& points);
    void showAxes();

    IqValues m_values;
    bool m_hasQ = true;
    bool m_hasDecisions = false;
    bool m_isEmpty = true;
    bool m_isTrajectory = false;
    std::int64_t m_setLength = 1;
    std::int64_t m_setNumber = 0; // of the open one
    Points m_open;
    std::deque<Points> m_whole; // to be put out
    std::minstd_rand m_choice;
    LevelRange m_levels{0.125};                  // of I and Q alike
    std::deque<std::vector<float>> m_magnitudes; // of some points of each set that is shown
    double m_aspect = 1.0;
};
