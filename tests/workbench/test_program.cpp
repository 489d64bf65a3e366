// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
// The program as it is started from a command line.
#include "Pictures.h"
#include "Recordings.h"
#include "platform/gui/ColorSet.h"
#include "platform/values/Persistant.h"
#include "platform/values/Settings.h"
#include "workbench/app/OrderlyExit.h"
#include "workbench/window/MainWindow.h"
#include "workbench/window/SchemeChoice.h"

#include <QApplication>
#include <QDir>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QSettings>
#include <QTest>

#include <csignal>

#include <atomic>
#include <map>
#include <random>
#include <thread>

namespace {

struct Program : testing::Test, TestFolder
{
    Program()
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("LANGUAGE", "en");
        environment.insert("LC_ALL", "C.UTF-8");
        environment.insert("XDG_RUNTIME_DIR", folder.path()); // or Qt has something to say
        process.setProcessEnvironment(environment);
        process.setStandardInputFile(QProcess::nullDevice());
        QFile(folder.path()).setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    int run(const QStringList& arguments)
    {
        process.start(ORVANE_WORKBENCH,
                      QStringList{"--settings", path("settings.ini")} + arguments);
        EXPECT_TRUE(process.waitForFinished(120000)) << "still running";
        out = QString::fromUtf8(process.readAllStandardOutput());
        error = QString::fromUtf8(process.readAllStandardError());
        return process.exitCode();
    }
    void expectComplaint(const QString& what)
    {
        EXPECT_TRUE(out.isEmpty()) << qPrintable(out);
        EXPECT_TRUE(error.startsWith("orvane-workbench: " + what)) << qPrintable(error);
        EXPECT_EQ(error.count('\n'), 1) << qPrintable(error);
    }
    QProcess process;
    QString out;
    QString error;
};

TEST_F(Program, RefusesInOneLineWithTheRightExitCode)
{
    writeFile(path("text.wav"), "no samples");
    writeRecording(path("mono.wav"), 8000, 1, sine(100));
    writeFile(path("empty.wav"), "");
    writeFile(path("bad.mp3"), QByteArray(3000, '\xfe'));
    QDir(folder.path()).mkpath("out/workbench.png"); // in the way
    const QString text = path("text.wav");
    const QString mono = path("mono.wav");
    const std::tuple<int, QStringList, QString> rows[] = {
        {2, {"--nonsense"}, "command line"},
        {2, {"a.wav", "b.wav"}, "b.wav"},
        {2, {"--channel", "1.5", mono}, "--channel"},
        {1, {"--channel", "1-2", mono}, mono},
        {2, {"--symbol-rate", "-1", mono}, "--symbol-rate"},
        {2, {"--symbol-rate", "50"}, "--symbol-rate"}, // of the built-in signal
        {2, {"--noise", "7"}, "--noise"},
        {2, {"--demo", "QPSK", mono}, "--demo"},
        {2, {"--demo", "QPSK", "--levels", "2"}, "--levels"},
        {2, {"--demo", "QPSK", "--snr", "nan"}, "--snr"},
        {2, {"--size", "100x99999"}, "--size"},
        {2, {"--scheme", "blue"}, "--scheme"},
        {2, {"--language", "../../x"}, "--language"},
        {2, {"--snapshot", ""}, "--snapshot"},
        {2, {"--format", "cf16", mono}, "--format"},
        {2, {"--sample-rate", "0", mono}, "--sample-rate"},
        {2, {"--info"}, "--info"},
        {1, {path("missing.wav")}, path("missing.wav")},
        {1, {text}, text},
        {2, {mono, "--modulation", "QPSK"}, mono + ": --modulation"},
        {2, {mono, "--characters", "8"}, mono + ": --characters"},
        {1, {mono, "--characters", "8", "--measure", "json"}, mono + ": characters"},
        {2, {mono, "--characters", "8", "--demod", "am"}, "--characters"},
        {2, {"--characters", "8"}, "--characters"},
        {1, {path("empty.wav"), "--modulation", "QPSK"}, path("empty.wav")},
        {1, {path("bad.mp3")}, path("bad.mp3") + ": not a recording that can be read (damaged"},
        {1, {mono, "--channel", "2"}, mono},
        {2, {"--measure", "json"}, "--measure"},
        {2, {mono, "--measure", "xml"}, "--measure"},
        {1, {mono, "--mask", mono}, mono + ": is no mask"},
        {1, {mono, "--measure", "json", "--mask", mono + "x"}, mono + "x: cannot be read"},
        {1, {mono, "--measure", "json", "--start", "2"}, mono},
        {1, {mono, "--measure", "json", "--symbol-rate", "7000", "--modulation", "qpsk"}, mono},
        {1, {"zmq://localhost:1", "--measure", "json"}, "zmq://localhost:1"},
        {2, {"--snapshot", path("out"), "--formats", "png,gif"}, "--formats"},
        {1, {"--snapshot", text + "/below"}, text + "/below"},
        {1, {"--snapshot", path("out")}, path("out/workbench.png")}, // the second one
        {1,
         {"-", "--format", "cf32", "--sample-rate", "1", "--snapshot", path("out")},
         "no samples came"},
    };
    for (const auto& [exitCode, arguments, what] : rows) {
        EXPECT_EQ(run(arguments), exitCode) << qPrintable(arguments.join(' '));
        expectComplaint(what);
    }
    EXPECT_EQ(QDir(path("out")).entryList(QDir::Files | QDir::Hidden), QStringList());
}

TEST_F(Program, PrintsWhatIsKnownOfARecordingAndWhatIsAmissWithIt)
{
    writeFile(path("a.sigmf-meta"), R"({"global": {"core:datatype": "cu8", "core:version": "1.2.5"},
        "captures": [], "annotations": [{"core:sample_start": 3, "core:label": "<b>\u001b[2Jburst"}]})");
    writeFile(path("a.sigmf-data"), QByteArray(11, 'a'));
    EXPECT_EQ(run({"--info", path("a.sigmf-data")}), 0);
    EXPECT_TRUE(out.startsWith("Name: a.sigmf-meta\nSample rate: 48000 Hz\nChannels: 1, complex\n"
                               "Samples: 5, 0.000104166666667 s\n"))
        << qPrintable(out);
    EXPECT_TRUE(out.contains("\nAnnotation: core:label <b>\ufffd[2Jburst, core:sample_start 3\n"));
    EXPECT_TRUE(error.contains(": the sample rate is not known, 48000 Hz is assumed;"));
    EXPECT_TRUE(error.contains(": it ends within a sample (bytes left out: 1)"));
    EXPECT_EQ(error.count("orvane-workbench: " + path("a.sigmf-data")), 2) << qPrintable(error);

