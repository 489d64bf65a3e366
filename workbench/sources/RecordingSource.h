// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/sources/SignalSource.h"

#include <QCoreApplication>

#include <memory>

/// A recording in any format that libsndfile reads: WAV, FLAC, AIFF and many more, with any number
/// of channels; two of them are I and Q of one complex signal. Whole numbers become -1..1, floating
/// point samples stay as they are. The file is read as the samples are asked for, so long files
/// start at once and take little memory.
class RecordingSource : public SignalSource
{
    Q_DECLARE_TR_FUNCTIONS(RecordingSource)
public:
    /// Opens a file.
    /// @param why  when it cannot be read: one sentence that says why and what to do.
    /// @return null when the file cannot be read or holds no samples.
    static std::unique_ptr<RecordingSource> open(const QString& fileName, QString& why);
    ~RecordingSource() override;

    QString name() const override;
    double sampleRate() const override;
    int channelCount() const override;
    bool isComplex() const override;
    std::optional<std::int64_t> sampleCount() const override;
    std::int64_t position() const override { return m_position; }
    std::size_t read(std::vector<double>& block, std::size_t count) override;
    bool seek(std::int64_t position) override;

private:
    struct File;
    static QString obstacle(const QString& fileName);
    static QString flaw(const File& file);
    explicit RecordingSource(std::unique_ptr<File> file);

    std::unique_ptr<File> m_file;
    std::int64_t m_position = 0;
};
