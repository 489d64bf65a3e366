// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/sources/Result.h"
#include "workbench/sources/SampleFormat.h"

#include <QCoreApplication>

#include <optional>

/// Guesses what raw samples, which have no header, are from a file's name and its first bytes.
struct RawGuess
{
    Q_DECLARE_TR_FUNCTIONS(RawGuess)
public:
    /// What a name says in the usual notations: a format as its ending or among its parts; a sample
    /// rate as "_2Msps", "_250k", "fs=2e6", or after the frequency, as in "_433920000_2000000";
    /// channels as "_2ch". A frequency such as "433.92M" is no sample rate.
    static RawGuess ofName(const QString& fileName);
    /// Whether a file's name is one of raw samples: it has the ending of a format, or a usual
    /// ending of files without a header.
    static bool isRaw(const QString& fileName);
    /// Why a file's first bytes hardly have a format, and which they seem to have; none when they
    /// may have it, tell nothing, or cannot be read.
    static std::optional<Message> doubt(const QString& fileName, const SampleFormat& format);

    std::optional<SampleFormat> format;
    std::optional<double> sampleRate; ///< Hz
    int channelCount = 1;
};
