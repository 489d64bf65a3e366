// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Case.h"

#include <QJsonObject>

/// How a figure of all trials compares with its truth.
struct Result
{
    QString path;
    Truth::Kind kind = Truth::Kind::Value;
    double truth = 0.0;
    double meanError = 0.0;
    double deviation = 0.0; ///< of the errors
    double worst = 0.0;     ///< largest error
    double goal = 0.0;      ///< of the mean error
    bool isGood = false;
    QString remark; ///< why not, where the numbers do not say it
};

/// @param trials  of each trial the objects of all forms of the signal; empty where not measured.
Result compare(const Truth& truth, const std::vector<std::vector<QJsonObject>>& trials);

/// A case's results, for a terminal.
QString asText(const QString& name, const std::vector<Result>& results);

struct Outcome
{
    QString group;
    QString name;
    std::vector<Result> results;
};
/// Tables of all outcomes, one a group: a row a case, a column a figure, in each cell mean error ±
/// deviation of the errors (goal of the mean error), or mean (least).
QString asMarkdown(const std::vector<Outcome>& outcomes);
