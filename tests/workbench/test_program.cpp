// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
// The program as it is started from a command line.
#include "Recordings.h"
#include "platform/gui/ColorSet.h"

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
        environment.insert("LANGUAGE", "en");
        environment.insert("LC_ALL", "C.UTF-8");
        environment.insert("XDG_RUNTIME_DIR", folder.path()); // or Qt has something to say
        process.setProcessEnvironment(environment);
        QFile(folder.path()).setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    QString path(const char* name) const { return folder.filePath(QString::fromUtf8(name)); }
    int run(QStringList arguments)
    {
        arguments = QStringList{"--settings", path("settings.ini")} + arguments;
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
    const QString text = path("text.wav");
    const std::tuple<QStringList, int, QString> rows[] = {
        {{"--nonsense"}, 2, "command line"},
        {{"--channel"}, 2, "command line"},
        {{""}, 2, "command line"},
        {{"a.wav", "b.wav"}, 2, "b.wav"},
        {{"--channel", "0"}, 2, "--channel"},
        {{"--channel", "1.5"}, 2, "--channel"},
        {{"--channel", "1"}, 2, "--channel"}, // of what?
        {{"--symbol-rate", "-1"}, 2, "--symbol-rate"},
        {{"--speed", "11"}, 2, "--speed"},
        {{"--seconds", "nan"}, 2, "--seconds"},
        {{"--span", "inf"}, 2, "--span"},
        {{"--size", "1280"}, 2, "--size"},
        {{"--size", "100x99999"}, 2, "--size"},
        {{"--scheme", "blue"}, 2, "--scheme"},
        {{"--language", "../../x"}, 2, "--language"},
        {{"--snapshot", ""}, 2, "--snapshot"},
        {{path("missing.wav")}, 1, path("missing.wav")},
        {{text}, 1, text},
        {{path("mono.wav"), "--channel", "2"}, 1, path("mono.wav")},
        {{"--snapshot", text}, 1, text},
        {{"--snapshot", text + "/below"}, 1, text + "/below"},
    };
    for (const auto& [arguments, exitCode, what] : rows) {
        EXPECT_EQ(run(arguments), exitCode) << qPrintable(arguments.join(' '));
        EXPECT_TRUE(out.isEmpty()) << qPrintable(out);
        EXPECT_TRUE(error.startsWith("orvane-workbench: " + what + ": ")) << qPrintable(error);
        EXPECT_EQ(error.count('\n'), 1) << qPrintable(error);
    }
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
int count(const QImage& image, const QColor& color)
{
    int result = 0;
    for (int i = 0; i < image.width() * image.height(); ++i) {
        const QColor pixel = image.pixelColor(i % image.width(), i / image.width());
        result += std::abs(pixel.red() - color.red()) < 40 &&
                  std::abs(pixel.green() - color.green()) < 40 &&
                  std::abs(pixel.blue() - color.blue()) < 40;
    }
    return result;
}

TEST_F(Program, TakesPicturesOfWhatItPlays)
{
    const QString file = path("a b.wav");
    writeRecording(file, SF_FORMAT_WAV | SF_FORMAT_PCM_16, 8000, 2, sine(16000));
    using Scheme = ColorSet::Scheme;
    const std::tuple<QStringList, QSize, Scheme> rows[] = {
        {{}, {1280, 800}, Scheme::Dark},
        {{file, "--channel", "2", "--scheme", "light", "--size", "900x600"},
         {900, 600},
         Scheme::Light},
        {{file, "--seconds", "0.3", "--span", "0.2", "--symbol-rate", "200"},
         {1280, 800},
         Scheme::Dark}};
    for (const auto& [arguments, size, scheme] : rows) {
        const QString pictures = path("new folder") + "/pictures";
        ASSERT_EQ(run(QStringList{"--snapshot", pictures} + arguments), 0) << qPrintable(error);
        EXPECT_EQ(out, pictures + "/time.png\n" + pictures + "/workbench.png\n");
        EXPECT_TRUE(error.isEmpty()) << qPrintable(error);
        const QImage window(pictures + "/workbench.png");
        const QImage view(pictures + "/time.png");
        EXPECT_EQ(window.size(), size);
        EXPECT_GT(view.width(), size.width() / 2);
        for (const QImage& image : {window, view}) {
            const auto pixels = [&, scheme = scheme](IColorBase::ECOLOR number) {
                return count(image, ColorSet::DefaultColor(scheme, number));
            };
            EXPECT_GT(pixels(IColorBase::colTimeTrace), 2 * view.width());
            EXPECT_GT(pixels(IColorBase::colTimeBackground), 10 * view.width());
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
