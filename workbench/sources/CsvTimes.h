// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/sources/CsvRows.h"
#include "workbench/sources/Result.h"

#include <QCoreApplication>
#include <QString>

#include <cstdint>
#include <optional>

/// Checks that the times in a column are evenly spaced, as far as their digits tell.
class CsvTimes
{
    Q_DECLARE_TR_FUNCTIONS(CsvTimes)
public:
    CsvTimes() = default; ///< no times
    /// @param title      of the column, for people.
    /// @param usualStep  from a row to the next one, in the column's unit.
    /// @param rows       the first rows; they tell how the times are written.
    CsvTimes(std::size_t column, const QString& title, double usualStep,
             const std::vector<CsvRows::Row>& rows);

    /// Mean step from one row to the next where no rows are missing, >= 0.
    double step() const { return m_step; }

    /// Takes the next row, counted from 1. Returns true for the first row that is off, and for the
    /// first one that goes back.
    bool take(std::int64_t number, const CsvRows::Row& row);
    /// The first fault so far, if there was any.
    std::optional<Message> notice() const;

private:
    void learn(std::string_view cell);
    double resolution(double time) const;

    std::size_t m_column = CsvRows::maxCellCount; // or more: none
    QString m_title;
    double m_step = 1.0;
    int m_decimals = -400;  // most that a time has...
    int m_digits = 1;       // ...and most significant digits
    bool m_isExact = false; // times are written with all their digits
    double m_last = 0.0;
    std::int64_t m_lastNumber = 0; // of its row; 0 before the first one
    std::int64_t m_firstUneven = 0;
    std::int64_t m_firstBack = 0;
};
