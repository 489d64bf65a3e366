// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/startup/TranslationCenter.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

#include <dlfcn.h>
#include <gtest/gtest.h>

namespace {

int argumentCount = 1;
char programName[] = "test_translation";
char* argumentVector[] = {programName, nullptr};

std::string text() { return QCoreApplication::translate("Sample", "Trace").toStdString(); }

struct Translations : testing::Test
{
    Translations()
    {
        for (const char* name : {"Sample_de.qm", "Alpine_de_AT.qm"})
            QFile::copy(ORVANE_SAMPLE_CATALOGUE, folder.filePath(name));
        center.SetLanguage("de");
        center.AddFolder(folder.path());
    }
    TranslationCenter& center = TranslationCenter::Instance();
    const QString sample = "Sample";
    const QTemporaryDir folder;
};

TEST_F(Translations, MayBeRegisteredBeforeAnApplicationAndUnregisteredAfterIt)
{
    center.Register(sample);
    center.Register(sample);
    EXPECT_EQ(text(), "Trace");
    for (int run = 0; run < 2; ++run) {
        const QCoreApplication application(argumentCount, argumentVector);
        EXPECT_EQ(text(), "Spur") << run;
    }
    center.Unregister(sample);
    {
        const QCoreApplication application(argumentCount, argumentVector);
        EXPECT_EQ(text(), "Spur") << "one of two registrations is left";
        center.Unregister(sample);
        EXPECT_EQ(text(), "Trace");
        center.Register(sample);
        EXPECT_EQ(text(), "Spur");
    }
    center.Unregister(sample);
    EXPECT_TRUE(center.Registered().isEmpty());
}

TEST_F(Translations, FollowTheLanguage)
{
    const QCoreApplication application(argumentCount, argumentVector);
    const std::tuple<const char*, const char*, const char*> rows[] = {
        {"Sample", "en", "Trace"},   {"Sample", "de_AT", "Spur"}, {"Sample", "fr", "Trace"},
        {"Sample", "de-DE", "Spur"}, {"Sample", "", "Trace"}, // the system prefers English here
        {"Alpine", "de", "Trace"},   {"Alpine", "de_AT", "Spur"}};
    for (const auto& [catalogue, language, expected] : rows) {
        center.Register(catalogue);
        center.SetLanguage(language);
        EXPECT_EQ(text(), expected) << catalogue << ", " << language;
        center.Unregister(catalogue);
    }
    center.SetLanguage("de");
    QFile::copy(ORVANE_SAMPLE_CATALOGUE, folder.filePath("OrvanePlatform_de.qm"));
    center.AddFolder(folder.path()); // looks again
    EXPECT_EQ(text(), "Spur") << "the platform's own needs no registration";
}

// The process has not linked the library, so that loading it is loading it.
TEST_F(Translations, OfALibraryComeAndGoWithIt)
{
    const auto registered = [this] { return center.Registered().count("Orvane"); };
    const auto title = [] {
        return QCoreApplication::translate("VCGLTimeDiagram", "Time Diagram");
    };
    void* library = dlopen(ORVANE_LIBRARY, RTLD_NOW); // before there is an application
    ASSERT_TRUE(library) << dlerror();
    EXPECT_EQ(registered(), 1);
    {
        const QCoreApplication application(argumentCount, argumentVector);
        EXPECT_EQ(title(), "Zeitdiagramm");
        dlclose(library);
        EXPECT_EQ(registered(), 0);
        EXPECT_EQ(title(), "Time Diagram");
        library = dlopen(ORVANE_LIBRARY, RTLD_NOW);
        EXPECT_EQ(registered(), 1);
        EXPECT_EQ(title(), "Zeitdiagramm") << "installed at once";
    }
    dlclose(library); // after the application is gone
    EXPECT_EQ(registered(), 0);
    EXPECT_TRUE(dlopen(ORVANE_LIBRARY, RTLD_NOW)) << "the process ends with it";
}

} // namespace

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    qputenv("LANG", "en_US.UTF-8");
    qputenv("LANGUAGE", "en_US:de_DE");
    qunsetenv("LC_ALL");
    return RUN_ALL_TESTS();
}
