// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
// Usage: soak MINUTES
// Views, values, dialogs, windows and recordings come and go, the same ones over and over: memory
// must be level after the first two minutes (or the first third), and nothing else may be left.
#include "World.h"
#include "platform/values/Persistant.h"
#include "workbench/sources/RecordingOpener.h"
#include "workbench/window/MainWindow.h"
#include "workbench/window/SchemeChoice.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QOpenGLWidget>
#include <QPainter>
#include <QPixmapCache>
#include <QTemporaryDir>
#include <QTest>

#include <cstdio>

#include <optional>

#include <malloc.h>

namespace {

constexpr double levelWithin = 0.05;
constexpr qint64 settlingMs = 120000;

struct Counts
{
    long memory; ///< KiB that are the process's own.
    long live;   ///< KiB of them that were allocated and not freed.
    long shown;  ///< GL widgets until now.
    int handles;
    int threads;
    int widgets;
    QStringList timers; ///< Classes whose timers run out while nothing is open.
};

/// Looks at events of the whole application.
struct EventCounter : QObject
{
    bool eventFilter(QObject* receiver, QEvent* event) override
    {
        shown += event->type() == QEvent::Show && receiver->inherits("QOpenGLWidget");
        // One that fires once for a receiver that is gone frees itself.
        const QString name = receiver->metaObject()->className();
        if (event->type() == QEvent::Timer && name != QLatin1String("QSingleShotTimer"))
            timers += name;
        return false;
    }
    long shown = 0;
    QStringList timers;
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

/// KiB that Qt 5.15 keeps of a window that painted text with OpenGL, whoever painted it: fonts have
/// a cache of glyphs for each context, also for those that are gone.
double toolkitLoss()
{
    struct Plain : QOpenGLWidget
    {
        void paintGL() override
        {
            QPainter painter(this);
            QFont font = painter.font();
            for (const bool isBold : {false, true}) { // as captions are, and labels
                font.setBold(isBold);
                painter.setFont(font);
                painter.drawText(9, 20, QStringLiteral("-1.25 -0.5 0.75 1.0 t/T"));
            }
        }
    };
    const auto showMany = [](int count) {
        for (int i = 0; i < count; ++i) {
            Plain plain;
            plain.show();
            static_cast<void>(QTest::qWaitForWindowExposed(&plain));
        }
        return static_cast<double>(mallinfo2().uordblks) / 1024.0;
    };
    constexpr int count = 100;
    const double before = showMany(count);
    return (showMany(count) - before) / count;
}

int entryCount(const char* folder)
{
    return int(
        QDir(folder).entryList(QDir::NoDotAndDotDot | QDir::System | QDir::AllEntries).size());
}

Counts look(EventCounter& events)
{
    QTest::qWait(30); // whatever was still to come
    events.timers.clear();
    QTest::qWait(300);
    malloc_trim(0); // or it is mostly what the driver's compiler has freed, in pieces
    const struct mallinfo2 heap = mallinfo2();
    return {privateMemory(),
            static_cast<long>((heap.uordblks + heap.hblkhd) / 1024),
            events.shown,
            entryCount("/proc/self/fd"),
            entryCount("/proc/self/task"),
            int(QApplication::allWidgets().size()),
            events.timers};
}

void playARecording(const QString& file)
{
    SchemeChoice scheme(std::nullopt);
    MainWindow window(scheme);
    window.resize(900, 600);
    window.show();
    Recording::Options options;
    options.sampleRate = 48000.0;
    const auto opened =
        RecordingOpener::open(file, options).and_then([&window](Recording&& recording) {
            return window.player().open(std::move(recording), ChannelChoice(), std::nullopt);
        });
    if (!opened)
        std::fprintf(stderr, "%s\n", qPrintable(opened.error().sentence));
    window.feed().transport().play();
    QTest::qWait(300);
    window.close();
}

} // namespace

int main(int argc, char** argv)
{
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    const QApplication application(argc, argv);
    QPixmapCache::setCacheLimit(0); // or the icons of each dialog fill it, up to 10 MiB
    const double loss = toolkitLoss();
    std::printf("the toolkit keeps %.1f KiB of a GL widget\n", loss);
    EventCounter events;
    qApp->installEventFilter(&events);
    const QTemporaryDir folder;
    values::Persistant::SetStoreFile(folder.filePath("settings.ini"));
    const QString recording = folder.filePath("a.cf32");
    QFile file(recording);
    file.open(QFile::WriteOnly);
    file.write(QByteArray(800000, '\x3e')); // 0.19, again and again
    file.close();

    const qint64 endMs = qint64(60000) * QByteArray(argc > 1 ? argv[1] : "10").toInt();
    QElapsedTimer clock;
    clock.start();
    std::optional<Counts> first;
    Counts last{};
    while (!first || clock.elapsed() < endMs) {
        for (unsigned seed = 1; seed <= 40; ++seed)
            World().run(randomSteps(seed));
        playARecording(recording);
        last = look(events);
        if (!first && clock.elapsed() >= std::min(settlingMs, endMs / 3))
            first = last;
        std::printf("%5lld s: %ld KiB, %ld of them live, %ld GL widgets shown, handles %d, "
                    "threads %d, widgets %d, timers %s\n",
                    static_cast<long long>(clock.elapsed() / 1000), last.memory, last.live,
                    last.shown, last.handles, last.threads, last.widgets,
                    qPrintable(last.timers.join(' ')));
        std::fflush(stdout);
    }
    const bool isLevel = static_cast<double>(last.memory) <=
                             static_cast<double>(first->memory) * (1.0 + levelWithin) +
                                 loss * static_cast<double>(last.shown - first->shown) &&
                         last.handles <= first->handles && last.threads <= first->threads &&
                         last.widgets <= first->widgets && last.timers.isEmpty();
    std::printf("%s\n", isLevel ? "level" : "something is left");
    return isLevel ? 0 : 1;
}
