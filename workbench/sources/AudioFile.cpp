// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/sources/AudioFile.h"

#include "workbench/sources/QuietLibraries.h"

#include <QFile>
#include <QFileInfo>
#include <QtEndian>

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstring>

namespace {

constexpr qint64 chunkHeadSize = 8; // bytes: a name and a size
constexpr qint64 nameSize = 4;
constexpr qint64 sizeSize = 4;
constexpr qint64 riffSizePosition = 4;
constexpr int maxChunkCount = 64; // before the samples

struct ChunkHead
{
    /// Returns false when there is none.
    bool read(QFile& file)
    {
        char bytes[chunkHeadSize];
        if (file.read(bytes, sizeof bytes) != chunkHeadSize)
            return false;
        std::memcpy(name, bytes, sizeof name);
        size = qFromLittleEndian<quint32>(bytes + sizeof name);
        return true;
    }
    bool isNamed(const char* other) const { return std::memcmp(name, other, sizeof name) == 0; }
    bool hasName() const
    {
        return std::all_of(std::begin(name), std::end(name),
                           [](unsigned char letter) { return std::isprint(letter) != 0; });
    }
    char name[4];
    qint64 size;
};

/// Position at which a WAV file has the size of its samples, if that was left open; else -1.
qint64 openSizePosition(QFile& file)
{
    ChunkHead head;
    char kind[4];
    if (!head.read(file) || !head.isNamed("RIFF") || file.read(kind, sizeof kind) != sizeof kind ||
        std::memcmp(kind, "WAVE", sizeof kind) != 0)
        return -1;
    const qint64 whole = head.size;
    for (int i = 0; i < maxChunkCount && head.read(file); ++i) {
        const qint64 begin = file.pos();
        const qint64 rest = file.size() - begin;
        if (!head.isNamed("data")) {
            file.seek(begin + head.size + head.size % 2);
            continue;
        }
        bool isOpen = head.size > rest && AudioFile::isSizeOpen(head.size);
        if (head.size == 0) {
            // There may also be no samples, and other chunks.
            const bool isWholeKnown =
                whole + chunkHeadSize > begin && !AudioFile::isSizeOpen(whole);
            const bool isChunkNext =
                head.read(file) && head.hasName() && head.size <= rest - chunkHeadSize;
            isOpen = rest > 0 && !(isWholeKnown && isChunkNext);
        }
        return isOpen ? begin - sizeSize : -1;
    }
    return -1;
}

} // namespace

/// The file behind libsndfile, which takes an error of the system for the end of the file. Replaces
/// sizes that were left open by those that libsndfile understands as "up to the end": 8 bytes
/// altogether and no samples. Hides lists of titles and the like, of which nothing is shown: sizes
/// in them can send libsndfile back to where it comes from, for ever.
struct AudioFile::Stream
{
    static Stream& of(void* stream) { return *static_cast<Stream*>(stream); }
    static sf_count_t size(void* stream) { return of(stream).file.size(); }
    static sf_count_t tell(void* stream) { return of(stream).file.pos(); }
    static sf_count_t seek(sf_count_t offset, int whence, void* stream)
    {
        QFile& file = of(stream).file;
        if (whence == SEEK_CUR)
            offset += file.pos();
        else if (whence == SEEK_END)
            offset += file.size();
        return file.seek(offset) ? offset : -1;
    }
    static sf_count_t read(void* to, sf_count_t count, void* stream)
    {
        QFile& file = of(stream).file;
        auto* bytes = static_cast<char*>(to);
        const qint64 begin = file.pos();
        count = std::max<qint64>(file.read(bytes, count), 0);
        of(stream).noteError();
        const auto replace = [&](qint64 position, std::initializer_list<char> other) {
            for (const char byte : other) {
                if (position >= begin && position < begin + count)
                    bytes[position - begin] = byte;
                ++position;
            }
        };
        if (of(stream).sizePosition >= 0) {
            replace(riffSizePosition, {8, 0, 0, 0});
            replace(of(stream).sizePosition, {0, 0, 0, 0});
        }
        for (const qint64 position : of(stream).listsIn(begin, count))
            replace(position, {'J', 'U', 'N', 'K'});
        return count;
    }

    /// Where names of lists of texts begin, of which a part at least is in so many bytes.
    std::vector<qint64> listsIn(qint64 begin, qint64 count)
    {
        std::vector<qint64> positions;
        if (!hasLists)
            return positions;
        const qint64 before = file.pos();
        const qint64 first = std::max<qint64>(begin - nameSize + 1, 0);
        file.seek(first);
        const QByteArray bytes = file.read(begin + count + nameSize - 1 - first);
        file.seek(before);
        for (const char* name : {"LIST", "INFO"}) {
            for (auto at = bytes.indexOf(name); at >= 0; at = bytes.indexOf(name, at + 1))
                positions.push_back(first + at);
        }
        return positions;
    }

