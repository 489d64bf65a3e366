// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/sources/Recording.h"

#include "workbench/sources/AudioSource.h"
#include "workbench/sources/RawSource.h"

#include <QFileInfo>

Recording Recording::open(const QString& fileName, const Options& options)
{
    Recording recording;
    recording.why = obstacle(fileName);
    if (!recording.why.isEmpty())
        return recording;
    const QFileInfo file(fileName);
    auto format = options.format;
    if (!format)
        format = SampleFormat::ofEnding(file.suffix());
    if (format) {
        RawLayout layout;
        layout.format = *format;
        layout.sampleRate = recording.orAssumed(options.sampleRate);
        layout.end = file.size();
        RawSource::open(recording, file.fileName(), fileName, layout);
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
