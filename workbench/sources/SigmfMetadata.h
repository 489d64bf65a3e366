// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/sources/RawSource.h"
#include "workbench/sources/SigmfGaps.h"

/// The metadata of a SigMF recording. Keys are those of the SigMF standard.
struct SigmfMetadata
{
    Q_DECLARE_TR_FUNCTIONS(SigmfMetadata)
public:
    static constexpr std::int64_t maxSize = 32 << 20; ///< bytes; longer ones are not metadata

    /// Reads a metadata file's content.
    /// @param sampleRate  Hz; if given, that of the metadata is not checked.
    static Result<SigmfMetadata> parse(const QByteArray& json, std::optional<double> sampleRate);

    QVector<Message> notices;         ///< what is amiss
    QStringList details;              ///< the metadata, captures and annotations, a line each
    std::optional<double> sampleRate; ///< Hz
    /// Where the samples are; the sample rate and the end are not known here.
    RawLayout layout;
    QString dataset; ///< name of a file of samples that has its own name; else empty
    QString sha512;  ///< of that file, hexadecimal; empty where not said
    bool isMetadataOnly = false;
    std::int64_t trailingBytes = 0; ///< after the samples
    std::int64_t sampleCount = 0;   ///< least number that captures and annotations refer to

private:
    void readGlobal(const class QJsonObject& global);
    static Result<void> check(const QJsonObject& global, bool isRateGiven);
    void addDetail(const QString& pattern, const QJsonObject& object);
    void readCapture(const QJsonObject& capture);
    void readAnnotation(const QJsonObject& annotation);
    void mention(std::int64_t sample);
    int m_leftOutCount = 0; // of details
    SigmfGaps m_gaps;
    std::optional<double> m_ownRate; // Hz, as the metadata say
    std::int64_t m_offset = 0;       // index of the first sample in captures and annotations
};
