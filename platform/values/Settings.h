// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/base/Export.h"

#include <QString>
#include <QVariantMap>

namespace values {

/// The settings of the application (see Persistant::StoreFile), read by the constructor. The
/// destructor writes all changes in one step.
class ORVANE_PLATFORM_API Settings
{
public:
    Settings();
    ~Settings();
    Settings(const Settings&) = delete;
    Settings& operator=(const Settings&) = delete;

    /// Puts all keys from now on into a group.
    void beginGroup(const QString& name);
    /// The value of a key; otherwise when there is none.
    QVariant value(const QString& key, const QVariant& otherwise = QVariant()) const;
    /// Sets the value of a key; an invalid value removes the key.
    void setValue(const QString& key, const QVariant& value);

private:
    QString m_group;
    QVariantMap m_values;
    QVariantMap m_changes;
};

} // namespace values
