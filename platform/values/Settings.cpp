// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/values/Settings.h"

#include "platform/values/SettingsStore.h"

namespace values {

Settings::Settings()
    : m_values(SettingsStore::Instance().Read())
{}

Settings::~Settings()
{
    if (!m_changes.isEmpty())
        SettingsStore::Instance().Write(m_changes);
}

void Settings::beginGroup(const QString& name) { m_group = name + QLatin1Char('/'); }

QVariant Settings::value(const QString& key, const QVariant& otherwise) const
{
    return m_values.value(m_group + key, otherwise);
}

void Settings::setValue(const QString& key, const QVariant& value)
{
    m_values[m_group + key] = value;
    m_changes[m_group + key] = value;
}

} // namespace values
