// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/player/Hints.h"
#include "workbench/sources/ModulationSource.h"
#include "workbench/sources/RecordingOpener.h"

#include <QFile>
#include <QTemporaryDir>

#include <archive.h>
#include <archive_entry.h>
#include <gtest/gtest.h>
#include <sndfile.h>

#include <cmath>
#include <vector>

/// A folder for the length of a test.
struct TestFolder
{
    QString path(const char* name) const { return folder.filePath(QString::fromUtf8(name)); }
    QTemporaryDir folder;
};

/// Writes a recording with libsndfile: PCM of 16 bits in a WAV file unless told otherwise.
/// @param samples  sample by sample, the channels beside one another.
inline void writeRecording(const QString& name, int sampleRate, int channels,
                           const std::vector<double>& samples,
                           int format = SF_FORMAT_WAV | SF_FORMAT_PCM_16)
{
    SF_INFO info{};
    info.samplerate = sampleRate;
    info.channels = channels;
    info.format = format;
    SNDFILE* file = sf_open(QFile::encodeName(name).constData(), SFM_WRITE, &info);
    sf_write_double(file, samples.data(), static_cast<sf_count_t>(samples.size()));
    sf_close(file);
}

/// QPSK at 6000 Bd in one file of complex numbers at 48 kHz that tells no symbol rate.
inline void writeDemo(const QString& name)
{
    std::vector<double> samples;
    ModulationSource(ModulationSettings()).read(samples, 60000);
    writeRecording(name, 48000, 2, samples, SF_FORMAT_WAV | SF_FORMAT_FLOAT);
}

inline void writeFile(const QString& name, const QByteArray& content)
{
    QFile file(name);
    file.open(QIODevice::WriteOnly);
    file.write(content);
}

inline void writeArchive(const QString& name,
                         const std::vector<std::pair<QByteArray, QByteArray>>& files)
{
    archive* writer = archive_write_new();
    archive_write_set_format_pax(writer);
    archive_write_open_filename(writer, QFile::encodeName(name).constData());
    archive_entry* entry = archive_entry_new();
    for (const auto& [path, content] : files) {
        archive_entry_clear(entry);
        archive_entry_set_pathname(entry, path.constData());
        archive_entry_set_filetype(entry, AE_IFREG);
        archive_entry_set_size(entry, content.size());
        archive_write_header(writer, entry);
        archive_write_data(writer, content.constData(), static_cast<std::size_t>(content.size()));
    }
    archive_entry_free(entry);
    archive_write_free(writer);
}

/// A sine of amplitude 0.5 that is not at a peak at the ends of any round number of samples.
inline std::vector<double> sine(std::size_t count, double samplesPerPeriod = 40.0)
{
    std::vector<double> samples(count);
    for (std::size_t i = 0; i < count; ++i)
        samples[i] =
            0.5 * std::sin(6.283185307179586 * (static_cast<double>(i) + 0.3) / samplesPerPeriod);
    return samples;
}

inline std::vector<double> readAll(SignalSource& source, std::size_t blockLength)
{
    std::vector<double> all;
    std::vector<double> block;
    while (source.read(block, blockLength) > 0)
        all.insert(all.end(), block.begin(), block.end());
    return all;
}

struct Recordings : testing::Test, TestFolder
{
    std::unique_ptr<SignalSource> open(const QString& name, const Recording::Options& options = {})
    {
        auto recording = RecordingOpener::open(name, options);
        why = recording ? QString() : Hints::text(recording.error());
        if (!recording)
            return nullptr;
        notices = Hints::texts(recording->notices);
        details = recording->details;
        return std::move(recording->source);
    }
    QString why;
    QStringList notices;
    QStringList details;
};
