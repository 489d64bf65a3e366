// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QPair>
#include <QSet>
#include <QString>
#include <QVariantMap>

#include <optional>

namespace values {

/// The INI file that holds all settings of the application. Keys are paths such as "Group/Key".
///
/// See plainSettings for the format. A file that cannot be read is not written either, because its
/// content would be lost. The log has one warning for each fault of a file: it cannot be read, it
/// cannot be written, it has lines that are not settings.
class SettingsStore
{
public:
    static SettingsStore& Instance();

    /// Uses another file from now on; an empty name returns to the application's usual one.
    void SetFile(const QString& fileName) { m_file = fileName; }
    QString File() const;

    /// Reads the file.
    QVariantMap Read();
    /// Adds values to the file: all of them, or none when that fails. An invalid value removes its
    /// key. A file with lines that are not settings is copied before, to <file>.damaged, or
    /// <file>.damaged.2 and so on if there is a different one already.
    void Write(const QVariantMap& values);

private:
    SettingsStore() = default;
    std::optional<QByteArray> Content(const QString& file);
    void Warn(const QString& file, const QString& what, const QString& why);

    QString m_file;
    QSet<QPair<QString, QString>> m_warned;
};

} // namespace values
