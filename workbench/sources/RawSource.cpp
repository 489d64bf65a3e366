// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/sources/RawSource.h"

#include "workbench/sources/PlainText.h"

#include <algorithm>
#include <limits>

namespace {

// Values read at a time.
constexpr std::int64_t maxBlockValueCount = 1 << 18;

} // namespace

Result<void> RawSource::open(Recording& recording, const QString& name, const QString& fileName,
                             RawLayout layout)
{
    std::unique_ptr<RawSource> source(new RawSource(name, fileName, std::move(layout)));
    const QString format = source->m_layout.format.name();
    if (!source->m_file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return failure(tr("cannot be read (%1)").arg(source->m_file.errorString()));
    if (source->m_count <= 0)
        return failure(tr("the recording holds no whole sample of the format %1; choose another "
                          "one")
                           .arg(format),
                       Hint::Format);
    if (const std::int64_t bytes = source->remainder())
        recording.notices += tr("it ends within a sample (bytes left out: %1): it was cut off, or "
                                "it is not %2")
                                 .arg(bytes)
                                 .arg(format);
    recording.details += tr("Format: %1").arg(format);
    recording.source = std::move(source);
    return {};
}

RawSource::RawSource(const QString& name, const QString& fileName, RawLayout layout)
    : m_file(fileName)
    , m_layout(std::move(layout))
{
    m_facts.name = plainText(name);
    m_facts.sampleRate = m_layout.sampleRate;
    m_facts.channelCount = m_layout.channelCount;
    m_facts.isComplex = m_layout.format.isComplex;
    m_facts.symbolRate = m_layout.symbolRate;
    std::vector<RawLayout::Chunk>& chunks = m_layout.chunks;
    m_count = std::numeric_limits<std::int64_t>::max();
    while (chunks.size() > 1 && chunks.back().offset >= m_layout.end) {
        m_count = chunks.back().firstSample;
        chunks.pop_back();
    }
    const RawLayout::Chunk& last = chunks.back();
    const std::int64_t bytes = std::max<std::int64_t>(m_layout.end - last.offset, 0);
    m_count = std::min(m_count, last.firstSample + bytes / m_layout.sampleSize());
}

RawSource::~RawSource() = default;

/// Bytes after the last whole sample.
std::int64_t RawSource::remainder() const
{
    const std::int64_t bytes = m_layout.end - m_layout.chunks.back().offset;
    return std::max<std::int64_t>(bytes, 0) % m_layout.sampleSize();
}

std::size_t RawSource::read(std::vector<double>& block, std::size_t count)
{
    const auto isLater = [](std::int64_t position, const RawLayout::Chunk& chunk) {
        return position < chunk.firstSample;
    };
    const auto next =
        std::upper_bound(m_layout.chunks.begin(), m_layout.chunks.end(), m_position, isLater);
    const RawLayout::Chunk& chunk = *std::prev(next);
    const std::int64_t end = next == m_layout.chunks.end() ? m_count : next->firstSample;
    const std::int64_t size = m_layout.sampleSize();
    const auto wanted = static_cast<std::int64_t>(std::min<std::size_t>(count, maxBlockValueCount));
    std::int64_t samples = std::max<std::int64_t>(maxBlockValueCount / m_facts.valueCount(), 1);
    samples = std::min({samples, wanted, std::max<std::int64_t>(end - m_position, 0)});

    m_bytes.resize(static_cast<std::size_t>(samples * size));
    std::int64_t bytes = 0;
    m_file.unsetError();
    if (m_file.seek(chunk.offset + (m_position - chunk.firstSample) * size))
        bytes = m_file.read(m_bytes.data(), samples * size);
    const std::int64_t there = std::max<std::int64_t>(bytes, 0) / size;
    if (m_file.error() != QFile::NoError)
        m_trouble.failReading(m_position + there, m_file.errorString());
    else if (there < samples)
        m_trouble.fail(
            tr("the file was cut while it played: its samples end after %1 of %2; open it again")
                .arg(m_position + there)
                .arg(m_count));
    samples = there;
    m_position += samples;
    block.resize(static_cast<std::size_t>(samples * m_facts.valueCount()));
    m_layout.format.convert(m_bytes.data(), block.size(), block.data());
    return static_cast<std::size_t>(samples);
}

bool RawSource::seek(std::int64_t position)
{
    if (position < 0 || position > m_count)
        return false;
    m_position = position;
    return true;
}
