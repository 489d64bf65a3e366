// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/sources/SigmfArchive.h"

#include "workbench/sources/PlainText.h"
#include "workbench/sources/SigmfMetadata.h"

#include <QFile>
#include <QFileInfo>

#include <archive.h>
#include <archive_entry.h>

#include <algorithm>
#include <memory>

namespace {

constexpr int maxEntryCount = 10000;
constexpr int maxNameLength = 4096; // as of a path

QString nameOf(archive_entry* entry)
{
    if (const char* name = archive_entry_pathname_utf8(entry))
        return QString::fromUtf8(name);
    return QString::fromLocal8Bit(archive_entry_pathname(entry));
}

/// Reads a file for libarchive, which takes an error of the system for the end of the file.
struct Reading
{
    static Reading& of(void* reading) { return *static_cast<Reading*>(reading); }
    static la_ssize_t read(archive*, void* reading, const void** bytes)
    {
        Reading& self = of(reading);
        const qint64 count = self.file.read(self.block.data(), self.block.size());
        if (self.file.error() != QFile::NoError)
            self.error = self.file.errorString();
        *bytes = self.block.constData();
        return self.error.isEmpty() ? count : ARCHIVE_FATAL;
    }
    static la_int64_t skip(archive*, void* reading, la_int64_t count)
    {
        QFile& file = of(reading).file;
        const qint64 step = std::clamp<qint64>(count, 0, file.size() - file.pos());
        return file.seek(file.pos() + step) ? step : 0;
    }

    QFile& file;
    QByteArray block = QByteArray(1 << 16, '\0');
    QString error = QString();
};

} // namespace

// A tar archive without compression has each content as it is: it starts in the file where its
// header ends, unless it is stored with holes.
Result<SigmfArchive> SigmfArchive::read(const QString& fileName)
{
    SigmfArchive result;
    QFile file(fileName);
    QFile content(fileName); // with a position of its own
    if (!file.open(QIODevice::ReadOnly) || !content.open(QIODevice::ReadOnly))
        return failure(
            tr("cannot be read (%1)").arg((file.isOpen() ? content : file).errorString()));
    Reading reading{file};
    const std::unique_ptr<archive, int (*)(archive*)> reader(archive_read_new(), archive_read_free);
    archive_read_support_format_tar(reader.get());
    int status =
        archive_read_open2(reader.get(), &reading, nullptr, Reading::read, Reading::skip, nullptr);
    archive_entry* entry = nullptr;
    for (int i = 0; i < maxEntryCount && (status == ARCHIVE_OK || status == ARCHIVE_WARN); ++i) {
        status = archive_read_next_header(reader.get(), &entry);
        if (status != ARCHIVE_OK && status != ARCHIVE_WARN)
            break;
        const std::int64_t offset = archive_filter_bytes(reader.get(), 0);
        const std::int64_t wanted = archive_entry_size(entry);
        if (archive_entry_filetype(entry) != AE_IFREG || archive_entry_sparse_count(entry) != 0 ||
            wanted <= 0 || offset >= file.size())
            continue;
        const auto there = std::min<std::int64_t>(wanted, file.size() - offset);
        result.isCutOff = result.isCutOff || there < wanted;
        if (const auto added = result.add(nameOf(entry), {offset, there}, content); !added)
            return tl::unexpected(added.error());
    }
    if (!reading.error.isEmpty())
        return failure(tr("cannot be read (%1)").arg(reading.error));
    if (status != ARCHIVE_OK && status != ARCHIVE_EOF && result.files.empty())
        return failure(
            tr("not an archive that can be read (%1); a SigMF archive is a tar archive "
               "without compression")
                .arg(plainText(QString::fromLocal8Bit(archive_error_string(reader.get())))));
    if (result.recordingCount == 0)
        return failure(tr("the archive holds no SigMF recording; choose another one"));
    return result;
}

Result<void> SigmfArchive::add(const QString& name, const Span& span, QFile& archive)
{
    if (name.size() > maxNameLength)
        return {};
    files[name] = span;
    // Some systems put a file "._*" with attributes of their own beside each file.
    if (!name.endsWith(QLatin1String(".sigmf-meta")) ||
        QFileInfo(name).fileName().startsWith(QLatin1String("._")))
        return {};
    if (++recordingCount > 1)
        return {};
    const std::int64_t size = std::min(span.size, SigmfMetadata::maxSize + 1);
    metaName = name;
    if (archive.seek(span.offset))
        metadata = archive.read(size);
    if (metadata.size() < size)
        return failure(tr("cannot be read (%1)").arg(archive.errorString()));
    return {};
}
