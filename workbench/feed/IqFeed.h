// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/feed/IqValues.h"
#include "workbench/measure/ConstellationReadings.h"
#include "workbench/sources/SignalSource.h"

#include <cstdint>
#include <optional>
#include <random>
#include <vector>

/// Puts the points of a constellation into the values of the value tree: one a symbol where the
/// source knows the symbols' clock exactly, else the samples as they come, thinned out to what a
/// view draws at ease. A real signal lies on the I axis.
///
/// The axes cross in the middle, and I and Q have the same scale.
class IqFeed
{
public:
    /// Most points of a notification.
    static constexpr std::size_t maxPointCount = 2048;
    /// Notifications that a fit looks at, a second's worth.
    static constexpr int fitCount = 30;

    /// Starts anew with a signal of a source.
    /// @param symbolRate  Bd, overrides what the source says: then each sample is a point, and one
    ///                    of a symbol where this is the sample rate.
    void open(const SignalSource& source, std::optional<double> symbolRate);

    /// Shows the samples also where the symbols are known: the trajectory between them.
    void setTrajectory(bool wanted);
    bool isTrajectory() const { return m_isTrajectory; }
    /// Whether the clock of the symbols is known exactly.
    bool knowsSymbols() const { return m_samplesPerSymbol.has_value(); }
    /// Whether the points are those of the symbols, at the instants of decision.
    bool showsDecisions() const { return m_samplesPerSymbol && !m_isTrajectory; }

    /// Takes the next samples, from a position on.
    /// @param q  as many as i, or none.
    void take(std::int64_t position, const std::vector<double>& i, const std::vector<double>& q);
    /// Puts out what was taken since the last call.
    void notify();

    /// Lets the views forget the points that they have.
    void showNothing();

    /// What the newest points measure against those of a modulation; none where they are not those
    /// of symbols, or too few.
    std::optional<ConstellationReadings>
    measure(const std::vector<std::complex<double>>& ideal) const;
    /// The newest points, at most maxPointCount; Q is empty where there is none.
    const std::vector<double>& newestI() const { return m_newestI; }
    const std::vector<double>& newestQ() const { return m_newestQ; }

    /// Shows the square of I and Q in which a level of this magnitude fits.
    void setLevel(double level);
    /// Fits the axes to the notifications of the next second, whatever few points lie far out.
    void fit();
    /// Width of the plot divided by its height.
    void setAspect(double aspect);

private:
    void leaveOutGaps();
    void thinOut();
    void keep();
    void fitLevel();
    void showAxes();

    IqValues m_values;
    bool m_isTrajectory = false;
    std::optional<double> m_samplesPerSymbol; // where the clock is known
    double m_firstSymbol = 0.0;
    std::vector<double> m_i; // of the next notification
    std::vector<double> m_q;
    std::vector<double> m_newestI; // newest points
    std::vector<double> m_newestQ;
    std::minstd_rand m_choice;
    std::vector<double> m_levels; // of the points that a fit has seen
    int m_fitLeft = 0;
    double m_level = 1.0;
    double m_aspect = 1.0;
};
