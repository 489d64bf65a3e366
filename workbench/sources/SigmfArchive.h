// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/sources/Result.h"
#include <QByteArray>

#include <QCoreApplication>
#include <QString>

#include <cstdint>
#include <map>

/// The files in a SigMF archive, a tar archive without compression: its samples are read where they
/// lie.
struct SigmfArchive
{
    Q_DECLARE_TR_FUNCTIONS(SigmfArchive)
public:
    struct Span
    {
        std::int64_t offset; ///< in the archive, bytes
        std::int64_t size;   ///< as far as it is in there
    };

    static Result<SigmfArchive> read(const QString& fileName);

    std::map<QString, Span> files;
    QString metaName;    ///< of the first recording
    QByteArray metadata; ///< of the first recording
    int recordingCount = 0;
    bool isCutOff = false;

private:
    Result<void> add(const QString& name, const Span& span, class QFile& archive);
};
