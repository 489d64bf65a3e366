// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/base/Export.h"

#include <QString>
#include <QStringList>

#include <memory>

/// Installs the translation catalogues that libraries register, for the application's language.
///
/// Catalogue N is the file N_<language>.qm. It is searched for in the added folders, in their
/// order, then in the resources under ":/translations". "de_AT" falls back to "de". A catalogue may
/// be registered before the application object exists (it is installed when the application starts)
/// and unregistered after it is gone. Without a file the texts stay English. GUI thread only.
class ORVANE_PLATFORM_API TranslationCenter
{
public:
    /// The application's centre. It is never destroyed.
    static TranslationCenter& Instance();

    /// Registrations are counted: the last Unregister removes the catalogue.
    void Register(const QString& catalogue);
    /// A catalogue that is not registered is ignored.
    void Unregister(const QString& catalogue);
    /// Names as registered, once for each registration.
    QStringList Registered() const;

    /// Sets the language, such as "de" or "de_AT"; empty for the system's. Replaces the installed
    /// catalogues at once.
    void SetLanguage(const QString& language);
    /// The language that was set; empty for the system's.
    QString Language() const;
    /// Adds a folder and searches it at once.
    void AddFolder(const QString& folder);

private:
    TranslationCenter();
    ~TranslationCenter();
    struct Private;
    std::unique_ptr<Private> d;
};
