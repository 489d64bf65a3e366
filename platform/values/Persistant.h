// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/base/Export.h"

#include <QString>

#include <vector>

/// Configuration access. The view selects one of several sets of settings.
struct ICfg
{
    enum View : int { DefaultView = 0 };
};

namespace values {

class Persistant;

/// An object with persisted settings. The derived class creates and deletes its Persistant: the
/// hooks below are virtual and must not be called from the destructor of this base.
class ORVANE_PLATFORM_API PersistantOwner
{
public:
    virtual ~PersistantOwner();
    /// Called before the variables are stored: bring them up to date.
    virtual void ApplyPersistantBeforeWrite() = 0;
    /// Called after the variables were filled: apply them.
    virtual void ApplyPersistantAfterRead() = 0;

protected:
    Persistant* m_pPersistant = nullptr;
};

/// Named group of variables that are kept in the application's INI file.
///
/// The file is that of QSettings (INI format, user scope) for the application's organisation and
/// name, unless SetStoreFile names another one; see PlainSettings.h for its format. Write stores
/// the settings at once. A variable that is not in the file, or is not a switch there, gets its
/// default.
class ORVANE_PLATFORM_API Persistant
{
public:
    /// @param name   group of the settings in the file.
    /// @param owner  told about reading and writing; not owned, may be null.
    Persistant(const QString& name, PersistantOwner* owner);
    ~Persistant();
    Persistant(const Persistant&) = delete;
    Persistant& operator=(const Persistant&) = delete;

    /// Adds a variable, which must outlive this object.
    void Add(bool* variable, const QString& key, bool defaultValue);
    /// Fills the variables from the file or with their defaults, then calls
    /// ApplyPersistantAfterRead. A path other than "" precedes the group's name.
    void Read(const QString& path, ICfg::View view);
    /// Calls ApplyPersistantBeforeWrite, then stores the variables and writes the file.
    void Write(const QString& path, ICfg::View view);

    /// Uses another file for all settings from now on; an empty name returns to the usual one.
    static void SetStoreFile(const QString& fileName);
    /// Full name of the file in use.
    static QString StoreFile();

private:
    struct Entry
    {
        bool* variable;
        QString key;
        bool defaultValue;
    };
    QString Group(const QString& path, ICfg::View view) const;

    QString m_name;
    PersistantOwner* m_pOwner;
    std::vector<Entry> m_entries;
};

} // namespace values
