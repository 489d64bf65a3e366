// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Random.h"

#include <limits>

/// A real signal that goes from level to level by edges of a known shape, at known times. Times are
/// in symbols (UI).
struct EyeSignal
{
    enum class Edge {
        RaisedCosine, ///< (1 + sin(pi t / w)) / 2, from -w/2 to w/2
        Gaussian,     ///< integral of a normal density of deviation w
        Held          ///< none: each sample has the level of its symbol
    };

    std::vector<double> levels = {-1.0, 1.0};
    double samplesPerSymbol = 8.0; ///< nominal
    double clockPpm = 0.0;
    int symbolCount = 4000;
    Edge edge = Edge::RaisedCosine;
    double edgeWidth = 0.7;
    double noise = 0.0;          ///< deviation
    double noiseBandwidth = 1.5; ///< symbol rates
    double jitter = 0.0;         ///< r.m.s., Gaussian, independent from edge to edge
    double sineJitter = 0.0;     ///< r.m.s.
    double sinePeriod = 9.7;     ///< symbols
    double lag = 0.0;            ///< of rising edges behind falling ones
    bool isAlternating = false;  ///< lowest, highest, lowest... instead of random levels

    Signal make(Random& random) const;

    /// Of an edge about its middle, from 0 to 1.
    double step(double time) const;
    /// Of step in the middle, 1 / UI; infinite where held.
    double slope() const;
    /// R.m.s. of an edge's time at the middle between two levels: its jitter, and noise over slope.
    /// @param distance  of the levels
    double edgeJitter(double distance) const;
};
