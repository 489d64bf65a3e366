// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
// The program as it is started from a command line.
#include "Recordings.h"
#include "platform/gui/ColorSet.h"
#include "platform/values/Persistant.h"
#include "platform/values/PlainSettings.h"
#include "workbench/app/OrderlyExit.h"
#include "workbench/sources/ModulationSource.h"
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
    const QString text = path("text.wav");
    const QString mono = path("mono.wav");
    const std::tuple<int, QStringList, QString> rows[] = {
        {2, {"--nonsense"}, "command line"},
        {2, {""}, "command line"},
        {2, {"a.wav", "b.wav"}, "b.wav"},
        {2, {"--channel", "1.5", mono}, "--channel"},
        {2, {"--channel", "2-2", mono}, "--channel"},
        {1, {"--channel", "1-2", mono}, mono},
        {2, {"--symbol-rate", "-1", mono}, "--symbol-rate"},
        {2, {"--symbol-rate", "50"}, "--symbol-rate"}, // of the built-in signal
        {2, {"--eye-symbols", "17"}, "--eye-symbols"},
        {2, {"--levels", "3"}, "--levels"},
        {2, {"--noise", "7"}, "--noise"},
        {2, {"--jitter", "0.4"}, "--jitter"},
        {2, {"--demo", "32QAM"}, "--demo"},
        {2, {"--demo", "QPSK", mono}, "--demo"},
        {2, {"--demo", "QPSK", "--levels", "2"}, "--levels"},
        {2, {"--demo", "QPSK", "--snr", "nan"}, "--snr"},
        {2, {"--demo", "nrz", "--snr", "20"}, "--snr"},
        {2, {"--seconds", "nan"}, "--seconds"},
        {2, {"--size", "100x99999"}, "--size"},
        {2, {"--scheme", "blue"}, "--scheme"},
        {2, {"--language", "../../x"}, "--language"},
        {2, {"--snapshot", ""}, "--snapshot"},
        {2, {"--format", "cf16", mono}, "--format"},
        {2, {"--sample-rate", "0", mono}, "--sample-rate"},
        {2, {"--info"}, "--info"},
        {1, {path("missing.wav"), "--info"}, path("missing.wav")},
        {1, {path("missing.wav")}, path("missing.wav")},
        {1, {text}, text},
        {2, {mono, "--modulation", "QPSK"}, mono + ": --modulation"},
        {2, {mono, "--characters", "8"}, mono + ": --characters"},
        {1, {mono, "--characters", "8", "--measure", "json"}, mono + ": characters"},
        {2, {mono, "--characters", "10"}, "--characters"},
        {2, {mono, "--characters", "8", "--demod", "am"}, "--characters"},
        {2, {"--characters", "8"}, "--characters"},
        {1, {path("empty.wav"), "--modulation", "QPSK"}, path("empty.wav")},
        {1, {path("bad.mp3")}, path("bad.mp3") + ": not a recording that can be read (damaged"},
        {1, {mono, "--channel", "2"}, mono},
        {1, {"--snapshot", text + "/below"}, text + "/below"},
    };
    for (const auto& [exitCode, arguments, what] : rows) {
        EXPECT_EQ(run(arguments), exitCode) << qPrintable(arguments.join(' '));
        expectComplaint(what);
    }
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
}

TEST_F(Program, TakesTheSymbolRateFromTheRecordingForItsReceiver)
{
    writeFile(path("a.sigmf-meta"), R"({"global": {"core:datatype": "cu8", "core:version": "1.2.5",
        "core:sample_rate": 8000, "own:symbol_rate": 1000}, "captures": [], "annotations": []})");
    writeFile(path("a.sigmf-data"), QByteArray(8000, 'a'));
    EXPECT_EQ(run({path("a.sigmf-meta"), "--modulation", "QPSK", "--snapshot", path("a")}), 0);
    EXPECT_EQ(error, "");
}

