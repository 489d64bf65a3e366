// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/sources/Recording.h"

/// A recording in any format that libsndfile reads: WAV, FLAC, AIFF and many more, with any number
/// of channels; two of them are I and Q of one complex signal. Whole numbers become -1..1, floating
/// point samples stay as they are. The file is read as the samples are asked for, so long files
/// start at once and take little memory.
class AudioSource : public SignalSource
{
    Q_DECLARE_TR_FUNCTIONS(AudioSource)
public:
    /// Opens a file, and says in the recording what came of it.
    /// @param sampleRate  Hz, > 0; overrides the file's.
    static void open(Recording& recording, const QString& fileName,
                     std::optional<double> sampleRate);
    ~AudioSource() override;

    QString name() const override;
    double sampleRate() const override { return m_sampleRate; }
    int channelCount() const override;
    bool isComplex() const override;
    std::optional<std::int64_t> sampleCount() const override;
    std::int64_t position() const override;
    std::size_t read(std::vector<double>& block, std::size_t count) override;
    bool seek(std::int64_t position) override;

private:
    struct File;
    static QString flaw(const File& file);
    static QString loss(File& file);
    AudioSource(std::unique_ptr<File> file, std::optional<double> sampleRate);

    std::unique_ptr<File> m_file;
    double m_sampleRate;
};
