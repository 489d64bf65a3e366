// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/sources/CsvLayout.h"
#include "workbench/sources/Trouble.h"

#include <QFile>

#include <atomic>

/// Samples in a text file, one a row, whose columns are the channels. Cells that are missing or no
/// numbers are NaN. The file is read as the samples are asked for, so long files start at once and
/// take little memory; how many samples a long one has is not known before its end is reached.
class CsvSource : public SignalSource
{
    Q_DECLARE_TR_FUNCTIONS(CsvSource)
public:
    /// Whether a file has an ending of such files.
    static bool isCsv(const QString& fileName);
    static Result<Recording> open(const QString& fileName, const Recording::Options& options);
    ~CsvSource() override;

    std::optional<std::int64_t> sampleCount() const override;
    std::optional<Message> trouble() const override { return m_trouble.message(); }
    bool hasFailed() const override { return m_trouble.isFailure(); }
    std::int64_t position() const override { return m_position; }
    std::size_t read(std::vector<double>& block, std::size_t count) override;
    bool seek(std::int64_t position) override;

private:
    struct Mark
    {
        std::int64_t sample; // of the row that starts there; negative before the first one
        std::int64_t offset; // in the file, bytes
    };

    explicit CsvSource(const QString& fileName);
    static Result<Recording> finish(std::unique_ptr<CsvSource> source,
                                    const Recording::Options& options);
    void start(const Mark& mark);
    Mark markBefore(std::int64_t sample) const;
    bool countRows(const std::function<bool(double part)>& goOn);
    bool readOn();
    void end(bool isBroken);
    void takeRow(const CsvRows::Row& row);
    std::size_t available() const { return (m_ahead.size() - m_used) / m_layout.columns.size(); }

    QFile m_file;
    CsvLayout m_layout;
    std::atomic<std::int64_t> m_count = -1; // samples; negative before the end was reached
    Trouble m_trouble;
    std::int64_t m_position = 0;
    std::unique_ptr<CsvRows> m_rows;
    std::int64_t m_next = 0;       // sample of the next row that is split
    std::int64_t m_timedCount = 0; // samples whose times were looked at
    std::vector<Mark> m_marks;
    std::vector<double> m_ahead; // values from m_used on are those of the next samples
    std::size_t m_used = 0;
};
