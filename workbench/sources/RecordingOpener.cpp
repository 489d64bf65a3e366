// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/sources/RecordingOpener.h"

#include "workbench/sources/AudioSource.h"
#include "workbench/sources/CsvSource.h"
#include "workbench/sources/LiveAddress.h"
#include "workbench/sources/RawGuess.h"
#include "workbench/sources/RawSource.h"
#include "workbench/sources/Sigmf.h"
#include "workbench/sources/SoapySource.h"
#include "workbench/sources/StreamSource.h"
#include "workbench/sources/Trouble.h"
#include "workbench/sources/ZmqSource.h"

#include <QFileInfo>

#include <algorithm>
#include <cmath>
#include <new>

#include <unistd.h>

Result<Recording> RecordingOpener::open(const QString& address, const Recording::Options& options)
{
    if (LiveAddress::isLive(address))
        return openLive(address, options);
    if (const auto file = Recording::checkFile(address); !file)
        return tl::unexpected(file.error());
    try {
        auto recording = openFile(address, options);
        if (!recording)
            return recording;
        if (const auto samples = examine(*recording); !samples)
            return tl::unexpected(samples.error());
        return recording;
    } catch (const std::bad_alloc&) {
        return tl::unexpected(Trouble::noMemory());
    }
}

Result<Recording> RecordingOpener::openFile(const QString& fileName,
                                            const Recording::Options& options)
{
    if (!options.format && Sigmf::isSigmf(fileName))
        return Sigmf::open(fileName, options);
    const auto ending = SampleFormat::ofEnding(QFileInfo(fileName).suffix());
    if (const auto format = options.format ? options.format : ending)
        return openRaw(fileName, *format, options);
    if (!options.columns.isEmpty() || CsvSource::isCsv(fileName))
        return CsvSource::open(fileName, options);
    return AudioSource::open(fileName, options.sampleRate);
}

Result<Recording> RecordingOpener::openRaw(const QString& fileName, const SampleFormat& format,
                                           const Recording::Options& options)
{
    Recording recording;
    const QFileInfo file(fileName);
    RawLayout layout;
    layout.format = format;
    layout.channelCount = options.channelCount;
    const RawGuess guess = RawGuess::ofName(fileName);
    if (!options.sampleRate && guess.sampleRate)
        recording.notices += tr("the sample rate is not given, %1 Hz is taken from the name")
                                 .arg(*guess.sampleRate, 0, 'g', 12);
    layout.sampleRate =
        recording.orAssumed(options.sampleRate ? options.sampleRate : guess.sampleRate);
    layout.end = file.size();
    if (const auto raw = RawSource::open(recording, file.fileName(), fileName, layout); !raw)
        return tl::unexpected(raw.error());
    if (const auto doubt = RawGuess::doubt(fileName, format))
        recording.notices += *doubt;
    return recording;
}

Result<Recording> RecordingOpener::openLive(const QString& address,
                                            const Recording::Options& options)
{
    /// Usual format of publishers.
    constexpr SampleFormat cf32{SampleFormat::Kind::Float, 32, true, false};
    if (!options.columns.isEmpty())
        return failure(tr("a live signal has no columns"), Hint::NoColumns);
    if (LiveAddress::isInput(address))
        return openInput(options);
    if (LiveAddress::isSoapy(address)) {
        if (options.format)
            return failure(tr("the device says itself what its samples are"), Hint::NoFormat);
        return SoapySource::open(address, options.sampleRate);
    }
    if (!options.sampleRate)
        return failure(tr("messages do not say their sample rate"), Hint::SampleRate);
    return ZmqSource::open(address, options.format.value_or(cf32), *options.sampleRate);
}

Result<Recording> RecordingOpener::openInput(const Recording::Options& options)
{
    if (!options.format || !options.sampleRate)
        return failure(tr("raw samples do not say what they are"), Hint::FormatAndSampleRate);
    if (isatty(STDIN_FILENO))
        return failure(tr("this is a terminal; pipe samples into it"));
    Recording recording;
    recording.source =
        std::make_unique<StreamSource>(LiveAddress::title(QStringLiteral("-")), STDIN_FILENO,
                                       *options.format, *options.sampleRate);
    return recording;
}

/// Checks the first samples, and goes back to the first one.
Result<void> RecordingOpener::examine(Recording& recording)
{
    constexpr std::size_t examinedValueCount = 1 << 16;
    SignalSource& source = *recording.source;
    std::vector<double> values;
    const auto valueCount = static_cast<std::size_t>(source.facts().valueCount());
    const std::size_t wanted = std::max<std::size_t>(examinedValueCount / valueCount, 1);
    const std::size_t count = source.read(values, wanted);
    const auto badCount = std::count_if(values.begin(), values.end(),
                                        [](double value) { return !std::isfinite(value); });
    const auto all = static_cast<std::ptrdiff_t>(values.size());
    const bool isEmpty = badCount == all && count > 0 && source.read(values, 1) == 0;
    const bool isReadable = count > 0 && source.seek(0);
    if (!isReadable)
        return tl::unexpected(
            source.trouble().value_or(tr("its samples cannot be read; choose another one")));
    if (isEmpty)
        return failure(tr("it holds no numbers, only what is missing, NaN or infinite; choose "
                          "another one"),
                       Hint::Format);
    if (badCount > 0)
        recording.notices += tr("%1 of its first %2 numbers are missing, NaN or infinite; they are "
                                "bridged or left out")
                                 .arg(badCount)
                                 .arg(all);
    return {};
}
