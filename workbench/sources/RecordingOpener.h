// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/sources/Recording.h"

/// Opens files and live signals with the right reader.
struct RecordingOpener
{
    Q_DECLARE_TR_FUNCTIONS(RecordingOpener)
public:
    /// Opens a live signal by its address, see LiveAddress, or a file: SigMF, raw samples,
    /// separated values or a format that libsndfile reads, according to its ending or the options.
    /// Reads the first samples of a file to check them.
    static Result<Recording> open(const QString& address, const Recording::Options& options);

private:
    static Result<Recording> openFile(const QString& fileName, const Recording::Options& options);
    static Result<Recording> openRaw(const QString& fileName, const SampleFormat& format,
                                     const Recording::Options& options);
    static Result<Recording> openLive(const QString& address, const Recording::Options& options);
    static Result<Recording> openInput(const Recording::Options& options);
    static Result<void> examine(Recording& recording);
};
