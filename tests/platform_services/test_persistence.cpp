// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/values/Persistant.h"

#include <QFile>
#include <QSettings>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

using values::Persistant;

struct Persistence : testing::Test
{
    Persistence()
    {
        settings.Add(&showGrid, QStringLiteral("ShowGrid"), true);
        Persistant::SetStoreFile(file);
        logged.clear();
        qInstallMessageHandler(
            [](QtMsgType, const QMessageLogContext&, const QString& text) { logged += text; });
    }
    ~Persistence() override
    {
        qInstallMessageHandler(nullptr);
        Persistant::SetStoreFile(usualFile);
    }
    bool Read(const QString& path = QString())
    {
        settings.Read(path, ICfg::DefaultView);
        return showGrid;
    }
    void Write(bool value, const QString& path = QString())
    {
        showGrid = value;
        settings.Write(path, ICfg::DefaultView);
    }
    static QByteArray Content(const QString& name)
    {
        QFile stored(name);
        return stored.open(QFile::ReadOnly) ? stored.readAll() : QByteArray();
    }
    static void SetContent(const QString& name, const QByteArray& content)
    {
        QFile stored(name);
        ASSERT_TRUE(stored.open(QFile::WriteOnly));
        stored.write(content);
    }

    static inline QStringList logged;
    bool showGrid = false;
    Persistant settings{QStringLiteral("Scope"), nullptr};
    const QString usualFile = Persistant::StoreFile();
    const QTemporaryDir dir;
    const QString file = dir.filePath(QStringLiteral("deep/er/settings.ini"));
};

TEST_F(Persistence, WritesThroughIntoAFolderOfItsOwnAndReadsWhatOthersWrote)
{
    EXPECT_TRUE(Read()) << "the default of a file that is not there";
    Write(false);
    EXPECT_EQ(Content(file), "[Scope]\nShowGrid=false\n");
    SetContent(file, "[Scope]\nShowGrid=true\n\n[Other]\nkeep=1\n");
    EXPECT_TRUE(Read());
    Write(false, QStringLiteral("Bench"));
    EXPECT_TRUE(Read());
    EXPECT_FALSE(Read(QStringLiteral("Bench")));
    EXPECT_TRUE(Content(file).contains("keep=1")) << "other settings stay";
    SetContent(file, "[Scope]\nShowGrid=perhaps\n");
    EXPECT_TRUE(Read()) << "the default for a word that is no switch";
}

TEST_F(Persistence, DamagedFilesCountAsEmptyAndAreNamedOnce)
{
    for (const QByteArray& content : {QByteArray("[Scope\nShowGrid=false\n"),
                                      QByteArray("[Scope]\nShowGrid=false\na=1\nnonsense\n"),
                                      QByteArray("\x7fIMG\0\1\2\3[\n\xff\xfe", 12)}) {
        const QString name = dir.filePath(QString::number(content.size()) + QStringLiteral(".ini"));
        SetContent(name, content);
        Persistant::SetStoreFile(name);
        EXPECT_TRUE(Read() && Read());
        EXPECT_EQ(Content(name), content) << "reading changes nothing";
        Write(false);
        EXPECT_EQ(Content(name), "[Scope]\nShowGrid=false\n");
        EXPECT_EQ(Content(name + QStringLiteral(".damaged")), content);
        EXPECT_FALSE(Read());
        EXPECT_EQ(logged.filter(name).size(), 1);
    }
    Persistant::SetStoreFile(dir.path()); // no file at all
    Write(false);
    EXPECT_TRUE(Read());
    EXPECT_EQ(logged.size(), 4) << logged.join('\n').toStdString();
}

} // namespace