TEST_F(Program, MeasuresRecordingsAndPrintsALineOfJsonForEach)
{
    const QString ramp = path("ramp.wav"), signal = path("signal.cf32"), none = path("none.wav");
    std::vector<double> samples(16000);
    for (std::size_t k = 0; k < samples.size(); ++k)
        samples[k] = double(k) / 16384.0; // which tells the sample
    writeRecording(ramp, 8000, 1, samples, SF_FORMAT_WAV | SF_FORMAT_DOUBLE);
    ModulationSource(ModulationSettings()).read(samples, 24000);
    writeRecording(signal, 48000, 2, samples, SF_FORMAT_RAW | SF_FORMAT_FLOAT);
    const std::tuple<int, QStringList, QString> rows[] = {
        {2, {}, "--measure"},
        {2, {ramp, "--measure", "xml"}, "--measure"},
        {1, {ramp, "--start", "2"}, ramp},
        {1, {ramp, "--channel", "2"}, ramp},
        {1, {ramp, "--symbol-rate", "7000", "--modulation", "qpsk"}, ramp},
        {1, {none}, none},
        {1, {"zmq://localhost:1"}, "zmq://localhost:1"}};
    for (const auto& [exitCode, arguments, what] : rows) {
        EXPECT_EQ(run(QStringList{"--measure", "json"} + arguments), exitCode);
        expectComplaint(what);
    }
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
    EXPECT_EQ(run({"--measure", "json", signal, "--sample-rate", "48e3", "--symbol-rate", "6000",
                   "--modulation", "qpsk"}),
              0);
    EXPECT_EQ(error, "");
    const QJsonObject object = QJsonDocument::fromJson(out.toUtf8()).object();
    const std::pair<const char*, const char*> members[] = {
        {"symbol_rate", "confidence deviation origin value"},
        {"time", "frequency maximum mean minimum peak_to_peak rms rms_ac"},
        {"eye", "eyes instant levels traces"},
        {"constellation", "evm_peak evm_rms imbalance_db mer_db modulation offset_db "
                          "quadrature_deg symbols"},
        {"carrier", "deviation offset"},
        {"clock", "deviation_ppm offset_ppm"},
        {"frequency_modulation", "deviation frequency_error index"},
        {"left_out", "reason samples symbols"}};
    for (const auto& [name, keys] : members)
        EXPECT_EQ(object[name].toObject().keys().join(' '), keys) << name;
    EXPECT_EQ(object.keys().join(' '),
              "carrier clock constellation eye frequency_modulation input left_out notes reasons "
              "sample_rate schema stages start stop symbol_rate time");
    EXPECT_EQ(object["schema"].toString(), "orvane.measure/1");
    EXPECT_EQ(object["stages"].toArray().size(), 9);
    EXPECT_NEAR(object["constellation"].toObject()["symbols"].toDouble(), 3000.0, 60.0);
}

TEST_F(Program, NeedsNoDisplayForHelpAndSaysWhereOneIsMissing)
{
    QProcessEnvironment environment = process.processEnvironment();
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        environment.remove(QString::fromLatin1(name));
    process.setProcessEnvironment(environment);
    EXPECT_EQ(run({"--version"}), 0);
    EXPECT_TRUE(out.startsWith("orvane-workbench ")) << qPrintable(out);
    EXPECT_EQ(run({"--help", "--language", "de"}), 0);
    EXPECT_TRUE(out.contains("Zeigt diese Hilfe")) << qPrintable(out);
    EXPECT_EQ(run({}), 1);
    expectComplaint("display");
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
        const QColor point = ColorSet::DefaultColor(scheme, IColorBase::colIQPoint);
        EXPECT_GT(count(QImage(pictures + "/iq.png"), point), 5);
        for (const auto& [name, trace] : {std::pair("/time.png", IColorBase::colTimeTrace),
                                          std::pair("/eye.png", IColorBase::colEyeTrace)}) {
            const QImage view(pictures + name);
            const bool isThere = hasEye || trace != IColorBase::colEyeTrace;
            EXPECT_EQ(view.width() > size.width() / 4, isThere);
            for (const QImage& image : {window, view}) {
                const auto pixels = [&, scheme = scheme](IColorBase::ECOLOR number) {
                    return count(image, ColorSet::DefaultColor(scheme, number));
                };
                EXPECT_EQ(pixels(trace) > 2 * view.width(), isThere) << name;
                EXPECT_GT(pixels(IColorBase::colTimeBackground), 10 * view.width());
            }
        }
    }
}

