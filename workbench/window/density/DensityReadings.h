// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "density/ErrorVectors.h"
#include "workbench/window/density/EyeFiguring.h"

#include <QCoreApplication>
#include <QString>

#include <optional>
#include <utility>
#include <vector>

class ReadingTable;

/// What a density measures, below it and in words: of all its symbols, or of those it keeps, and of
/// how many.
class DensityReadings
{
    Q_DECLARE_TR_FUNCTIONS(DensityReadings)
public:
    /// What the figures mean: names as they are shown.
    static std::vector<std::pair<QString, QString>> meanings();
    /// @param eyeCount  that it has a line for; more than three count as three.
    static ReadingTable* makeEyeTable(std::size_t eyeCount);
    static std::size_t lineCount(const EyeFiguredPtr& figured);
    static ReadingTable* makePointTable();

    /// @param unit           of levels; empty: none.
    /// @param symbolSeconds  times are in seconds; none: in symbols.
    void setUnits(const QString& unit, std::optional<double> symbolSeconds);
    /// @param figured  null: nothing yet.
    void show(ReadingTable& table, const EyeFiguredPtr& figured) const;
    void show(ReadingTable& table, const density::ErrorVectors::Figures& errors,
              std::int64_t symbolCount, std::int64_t leftOut) const;
    /// One after the other, with the interval of each, or why there is none: a name and a text.
    std::vector<std::pair<QString, QString>> lines(const EyeFigured& figured) const;
    std::vector<std::pair<QString, QString>>
    lines(const density::ErrorVectors::Figures& errors) const;
    /// "of 1,000 symbols, left out: 12".
    static QString gate(std::int64_t kept, std::int64_t all, std::int64_t leftOut);

private:
    QString time(const density::Figure& figure, int decimals) const;

    QString m_unit;
    std::optional<double> m_symbolSeconds;
};
