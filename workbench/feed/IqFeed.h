// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/feed/IqValues.h"
#include "workbench/pipeline/Transport.h"

#include <random>

/// Puts the points of a constellation into the values of the value tree: those of symbols that can
/// be trusted where the receiver decides on symbols, else the samples, thinned out to what a view
/// draws at ease. What a squelch silences is never shown. A real signal lies on the I axis.
///
/// The points come in data sets, each of as much signal that those a view keeps cover the gate. The
/// axes cross in the middle, and I and Q have the same scale.
class IqFeed
{
public:
    static constexpr std::size_t maxPointCount = 2048; ///< of a data set
    static constexpr std::int64_t setCount = 100;      ///< that an IQ view keeps
    /// Notifications that a fit looks at, a second's worth.
    static constexpr int fitCount = 30;

    /// Starts anew with a signal.
    void open(const SignalFormat& format);
    /// Shows the samples also where symbols are decided on: the trajectory between them.
    void setTrajectory(bool wanted) { m_isTrajectory = wanted; }
    bool isTrajectory() const { return m_isTrajectory; }
    bool knowsSymbols() const { return m_hasDecisions; }
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
    /// Lets the views forget the points that they have, and shows those of a gate instead.
    void show(const std::deque<BlockPart>& parts);

    /// Shows the square of I and Q in which a level of this magnitude fits.
    void setLevel(double level);
    /// Fits the axes to the notifications of the next second, whatever few points lie far out.
    void fit();
    /// Width of the plot divided by its height.
    void setAspect(double aspect);

private:
    struct Points
    {
        std::vector<double> i;
        std::vector<double> q; ///< none of a real signal
    };

    void takeSymbols(const BlockPart& part);
    void takeSamples(const BlockPart& part);
    void add(double i, double q, bool hasQ);
    void endSet();
    void fitLevel();
    void showAxes();

    IqValues m_values;
    bool m_hasDecisions = false;
    bool m_isEmpty = true;
    bool m_isTrajectory = false;
    std::int64_t m_setLength = 1;
    std::int64_t m_setNumber = 0; // of the open one
    Points m_open;
    std::deque<Points> m_whole; // to be put out
    std::minstd_rand m_choice;
    std::vector<double> m_levels; // of the points that a fit has seen
    int m_fitLeft = 0;
    double m_level = 1.0;
    double m_aspect = 1.0;
};
