// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/values/SettingsStore.h"

#include "platform/values/PlainSettings.h"

#include <QCoreApplication>
#include <QDebug>
#include <QDir>
#include <QFileInfo>
#include <QLockFile>
#include <QSaveFile>
#include <QSettings>

#include <algorithm>

namespace values {

namespace {

constexpr int lockTimeoutMs = 5000; // others hold it for some milliseconds

/// Reads a file up to one byte more than allowed; nothing when it cannot be read.
std::optional<QByteArray> contentOf(QFile& file)
{
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    const qint64 size = std::min(file.size(), plainSettings::mostBytes + 1);
    const QByteArray content = file.read(size);
    return content.size() < size ? std::nullopt : std::optional(content);
}

/// Copies a file, unless an equal copy exists. Returns false when that fails.
bool keepCopy(const QString& fileName, const QByteArray& content)
{
    QString copy = fileName + QStringLiteral(".damaged");
    for (int number = 2; QFile::exists(copy); ++number) {
        QFile other(copy);
        if (other.size() == QFileInfo(fileName).size() && contentOf(other) == content)
            return true;
        copy = fileName + QStringLiteral(".damaged.%1").arg(number);
    }
    return QFile::copy(fileName, copy);
}

/// Replaces a file. Returns why it failed; empty when it did not.
QString replace(const QString& fileName, const QByteArray& content)
{
    QSaveFile file(fileName);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        return file.errorString();
    if (!QFile::exists(fileName))
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
    return file.commit() ? QString() : file.errorString();
}

bool readNothing(QIODevice&, QSettings::SettingsMap&) { return true; }
bool writeNothing(QIODevice&, const QSettings::SettingsMap&) { return true; }

} // namespace

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
    // QSettings knows the place of the file, but would read serialised objects from it.
    static const QSettings::Format format =
        QSettings::registerFormat(QStringLiteral("ini"), readNothing, writeNothing);
    return QSettings(format, QSettings::UserScope, organization, application).fileName();
}

std::optional<QByteArray> SettingsStore::Content(const QString& file)
{
    QFile device(file);
    if (!device.exists())
        return QByteArray();
    const auto content = contentOf(device);
    if (!content)
        Warn(file, QStringLiteral("cannot be read (%1), defaults are used and nothing is kept"),
             device.errorString());
    return content;
}

QVariantMap SettingsStore::Read()
{
    const QString file = File();
    const plainSettings::Content content =
        plainSettings::parse(Content(file).value_or(QByteArray()));
    if (!content.damaged.isEmpty())
        Warn(file, QStringLiteral("no setting, and left out: %1"),
             content.damaged.join(QLatin1String("; ")));
    return content.values;
}

void SettingsStore::Write(const QVariantMap& values)
{
    const QString file = File();
    const auto refuse = [&](const QString& why) {
        Warn(file, QStringLiteral("cannot be written (%1)"), why);
    };
    QDir().mkpath(QFileInfo(file).path());
    QLockFile lock(file + QStringLiteral(".lock"));
    if (!lock.tryLock(lockTimeoutMs))
        return refuse(
            QStringLiteral("%1.lock cannot be made, or another program holds it").arg(file));
    const auto before = Content(file);
    if (!before)
        return;
    plainSettings::Content content = plainSettings::parse(*before);
    for (auto value = values.begin(); value != values.end(); ++value) {
        if (value->isValid())
            content.values[value.key()] = *value;
        else
            content.values.remove(value.key());
    }
    if (!content.damaged.isEmpty() && !keepCopy(file, *before))
        return refuse(QStringLiteral("there is no room for a copy of what is damaged in it"));
    const QByteArray after = plainSettings::written(content.values);
    if (after.size() > plainSettings::mostBytes) // which nobody would read
        return refuse(QStringLiteral("more than %1 bytes").arg(plainSettings::mostBytes));
    if (const QString why = after == *before ? QString() : replace(file, after); !why.isEmpty())
        refuse(why);
}

void SettingsStore::Warn(const QString& file, const QString& what, const QString& why)
{
    const QPair<QString, QString> warning(file, what);
    if (m_warned.contains(warning))
        return;
    m_warned.insert(warning);
    qWarning().noquote() << QStringLiteral("Settings file %1: %2").arg(file, what.arg(why));
}

} // namespace values
