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

} // namespace

// A tar archive without compression has each content as it is: it starts in the file where its
// header ends, unless it is stored with holes.
SigmfArchive SigmfArchive::read(const QString& fileName)
{
    SigmfArchive result;
    QFile file(fileName);
    QFile content(fileName); // of its own position
    if (!file.open(QIODevice::ReadOnly) || !content.open(QIODevice::ReadOnly)) {
        result.why = tr("cannot be read (%1)").arg(file.errorString());
        return result;
    }
    constexpr std::size_t blockSize = 1 << 16;
    const std::unique_ptr<archive, int (*)(archive*)> reader(archive_read_new(), archive_read_free);
    archive_read_support_format_tar(reader.get());
    int status = archive_read_open_fd(reader.get(), file.handle(), blockSize);
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
        result.add(nameOf(entry), {offset, there}, content);
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

void SigmfArchive::add(const QString& name, const Span& span, QFile& archive)
{
    if (name.size() > maxNameLength)
        return;
    files[name] = span;
    // Some systems put files "._*" with their own attributes beside each file.
    if (!name.endsWith(QLatin1String(".sigmf-meta")) ||
        QFileInfo(name).fileName().startsWith(QLatin1String("._")))
        return;
    if (++recordingCount == 1 && archive.seek(span.offset)) {
        metaName = name;
        metadata = archive.read(std::min(span.size, SigmfMetadata::maxSize + 1));
    }
}