    void noteError()
    {
        if (file.error() != QFile::NoError)
            error = file.errorString();
    }

    QFile file;
    QString error;
    qint64 sizePosition = -1; // of the size of the samples, where it is left open
    bool hasLists = false;    // that are to be hidden
};

AudioFile::AudioFile(const QString& path)
    : m_path(path)
    , m_written(QFileInfo(path).lastModified())
    , m_size(QFileInfo(path).size())
{
    const QuietLibraries quiet;
    m_opened = open(path, m_info);
}

AudioFile::~AudioFile()
{
    const QuietLibraries quiet;
    m_opened.handle.reset();
}

bool AudioFile::isSizeOpen(std::int64_t size)
{
    // The largest size, or nearly so, of numbers with or without a sign.
    return (size >= 0xffff0000 && size <= 0xffffffff) || (size >= 0x7ffff000 && size <= 0x7fffffff);
}

AudioFile::Opened AudioFile::open(const QString& path, SF_INFO& info)
{
    Opened opened;
    auto stream = std::make_unique<Stream>();
    stream->file.setFileName(path);
    if (stream->file.open(QIODevice::ReadOnly)) {
        const QByteArray kind = stream->file.peek(nameSize);
        stream->hasLists = kind == "RIFF" || kind == "RIFX" || kind == "RF64";
        stream->sizePosition = openSizePosition(stream->file);
    }
    stream->noteError();
    opened.stream = std::move(stream);
    if (!opened.stream->error.isEmpty())
        return opened;
    // This format has its header in another file beside it.
    if (path.endsWith(QLatin1String(".sd2"), Qt::CaseInsensitive)) {
        opened.handle.reset(sf_open(QFile::encodeName(path).constData(), SFM_READ, &info));
        return opened;
    }
    SF_VIRTUAL_IO access{Stream::size, Stream::seek, Stream::read, nullptr, Stream::tell};
    opened.stream->file.seek(0);
    opened.handle.reset(sf_open_virtual(&access, SFM_READ, &info, opened.stream.get()));
    opened.stream->hasLists = false; // whatever the samples are
    if (!opened.stream->error.isEmpty())
        opened.handle.reset();
    return opened;
}

QString AudioFile::log() const
{
    char text[1 << 14] = "";
    sf_command(m_opened.handle.get(), SFC_GET_LOG_INFO, text, sizeof text);
    return QString::fromLatin1(text);
}

QString AudioFile::error() const
{
    const bool isNew = m_opened.stream && !m_opened.stream->error.isEmpty();
    return isNew ? m_opened.stream->error : m_error;
}

std::size_t AudioFile::read(double* values, std::size_t count)
{
    if (m_hasChanged)
        return 0;
    const QuietLibraries quiet;
    // Reads values, not frames: that bounds what a faulty decoder can write.
    const sf_count_t rest = std::max<sf_count_t>(m_info.frames - m_position, 0);
    const auto valueCount = std::min(static_cast<sf_count_t>(count), rest) * m_info.channels;
    const sf_count_t got = sf_read_double(m_opened.handle.get(), values, valueCount);
    const sf_count_t samples = std::clamp<sf_count_t>(got, 0, valueCount) / m_info.channels;
    m_position += samples;
    return static_cast<std::size_t>(samples);
}

bool AudioFile::seek(std::int64_t sample)
{
    const QuietLibraries quiet;
    if (sample < 0 || sample > m_info.frames || m_hasChanged || (isTouched() && !openAgain()))
        return false;
    const std::int64_t before = m_position;
    if (moveTo(sample))
        return true;
    moveTo(before);
    return false;
}

/// Returns false when that is not possible; the file is at its start then.
bool AudioFile::moveTo(std::int64_t sample)
{
    if (m_hasChanged)
        return false;
    if (sf_seek(m_opened.handle.get(), sample, SEEK_SET) != sample)
        return openAgain() && sample == 0; // some decoders fail after that
    m_position = sample;
    return true;
}

/// Whether the file was written to. A file that was removed can still be read while it is open.
bool AudioFile::isTouched() const
{
    const QFileInfo file(m_path);
    return file.exists() && (file.lastModified() != m_written || file.size() != m_size);
}

/// Opens the file again, at its start; false when it is another one now.
bool AudioFile::openAgain()
{
    const QFileInfo file(m_path);
    m_written = file.lastModified();
    m_size = file.size();
    SF_INFO info{};
    m_error = error();
    m_opened = Opened();
    m_opened = open(m_path, info);
    m_hasChanged = !m_opened.handle || info.channels != m_info.channels ||
                   info.samplerate != m_info.samplerate || info.frames < m_info.frames;
    if (m_hasChanged) {
        m_error = error();
        m_opened = Opened();
    } else {
        m_position = 0;
    }
    return !m_hasChanged;
}
