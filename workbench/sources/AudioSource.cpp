// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/sources/AudioSource.h"

#include <QFile>
#include <QFileInfo>

#include <sndfile.h>

#include <algorithm>

namespace {

// Values read at a time; bounds the memory that a file with very many channels takes.
constexpr std::size_t maxBlockValueCount = 1 << 20;

} // namespace

struct AudioSource::File
{
    ~File()
    {
        if (handle)
            sf_close(handle);
    }
    QString name;
    SF_INFO info{};
    SNDFILE* handle = nullptr;
};

std::unique_ptr<AudioSource> AudioSource::open(const QString& fileName,
                                               std::optional<double> sampleRate, QString& why)
{
    auto file = std::make_unique<File>();
    file->name = QFileInfo(fileName).fileName();
    file->handle = sf_open(QFile::encodeName(fileName).constData(), SFM_READ, &file->info);
    why = flaw(*file);
    if (!why.isEmpty())
        return nullptr;
    return std::unique_ptr<AudioSource>(new AudioSource(std::move(file), sampleRate));
}

/// What is wrong with a file that was opened; empty when nothing is.
QString AudioSource::flaw(const File& file)
{
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

AudioSource::AudioSource(std::unique_ptr<File> file, std::optional<double> sampleRate)
    : m_file(std::move(file))
    , m_sampleRate(sampleRate.value_or(m_file->info.samplerate))
{}

AudioSource::~AudioSource() = default;

QString AudioSource::name() const { return m_file->name; }

int AudioSource::channelCount() const { return isComplex() ? 1 : m_file->info.channels; }

bool AudioSource::isComplex() const { return m_file->info.channels == 2; }

std::optional<std::int64_t> AudioSource::sampleCount() const
{
    if (m_file->info.frames == SF_COUNT_MAX) // a stream whose header leaves its length open
        return std::nullopt;
    return m_file->info.frames;
}

std::size_t AudioSource::read(std::vector<double>& block, std::size_t count)
{
    const auto channels = static_cast<std::size_t>(m_file->info.channels);
    count = std::min(count, std::max<std::size_t>(maxBlockValueCount / channels, 1));
    block.resize(count * channels);
    const sf_count_t got =
        sf_readf_double(m_file->handle, block.data(), static_cast<sf_count_t>(count));
    const std::size_t samples = got > 0 ? static_cast<std::size_t>(got) : 0;
    block.resize(samples * channels);
    m_position += static_cast<std::int64_t>(samples);
    return samples;
}

bool AudioSource::seek(std::int64_t position)
{
    const sf_count_t reached = position < 0 ? -1 : sf_seek(m_file->handle, position, SF_SEEK_SET);
    if (reached < 0)
        return false;
    m_position = reached;
    return true;
}
