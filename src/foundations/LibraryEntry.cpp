// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "foundations/LibraryEntry.h"

#include "platform/startup/TranslationCenter.h"

#include <QString>
#include <QtGlobal>

// The catalogue is in the library's resources, which static initialisation may add only after the
// load hook has run. (The macro works outside of namespaces only.)
static void addResources() { Q_INIT_RESOURCE(OrvaneTranslations); }

bool OrvaneLibraryEntry(LibraryReason reason)
{
    const QString catalogue = QStringLiteral("Orvane");
    if (reason == LibraryReason::ProcessAttach) {
        addResources();
        TranslationCenter::Instance().Register(catalogue);
    } else if (reason == LibraryReason::ProcessDetach) {
        TranslationCenter::Instance().Unregister(catalogue);
    }
    return true;
}

namespace {

// A static object rather than loader attributes: its destructor runs at dlclose as well as at exit,
// and in both cases before the platform library is gone.
struct LoadHook
{
    LoadHook() { OrvaneLibraryEntry(LibraryReason::ProcessAttach); }
    ~LoadHook() { OrvaneLibraryEntry(LibraryReason::ProcessDetach); }
};
const LoadHook loadHook;

} // namespace
