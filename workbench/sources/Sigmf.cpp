// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/sources/Sigmf.h"

#include "workbench/sources/PlainText.h"
#include "workbench/sources/SigmfArchive.h"
#include "workbench/sources/SigmfMetadata.h"

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

} // namespace

bool Sigmf::isSigmf(const QString& fileName)
{
    const auto hasEnding = [&fileName](QLatin1String ending) { return fileName.endsWith(ending); };
    return hasEnding(metaEnding) || hasEnding(dataEnding) || hasEnding(archiveEnding) ||
           hasEnding(collectionEnding);
}

Recording Sigmf::open(const QString& fileName, const Recording::Options& options)
{
    if (fileName.endsWith(collectionEnding))
        return Recording::failure(tr("a collection lists recordings; open one of them"));
    return fileName.endsWith(archiveEnding) ? openArchive(fileName, options)
                                            : openFiles(fileName, options);
}

Recording Sigmf::openFiles(const QString& fileName, const Recording::Options& options)
{
    QString metaName = fileName;
    if (fileName.endsWith(dataEnding))
        metaName = withEnding(fileName, dataEnding, metaEnding);
    const QFileInfo metaFile(metaName);
    if (const QString obstacle = Recording::obstacle(metaName); !obstacle.isEmpty())
        return Recording::failure(
            tr("its metadata %1: %2").arg(plainText(metaFile.fileName()), obstacle));
    QFile file(metaName);
    if (!file.open(QIODevice::ReadOnly))
        return Recording::failure(tr("cannot be read (%1)").arg(file.errorString()));
    const auto metadata = SigmfMetadata::parse(
        file.read(std::min<qint64>(metaFile.size(), SigmfMetadata::maxSize + 1)),
        options.sampleRate);
    QString dataName = withEnding(metaName, metaEnding, dataEnding);
    if (!metadata.dataset.isEmpty())
        dataName = metaFile.dir().filePath(metadata.dataset);
    const QString obstacle = metadata.why.isEmpty() ? Recording::obstacle(dataName) : QString();
    if (!obstacle.isEmpty() && metadata.isMetadataOnly)
        return Recording::failure(tr("these are metadata only, meant to be without samples"));
    if (!obstacle.isEmpty())
        return Recording::failure(
            tr("its samples %1: %2").arg(plainText(QFileInfo(dataName).fileName()), obstacle));
    return openSamples(metadata, metaFile.fileName(), dataName, 0, QFileInfo(dataName).size());
}

Recording Sigmf::openArchive(const QString& fileName, const Recording::Options& options)
{
    const SigmfArchive archive = SigmfArchive::read(fileName);
    if (!archive.why.isEmpty())
        return Recording::failure(archive.why);
    const auto metadata = SigmfMetadata::parse(archive.metadata, options.sampleRate);
    QString dataName = withEnding(archive.metaName, metaEnding, dataEnding);
    if (!metadata.dataset.isEmpty())
        dataName = QFileInfo(archive.metaName).dir().filePath(metadata.dataset);
    const auto data = archive.files.find(dataName);
    if (metadata.why.isEmpty() && data == archive.files.end())
        return Recording::failure(
            tr("the archive holds no samples %1 beside the metadata").arg(plainText(dataName)));
    const SigmfArchive::Span span =
        data == archive.files.end() ? SigmfArchive::Span{0, 0} : data->second;
    Recording recording = openSamples(metadata, QFileInfo(fileName).fileName(), fileName,
                                      span.offset, span.offset + span.size);
    if (archive.isCutOff)
        recording.notices += tr("the archive was cut off, the samples that are left are shown");
    if (archive.recordingCount > 1)
        recording.notices += tr("the archive holds %1 recordings, %2 is shown; unpack it to open "
                                "the others")
                                 .arg(archive.recordingCount)
                                 .arg(plainText(archive.metaName));
    return recording;
}

/// @param begin,end  of the dataset in its file.
Recording Sigmf::openSamples(const SigmfMetadata& metadata, const QString& name,
                             const QString& fileName, std::int64_t begin, std::int64_t end)
{
    Recording recording;
    recording.why = metadata.why;
    recording.notices = metadata.notices;
    recording.details = metadata.details;
    if (!recording.why.isEmpty())
        return recording;
    RawLayout layout = metadata.layout;
    for (RawLayout::Chunk& chunk : layout.chunks)
        chunk.offset += begin;
    layout.end = end - metadata.trailingBytes;
    layout.sampleRate = recording.orAssumed(metadata.sampleRate);
    if (layout.symbolRate > layout.sampleRate)
        layout.symbolRate.reset();
    RawSource::open(recording, name, fileName, layout);
    if (recording.source && metadata.sampleCount > recording.source->sampleCount())
        recording.notices += tr("it was cut off: the metadata speak of %1 samples, %2 are there")
                                 .arg(metadata.sampleCount)
                                 .arg(*recording.source->sampleCount());
    return recording;
}
