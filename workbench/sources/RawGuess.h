// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/sources/Result.h"
#include "workbench/sources/SampleFormat.h"

#include <QCoreApplication>

#include <optional>

/// What raw samples, which have no header, may be: as far as a file's name and its first bytes say.
struct RawGuess
{
    Q_DECLARE_TR_FUNCTIONS(RawGuess)
public:
    /// What a name says, as recorders and people write it: a format as its ending or among its
    /// parts; a sample rate as "_2Msps", "_250k", "fs=2e6", or after the frequency, as in
    /// "_433920000_2000000"; channels as "_2ch". A frequency such as "433.92M" is no sample rate.
    static RawGuess ofName(const QString& fileName);
    /// Whether a file is raw samples by its name: it has the ending of a format, or a usual one of
    /// files without a header.
    static bool isRaw(const QString& fileName);
    /// Why a file's first bytes are hardly of a format, and of which rather; none where they may
    /// well be, where they tell nothing, and where they cannot be read.
    static std::optional<Message> doubt(const QString& fileName, const SampleFormat& format);

    std::optional<SampleFormat> format;
    std::optional<double> sampleRate; ///< Hz
    int channelCount = 1;
};
