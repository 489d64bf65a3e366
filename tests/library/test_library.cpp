// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
// Loads and unloads the library in a process of its own, which links the platform library only.
#include "platform/startup/TranslationCenter.h"

#include <QCoreApplication>

#include <dlfcn.h>

#include <cstdio>
#include <cstring>

namespace {

int failures = 0;

void expect(bool condition, const char* what)
{
    if (!condition)
        std::fprintf(stderr, "FAILED: %s\n", what);
    failures += condition ? 0 : 1;
}

int registered()
{
    return TranslationCenter::Instance().Registered().count(QStringLiteral("Orvane"));
}

QString translated() { return QCoreApplication::translate("VCGLTimeDiagram", "Time Diagram"); }

} // namespace

int main(int argc, char** argv)
{
    const char* const path = argc > 1 ? argv[1] : "";
    const bool leaveLoaded = argc > 2 && std::strcmp(argv[2], "--leave-loaded") == 0;
    TranslationCenter::Instance().SetLanguage(QStringLiteral("de"));

    // Before there is an application: nothing to install into yet.
    void* library = dlopen(path, RTLD_NOW);
    if (!library) {
        std::fprintf(stderr, "FAILED: %s\n", dlerror());
        return 1;
    }
    expect(registered() == 1, "loading registers the catalogue once");
    {
        QCoreApplication application(argc, argv);
        expect(translated() == QStringLiteral("Zeitdiagramm"), "the catalogue is installed");
        if (leaveLoaded)
            return failures;
        dlclose(library);
        expect(registered() == 0, "unloading unregisters the catalogue");
        expect(translated() == QStringLiteral("Time Diagram"), "the catalogue is gone");

        library = dlopen(path, RTLD_NOW);
        expect(registered() == 1, "the library can be loaded again");
        expect(translated() == QStringLiteral("Zeitdiagramm"), "and is installed at once");
    }
    // After the application is gone.
    dlclose(library);
    expect(registered() == 0, "unloading works without an application");
    return failures;
}
