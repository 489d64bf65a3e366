// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/sources/Sigmf.h"

#include "workbench/sources/PlainText.h"
#include "workbench/sources/SigmfArchive.h"
#include "workbench/sources/SigmfMetadata.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace {

const QLatin1String metaEnding(".sigmf-meta");
const QLatin1String dataEnding(".sigmf-data");
const QLatin1String collectionEnding(".sigmf-collection");
const QLatin1String archiveEnding(".sigmf");

/// A file's name with another ending.
QString withEnding(const QString& name, QLatin1String ending, QLatin1String other)
{
    return name.left(name.size() - ending.size()) + other;
}

// Largest size of samples that are compared with their checksum, bytes: it takes about a second.
constexpr std::int64_t maxCheckedSize = 256 << 20;

} // namespace

/// The bytes of a file from begin to end.
struct Sigmf::Dataset
{
    QString fileName;
    std::int64_t begin;
    std::int64_t end;
};

bool Sigmf::isSigmf(const QString& fileName)
{
    const auto hasEnding = [&fileName](QLatin1String ending) { return fileName.endsWith(ending); };
    return hasEnding(metaEnding) || hasEnding(dataEnding) || hasEnding(archiveEnding) ||
           hasEnding(collectionEnding);
}

Result<Recording> Sigmf::open(const QString& fileName, const Recording::Options& options)
{
    if (fileName.endsWith(collectionEnding))
        return failure(tr("a collection lists recordings; open one of them"));
    return fileName.endsWith(archiveEnding) ? openArchive(fileName, options)
                                            : openFiles(fileName, options);
}

Result<Recording> Sigmf::openFiles(const QString& fileName, const Recording::Options& options)
{
    QString metaName = fileName;
    if (fileName.endsWith(dataEnding))
        metaName = withEnding(fileName, dataEnding, metaEnding);
    const QFileInfo metaFile(metaName);
    if (const auto checked = Recording::checkFile(metaName); !checked)
        return failure(tr("its metadata %1: %2")
                           .arg(plainText(metaFile.fileName()), checked.error().sentence));
    QFile file(metaName);
    if (!file.open(QIODevice::ReadOnly))
        return failure(tr("cannot be read (%1)").arg(file.errorString()));
    const qint64 size = std::min<qint64>(file.size(), SigmfMetadata::maxSize + 1);
    const QByteArray json = file.read(size);
    if (json.size() < size)
        return failure(tr("cannot be read (%1)").arg(file.errorString()));
    const auto metadata = SigmfMetadata::parse(json, options.sampleRate);
    if (!metadata)
        return tl::unexpected(metadata.error());
    QString dataName = withEnding(metaName, metaEnding, dataEnding);
    if (!metadata->dataset.isEmpty())
        dataName = metaFile.dir().filePath(metadata->dataset);
    const auto samples = Recording::checkFile(dataName);
    if (!samples && metadata->isMetadataOnly)
        return failure(tr("these are metadata only, meant to be without samples"));
    if (!samples)
        return failure(
            tr("its samples %1: %2")
                .arg(plainText(QFileInfo(dataName).fileName()), samples.error().sentence));
    return openSamples(*metadata, metaFile.fileName(), {dataName, 0, QFileInfo(dataName).size()},
                       options);
}

Result<Recording> Sigmf::openArchive(const QString& fileName, const Recording::Options& options)
{
    const auto archive = SigmfArchive::read(fileName);
    if (!archive)
        return tl::unexpected(archive.error());
    const auto metadata = SigmfMetadata::parse(archive->metadata, options.sampleRate);
    if (!metadata)
        return tl::unexpected(metadata.error());
    QString dataName = withEnding(archive->metaName, metaEnding, dataEnding);
    if (!metadata->dataset.isEmpty())
        dataName = QFileInfo(archive->metaName).dir().filePath(metadata->dataset);
    const auto data = archive->files.find(dataName);
    if (data == archive->files.end())
        return failure(
            tr("the archive holds no samples %1 beside the metadata").arg(plainText(dataName)));
    const SigmfArchive::Span span = data->second;
    auto recording = openSamples(*metadata, QFileInfo(fileName).fileName(),
                                 {fileName, span.offset, span.offset + span.size}, options);
    if (!recording)
        return recording;
    if (archive->isCutOff)
        recording->notices += tr("the archive was cut off, the samples that are left are shown");
    if (archive->recordingCount > 1)
        recording->notices += tr("the archive holds %1 recordings, %2 is shown; unpack it to open "
                                 "the others")
                                  .arg(archive->recordingCount)
                                  .arg(plainText(archive->metaName));
    return recording;
}

Result<Recording> Sigmf::openSamples(const SigmfMetadata& metadata, const QString& name,
                                     const Dataset& dataset, const Recording::Options& options)
{
    Recording recording;
    recording.notices = metadata.notices;
    recording.details = metadata.details;
    RawLayout layout = metadata.layout;
    for (RawLayout::Chunk& chunk : layout.chunks)
        chunk.offset += dataset.begin;
    layout.end = dataset.end - metadata.trailingBytes;
    layout.sampleRate = recording.orAssumed(metadata.sampleRate);
    if (layout.symbolRate > layout.sampleRate)
        layout.symbolRate.reset();
    if (const auto raw = RawSource::open(recording, name, dataset.fileName, layout); !raw)
        return tl::unexpected(raw.error());
    if (metadata.sampleCount > recording.source->sampleCount())
        recording.notices += tr("it was cut off: the metadata speak of %1 samples, %2 are there")
                                 .arg(metadata.sampleCount)
                                 .arg(*recording.source->sampleCount());
    if (!metadata.sha512.isEmpty()) {
        if (const auto checked = check(recording, metadata.sha512, dataset, options); !checked)
            return tl::unexpected(checked.error());
    }
    return recording;
}

/// Compares a dataset with its checksum, and notes the outcome in the recording.
Result<void> Sigmf::check(Recording& recording, const QString& sha512, const Dataset& dataset,
                          const Recording::Options& options)
{
    constexpr std::int64_t blockSize = 4 << 20;
    const std::int64_t size = dataset.end - dataset.begin;
    if (size > maxCheckedSize) {
        recording.details +=
            tr("Checksum: not compared, which takes too long above %1 bytes").arg(maxCheckedSize);
        return {};
    }
    QFile file(dataset.fileName);
    QCryptographicHash hash(QCryptographicHash::Sha512);
    bool isRead = file.open(QIODevice::ReadOnly) && file.seek(dataset.begin);
    for (std::int64_t done = 0; isRead && done < size; done += blockSize) {
        const std::int64_t wanted = std::min(blockSize, size - done);
        const QByteArray block = file.read(wanted);
        isRead = block.size() == wanted;
        hash.addData(block);
        if (options.goOn && !options.goOn(static_cast<double>(done) / static_cast<double>(size)))
            return failure(tr("opening was given up"));
    }
    if (!isRead) {
        recording.notices += tr("its checksum cannot be compared: its samples cannot be read (%1)")
                                 .arg(file.errorString());
        return {};
    }
    const bool isRight = QString::fromLatin1(hash.result().toHex()) == sha512;
    if (!isRight)
        recording.notices += tr("its samples are not those that its metadata were written for "
                                "(core:sha512 differs): they were changed or damaged");
    recording.details += isRight ? tr("Checksum: right") : tr("Checksum: wrong");
    return {};
}