TEST_F(Program, KeepsPicturesAndDataInTheFormatsAndTheScaleWanted)
{
    const QString pictures = path("kept");
    ASSERT_EQ(run({"--snapshot", pictures, "--seconds", "0.3", "--size", "700x500", "--scale", "2",
                   "--formats", "png,svg,csv"}),
              0)
        << qPrintable(error);
    EXPECT_EQ(QImage(pictures + "/workbench.png").size(), QSize(1400, 1000));
    EXPECT_EQ(QDir(pictures).entryList(QDir::Files).size(), 10);
    EXPECT_EQ(run({"--snapshot", pictures, "--formats", "png,gif"}), 2);
    expectComplaint("--formats");

    writeFile(path("quiet.cf32"), QByteArray(16000, '\0')); // no points above the squelch
    EXPECT_EQ(run({path("quiet.cf32"), "--sample-rate", "8000", "--squelch", "0", "--snapshot",
                   path("quiet"), "--formats", "png,csv"}),
              0);
    EXPECT_EQ(QDir(path("quiet")).entryList(QDir::Files).size(), 6) << qPrintable(out);
    EXPECT_TRUE(error.endsWith("iq.csv: left out, there are no data to write\n"))
        << qPrintable(error);
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

TEST_F(Program, MakesTheSameOfACommandOnAnyLoad)
{
    std::vector<double> samples;
    ModulationSource(ModulationSettings()).read(samples, 60000);
    const QString file = path("signal.cf32");
    writeRecording(file, 48000, 2, samples, SF_FORMAT_RAW | SF_FORMAT_FLOAT);
    std::map<QString, QByteArray> contents[2];
    for (const int load : {0, 1}) {
        std::atomic<bool> isDone = false;
        std::vector<std::thread> busy;
        for (int k = 0; k < 2 * load; ++k)
            busy.emplace_back([&isDone] {
                while (!isDone) {
                }
            });
        EXPECT_EQ(run({file, "--sample-rate", "48e3", "--symbol-rate", "6000", "--modulation",
                       "qpsk", "--start", "0.2", "--seconds", "0.7", "--snapshot", path("same"),
                       "--formats", "png,csv"}),
                  0)
            << qPrintable(error);
        isDone = true;
        for (std::thread& thread : busy)
            thread.join();
        for (const QString& name : QDir(path("same")).entryList(QDir::Files)) {
            QFile kept(path("same") + '/' + name);
            ASSERT_TRUE(kept.open(QIODevice::ReadOnly));
            contents[load][name] = kept.readAll();
        }
    }
    EXPECT_EQ(contents[0].size(), 7U);
    EXPECT_EQ(contents[0], contents[1]);
    const QByteArray& time = contents[0]["time.csv"]; // 0.7 s at 8 samples a symbol, to the sample
    EXPECT_NEAR(time.count('\n'), 0.7 * 48000.0, 3.0);
}

TEST_F(Program, LeavesNothingBehindWherePicturesCannotBeWritten)
{
    process.setStandardInputFile(QProcess::nullDevice());
    EXPECT_EQ(run({"-", "--format", "cf32", "--sample-rate", "1e6", "--snapshot", path("none")}),
              1);
    EXPECT_TRUE(error.contains("no samples came")) << qPrintable(error);
    EXPECT_TRUE(QDir(path("none")).entryList(QDir::Files).isEmpty());
    QDir(folder.path()).mkpath(QStringLiteral("out/workbench.png")); // in the way of the second one
    EXPECT_EQ(run({"--snapshot", path("out")}), 1);
    expectComplaint(path("out/workbench.png"));
    EXPECT_EQ(QDir(path("out")).entryList(QDir::Files | QDir::Hidden), QStringList());
}

} // namespace
