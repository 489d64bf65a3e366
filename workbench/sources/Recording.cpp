// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/sources/Recording.h"

#include <QFile>
#include <QFileInfo>

namespace {

/// Whether a file is only a pointer into a store of large files.
bool isPointer(const QFileInfo& file)
{
    constexpr qint64 longest = 1024; // bytes; pointers have fewer
    constexpr const char* annexFolder = "/annex/objects/";
    if (file.isSymLink() && !file.exists())
        return file.symLinkTarget().contains(QLatin1String(annexFolder));
    QFile content(file.filePath());
    if (file.size() > longest || !file.isFile() || !content.open(QIODevice::ReadOnly))
        return false;
    const QByteArray text = content.readAll();
    return text.startsWith("version https://git-lfs") || text.startsWith(annexFolder);
}

} // namespace

Result<void> Recording::checkFile(const QString& fileName)
{
    const QFileInfo file(fileName);
    if (isPointer(file))
        return failure(
            tr("this is a pointer of a large-file store, not the samples; fetch the samples "
               "first"));
    if (!file.exists() && fileName.contains(QLatin1String("://")))
        return failure(tr("this kind of address is not known; give zmq://HOST:PORT, "
                          "soapy://driver=NAME,freq=HZ,rate=HZ, or the name of a recording"));
    if (!file.exists())
        return failure(tr("there is no such file; check the name"));
    if (file.isDir())
        return failure(tr("this is a folder; name a recording that is in it"));
    if (!file.isFile())
        return failure(tr("this is not a regular file; name a recording"));
    if (!file.isReadable())
        return failure(tr("no permission to read it; change the file's permissions"));
    if (file.size() == 0)
        return failure(tr("the file is empty; name one that holds samples"));
    return {};
}

double Recording::orAssumed(std::optional<double> sampleRate)
{
    if (!sampleRate)
        notices +=
            Message(tr("the sample rate is not known, %1 Hz is assumed").arg(assumedSampleRate),
                    Hint::SampleRate);
    return sampleRate.value_or(assumedSampleRate);
}

QStringList Recording::describe(const SignalSource& source)
{
    const SignalFacts& facts = source.facts();
    QStringList lines{tr("Name: %1").arg(facts.name),
                      tr("Sample rate: %1 Hz").arg(facts.sampleRate, 0, 'g', 12),
                      (facts.isComplex ? tr("Channels: %1, complex") : tr("Channels: %1"))
                          .arg(facts.channelCount)};
    if (const auto count = source.sampleCount())
        lines += tr("Samples: %1, %2 s")
                     .arg(*count)
                     .arg(static_cast<double>(*count) / facts.sampleRate, 0, 'g', 12);
    return lines;
}
