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
/// See plainSettings for what it may hold. A file that cannot be read as a whole is not written
/// either: what it holds would be lost. What is amiss with a file is logged once: that it cannot be
/// read or written, or has lines that are no settings.
class SettingsStore
{
public:
    static SettingsStore& Instance();

    /// Uses another file from now on; an empty name returns to the application's usual one.
    void SetFile(const QString& fileName) { m_file = fileName; }
    QString File() const;

    /// What the file holds at this moment.
    QVariantMap Read();
    /// Stores the values beside those that the file holds, as a whole or not at all. An invalid
    /// value removes its key. A file that has lines that are no settings is copied before, to
    /// <file>.damaged, or <file>.damaged.2 and so on where there is one with another content.
    void Write(const QVariantMap& values);

private:
    SettingsStore() = default;
    std::optional<QByteArray> Content(const QString& file);
    void Warn(const QString& file, const QString& what, const QString& why);

    QString m_file;
    QSet<QPair<QString, QString>> m_warned;
};

} // namespace values