    // The decoder has a lot to say of this one.
    const QByteArray frame = "\xff\xfb\x90" + QByteArray(414, '\0');
    writeFile(path("a\x1b.mp3"), frame.repeated(3) + QByteArray(2000, 'a') + frame.repeated(2));
    EXPECT_EQ(run({"--info", path("a\x1b.mp3")}), 0);
    EXPECT_EQ(error.count('\n'),
              error.count("orvane-workbench: " + folder.path() + "/a\ufffd.mp3: "))
        << qPrintable(error);

    writeFile(path("a.sigmf-meta"), R"({"global": {"core:datatype": "cu8", "core:version": "1.2.5",
        "core:sample_rate": 8000, "own:symbol_rate": 1000}, "captures": [], "annotations": []})");
    writeFile(path("a.sigmf-data"), QByteArray(8000, 'a'));
    EXPECT_EQ(run({path("a.sigmf-meta"), "--modulation", "QPSK", "--snapshot", path("a")}), 0);
    EXPECT_EQ(error, "");
}

TEST_F(Program, MeasuresRecordingsAndPrintsALineOfJsonForEach)
{
    const QString ramp = path("ramp.wav"), signal = path("signal.wav"), none = path("none.wav");
    std::vector<double> samples(16000);
    for (std::size_t k = 0; k < samples.size(); ++k)
        samples[k] = double(k) / 16384.0; // which tells the sample
    writeRecording(ramp, 8000, 1, samples, SF_FORMAT_WAV | SF_FORMAT_DOUBLE);
    writeDemo(signal);
    EXPECT_EQ(run({"--measure", "json", ramp, none, ramp, "--start", "0.25", "--seconds", "0.5"}),
              1);
    EXPECT_TRUE(error.startsWith("orvane-workbench: " + none + ": there is no such file"));
    const QStringList lines = out.trimmed().split('\n');
    ASSERT_EQ(lines.size(), 2) << qPrintable(out);
    for (const QString& line : lines) {
        const QJsonObject object = QJsonDocument::fromJson(line.toUtf8()).object();
        EXPECT_EQ(object["input"].toString(), ramp);
        EXPECT_EQ(object["start"].toDouble(), 0.25);
        EXPECT_EQ(object["stop"].toDouble(), 0.75);
        EXPECT_EQ(object["time"].toObject()["minimum"].toDouble(), 2000.0 / 16384.0);
        EXPECT_EQ(object["time"].toObject()["maximum"].toDouble(), 5999.0 / 16384.0);
    }
    EXPECT_EQ(run({"--measure", "json", signal, "--symbol-rate", "6000", "--modulation", "qpsk"}),
              0);
    EXPECT_EQ(error, "");
    const QJsonObject object = QJsonDocument::fromJson(out.toUtf8()).object();
    EXPECT_EQ(object.keys().join(' '),
              "carrier clock constellation eye frequency_modulation input left_out notes reasons "
              "sample_rate schema stages start stop symbol_rate time");
    EXPECT_EQ(object["schema"].toString(), "orvane.measure/1");
    EXPECT_NEAR(object["constellation"].toObject()["symbols"].toDouble(), 7500.0, 60.0);
}

