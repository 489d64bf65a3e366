// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/sources/AudioSource.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <sndfile.h>

#include <algorithm>
#include <utility>

namespace {

// Values read at a time; bounds the memory that a file with very many channels takes.
constexpr std::size_t maxBlockValueCount = 1 << 20;
constexpr qulonglong streamSize = 0xffff0000; // of a header written before its samples

} // namespace

struct AudioSource::File
{
    using Handle = std::unique_ptr<SNDFILE, int (*)(SNDFILE*)>;

    explicit File(const QString& fileName)
        : path(fileName)
        , handle(open())
    {}
    Handle open()
    {
        return Handle(sf_open(QFile::encodeName(path).constData(), SFM_READ, &info), sf_close);
    }
    /// What libsndfile found in the file, also where it did not open it.
    QString log() const
    {
        char text[1 << 14] = "";
        sf_command(handle.get(), SFC_GET_LOG_INFO, text, sizeof text);
        return QString::fromLatin1(text);
    }
    /// False where that is not possible; it is at its start then.
    bool moveTo(std::int64_t sample)
    {
        position = sf_seek(handle.get(), sample, SEEK_SET);
        if (position == sample)
            return true;
        // Some decoders are of no use after that.
        SF_INFO same{};
        std::swap(same, info);
        if (Handle fresh = open())
            handle = std::move(fresh);
        info = same;
        position = 0;
        return sample == 0;
    }
    bool seek(std::int64_t sample)
    {
        const std::int64_t before = position;
        if (sample < 0 || sample > info.frames)
            return false;
        if (moveTo(sample))
            return true;
        moveTo(before);
        return false;
    }

    QString path;
    SF_INFO info{};
    Handle handle;
    std::int64_t position = 0; // sample that is read next
};

void AudioSource::open(Recording& recording, const QString& fileName,
                       std::optional<double> sampleRate)
{
    auto file = std::make_unique<File>(fileName);
    recording.why = flaw(*file);
    if (!recording.why.isEmpty())
        return;
    if (const QString text = loss(*file); !text.isEmpty())
        recording.notices += text;
    recording.source.reset(new AudioSource(std::move(file), sampleRate));
}

/// What is wrong with a file that was opened; empty when nothing is.
QString AudioSource::flaw(const File& file)
{
    static const QRegularExpression rate(QStringLiteral("sample rate *: *(-?[0-9.]+)"),
                                         QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch header = rate.match(file.log());
    if (!file.handle && header.hasMatch() && header.captured(1).toDouble() <= 0.0)
        return tr("its header says that the sample rate is %1 Hz, not above 0; mend the header, or "
                  "read the samples alone by --format")
            .arg(header.captured(1));
    if (!file.handle) {
        QString reason = QString::fromLocal8Bit(sf_strerror(nullptr)).simplified();
        while (reason.endsWith(QLatin1Char('.')))
            reason.chop(1);
        return tr("not a recording that can be read (%1); choose a SigMF, WAV, FLAC, AIFF, CSV or "
                  "other signal file, or give --format where it is raw samples")
            .arg(reason);
    }
    if (file.info.frames <= 0)
        return tr("the recording holds no samples; choose another one");
    return QString();
}

/// What a file has lost that was opened; empty where nothing is known to be missing.
QString AudioSource::loss(File& file)
{
    static const QRegularExpression sizes(QStringLiteral(
        "\\b(?:data|SSND|Data Size|riff|Riff size) *: *(\\d+) \\(should be (\\d+)\\)"));
    const QRegularExpressionMatch header = sizes.match(file.log());
    const qulonglong stated = header.captured(1).toULongLong();
    const qulonglong there = header.captured(2).toULongLong();
    // A stream's header states the largest size, or nearly so.
    if (stated > there && stated < streamSize)
        return tr("it was cut off: its header speaks of %1 bytes, %2 are there")
            .arg(stated)
            .arg(there);
    if (file.info.frames < SF_COUNT_MAX && !file.seek(file.info.frames - 1))
        return tr("it was cut off or is damaged: its end cannot be read");
    file.seek(0);
    return QString();
}

AudioSource::AudioSource(std::unique_ptr<File> file, std::optional<double> sampleRate)
    : m_file(std::move(file))
    , m_sampleRate(sampleRate.value_or(m_file->info.samplerate))
{}

AudioSource::~AudioSource() = default;

QString AudioSource::name() const { return QFileInfo(m_file->path).fileName(); }

int AudioSource::channelCount() const { return isComplex() ? 1 : m_file->info.channels; }

bool AudioSource::isComplex() const { return m_file->info.channels == 2; }

std::optional<std::int64_t> AudioSource::sampleCount() const
{
    if (m_file->info.frames == SF_COUNT_MAX) // a stream whose header leaves its length open
        return std::nullopt;
    return m_file->info.frames;
}

std::int64_t AudioSource::position() const { return m_file->position; }

std::size_t AudioSource::read(std::vector<double>& block, std::size_t count)
{
    const auto channels = static_cast<std::size_t>(m_file->info.channels);
    count = std::min(count, std::max<std::size_t>(maxBlockValueCount / channels, 1));
    block.resize(count * channels);
    const sf_count_t got =
        sf_readf_double(m_file->handle.get(), block.data(), static_cast<sf_count_t>(count));
    const std::size_t samples = got > 0 ? static_cast<std::size_t>(got) : 0;
    block.resize(samples * channels);
    m_file->position += static_cast<std::int64_t>(samples);
    return samples;
}

bool AudioSource::seek(std::int64_t position) { return m_file->seek(position); }
