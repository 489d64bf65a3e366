// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/sources/AudioSource.h"

#include "workbench/sources/AudioFile.h"
#include "workbench/sources/PlainText.h"

#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>

namespace {

// Values read at a time; bounds the memory that a file with very many channels takes.
constexpr std::size_t maxBlockValueCount = 1 << 20;

} // namespace

Result<Recording> AudioSource::open(const QString& fileName, std::optional<double> sampleRate)
{
    auto file = std::make_unique<AudioFile>(fileName);
    std::optional<Message> lost;
    const auto checked = check(*file).and_then([&] {
        lost = loss(*file);
        return check(*file);
    });
    if (!checked)
        return tl::unexpected(checked.error());
    Recording recording;
    if (lost)
        recording.notices += *lost;
    recording.source.reset(new AudioSource(std::move(file), sampleRate, !lost));
    return recording;
}

/// Whether a file could be opened, and read so far.
Result<void> AudioSource::check(const AudioFile& file)
{
    if (!file.error().isEmpty())
        return failure(tr("cannot be read (%1)").arg(file.error()));
    static const QRegularExpression rate(QStringLiteral("sample rate *: *(-?[0-9.]+)"),
                                         QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch header = rate.match(file.log());
    if (!file.isOpen() && header.hasMatch() && header.captured(1).toDouble() <= 0.0)
        return failure(tr("its header says that the sample rate is %1 Hz, not above 0; mend the "
                          "header")
                           .arg(header.captured(1)),
                       Hint::SamplesAlone);
    if (!file.isOpen()) {
        QString reason = QString::fromLocal8Bit(sf_strerror(nullptr)).simplified();
        while (reason.endsWith(QLatin1Char('.')))
            reason.chop(1);
        if (sf_error(nullptr) == SF_ERR_UNRECOGNISED_FORMAT)
            reason = tr("damaged, or of an unknown format");
        return failure(tr("not a recording that can be read (%1); choose a SigMF, WAV, FLAC, AIFF, "
                          "CSV or other signal file")
                           .arg(reason),
                       Hint::RawFormat);
    }
    if (file.info().frames <= 0)
        return failure(tr("the recording holds no samples; choose another one"));
    return {};
}

/// What an open file has lost; none when nothing is known to be missing.
std::optional<Message> AudioSource::loss(AudioFile& file)
{
    static const QRegularExpression sizes(QStringLiteral(
        "\\b(?:data|SSND|Data Size|riff|Riff size) *: *(\\d+) \\(should be (\\d+)\\)"));
    const QRegularExpressionMatch header = sizes.match(file.log());
    const qlonglong stated = header.captured(1).toLongLong();
    const qlonglong there = header.captured(2).toLongLong();
    if (stated > there && !AudioFile::isSizeOpen(stated))
        return tr("it was cut off: its header speaks of %1 bytes, %2 are there")
            .arg(stated)
            .arg(there);
    if (file.info().frames < SF_COUNT_MAX && !file.seek(file.info().frames - 1))
        return tr("it was cut off or is damaged: its end cannot be read");
    file.seek(0);
    return std::nullopt;
}

AudioSource::AudioSource(std::unique_ptr<AudioFile> file, std::optional<double> sampleRate,
                         bool isWhole)
    : m_file(std::move(file))
    , m_isWhole(isWhole)
{
    m_facts.name = plainText(QFileInfo(m_file->path()).fileName());
    m_facts.sampleRate = sampleRate.value_or(m_file->info().samplerate);
    m_facts.isComplex = m_file->info().channels == 2;
    m_facts.channelCount = m_facts.isComplex ? 1 : m_file->info().channels;
    // Otherwise the header leaves the length open.
    if (m_file->info().frames != SF_COUNT_MAX)
        m_sampleCount = m_file->info().frames;
}

AudioSource::~AudioSource() = default;

std::int64_t AudioSource::position() const { return m_file->position(); }

std::size_t AudioSource::read(std::vector<double>& block, std::size_t count)
{
    const auto channels = static_cast<std::size_t>(m_file->info().channels);
    count = std::min(count, std::max<std::size_t>(maxBlockValueCount / channels, 1));
    block.resize(count * channels);
    const std::size_t samples = m_file->read(block.data(), count);
    block.resize(samples * channels);
    if (samples == 0 && count > 0)
        sayEnd();
    return samples;
}

bool AudioSource::seek(std::int64_t position)
{
    const bool hasMoved = m_file->seek(position);
    if (!hasMoved)
        sayEnd();
    return hasMoved;
}

/// Reports why no samples come where there should be some.
void AudioSource::sayEnd()
{
    if (const QString reason = m_file->error(); !reason.isEmpty())
        m_trouble.failReading(position(), reason);
    else if (m_file->hasChanged())
        m_trouble.fail(tr("the file was replaced or removed while it played; open it again"));
    else if (m_isWhole && m_sampleCount && position() < *m_sampleCount)
        m_trouble.fail(
            tr("nothing can be read after sample %1 of %2: the file was changed while it "
               "played or is damaged; open it again")
                .arg(position())
                .arg(*m_sampleCount));
}
