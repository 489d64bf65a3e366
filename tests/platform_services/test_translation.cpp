// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/startup/TranslationCenter.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <array>

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
            QFile::copy(QStringLiteral(ORVANE_SAMPLE_CATALOGUE),
                        folder.filePath(QString::fromLatin1(name)));
        center.SetLanguage(QStringLiteral("de"));
        center.AddFolder(folder.path());
    }
    TranslationCenter& center = TranslationCenter::Instance();
    const QString sample = QStringLiteral("Sample");
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
    const QCoreApplication application(argumentCount, argumentVector);
    EXPECT_EQ(text(), "Trace");
}

TEST_F(Translations, FollowTheLanguage)
{
    const std::array<const char*, 3>
        cases[] = {{"Sample", "en", "Trace"}, {"Sample", "de_AT", "Spur"},
                   {"Sample", "fr", "Trace"}, {"Sample", "de-DE", "Spur"},
                   {"Sample", "", "Trace"}, // the system prefers English to German here
                   {"Alpine", "de", "Trace"}, {"Alpine", "de_AT", "Spur"}};
    const QCoreApplication application(argumentCount, argumentVector);
    for (const auto& [catalogue, language, expected] : cases) {
        center.Register(QString::fromLatin1(catalogue));
        center.SetLanguage(QString::fromLatin1(language));
        EXPECT_EQ(text(), expected) << catalogue << ", " << language;
        center.Unregister(QString::fromLatin1(catalogue));
    }
}

TEST_F(Translations, OfThePlatformNeedNoRegistration)
{
    QFile::copy(QStringLiteral(ORVANE_SAMPLE_CATALOGUE),
                folder.filePath(QStringLiteral("OrvanePlatform_de.qm")));
    const QCoreApplication application(argumentCount, argumentVector);
    EXPECT_EQ(text(), "Spur");
    EXPECT_TRUE(center.Registered().isEmpty());
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
