// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/sources/Recording.h"

#include "workbench/sources/AudioSource.h"
#include "workbench/sources/CsvSource.h"
#include "workbench/sources/LiveAddress.h"
#include "workbench/sources/RawGuess.h"
#include "workbench/sources/RawSource.h"
#include "workbench/sources/Sigmf.h"
#include "workbench/sources/Trouble.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cmath>
#include <new>

namespace {

/// Whether a file only says where a store of large files has what belongs there.
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

Recording Recording::open(const QString& address, const Options& options)
{
    if (LiveAddress::isLive(address))
        return LiveAddress::open(address, options);
    const QString why = obstacle(address);
    if (!why.isEmpty())
        return failure(why);
    try {
        Recording recording = openFile(address, options);
        if (recording.source)
            recording.examine();
        if (!recording.source)
            recording.notices.clear();
        return recording;
    } catch (const std::bad_alloc&) {
        return failure(Trouble::noMemory());
    }
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
        layout.channelCount = options.channelCount;
        const RawGuess guess = RawGuess::ofName(fileName);
        if (!options.sampleRate && guess.sampleRate)
            recording.notices += tr("the sample rate is not given, %1 Hz is taken from the name")
                                     .arg(*guess.sampleRate, 0, 'g', 12);
        layout.sampleRate =
            recording.orAssumed(options.sampleRate ? options.sampleRate : guess.sampleRate);
        layout.end = file.size();
        RawSource::open(recording, file.fileName(), fileName, layout);
        if (const QString doubt = RawGuess::doubt(fileName, *format); !doubt.isEmpty())
            recording.notices += doubt + tr("; give the right --format");
    } else if (!options.columns.isEmpty() || CsvSource::isCsv(fileName)) {
        CsvSource::open(recording, fileName, options);
    } else {
        AudioSource::open(recording, fileName, options.sampleRate);
    }
    return recording;
}

/// Looks at the first samples; the signal starts at the first one again.
void Recording::examine()
{
    constexpr std::size_t examinedValueCount = 1 << 16;
    std::vector<double> values;
    const auto valueCount = static_cast<std::size_t>(source->valueCount());
    const std::size_t wanted = std::max<std::size_t>(examinedValueCount / valueCount, 1);
    const std::size_t count = source->read(values, wanted);
    const auto badCount = std::count_if(values.begin(), values.end(),
                                        [](double value) { return !std::isfinite(value); });
    const auto all = static_cast<std::ptrdiff_t>(values.size());
    if (badCount == all && count > 0 && source->read(values, 1) == 0)
        why = tr("it holds no numbers, only what is missing, NaN or infinite; choose another one, "
                 "or give the right --format");
    else if (badCount > 0)
        notices += tr("%1 of its first %2 numbers are missing, NaN or infinite; they are bridged "
                      "or left out")
                       .arg(badCount)
                       .arg(all);
    const bool isReadable = count > 0 && source->seek(0);
    const QString trouble = source->trouble();
    if (!isReadable)
        why = trouble.isEmpty() ? tr("its samples cannot be read; choose another one") : trouble;
    if (!why.isEmpty())
        source.reset();
}

QString Recording::obstacle(const QString& fileName)
{
    const QFileInfo file(fileName);
    if (isPointer(file))
        return tr("this is a pointer of a large-file store, not the samples; fetch the samples "
                  "first");
    if (!file.exists() && fileName.contains(QLatin1String("://")))
        return tr("this kind of address is not known; give zmq://HOST:PORT, "
                  "soapy://driver=NAME,freq=HZ,rate=HZ, or the name of a recording");
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

QStringList Recording::describe(const SignalSource& source)
{
    QStringList lines{tr("Name: %1").arg(source.name()),
                      tr("Sample rate: %1 Hz").arg(source.sampleRate(), 0, 'g', 12),
                      (source.isComplex() ? tr("Channels: %1, complex") : tr("Channels: %1"))
                          .arg(source.channelCount())};
    if (const auto count = source.sampleCount())
        lines += tr("Samples: %1, %2 s")
                     .arg(*count)
                     .arg(static_cast<double>(*count) / source.sampleRate(), 0, 'g', 12);
    return lines;
}
