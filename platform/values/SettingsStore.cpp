// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/values/SettingsStore.h"

#include "platform/values/PlainSettings.h"

#include <QCoreApplication>
#include <QDebug>
#include <QFile>

namespace values {

SettingsStore& SettingsStore::Instance()
{
    static auto* const store = new SettingsStore; // outlives every library's exit code
    return *store;
}

QString SettingsStore::File() const
{
    if (!m_file.isEmpty())
        return m_file;
    QString application = QCoreApplication::applicationName();
    if (application.isEmpty())
        application = QStringLiteral("Orvane");
    QString organization = QCoreApplication::organizationName();
    if (organization.isEmpty()) // QSettings refuses to work without one
        organization = application;
    return QSettings(plainSettings::format(), QSettings::UserScope, organization, application)
        .fileName();
}

QVariant SettingsStore::Read(const QString& key) { return Synced().value(key); }

void SettingsStore::Write(const QVariantMap& values)
{
    QSettings& settings = Synced();
    for (auto value = values.begin(); value != values.end(); ++value) {
        if (value->isValid())
            settings.setValue(value.key(), *value);
        else
            settings.remove(value.key());
    }
    settings.sync();
    if (settings.status() != QSettings::NoError)
        WarnOnce(QStringLiteral("cannot be written"));
    m_settings.reset(); // an error sticks to the object
}

QSettings& SettingsStore::Synced()
{
    const QString file = File();
    if (!m_settings || m_openFile != file) {
        m_settings = std::make_unique<QSettings>(file, plainSettings::format());
        m_openFile = file;
    }
    m_settings->sync();
    // A file that only cannot be written has the same status.
    if (m_settings->status() != QSettings::NoError && !QFile(file).open(QIODevice::ReadOnly))
        WarnOnce(QStringLiteral("cannot be read, defaults are used"));
    return *m_settings;
}

void SettingsStore::WarnOnce(const QString& what)
{
    if (m_warned.contains(m_openFile))
        return;
    m_warned.insert(m_openFile);
    qWarning().noquote() << QStringLiteral("Settings file %1: %2").arg(m_openFile, what);
}

} // namespace values
