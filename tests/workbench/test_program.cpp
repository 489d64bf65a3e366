// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
// The program as it is started from a command line.
#include "Recordings.h"

#include <QDir>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

struct Program : testing::Test
{
    Program()
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("LANGUAGE"), QStringLiteral("en"));
        environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
        environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), folder.path());
        process.setProcessEnvironment(environment);
        QFile(folder.path()).setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    QString path(const char* name) const { return folder.filePath(QString::fromUtf8(name)); }
    int run(QStringList arguments)
    {
        arguments += {QStringLiteral("--settings"), path("settings.ini")};
        process.start(QStringLiteral(ORVANE_WORKBENCH), arguments);
        EXPECT_TRUE(process.waitForFinished(120000)) << "still running";
        out = QString::fromUtf8(process.readAllStandardOutput());
        error = QString::fromUtf8(process.readAllStandardError());
        return process.exitCode();
    }
    QTemporaryDir folder;
    QProcess process;
    QString out;
    QString error;
};

TEST_F(Program, RefusesInOneLineWithTheRightExitCode)
{
    writeFile(path("text.wav"), "no samples");
    writeRecording(path("mono.wav"), SF_FORMAT_WAV | SF_FORMAT_PCM_16, 8000, 1, sine(100));
    struct
    {
        QStringList arguments;
        int exitCode;
        const char* what; // what the line starts with after the program's name
    } const rows[] = {
        {{"--nonsense"}, 2, "command line: "},
        {{"--channel"}, 2, "--settings"}, // takes the next word as its value
        {{"a.wav", "b.wav"}, 2, "b.wav: "},
        {{""}, 2, "command line: "},
        {{"--channel", "0"}, 2, "--channel: "},
        {{"--channel", "1.5"}, 2, "--channel: "},
        {{"--symbol-rate", "-1"}, 2, "--symbol-rate: "},
        {{"--speed", "11"}, 2, "--speed: "},
        {{"--seconds", "nan"}, 2, "--seconds: "},
        {{"--span", "inf"}, 2, "--span: "},
        {{"--size", "1280"}, 2, "--size: "},
        {{"--size", "100x99999"}, 2, "--size: "},
        {{"--scheme", "blue"}, 2, "--scheme: "},
        {{"--language", "../../x"}, 2, "--language: "},
        {{"--snapshot", ""}, 2, "--snapshot: "},
        {{path("missing.wav")}, 1, "MISSING: "},
        {{path("text.wav")}, 1, "TEXT: "},
        {{path("mono.wav"), "--channel", "2"}, 1, "MONO: "},
        {{"--snapshot", path("text.wav")}, 1, "TEXT: "},
        {{"--snapshot", path("text.wav") + "/below"}, 1, "TEXT/below: "},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(qPrintable(row.arguments.join(' ')));
        QString what = QString::fromLatin1(row.what);
        what.replace("MISSING", path("missing.wav"));
        what.replace("TEXT", path("text.wav"));
        what.replace("MONO", path("mono.wav"));
        if (row.arguments.size() == 1 && row.arguments[0] == "--channel")
            what = QStringLiteral("--channel: ");
        EXPECT_EQ(run(row.arguments), row.exitCode);
        EXPECT_TRUE(out.isEmpty()) << qPrintable(out);
        EXPECT_TRUE(error.startsWith("orvane-workbench: " + what)) << qPrintable(error);
        EXPECT_EQ(error.count('\n'), 1) << qPrintable(error);
    }
    EXPECT_THAT(QDir(folder.path()).entryList(QDir::Files).size(), testing::Le(3)); // nothing else
}

TEST_F(Program, NeedsNoDisplayForHelpAndSaysWhereOneIsMissing)
{
    QProcessEnvironment environment = process.processEnvironment();
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        environment.remove(QString::fromLatin1(name));
    process.setProcessEnvironment(environment);
    EXPECT_EQ(run({"--help"}), 0);
    EXPECT_TRUE(out.contains("--snapshot <DIR>") && out.contains("[FILE]")) << qPrintable(out);
    EXPECT_EQ(run({"--version"}), 0);
    EXPECT_TRUE(out.startsWith("orvane-workbench ")) << qPrintable(out);
    EXPECT_EQ(run({"--help", "--language", "de"}), 0);
    EXPECT_TRUE(out.contains("Zeigt diese Hilfe")) << qPrintable(out);
    EXPECT_EQ(run({}), 1);
    EXPECT_TRUE(error.startsWith("orvane-workbench: display: ")) << qPrintable(error);
    EXPECT_EQ(error.count('\n'), 1) << qPrintable(error);
}

/// Pixels that are close to a colour.
int count(const QImage& image, QRgb color)
{
    int result = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QRgb pixel = image.pixel(x, y);
            result += std::abs(qRed(pixel) - qRed(color)) < 40 &&
                      std::abs(qGreen(pixel) - qGreen(color)) < 40 &&
                      std::abs(qBlue(pixel) - qBlue(color)) < 40;
        }
    }
    return result;
}

TEST_F(Program, TakesPicturesOfWhatItPlays)
{
    writeRecording(path("a b.wav"), SF_FORMAT_WAV | SF_FORMAT_PCM_16, 8000, 2, sine(16000));
    struct
    {
        QStringList arguments;
        QSize size;
        QRgb trace;
        QRgb ground;
    } const rows[] = {
        {{}, {1280, 800}, 0xff4fa8ff, 0xff10151c},
        {{path("a b.wav"), "--channel", "2", "--scheme", "light", "--size", "900x600"},
         {900, 600},
         0xff1858d6,
         0xffffffff},
        {{path("a b.wav"), "--seconds", "0.3", "--span", "0.2", "--symbol-rate", "200"},
         {1280, 800},
         0xff4fa8ff,
         0xff10151c},
    };
    for (const auto& row : rows) {
        const QString pictures = path("new folder") + "/pictures";
        ASSERT_EQ(run(QStringList{"--snapshot", pictures} + row.arguments), 0) << qPrintable(error);
        EXPECT_EQ(out, pictures + "/time.png\n" + pictures + "/workbench.png\n");
        EXPECT_TRUE(error.isEmpty()) << qPrintable(error);
        const QImage window(pictures + "/workbench.png");
        const QImage view(pictures + "/time.png");
        EXPECT_EQ(window.size(), row.size);
        EXPECT_GT(view.width(), row.size.width() / 2);
        for (const QImage& image : {window, view}) {
            EXPECT_GT(count(image, row.trace), 2 * view.width());
            EXPECT_GT(count(image, row.ground), 10 * view.width());
        }
        QDir(path("new folder")).removeRecursively();
    }
}

TEST_F(Program, LeavesNothingBehindWherePicturesCannotBeWritten)
{
    QDir(folder.path()).mkpath(QStringLiteral("out/workbench.png")); // in the way of the second one
    EXPECT_EQ(run({"--snapshot", path("out")}), 1);
    EXPECT_EQ(error.count('\n'), 1) << qPrintable(error);
    EXPECT_EQ(QDir(path("out")).entryList(QDir::Files | QDir::Hidden), QStringList());
}

} // namespace