TEST_F(Program, TestsRecordingsAgainstAMask)
{
    // Two levels, 16 samples a symbol with an edge over four of them; a runt in the 300th.
    std::mt19937 random(1);
    std::vector<double> samples;
    double level = 0.5;
    for (int symbol = 0; symbol < 2000; ++symbol) {
        const double next = random() % 2 ? 0.5 : -0.5;
        for (int k = 0; k < 16; ++k)
            samples.push_back(level + (next - level) * std::clamp((k - 6) / 4.0, 0.0, 1.0));
        level = next;
        if (symbol == 300)
            samples.back() = 0.05;
    }
    const QString signal = path("levels.wav"), file = path("mask.json");
    writeRecording(signal, 16000, 1, samples, SF_FORMAT_WAV | SF_FORMAT_DOUBLE);
    // At the middle of symbols, up to so far from both levels.
    const auto test = [&](double reach, int hits, int symbols) {
        writeFile(file, QStringLiteral(R"({"schema": "orvane.mask/1", "polygons":
            [[[-0.1, %1], [0.1, %1], [0.1, %2], [-0.1, %2]]],
            "limit": {"hits": %3, "symbols": %4}})")
                            .arg(reach)
                            .arg(1.0 - reach)
                            .arg(hits)
                            .arg(symbols)
                            .toUtf8());
        const int code =
            run({"--measure", "json", signal, "--symbol-rate", "1000", "--mask", file});
        const QJsonObject mask = QJsonDocument::fromJson(out.toUtf8()).object()["mask"].toObject();
        EXPECT_GE(mask["symbols"].toDouble(), code == 0 ? symbols : 1) << qPrintable(out + error);
        return QStringLiteral("%1 %2 %3")
            .arg(code)
            .arg(mask["verdict"].toString())
            .arg(mask["hits"].toDouble());
    };
    EXPECT_EQ(test(0.1, 1, 1500), "0 pass 1");
    EXPECT_EQ(test(0.1, 0, 1500), "3 fail 1");
    EXPECT_EQ(test(0.1, 1, 100000), "3 incomplete 1");
    // Pictures of the density, with the same verdict, its counts and the figures of all symbols.
    test(0.1, 0, 1500);
    const QStringList picture{signal, "--symbol-rate", "1000", "--density", "--mask", file};
    EXPECT_EQ(run(picture + QStringList{"--snapshot", path("shots"), "--formats", "png,npy"}), 3);
    EXPECT_TRUE(error.contains("mask: FAIL, 1 hits")) << qPrintable(error);
    QFile counts(path("shots/eye.npy"));
    EXPECT_TRUE(counts.open(QIODevice::ReadOnly) && counts.read(6) == "\x93NUMPY");
    EXPECT_EQ(run(picture + QStringList{"--measure", "json"}), 3);
    const QJsonObject density =
        QJsonDocument::fromJson(out.toUtf8()).object()["density"].toObject();
    EXPECT_NEAR(density["symbols"].toDouble() + density["left_out"].toDouble(), 2000.0, 4.0);
    EXPECT_EQ(density["levels"].toArray().size(), 2) << qPrintable(out);
    writeFile(file, "{}");
    EXPECT_EQ(run({"--measure", "json", signal, "--mask", file}), 1);
    expectComplaint(file + ": is no mask: ");
}

