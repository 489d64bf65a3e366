// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/sources/CsvSource.h"

#include "workbench/sources/PlainText.h"

#include <QFileInfo>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace {

constexpr std::int64_t headSize = 256 << 10;   // bytes, enough to know the layout from
constexpr std::int64_t countedSize = 32 << 20; // of files whose rows are counted at once
constexpr std::int64_t countedRows = 1 << 16;  // at a time
constexpr std::int64_t markDistance = 1 << 20; // bytes
constexpr std::size_t maxBlockValueCount = 1 << 18;

} // namespace

bool CsvSource::isCsv(const QString& fileName)
{
    const QString ending = QFileInfo(fileName).suffix().toLower();
    return ending == QLatin1String("csv") || ending == QLatin1String("tsv") ||
           ending == QLatin1String("txt");
}

Result<Recording> CsvSource::open(const QString& fileName, const Recording::Options& options)
{
    std::unique_ptr<CsvSource> source(new CsvSource(fileName));
    QByteArray head;
    if (source->m_file.open(QIODevice::ReadOnly))
        head = source->m_file.read(headSize);
    if (source->m_file.error() != QFile::NoError)
        return failure(tr("cannot be read (%1)").arg(source->m_file.errorString()));
    auto layout = CsvLayout::of(head, source->m_file.atEnd(), options);
    if (!layout)
        return tl::unexpected(layout.error());
    source->m_layout = std::move(*layout);
    return finish(std::move(source), options);
}

/// Makes a recording of a source whose layout is known.
Result<Recording> CsvSource::finish(std::unique_ptr<CsvSource> source,
                                    const Recording::Options& options)
{
    const CsvLayout& layout = source->m_layout;
    Recording recording;
    recording.notices = layout.notices;
    recording.details = layout.details;
    source->m_facts.sampleRate = recording.orAssumed(layout.sampleRate);
    source->m_facts.isComplex = layout.isComplex;
    source->m_facts.channelCount = layout.isComplex ? 1 : static_cast<int>(layout.columns.size());
    source->m_marks = {{-layout.firstRow, layout.begin}};
    source->start(source->m_marks.front());
    if (source->m_file.size() > countedSize) {
        source->seek(layout.rowCount - layout.firstRow);
        source->seek(0);
    } else if (!source->countRows(options.goOn)) {
        return failure(tr("opening was given up"));
    }
    for (const auto& notice : {layout.times.notice(), source->trouble()}) {
        if (notice && !recording.notices.contains(*notice))
            recording.notices += *notice;
    }
    source->m_trouble.say(std::nullopt); // unless it failed
    recording.source = std::move(source);
    return recording;
}

/// Returns false when it was given up.
bool CsvSource::countRows(const std::function<bool(double part)>& goOn)
{
    for (std::int64_t row = countedRows; seek(row); row += countedRows) {
        const double part = static_cast<double>(m_file.pos()) / static_cast<double>(m_file.size());
        if (goOn && !goOn(part))
            return false;
    }
    return seek(0);
}

CsvSource::CsvSource(const QString& fileName)
    : m_file(fileName)
{
    m_facts.name = plainText(QFileInfo(fileName).fileName());
}

CsvSource::~CsvSource() = default;

std::optional<std::int64_t> CsvSource::sampleCount() const
{
    const std::int64_t count = m_count;
    return count >= 0 ? std::optional<std::int64_t>(count) : std::nullopt;
}

void CsvSource::start(const Mark& mark)
{
    m_rows = std::make_unique<CsvRows>(m_layout.separator,
                                       [this](const CsvRows::Row& row) { takeRow(row); });
    m_file.seek(mark.offset);
    m_next = mark.sample;
    m_ahead.clear();
    m_used = 0;
}

void CsvSource::takeRow(const CsvRows::Row& row)
{
    if (m_next == m_timedCount) {
        if (m_layout.times.take(m_next + m_layout.firstRow + 1, row))
            m_trouble.say(m_layout.times.notice());
        ++m_timedCount;
    }
    if (m_next++ < m_position)
        return;
    for (const std::size_t column : m_layout.columns)
        m_ahead.push_back(row.number(column).value_or(std::numeric_limits<double>::quiet_NaN()));
}

/// Reads the next line or part of a line; false at the end.
bool CsvSource::readOn()
{
    char bytes[4096];
    const qint64 size = m_file.readLine(bytes, sizeof bytes);
    if (size > 0 && m_rows->take(bytes, static_cast<std::size_t>(size))) {
        const std::int64_t offset = m_file.pos();
        if (offset >= m_marks.back().offset + markDistance && m_rows->isBetweenRows())
            m_marks.push_back({m_next, offset});
        return true;
    }
    if (m_file.error() != QFile::NoError) {
        m_trouble.failReading(std::max<std::int64_t>(m_next, 0), m_file.errorString());
        return false;
    }
    if (size <= 0) {
        m_timedCount = std::numeric_limits<std::int64_t>::max(); // the last row may be cut off
        m_rows->finish();
    }
    end(size > 0);
    return false;
}

/// Notes that there is no next row.
void CsvSource::end(bool isBroken)
{
    const std::int64_t there = std::max<std::int64_t>(m_next, 0);
    if (isBroken)
        m_trouble.say(tr("the row after sample %1 is longer than %2 bytes, what follows is left "
                         "out")
                          .arg(there)
                          .arg(CsvRows::maxRowSize));
    else if (there < m_count)
        m_trouble.fail(
            tr("the file was cut while it played: its samples end after %1 of %2; open it again")
                .arg(there)
                .arg(m_count));
    if (m_count < 0)
        m_count = there;
}

std::size_t CsvSource::read(std::vector<double>& block, std::size_t count)
{
    const std::size_t columns = m_layout.columns.size();
    count = std::min(count, std::max<std::size_t>(maxBlockValueCount / columns, 1));
    m_ahead.erase(m_ahead.begin(), m_ahead.begin() + static_cast<std::ptrdiff_t>(m_used));
    m_used = 0;
    while (available() < count && readOn()) {
    }
    const std::size_t samples = std::min(count, available());
    m_used = samples * columns;
    block.assign(m_ahead.begin(), m_ahead.begin() + static_cast<std::ptrdiff_t>(m_used));
    m_position += static_cast<std::int64_t>(samples);
    return samples;
}

/// The last mark that is not after a sample.
CsvSource::Mark CsvSource::markBefore(std::int64_t sample) const
{
    const auto isLater = [](std::int64_t wanted, const Mark& mark) { return wanted < mark.sample; };
    return *std::prev(std::upper_bound(std::next(m_marks.begin()), m_marks.end(), sample, isLater));
}

bool CsvSource::seek(std::int64_t position)
{
    if (position < 0 || (m_count >= 0 && position > m_count))
        return false;
    const std::int64_t before = std::exchange(m_position, position);
    const Mark mark = markBefore(position);
    if (position < m_next || mark.sample > m_next)
        start(mark);
    m_ahead.clear();
    m_used = 0;
    while (m_next < position && readOn()) {
    }
    if (m_next >= position)
        return true;
    m_position = before;
    start(markBefore(before));
    return false;
}
