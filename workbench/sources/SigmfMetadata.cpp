// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
// The standard: Signal Metadata Format Specification 1.2, https://sigmf.org.
#include "workbench/sources/SigmfMetadata.h"

#include "workbench/sources/PlainText.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <cmath>

namespace {

constexpr double maxChannelCount = 1000.0;
constexpr int maxDetailCount = 100000; // lines; a hostile file has millions
// Largest sample index or byte count: far more than any file has, and products stay within 64 bits.
constexpr double maxIndex = 281474976710656.0;  // 2^48
constexpr double maxExact = 9007199254740992.0; // 2^53, of whole numbers in JSON

/// A whole number from lowest to highest; nullopt for any other value.
std::optional<std::int64_t> wholeNumber(const QJsonObject& object, const char* key,
                                        double lowest = 0.0, double highest = maxIndex)
{
    const double value = object.value(QLatin1String(key)).toDouble(-1.0);
    if (value != std::floor(value) || value < lowest || value > highest)
        return std::nullopt;
    return static_cast<std::int64_t>(value);
}

/// A value as text for one line; empty when it does not fit into one.
QString text(const QJsonValue& value)
{
    QString result = value.toVariant().toString();
    if (value.isDouble())
        result = QString::number(value.toDouble(), 'g', 15);
    return plainText(result).simplified();
}

QString line(const QJsonObject& object)
{
    QStringList parts;
    for (auto i = object.begin(); i != object.end(); ++i) {
        if (const QString value = text(i.value()); !value.isEmpty())
            parts += plainText(i.key()) + QLatin1Char(' ') + value;
    }
    return plainText(parts.join(QStringLiteral(", ")), maxLineLength);
}

} // namespace

Result<SigmfMetadata> SigmfMetadata::parse(const QByteArray& json, std::optional<double> sampleRate)
{
    SigmfMetadata metadata;
    metadata.sampleRate = sampleRate;
    QJsonParseError error{};
    const QJsonDocument document = QJsonDocument::fromJson(json, &error);
    const QJsonObject root = document.object();
    if (json.size() > maxSize)
        return failure(tr("the metadata are longer than %1 bytes").arg(maxSize),
                       Hint::SamplesAlone);
    if (error.error != QJsonParseError::NoError)
        return failure(tr("the metadata are not JSON (%1 at byte %2); mend them")
                           .arg(error.errorString())
                           .arg(error.offset),
                       Hint::SamplesAlone);
    if (!root.value(QLatin1String("global")).isObject())
        return failure(tr("the metadata lack the object \"global\"; mend them"),
                       Hint::SamplesAlone);
    const QJsonObject global = root.value(QLatin1String("global")).toObject();
    if (const auto checked = check(global, sampleRate.has_value()); !checked)
        return tl::unexpected(checked.error());
    metadata.readGlobal(global);
    for (const auto& capture : root.value(QLatin1String("captures")).toArray())
        metadata.readCapture(capture.toObject());
    const auto rate = metadata.m_ownRate ? metadata.m_ownRate : sampleRate;
    if (const auto notice = metadata.m_gaps.notice(rate))
        metadata.notices += *notice;
    for (const auto& annotation : root.value(QLatin1String("annotations")).toArray())
        metadata.readAnnotation(annotation.toObject());
    if (metadata.m_leftOutCount > 0)
        metadata.details += tr("Further captures and annotations: %1").arg(metadata.m_leftOutCount);
    for (const char* key : {"captures", "annotations"}) {
        if (!root.value(QLatin1String(key)).isArray())
            metadata.notices += tr("the metadata lack the list \"%1\"").arg(QLatin1String(key));
    }
    return metadata;
}

