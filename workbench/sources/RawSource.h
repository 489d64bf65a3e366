// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/sources/Recording.h"
#include "workbench/sources/Trouble.h"

#include <QCoreApplication>
#include <QFile>

#include <memory>

/// Format and places of the samples in a file.
struct RawLayout
{
    struct Chunk
    {
        std::int64_t firstSample; ///< of the chunk; the first chunk's is 0, later ones are larger
        std::int64_t offset;      ///< of it in the file, bytes
    };

    /// Bytes of a sample of all channels.
    std::int64_t sampleSize() const
    {
        return static_cast<std::int64_t>(format.byteCount()) * format.valueCount() * channelCount;
    }

    SampleFormat format;
    int channelCount = 1;
    double sampleRate = 1.0;           ///< Hz
    std::optional<double> symbolRate;  ///< Bd, where known
    std::vector<Chunk> chunks{{0, 0}}; ///< each up to the next one's first sample
    std::int64_t end = 0;              ///< of the samples in the file, bytes
};

/// Samples of one format at known places in a file. They are read on demand, so that long files
/// start at once and take little memory. A file that becomes shorter meanwhile ends there and
/// reports trouble.
class RawSource : public SignalSource
{
    Q_DECLARE_TR_FUNCTIONS(RawSource)
public:
    /// Opens a file as the source of a recording, and adds to its notices and details.
    /// @param name  of the recording, for people.
    static Result<void> open(Recording& recording, const QString& name, const QString& fileName,
                             RawLayout layout);
    ~RawSource() override;

    std::optional<std::int64_t> sampleCount() const override { return m_count; }
    std::optional<Message> trouble() const override { return m_trouble.message(); }
    bool hasFailed() const override { return m_trouble.isFailure(); }
    std::int64_t position() const override { return m_position; }
    std::size_t read(std::vector<double>& block, std::size_t count) override;
    bool seek(std::int64_t position) override;

private:
    RawSource(const QString& name, const QString& fileName, RawLayout layout);
    std::int64_t remainder() const;

    QFile m_file;
    RawLayout m_layout;
    std::int64_t m_count = 0; // does not change after opening
    std::int64_t m_position = 0;
    std::vector<char> m_bytes;
    Trouble m_trouble;
};