TEST_F(Program, NeedsNoDisplayForHelpAndSaysWhereOneIsMissing)
{
    QProcessEnvironment environment = process.processEnvironment();
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "ORVANE_RENDERER"})
        environment.remove(QString::fromLatin1(name));
    process.setProcessEnvironment(environment);
    EXPECT_EQ(run({"--version"}), 0);
    EXPECT_TRUE(out.startsWith("orvane-workbench ")) << qPrintable(out);
    EXPECT_EQ(run({"--version", "--verbose"}), 0);
    EXPECT_TRUE(out.contains("renderer: raster, because ")) << qPrintable(out);
    EXPECT_EQ(run({"--help", "--language", "de"}), 0);
    EXPECT_TRUE(out.contains("Zeigt diese Hilfe")) << qPrintable(out);
    EXPECT_EQ(run({}), 1);
    expectComplaint("display");
}

TEST_F(Program, TakesPicturesOfWhatItPlays)
{
    const QString file = path("a b.wav");
    writeRecording(file, 8000, 2, sine(16000));
    using Scheme = ColorSet::Scheme;
    const std::tuple<QStringList, QSize, Scheme> rows[] = {
        {{file, "--channel", "2", "--symbol-rate", "800", "--trajectory", "--scheme", "light",
          "--size", "900x600"},
         {900, 600},
         Scheme::Light},
        {{file}, {1280, 800}, Scheme::Dark},
        {{"--demo", "16qam", "--seconds", "0.3"}, {1280, 800}, Scheme::Dark},
        {{"--seconds", "0.3"}, {1280, 800}, Scheme::Dark}};
    for (const auto& [arguments, size, scheme] : rows) {
        const QString pictures = path("new folder/pictures");
        ASSERT_EQ(run(QStringList{"--snapshot", pictures} + arguments), 0) << qPrintable(error);
        EXPECT_EQ(out,
                  QString("%1/time.png\n%1/eye.png\n%1/iq.png\n%1/workbench.png\n").arg(pictures));
        EXPECT_EQ(error, QString());
        const bool hasEye = arguments.contains("--symbol-rate") || !arguments.contains(file);
        const QImage window(pictures + "/workbench.png");
        EXPECT_EQ(window.size(), size);
        const auto rowsWith = [scheme = scheme](const QImage& image, IColorBase::ECOLOR color) {
            return litRows(image, ColorSet::DefaultColor(scheme, color));
        };
        EXPECT_GT(rowsWith(QImage(pictures + "/iq.png"), IColorBase::colIQPoint), 5);
        for (const QImage& image : {window, QImage(pictures + "/time.png")})
            EXPECT_GT(rowsWith(image, IColorBase::colTimeTrace), 20);
        for (const QImage& image : {window, QImage(pictures + "/eye.png")})
            EXPECT_EQ(rowsWith(image, IColorBase::colEyeTrace) > 20, hasEye);
    }
}

