// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/base/Export.h"

#include <QString>
#include <QStringList>

#include <memory>

/// Installs the translation catalogues that libraries register, for the application's language.
///
/// A catalogue named N is the file N_<language>.qm, looked for in the folders in the order in which
/// they were added, then in the resources under ":/translations". "de_AT" falls back to "de".
/// A catalogue may be registered before there is an application object (it is installed when the
/// application starts) and unregistered after it is gone. A missing file leaves the texts as they
/// stand in the source. GUI thread only.
class ORVANE_PLATFORM_API TranslationCenter
{
public:
    /// The application's centre. It is never destroyed.
    static TranslationCenter& Instance();

    /// Registrations are counted: a catalogue goes with the last of them.
    void Register(const QString& catalogue);
    /// A catalogue that is not registered is ignored.
    void Unregister(const QString& catalogue);
    /// Names as registered, once for each registration.
    QStringList Registered() const;

    /// Language such as "de" or "de_AT"; an empty one is the system's. Replaces the installed
    /// catalogues at once.
    void SetLanguage(const QString& language);
    QString Language() const;
    /// Adds a folder to look in, and looks there at once.
    void AddFolder(const QString& folder);

private:
    TranslationCenter();
    ~TranslationCenter();
    struct Private;
    std::unique_ptr<Private> d;
};
