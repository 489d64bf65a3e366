// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/values/Persistant.h"
#include "platform/values/PlainSettings.h"
#include "platform/values/Settings.h"

#include <QFile>
#include <QPoint>
#include <QSettings>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/mman.h>

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

TEST_F(Persistence, ADamagedLineCostsOnlyThatLine)
{
    // Content, whether the grid is shown then, lines that are damaged, and what else is kept.
    const std::tuple<QByteArray, bool, int, QByteArray> files[] = {
        {"\xef\xbb\xbf[Scope]\r\nShowGrid=0\r\n", false, 0, ""},
        {"[Scope]\nShowGrid = False ; off\n", false, 0, ""},
        {"[Scope]\nShowGrid=\"fals\\x65\"\n", false, 0, ""},
        {"[Scope]\nShowGrid=false\nnonsense\na=1\nb=\"\n", false, 2, "a=1\n"},
        {"[Scope\nShowGrid=false\n", true, 2, ""},
        {"[Scope]\nShowGrid=@Variant(\\0\\0\\0\\x11\\xff\\xff\\xff\\xff)\n", true, 1, ""},
        {"[Scope]\na=x, \\x40Variant(a)\nb=@Invalid()\nShowGrid=false\n", false, 1, ""},
        {QByteArray("\x7fIMG\0\1\2\3[\n\xff\xfe", 12), true, 2, ""},
        {"[Scope]\nShowGrid=false\na=" + QByteArray(1 << 20, 'x') + "\n", true, 1, ""},
    };
    for (const auto& [content, isShown, damagedCount, rest] : files) {
        const QString name = dir.filePath(QString::number(content.size()) + ".ini");
        Persistant::SetStoreFile(name);
        for (const char* copy : {".damaged", ".damaged.2"}) {
            SetContent(name, content + (copy == QByteArray(".damaged") ? "" : "; again\n"));
            const QByteArray before = Content(name);
            EXPECT_EQ(Read(), isShown) << content.left(99).toStdString();
            EXPECT_EQ(values::plainSettings::parse(before).damaged.size(), damagedCount);
            EXPECT_EQ(Content(name), before) << "reading changes nothing";
            Write(false);
            EXPECT_EQ(Content(name), "[Scope]\nShowGrid=false\n" + rest);
            EXPECT_EQ(Content(name + copy), damagedCount ? before : QByteArray());
        }
        EXPECT_EQ(logged.filter(name).size(), damagedCount ? 1 : 0);
    }
}

TEST_F(Persistence, NamesOnceAFileThatCannotBeReadOrOnlyNotBeWritten)
{
    Persistant::SetStoreFile(dir.path()); // no file at all
    Write(false);
    EXPECT_TRUE(Read());
    EXPECT_EQ(logged.filter("cannot be read").size(), 1);
    logged.clear();
    QFile readable; // from a place where nobody can put another file
    ASSERT_TRUE(readable.open(memfd_create("settings", 0), QFile::ReadWrite));
    readable.write("[Scope]\nShowGrid=false\n");
    readable.flush();
    Persistant::SetStoreFile(QStringLiteral("/proc/self/fd/%1").arg(readable.handle()));
    EXPECT_FALSE(Read());
    Write(false);
    EXPECT_FALSE(Read());
    EXPECT_EQ(logged.filter("cannot be written").size(), 1);
    EXPECT_EQ(logged.size(), 1) << logged.join('\n').toStdString();
}

TEST_F(Persistence, PlainValuesComeBackAsTheyWereAlsoToQSettings)
{
    const QStringList texts{"", " a ", "@home", "@@", "x=\"1\"; y, \\", "äf0\n\t", "a/b"};
    {
        values::Settings settings;
        for (const QString& text : texts)
            settings.setValue("Group ä/" + text.toUtf8().toHex() + "/" + text, text);
        settings.setValue("list", texts);
        settings.setValue("number", -1.5e-300);
        settings.setValue("General/flag", true);
        settings.setValue("object", QPoint(1, 2)); // no plain value
        settings.setValue("bytes", QByteArray("\0", 1));
    }
    const values::plainSettings::Content content = values::plainSettings::parse(Content(file));
    EXPECT_EQ(content.damaged, QStringList());
    const QSettings others(file, QSettings::IniFormat);
    for (const QString& text : texts) {
        QString key = "Group ä/" + text.toUtf8().toHex() + (text.isEmpty() ? "" : "/" + text);
        EXPECT_EQ(content.values.value(key).toString(), text) << text.toStdString();
        EXPECT_EQ(others.value(key).toString(), text) << text.toStdString();
    }
    EXPECT_EQ(others.value("list").toStringList(), texts);
    EXPECT_EQ(content.values.value("list").toStringList(), texts);
    EXPECT_EQ(content.values.value("number").toDouble(), -1.5e-300);
    EXPECT_EQ(others.value("General/flag"), "true");
    EXPECT_EQ(content.values.size(), texts.size() + 3);
}

} // namespace
