// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/sources/CsvRows.h"
#include "workbench/sources/CsvTimes.h"
#include "workbench/sources/Recording.h"

/// Layout of a file of separated values, as its beginning tells it. Before the rows of numbers
/// there may be a preamble, a row of names, and one of units below it.
struct CsvLayout
{
    Q_DECLARE_TR_FUNCTIONS(CsvLayout)
public:
    /// @param text     the file's beginning.
    /// @param isWhole  whether the text is all of the file; else its last row may be cut off.
    static Result<CsvLayout> of(const QByteArray& text, bool isWhole,
                                const Recording::Options& options);

    QVector<Message> notices; ///< what is amiss
    QStringList details;      ///< the preamble and the names of the columns, a line each
    std::int64_t begin = 0;   ///< of the text in the file, bytes: past a byte order mark
    char separator = ',';
    std::int64_t firstRow = 0;        ///< of numbers; the rows before it are counted from 0
    std::vector<std::size_t> columns; ///< that are the signal's channels, or I and Q
    bool isComplex = false;           ///< two columns are I and Q
    std::optional<double> sampleRate; ///< Hz
    CsvTimes times;                   ///< of the rows
    std::int64_t rowCount = 0;        ///< that are looked at here

private:
    struct Ramp;
    void splitRows(const QByteArray& text, bool isWhole);
    void findNumbers();
    void findNames();
    Result<void> findTime(const Recording::Options& options);
    Result<void> chooseColumns(const QStringList& wanted);
    bool isNumbers(std::size_t row) const;
    bool isNames(std::size_t row) const;
    Ramp ramp(std::size_t column) const;
    bool isClock(std::size_t column, const Ramp& ramp) const;
    QStringList words(std::size_t column) const;
    QString title(std::size_t column) const;
    std::optional<double> statedRate() const;

    std::vector<CsvRows::Row> m_rows;
    std::vector<std::size_t> m_numeric; // columns that hold numbers
    std::size_t m_width = 0;            // columns altogether
    QStringList m_names;                // of the columns; empty where there are none
    QStringList m_units;
    std::vector<std::size_t> m_clocks; // columns that count time or samples, no signals
};
