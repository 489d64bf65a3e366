// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
// The n-th call into the system fails, for every n: what is wrong is said, and nothing is lost.
#include "Faults.h"
#include "Recordings.h"
#include "platform/values/Persistant.h"
#include "platform/values/Settings.h"
#include "workbench/app/Snapshot.h"
#include "workbench/pipeline/Pipeline.h"
#include "workbench/player/Hints.h"

#include <QCryptographicHash>
#include <QDir>
#include <QProcess>

#include <cerrno>

namespace {

using namespace faults;

struct Fault
{
    int kind;
    int error;
    int isLasting = 0;
    bool isBorne() const { return error == EINTR || error == 0; }
    QString reason() const
    {
        return kind == Allocation ? QStringLiteral("memory") : qt_error_string(error);
    }
};

std::vector<Fault> faultsOf(Kind kind)
{
    if (kind == Allocation)
        return {{kind, ENOMEM}};
    if (kind == Open)
        return {{kind, EMFILE}, {kind, EMFILE, 1}};
    const int error = kind == Read ? EIO : ENOSPC;
    return {{kind, error}, {kind, error, 1}, {kind, EINTR}, {kind, 0, 1}};
}

struct Faults : Recordings
{
    /// Works, and checks what came of it, with each call of each kind that fails in turn.
    template<class Work, class Check>
    void sweep(std::initializer_list<Kind> kinds, Work work, Check check)
    {
        for (const Kind kind : kinds)
            for (const Fault& fault : faultsOf(kind))
                sweep(fault, work, check);
    }
    template<class Work, class Check>
    void sweep(const Fault& fault, Work work, Check check)
    {
        plan = {"", fault.kind, 0, fault.error, fault.isLasting};
        qstrncpy(plan.folder, QFile::encodeName(folder.path()).constData(), sizeof plan.folder);
        for (bool hasStruck = true; hasStruck;) {
            ++plan.nth;
            SCOPED_TRACE(testing::Message() << "kind " << plan.kind << ", call " << plan.nth
                                            << ", error " << plan.error << '/' << plan.isLasting);
            work();
            hasStruck = faults::hasStruck();
            faults::set({});
            check(fault);
        }
        EXPECT_GT(plan.nth, 1) << "no such call";
    }
    QByteArray content(const QString& name)
    {
        QFile file(name);
        return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
    }
    faults::Plan plan;
};

struct Played
{
    std::vector<double> samples;
    QString said;
};

Played played(const QString& file)
{
    Played result;
    result.samples.reserve(1 << 18); // before allocations count
    Recording::Options options;
    options.sampleRate = 1e6; // in large blocks
    auto recording = RecordingOpener::open(file, options);
    if (!recording) {
        result.said = recording.error().sentence;
        return result;
    }
    result.said = Hints::texts(recording->notices).join("; ") + recording->details.join("; ");
    Pipeline pipeline(std::move(recording->source), 0, {});
    pipeline.setQueueLength(1 << 20);
    while (!pipeline.hasEnded()) {
        if (const SignalBlockPtr block = pipeline.take(std::chrono::milliseconds(2)))
            result.samples.insert(result.samples.end(), block->samples.begin(),
                                  block->samples.end());
    }
    result.said += pipeline.trouble().value_or(Message()).sentence;
    return result;
}

TEST_F(Faults, InReadingAreSaidOrBorne)
{
    const std::vector<double> signal = sine(200000);
    writeRecording(path("a.wav"), 1000000, 2, signal);
    writeRecording(path("a.flac"), 96000, 1, sine(50000), SF_FORMAT_FLAC | SF_FORMAT_PCM_16);
    writeRecording(path("a.f32"), 1000000, 1, signal, SF_FORMAT_RAW | SF_FORMAT_FLOAT);
    QByteArray rows;
    for (int k = 0; k < 30000; ++k)
        rows += QByteArray::number(k % 997) + "\n";
    writeFile(path("a.csv"), rows);
    writeFile(path("b.sigmf-data"), rows);
    writeFile(path("b.sigmf-meta"),
              R"({"global": {"core:datatype": "ri8", "core:version": "1", "core:sha512": ")" +
                  QCryptographicHash::hash(rows, QCryptographicHash::Sha512).toHex() +
                  R"("}, "captures": [], "annotations": []})");
    QProcess::execute(
        "tar", {"-C", folder.path(), "-cf", path("c.sigmf"), "b.sigmf-data", "b.sigmf-meta"});
    for (const char* name : {"a.f32", "a.csv", "a.wav", "a.flac", "b.sigmf-meta", "c.sigmf"}) {
        SCOPED_TRACE(name);
        const Played usual = played(path(name));
        EXPECT_GT(usual.samples.size(), 20000);
        Played now;
        const auto work = [&] {
            faults::set(plan);
            now = played(path(name));
        };
        sweep({Open, Read, Allocation}, work, [&](const Fault& fault) {
            EXPECT_TRUE((now.samples == usual.samples && now.said == usual.said) ||
                        (!fault.isBorne() && now.said.contains(fault.reason())))
                << now.samples.size() << " samples; " << qPrintable(now.said);
        });
    }
}

QStringList logged;

