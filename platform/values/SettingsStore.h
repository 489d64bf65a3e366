// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QSet>
#include <QSettings>
#include <QString>
#include <QVariantMap>

#include <memory>

namespace values {

/// The INI file that holds all settings of the application. Keys are paths such as "Group/Key".
///
/// See plainSettings for what it may hold. One warning is logged for each file that cannot be read
/// or written.
class SettingsStore
{
public:
    static SettingsStore& Instance();

    /// Uses another file from now on; an empty name returns to the application's usual one.
    void SetFile(const QString& fileName) { m_file = fileName; }
    QString File() const;

    /// What the file holds at this moment; invalid for a missing key.
    QVariant Read(const QString& key);
    /// Stores the values and writes the file at once. An invalid value removes its key.
    void Write(const QVariantMap& values);

private:
    SettingsStore() = default;
    QSettings& Synced();
    void WarnOnce(const QString& what);

    QString m_file;
    QString m_openFile;
    std::unique_ptr<QSettings> m_settings;
    QSet<QString> m_warned;
};

} // namespace values