TEST_F(Program, KeepsItsSettingsWhenItIsAskedToEnd)
{
    for (const int number : {SIGTERM, SIGINT, SIGHUP}) {
        QFile::remove(path("settings.ini"));
        process.start(ORVANE_WORKBENCH, {"--settings", path("settings.ini"), "--speed", "2"});
        ASSERT_TRUE(process.waitForStarted());
        const auto isPrepared = [&] { // as the system tells: it has a handler
            QFile status(QStringLiteral("/proc/%1/status").arg(process.processId()));
            status.open(QFile::ReadOnly);
            const QByteArray text = status.readAll();
            const QByteArray caught = text.mid(text.indexOf("SigCgt:") + 7).trimmed().left(16);
            return (caught.toULongLong(nullptr, 16) >> (number - 1)) & 1U;
        };
        EXPECT_TRUE(QTest::qWaitFor(isPrepared, 60000));
        ::kill(static_cast<pid_t>(process.processId()), number);
        ASSERT_TRUE(process.waitForFinished(60000));
        EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(process.exitCode(), 0);
        const QSettings kept(path("settings.ini"), QSettings::IniFormat);
        EXPECT_EQ(kept.value("Parameters/Speed").toDouble(), 2.0);
        for (const char* key : {"Window/Geometry", "GLTimeDiagram/ShowGrid"})
            EXPECT_TRUE(kept.contains(key)) << key;
    }
    // At the end of the desktop's session, whose manager (not looked at) tells the application.
    const QString usualFile = values::Persistant::StoreFile();
    values::Persistant::SetStoreFile(path("session.ini"));
    SchemeChoice scheme(std::nullopt);
    MainWindow window(scheme);
    const OrderlyExit exit(window);
    int manager = 0;
    QMetaObject::invokeMethod(qApp, "commitDataRequest", Qt::DirectConnection,
                              QGenericArgument("QSessionManager&", &manager));
    EXPECT_TRUE(values::Settings().value("Window/Geometry").isValid());
    values::Persistant::SetStoreFile(usualFile);
}

TEST_F(Program, KeepsTheSamePicturesAndDataOnAnyLoad)
{
    const QString file = path("signal.wav"), folder = path("kept");
    writeDemo(file);
    std::map<QString, QByteArray> contents[2];
    for (const int load : {0, 1}) {
        std::atomic<bool> isDone = load == 0;
        const auto spin = [&isDone] {
            while (!isDone) {
            }
        };
        std::thread first(spin), second(spin);
        EXPECT_EQ(run({file, "--symbol-rate", "6000", "--modulation", "qpsk", "--start", "0.2",
                       "--seconds", "0.7", "--size", "700x500", "--scale", "2", "--snapshot",
                       folder, "--formats", "png,svg,csv"}),
                  0)
            << qPrintable(error);
        isDone = true;
        first.join();
        second.join();
        for (const QString& name : QDir(folder).entryList(QDir::Files)) {
            QFile kept(folder + '/' + name);
            ASSERT_TRUE(kept.open(QIODevice::ReadOnly));
            contents[load][name] = kept.readAll();
        }
    }
    EXPECT_EQ(contents[0].size(), 10U);
    EXPECT_EQ(contents[0], contents[1]);
    EXPECT_EQ(QImage(folder + "/workbench.png").size(), QSize(1400, 1000));
    const QByteArray& time = contents[0]["time.csv"]; // 0.7 s at 8 samples a symbol, to the sample
    EXPECT_NEAR(double(time.count('\n')), 0.7 * 48000.0, 3.0);

    writeFile(path("quiet.cf32"), QByteArray(16000, '\0')); // no points above the squelch
    EXPECT_EQ(run({path("quiet.cf32"), "--sample-rate", "8000", "--squelch", "0", "--snapshot",
                   path("quiet"), "--formats", "png,csv"}),
              0);
    EXPECT_EQ(QDir(path("quiet")).entryList(QDir::Files).size(), 5) << qPrintable(out);
    EXPECT_TRUE(error.endsWith("eye.csv, iq.csv: left out, there are no data to write\n"))
        << qPrintable(error);
}

} // namespace
