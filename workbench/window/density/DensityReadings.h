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

/// The figures of a density, in a table and in words, with the number of symbols that they are of:
/// all, or those that are kept.
class DensityReadings
{
    Q_DECLARE_TR_FUNCTIONS(DensityReadings)
public:
    /// The meanings of the figures, each after the name that is shown.
    static std::vector<std::pair<QString, QString>> meanings();
    /// @param eyeCount  number of lines, one for each eye, at most three.
    static ReadingTable* makeEyeTable(std::size_t eyeCount);
    static std::size_t lineCount(const EyeFiguredPtr& figured);
    static ReadingTable* makePointTable();

    /// @param unit           of levels; empty for none.
    /// @param symbolSeconds  length of a symbol, for times in seconds; none for times in symbols.
    void setUnits(const QString& unit, std::optional<double> symbolSeconds);
    /// @param figured  null while there are none.
    void show(ReadingTable& table, const EyeFiguredPtr& figured) const;
    void show(ReadingTable& table, const density::ErrorVectors::Figures& errors,
              std::int64_t symbolCount, std::int64_t leftOut) const;
    /// All figures, a name and a text each: value and interval, or why there is none.
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
