// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/sources/LiveAddress.h"

#include "workbench/sources/PlainText.h"
#include "workbench/sources/SoapySource.h"
#include "workbench/sources/StreamSource.h"
#include "workbench/sources/ZmqSource.h"

#include <unistd.h>

namespace {

/// What publishers of complex samples send.
constexpr SampleFormat cf32{SampleFormat::Kind::Float, 32, true, false};

bool isInput(const QString& address) { return address == QLatin1String("-"); }
bool isZmq(const QString& address) { return address.startsWith(QLatin1String("zmq://")); }
bool isSoapy(const QString& address) { return address.startsWith(QLatin1String("soapy://")); }

} // namespace

bool LiveAddress::isLive(const QString& address)
{
    return isInput(address) || isZmq(address) || isSoapy(address);
}

QString LiveAddress::title(const QString& address)
{
    return isInput(address) ? tr("standard input") : plainText(address, maxLineLength);
}

Recording LiveAddress::open(const QString& address, const Recording::Options& options)
{
    Recording recording;
    if (!options.columns.isEmpty())
        recording.why = tr("a live signal has no columns; leave out --columns");
    else if (isInput(address))
        openInput(recording, options);
    else if (isSoapy(address) && options.format)
        recording.why = tr("the device says itself what its samples are; leave out --format");
    else if (isSoapy(address))
        SoapySource::open(recording, address, options.sampleRate);
    else if (!options.sampleRate)
        recording.why = tr("messages do not say their sample rate; give it by --sample-rate");
    else
        ZmqSource::open(recording, address, options.format.value_or(cf32), *options.sampleRate);
    return recording;
}

void LiveAddress::openInput(Recording& recording, const Recording::Options& options)
{
    if (!options.format || !options.sampleRate)
        recording.why = tr("raw samples do not say what they are; give --format and --sample-rate");
    else if (isatty(STDIN_FILENO))
        recording.why = tr("this is a terminal; pipe samples into it");
    else
        recording.source = std::make_unique<StreamSource>(title(QStringLiteral("-")), STDIN_FILENO,
                                                          *options.format, *options.sampleRate);
}
