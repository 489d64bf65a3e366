// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/sources/Recording.h"
#include "workbench/sources/Trouble.h"

/// A recording in any format that libsndfile reads: WAV, FLAC, AIFF and many more, with any number
/// of channels; two of them are I and Q of one complex signal. Whole numbers become -1..1, floating
/// point samples stay as they are. The file is read as the samples are asked for, so long files
/// start at once and take little memory.
class AudioSource : public SignalSource
{
    Q_DECLARE_TR_FUNCTIONS(AudioSource)
public:
    /// @param sampleRate  Hz, > 0; overrides the file's.
    static Result<Recording> open(const QString& fileName, std::optional<double> sampleRate);
    ~AudioSource() override;

    std::optional<std::int64_t> sampleCount() const override { return m_sampleCount; }
    std::optional<Message> trouble() const override { return m_trouble.message(); }
    bool hasFailed() const override { return m_trouble.isFailure(); }
    std::int64_t position() const override;
    std::size_t read(std::vector<double>& block, std::size_t count) override;
    bool seek(std::int64_t position) override;

private:
    static Result<void> check(const class AudioFile& file);
    static std::optional<Message> loss(AudioFile& file);
    AudioSource(std::unique_ptr<AudioFile> file, std::optional<double> sampleRate, bool isWhole);
    void sayEnd();

    const std::unique_ptr<AudioFile> m_file;
    const bool m_isWhole; // as far as is known
    std::optional<std::int64_t> m_sampleCount;
    Trouble m_trouble;
};