/// Whether the samples can be read with these global metadata.
Result<void> SigmfMetadata::check(const QJsonObject& global, bool isRateGiven)
{
    const QString datatype = global.value(QLatin1String("core:datatype")).toString();
    const double rate = global.value(QLatin1String("core:sample_rate")).toDouble(-1.0);
    const QString dataset = global.value(QLatin1String("core:dataset")).toString();
    if (datatype.isEmpty())
        return failure(tr("the metadata lack core:datatype; mend them"), Hint::SamplesAlone);
    if (!SampleFormat::parse(datatype))
        return failure(
            tr("core:datatype is \"%1\", which is unknown; mend the metadata").arg(text(datatype)),
            Hint::SamplesAlone);
    if (global.contains(QLatin1String("core:num_channels")) &&
        !wholeNumber(global, "core:num_channels", 1.0, maxChannelCount))
        return failure(
            tr("core:num_channels is %1, not a whole number from 1 to %2; mend the metadata")
                .arg(text(global.value(QLatin1String("core:num_channels"))),
                     QString::number(maxChannelCount)));
    if (dataset.contains(QLatin1Char('/')) || dataset.contains(QChar(QChar::Null)))
        return failure(
            tr("core:dataset is \"%1\", not the name of a file beside the metadata; mend them")
                .arg(text(dataset)));
    if (!isRateGiven && global.contains(QLatin1String("core:sample_rate")) &&
        !Recording::isSampleRate(rate))
        return failure(tr("core:sample_rate is %1, not a number from %2 to %3")
                           .arg(text(global.value(QLatin1String("core:sample_rate"))),
                                QString::number(Recording::minSampleRate),
                                QString::number(Recording::maxSampleRate)),
                       Hint::RightSampleRate);
    return {};
}

void SigmfMetadata::readGlobal(const QJsonObject& global)
{
    for (auto i = global.begin(); i != global.end(); ++i) {
        if (const QString value = text(i.value());
            !value.isEmpty() && details.size() < maxDetailCount)
            details += plainText(i.key()) + QStringLiteral(": ") + value;
        // The standard has no key for the symbol rate; extensions call it so, after their own name.
        if (i.key().endsWith(QLatin1String(":symbol_rate")) &&
            Recording::isSampleRate(i.value().toDouble()))
            layout.symbolRate = i.value().toDouble();
    }
    const QString datatype = global.value(QLatin1String("core:datatype")).toString();
    const auto format = SampleFormat::parse(datatype);
    const double rate = global.value(QLatin1String("core:sample_rate")).toDouble(-1.0);
    const auto channels = wholeNumber(global, "core:num_channels", 1.0, maxChannelCount);
    dataset = global.value(QLatin1String("core:dataset")).toString();
    sha512 = global.value(QLatin1String("core:sha512")).toString().toLower();

    if (!global.contains(QLatin1String("core:version")))
        notices += tr("the metadata lack core:version");
    for (const auto& entry : global.value(QLatin1String("core:extensions")).toArray()) {
        const QJsonObject extension = entry.toObject();
        if (!extension.value(QLatin1String("optional")).toBool(true))
            notices += tr("the extension \"%1\" is not known, though the recording needs it")
                           .arg(text(extension.value(QLatin1String("name"))));
    }
    if (Recording::isSampleRate(rate))
        m_ownRate = rate;
    if (!sampleRate)
        sampleRate = m_ownRate;
    layout.format = format.value_or(SampleFormat());
    layout.channelCount = static_cast<int>(channels.value_or(1));
    isMetadataOnly = global.value(QLatin1String("core:metadata_only")).toBool();
    trailingBytes = wholeNumber(global, "core:trailing_bytes").value_or(0);
    m_offset = wholeNumber(global, "core:offset").value_or(0);
}

void SigmfMetadata::addDetail(const QString& pattern, const QJsonObject& object)
{
    if (details.size() < maxDetailCount)
        details += pattern.arg(line(object));
    else
        ++m_leftOutCount;
}

void SigmfMetadata::readCapture(const QJsonObject& capture)
{
    addDetail(tr("Capture: %1"), capture);
    const auto start = wholeNumber(capture, "core:sample_start");
    if (!start)
        return;
    const std::int64_t first = std::max<std::int64_t>(*start - m_offset, 0);
    mention(first);
    m_gaps.add({first, wholeNumber(capture, "core:global_index", 0.0, maxExact),
                SigmfGaps::time(capture.value(QLatin1String("core:datetime")).toString())});
    const std::int64_t header = wholeNumber(capture, "core:header_bytes").value_or(0);
    RawLayout::Chunk& last = layout.chunks.back();
    const std::int64_t offset =
        last.offset + (first - last.firstSample) * layout.sampleSize() + header;
    if (header == 0 || first < last.firstSample || offset > static_cast<std::int64_t>(maxIndex))
        return;
    if (first == last.firstSample)
        last.offset = offset;
    else
        layout.chunks.push_back({first, offset});
}

void SigmfMetadata::readAnnotation(const QJsonObject& annotation)
{
    addDetail(tr("Annotation: %1"), annotation);
    if (const auto start = wholeNumber(annotation, "core:sample_start"))
        mention(*start - m_offset + wholeNumber(annotation, "core:sample_count").value_or(0));
}

void SigmfMetadata::mention(std::int64_t sample) { sampleCount = std::max(sampleCount, sample); }
