// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/sources/Recording.h"

#include "workbench/sources/AudioSource.h"
#include "workbench/sources/CsvSource.h"
#include "workbench/sources/RawSource.h"
#include "workbench/sources/Sigmf.h"

#include <QFileInfo>

Recording Recording::open(const QString& fileName, const Options& options)
{
    const QString why = obstacle(fileName);
    Recording recording = why.isEmpty() ? openFile(fileName, options) : failure(why);
    if (!recording.source)
        recording.notices.clear();
    return recording;
}

Recording Recording::openFile(const QString& fileName, const Options& options)
{
    if (!options.format && Sigmf::isSigmf(fileName))
        return Sigmf::open(fileName, options);
    Recording recording;
    const QFileInfo file(fileName);
    if (const auto format =
            options.format ? options.format : SampleFormat::ofEnding(file.suffix())) {
        RawLayout layout;
        layout.format = *format;
        layout.sampleRate = recording.orAssumed(options.sampleRate);
        layout.end = file.size();
        RawSource::open(recording, file.fileName(), fileName, layout);
    } else if (!options.columns.isEmpty() || CsvSource::isCsv(fileName)) {
        CsvSource::open(recording, fileName, options);
    } else {
        recording.source = AudioSource::open(fileName, options.sampleRate, recording.why);
    }
    return recording;
}

QString Recording::obstacle(const QString& fileName)
{
    const QFileInfo file(fileName);
    if (!file.exists())
        return tr("there is no such file; check the name");
    if (file.isDir())
        return tr("this is a folder; name a recording that is in it");
    if (!file.isFile())
        return tr("this is not a regular file; name a recording");
    if (!file.isReadable())
        return tr("no permission to read it; change the file's permissions");
    if (file.size() == 0)
        return tr("the file is empty; name one that holds samples");
    return QString();
}

Recording Recording::failure(const QString& why)
{
    Recording recording;
    recording.why = why;
    return recording;
}

double Recording::orAssumed(std::optional<double> sampleRate)
{
    if (!sampleRate)
        notices += tr("the sample rate is not known, %1 Hz is assumed; give it by --sample-rate")
                       .arg(assumedSampleRate);
    return sampleRate.value_or(assumedSampleRate);
}
