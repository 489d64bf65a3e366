// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/values/Persistant.h"

#include "platform/values/SettingsStore.h"

namespace values {

namespace {

/// Anything but the words of a switch counts as missing.
bool toSwitch(const QVariant& stored, bool defaultValue)
{
    const QString text = stored.toString().toLower();
    if (text == QLatin1String("true") || text == QLatin1String("1"))
        return true;
    if (text == QLatin1String("false") || text == QLatin1String("0"))
        return false;
    return defaultValue;
}

} // namespace

PersistantOwner::~PersistantOwner() = default;

Persistant::Persistant(const QString& name, PersistantOwner* owner)
    : m_name(name)
    , m_pOwner(owner)
{}

Persistant::~Persistant() = default;

void Persistant::Add(bool* variable, const QString& key, bool defaultValue)
{
    m_entries.push_back({variable, key, defaultValue});
}

void Persistant::Read(const QString& path, ICfg::View view)
{
    const QString group = Group(path, view);
    const QVariantMap stored = SettingsStore::Instance().Read();
    for (const Entry& entry : m_entries)
        *entry.variable = toSwitch(stored.value(group + entry.key), entry.defaultValue);
    if (m_pOwner)
        m_pOwner->ApplyPersistantAfterRead();
}

void Persistant::Write(const QString& path, ICfg::View view)
{
    if (m_pOwner)
        m_pOwner->ApplyPersistantBeforeWrite();
    const QString group = Group(path, view);
    QVariantMap values;
    for (const Entry& entry : m_entries)
        values.insert(group + entry.key, *entry.variable);
    SettingsStore::Instance().Write(values);
}

void Persistant::SetStoreFile(const QString& fileName)
{
    SettingsStore::Instance().SetFile(fileName);
}

QString Persistant::StoreFile() { return SettingsStore::Instance().File(); }

QString Persistant::Group(const QString& path, ICfg::View view) const
{
    QString group;
    if (view != ICfg::DefaultView)
        group += QStringLiteral("View%1/").arg(static_cast<int>(view));
    for (const QString& part : {path, m_name}) {
        if (!part.isEmpty())
            group += part + QLatin1Char('/');
    }
    return group;
}

} // namespace values