TEST_F(Faults, InSettingsLoseNothingThatWasKept)
{
    const QByteArray before =
        "[Other]\nkeep=1\n\n[Scope]\nShowGrid=true\nx=" + QByteArray(20000, 'x') + "\n";
    const QByteArray after = QByteArray(before).replace("true", "false") + "\n[Window]\nA=b\n";
    const auto usualHandler = qInstallMessageHandler(
        [](QtMsgType, const QMessageLogContext&, const QString& text) { logged += text; });
    const QString usualFile = values::Persistant::StoreFile();
    int run = 0;
    QString file;
    const auto work = [&] {
        logged.clear();
        file = folder.filePath(QStringLiteral("%1.ini").arg(++run)); // what is amiss is said once
        writeFile(file, before);
        values::Persistant::SetStoreFile(file);
        faults::set(plan);
        values::Settings().setValue("Scope/ShowGrid", false);
        values::Settings().setValue("Window/A", "b");
    };
    sweep({Open, Read, Write}, work, [&](const Fault& fault) {
        const QByteArray kept = content(file);
        EXPECT_TRUE(kept.startsWith(before.left(20)) && kept.contains(before.right(20000)));
        EXPECT_TRUE(kept == after || (!fault.isBorne() && !logged.isEmpty()));
        EXPECT_EQ(QDir(folder.path()).entryList({QString::number(run) + ".*"}).size(), 1);
    });
    values::Persistant::SetStoreFile(usualFile);
    qInstallMessageHandler(usualHandler);
}

TEST_F(Faults, InWritingLeaveEachFileOldOrNew)
{
    const Snapshot::Contents contents{{"a.png", QByteArray(300000, 'n')}, {"b.csv", "new"}};
    const QString out = path("out");
    Result<void> written;
    for (const bool isOne : {true, false}) {
        const auto work = [&] {
            QDir(out).removeRecursively();
            QDir().mkpath(out);
            writeFile(path("out/a.png"), "old");
            faults::set(plan);
            if (isOne)
                written = ViewExport::save(path("out/a.png"), contents[0].second);
            else
                written = Snapshot::write(contents, out).map([](const QStringList&) {});
        };
        sweep({Open, Write}, work, [&](const Fault& fault) {
            EXPECT_TRUE(written || (!fault.isBorne() &&
                                    written.error().sentence.contains("cannot be written")));
            for (const QString& name : QDir(out).entryList(QDir::Files)) {
                const QByteArray kept = content(QDir(out).filePath(name));
                EXPECT_TRUE((!written && name == "a.png" && kept == "old") ||
                            kept == contents[name == "a.png" ? 0 : 1].second);
            }
        });
    }
}

TEST_F(Faults, OfTheProgramEndItWithASentence)
{
    const QString in = path("in"), file = path("in/a.f32");
    QDir().mkpath(in);
    writeRecording(file, 48000, 1, sine(100000), SF_FORMAT_RAW | SF_FORMAT_FLOAT);
    const QStringList given{file, "--symbol-rate", "1200", "--sample-rate", "48e3"};
    const QStringList jobs[] = {given + QStringList{"--measure", "json"},
                                given + QStringList{"--seconds", "0.2", "--size", "640x400",
                                                    "--snapshot", path("out"), "--formats",
                                                    "png,csv"}};
    QProcess program;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("XDG_RUNTIME_DIR", folder.path());
    QFile::link(ORVANE_FAULTS, path("faults.so")); // the loader takes a space for a separator
    environment.insert("LD_PRELOAD", path("faults.so"));
    const auto run = [&](const QStringList& job, const QString& plan) {
        QDir(path("out")).removeRecursively();
        environment.insert("FAULTS", plan);
        program.setProcessEnvironment(environment);
        program.start(ORVANE_WORKBENCH, job);
        EXPECT_TRUE(program.waitForFinished(60000)) << "hangs";
        EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
        return program.exitCode();
    };
    // Each call in turn takes long; else only about each that is three times the last one.
    const int step = qEnvironmentVariableIsSet("ORVANE_EACH_FAULT") ? 1 : 3;
    for (const QStringList& job : jobs) {
        EXPECT_EQ(run(job, {}), 0) << program.readAllStandardError().toStdString();
        const QByteArray usual = program.readAllStandardOutput();
        for (const Fault& fault : {Fault{Allocation, ENOMEM}, {Read, EIO}}) {
            for (int nth = 1;; nth = std::max(nth + 1, nth * step)) {
                SCOPED_TRACE(testing::Message() << job.last().toStdString() << ", kind "
                                                << fault.kind << ", call " << nth);
                QFile::remove(path("in/struck"));
                const int exitCode =
                    run(job,
                        QString("%1:%2:%3:%4:0").arg(in).arg(fault.kind).arg(nth).arg(fault.error));
                if (!QFile::exists(path("in/struck")))
                    break;
                EXPECT_EQ(program.readAllStandardOutput(), exitCode == 0 ? usual : "");
                const QString said = QString::fromUtf8(program.readAllStandardError());
                const bool isSaid = said.count("orvane-workbench: ") == 1 && said.endsWith('\n') &&
                                    said.contains(fault.reason());
                EXPECT_TRUE(exitCode == 0 || (exitCode == 1 && isSaid)) << said.toStdString();
                EXPECT_EQ(QDir(path("out")).entryList(QDir::Files).isEmpty(),
                          exitCode == 1 || job == jobs[0]);
            }
        }
    }
    program.setStandardOutputFile("/dev/full");
    EXPECT_EQ(run(jobs[0], {}), 1);
    EXPECT_TRUE(program.readAllStandardError().startsWith("orvane-workbench: standard output"));
}

} // namespace
