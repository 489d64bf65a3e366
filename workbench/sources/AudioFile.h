// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDateTime>
#include <QString>

#include <sndfile.h>

#include <cstdint>
#include <memory>

/// A file that libsndfile reads. Its header is read again after the file was written to or a
/// decoder failed; reading ends when the header has changed.
///
/// A WAV file whose size was left open, as by programs that write into a pipe, is read to the end
/// of the file.
class AudioFile
{
public:
    explicit AudioFile(const QString& path);
    ~AudioFile();

    const QString& path() const { return m_path; }
    bool isOpen() const { return m_opened.handle != nullptr; }
    /// Channels, sample rate and so on, as they were when the file was opened.
    const SF_INFO& info() const { return m_info; }
    /// What libsndfile found in the file, also when it could not open it.
    QString log() const;
    /// The system's error when opening or reading failed; else empty.
    QString error() const;
    /// Whether the file was replaced since it was opened; then no more is read.
    bool hasChanged() const { return m_hasChanged; }
    /// Whether a size in a header is one that programs write when they do not know it.
    static bool isSizeOpen(std::int64_t size);

    std::int64_t position() const { return m_position; }
    /// @param values  room for count samples of all channels.
    /// @return samples read.
    std::size_t read(double* values, std::size_t count);
    bool seek(std::int64_t sample);

private:
    struct Stream;
    struct Opened
    {
        std::unique_ptr<Stream> stream; // what the handle reads; null where it is the file itself
        std::unique_ptr<SNDFILE, int (*)(SNDFILE*)> handle{nullptr, sf_close};
    };

    static Opened open(const QString& path, SF_INFO& info);
    bool openAgain();
    bool isTouched() const;
    bool moveTo(std::int64_t sample);

    const QString m_path;
    SF_INFO m_info{};
    Opened m_opened;
    QDateTime m_written; // when it was, and its size
    qint64 m_size;
    bool m_hasChanged = false;
    QString m_error;             // of what was open before
    std::int64_t m_position = 0; // sample that is read next
};
