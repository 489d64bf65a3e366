// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LinearSignal.h"
#include "Random.h"

#include <QStringList>

#include <functional>
#include <optional>
#include <vector>

/// What one figure must be.
struct Truth
{
    enum class Kind {
        Value,     ///< this value
        Magnitude, ///< this value or its negative
        AtLeast,   ///< this value or more
        Nothing,   ///< null, with a reason
        Scatter,   ///< r.m.s. of the errors of another figure, within a factor of 2
        Same       ///< of all forms of the signal as of the first one
    };

    QString path; ///< in the JSON object, such as eye.levels.0.mean; # is the length of an array
    Kind kind = Kind::Value;
    double value = 0.0;
    /// Goal: how far the mean error, and each, may be off for reasons other than chance...
    double tolerance = 0.0;
    /// ...and how far chance moves one trial, r.m.s. The mean may be off by two deviations of a
    /// mean more, each trial by four of its own.
    double deviation = 0.0;
    QString of = {}; ///< Scatter: the other figure
};

/// A kind of signal, how it is measured and what must come out.
struct Case
{
    QString group;
    QString name;
    QStringList arguments;
    bool isComplex = true;
    std::function<Signal(Random&)> make;
    std::vector<Truth> truths;
    /// More forms of the signal, measured as well; truths that are not of the kind Same are those
    /// of the first form only.
    std::vector<std::function<Signal(const Signal&)>> forms;
    int leastTrials = 1;
    std::optional<LinearSignal> linear = {}; ///< what other receivers can be told of the signal
};

std::vector<Case> linearCases();
std::vector<Case> eyeCases();
std::vector<Case> otherCases();
