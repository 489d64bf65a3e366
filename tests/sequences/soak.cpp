// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
// Usage: soak MINUTES
// Views, values, dialogs, windows and recordings come and go, the same ones over and over: memory
// must be level after the first two minutes (or the first third), and nothing else may be left.
#include "World.h"
#include "platform/values/Persistant.h"
#include "workbench/sources/Recording.h"
#include "workbench/window/MainWindow.h"
#include "workbench/window/SchemeChoice.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLFunctions>
#include <QTemporaryDir>
#include <QThread>

#include <cstdio>
#include <cstring>
#include <map>
#include <random>

namespace {

constexpr double levelWithin = 0.05;
constexpr qint64 settlingMs = 120000;

struct Counts
{
    long memory; ///< KiB that are the process's own.
    int handles;
    int threads;
    int widgets;
    int timerEvents; ///< While nothing is open.
    unsigned textureName;
    unsigned bufferName;
};

struct TimerCounter : QObject
{
    bool eventFilter(QObject*, QEvent* event) override
    {
        count += event->type() == QEvent::Timer;
        return false;
    }
    int count = 0;
};

long privateMemory()
{
    QFile file(QStringLiteral("/proc/self/smaps_rollup"));
    file.open(QFile::ReadOnly);
    long sum = 0;
    for (const QByteArray& line : file.readAll().split('\n')) {
        if (line.startsWith("Private_Dirty:"))
            sum += line.simplified().split(' ').at(1).toLong();
    }
    return sum;
}

/// A driver gives the lowest names that are free: they rise where objects are left.
Counts look(QOpenGLContext& shared, QOffscreenSurface& surface)
{
    Counts counts{};
    constexpr int idleMs = 300;
    TimerCounter timers;
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    qApp->installEventFilter(&timers);
    QElapsedTimer clock;
    clock.start();
    while (!clock.hasExpired(idleMs)) {
        QCoreApplication::processEvents();
        QThread::msleep(5);
    }
    counts.timerEvents = timers.count;
    counts.widgets = QApplication::allWidgets().size();
    shared.makeCurrent(&surface);
    QOpenGLFunctions* gl = shared.functions();
    gl->glGenTextures(1, &counts.textureName);
    gl->glGenBuffers(1, &counts.bufferName);
    gl->glDeleteTextures(1, &counts.textureName);
    gl->glDeleteBuffers(1, &counts.bufferName);
    shared.doneCurrent();
    counts.handles =
        static_cast<int>(QDir(QStringLiteral("/proc/self/fd"))
                             .entryList(QDir::NoDotAndDotDot | QDir::System | QDir::AllEntries)
                             .size());
    counts.threads = static_cast<int>(QDir(QStringLiteral("/proc/self/task"))
                                          .entryList(QDir::NoDotAndDotDot | QDir::Dirs)
                                          .size());
    counts.memory = privateMemory();
    return counts;
}

void playARecording(const QString& file)
{
    SchemeChoice scheme(std::nullopt);
    MainWindow window(scheme);
    window.resize(900, 600);
    window.show();
    Recording::Options options;
    options.sampleRate = 48000.0;
    QString why;
    if (!window.player().open(Recording::open(file, options), ChannelChoice(), std::nullopt, why))
        std::fprintf(stderr, "%s\n", qPrintable(why));
    window.feed().play();
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < 300)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    window.close();
}

void runSequence(unsigned seed)
{
    std::mt19937 random(seed);
    std::vector<Step> steps(80);
    for (Step& step : steps) {
        const auto bits = static_cast<std::uint32_t>(random());
        std::memcpy(&step, &bits, sizeof step);
    }
    World world;
    world.run(steps);
}

} // namespace

int main(int argc, char** argv)
{
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    QApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    const QApplication application(argc, argv);
    const QTemporaryDir folder;
    values::Persistant::SetStoreFile(folder.filePath("settings.ini"));
    const QString recording = folder.filePath("a.cf32");
    QFile file(recording);
    file.open(QFile::WriteOnly);
    file.write(QByteArray(800000, '\x3e')); // 0.19, again and again
    file.close();
    QOffscreenSurface surface;
    surface.create();
    QOpenGLContext& shared = *QOpenGLContext::globalShareContext();

    const qint64 endMs = 60000 * QByteArray(argc > 1 ? argv[1] : "10").toInt();
    QElapsedTimer clock;
    clock.start();
    Counts first{};
    Counts last{};
    int roundCount = 0;
    bool isSettled = false;
    while (!isSettled || clock.elapsed() < endMs) {
        for (unsigned seed = 1; seed <= 40; ++seed)
            runSequence(seed);
        playARecording(recording);
        ++roundCount;
        last = look(shared, surface);
        if (!isSettled && clock.elapsed() >= std::min(settlingMs, endMs / 3)) {
            isSettled = true;
            first = last;
        }
        std::printf("%5lld s: %ld KiB, handles %d, threads %d, widgets %d, timers %d, GL %u %u\n",
                    static_cast<long long>(clock.elapsed() / 1000), last.memory, last.handles,
                    last.threads, last.widgets, last.timerEvents, last.textureName,
                    last.bufferName);
        std::fflush(stdout);
    }
    const bool isLevel = static_cast<double>(last.memory) <=
                             static_cast<double>(first.memory) * (1.0 + levelWithin) &&
                         last.handles <= first.handles && last.threads <= first.threads &&
                         last.widgets <= first.widgets && last.timerEvents <= first.timerEvents &&
                         last.textureName <= first.textureName &&
                         last.bufferName <= first.bufferName;
    std::printf("%d rounds: %s\n", roundCount, isLevel ? "level" : "something is left");
    return isLevel ? 0 : 1;
}
