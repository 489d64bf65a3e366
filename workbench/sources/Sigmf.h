// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/sources/Recording.h"

/// SigMF recordings: metadata beside a file of samples, or both in an archive.
struct Sigmf
{
    Q_DECLARE_TR_FUNCTIONS(Sigmf)
public:
    /// Whether a file has the name of a part of such a recording.
    static bool isSigmf(const QString& fileName);
    /// Opens a recording by either of its files, or by the archive. Of an archive with several the
    /// first is taken.
    static Result<Recording> open(const QString& fileName, const Recording::Options& options);

private:
    static Result<Recording> openFiles(const QString& fileName, const Recording::Options& options);
    static Result<Recording> openArchive(const QString& fileName,
                                         const Recording::Options& options);
    struct Dataset;
    static Result<Recording> openSamples(const struct SigmfMetadata& metadata, const QString& name,
                                         const Dataset& dataset, const Recording::Options& options);
    static Result<void> check(Recording& recording, const QString& sha512, const Dataset& dataset,
                              const Recording::Options& options);
};
