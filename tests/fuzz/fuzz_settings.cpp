// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
// Settings files of any content: what is read is plain, and comes back as it was.
#include "platform/values/PlainSettings.h"

#include <QFile>
#include <QTemporaryDir>

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const QTemporaryDir folder;
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<int>(size));
    const QSettings::SettingsMap read = values::plainSettings::parse(bytes).values;
    const QString name = folder.filePath(QStringLiteral("settings.ini"));
    QFile::remove(name);
    {
        QSettings settings(name, values::plainSettings::format());
        for (auto value = read.begin(); value != read.end(); ++value)
            settings.setValue(value.key(), value.value());
    }
    const QSettings again(name, values::plainSettings::format());
    for (const QString& key : again.allKeys()) {
        if (read.contains(key) && again.value(key) != read.value(key))
            std::abort();
    }
    return 0;
}
