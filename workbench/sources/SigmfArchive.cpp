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

QString nameOf(archive_entry* entry)
{
    if (const char* name = archive_entry_pathname_utf8(entry))
        return QString::fromUtf8(name);
    return QString::fromLocal8Bit(archive_entry_pathname(entry));
}

} // namespace

// The whole file is mapped: what libarchive reports of an entry's content is then a place in the
// file, unless the entry is stored with holes.
SigmfArchive SigmfArchive::read(const QString& fileName)
{
    SigmfArchive result;
    QFile file(fileName);
    const char* bytes = nullptr;
    if (file.open(QIODevice::ReadOnly))
        bytes = reinterpret_cast<const char*>(file.map(0, file.size()));
    if (!bytes) {
        result.why = tr("cannot be read (%1)").arg(file.errorString());
        return result;
    }
    const std::unique_ptr<archive, int (*)(archive*)> reader(archive_read_new(), archive_read_free);
    archive_read_support_format_tar(reader.get());
    archive_read_open_memory(reader.get(), bytes, static_cast<std::size_t>(file.size()));
    archive_entry* entry = nullptr;
    int status = ARCHIVE_OK;
    for (int i = 0; i < maxEntryCount; ++i) {
        status = archive_read_next_header(reader.get(), &entry);
        if (status != ARCHIVE_OK && status != ARCHIVE_WARN)
            break;
        const void* content = nullptr;
        std::size_t size = 0;
        la_int64_t hole = 0;
        if (archive_entry_filetype(entry) != AE_IFREG ||
            archive_read_data_block(reader.get(), &content, &size, &hole) != ARCHIVE_OK)
            continue;
        const std::int64_t offset = static_cast<const char*>(content) - bytes;
        if (archive_entry_sparse_count(entry) == 0 && offset > 0 && offset < file.size()) {
            const std::int64_t wanted = archive_entry_size(entry);
            const auto there = std::min<std::int64_t>(wanted, file.size() - offset);
            result.isCutOff = result.isCutOff || there < wanted;
            result.add(nameOf(entry), {offset, there}, bytes + offset);
        }
    }
    if (status != ARCHIVE_OK && status != ARCHIVE_EOF && result.files.empty())
        result.why =
            tr("not an archive that can be read (%1); a SigMF archive is a tar archive "
               "without compression")
                .arg(plainText(QString::fromLocal8Bit(archive_error_string(reader.get()))));
    else if (result.recordingCount == 0)
        result.why = tr("the archive holds no SigMF recording; choose another one");
    return result;
}

void SigmfArchive::add(const QString& name, const Span& span, const char* content)
{
    files[name] = span;
    // Some systems put files "._*" with their own attributes beside each file.
    if (!name.endsWith(QLatin1String(".sigmf-meta")) ||
        QFileInfo(name).fileName().startsWith(QLatin1String("._")))
        return;
    if (++recordingCount == 1) {
        metaName = name;
        metadata =
            QByteArray(content, static_cast<int>(std::min(span.size, SigmfMetadata::maxSize + 1)));
    }
}
