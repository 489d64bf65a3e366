// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/startup/TranslationCenter.h"
#include "platform/values/Persistant.h"
#include "workbench/app/Options.h"
#include "workbench/app/OrderlyExit.h"
#include "workbench/app/Snapshot.h"
#include "workbench/receiver/SymbolRateEstimate.h"
#include "workbench/sources/LiveAddress.h"
#include "workbench/window/Appearance.h"
#include "workbench/window/MainWindow.h"
#include "workbench/window/SchemeChoice.h"

#include <QApplication>
#include <QFile>
#include <QScreen>

#include <cstdio>
#include <cstdlib>

#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr int exitFailed = 1;
constexpr int exitWrongUsage = 2;

void say(QString text)
{
    text.replace(QLatin1Char('\n'), QLatin1Char(' '));
    std::fprintf(stderr, "orvane-workbench: %s\n", qPrintable(text));
}

int fail(int code, const QString& text)
{
    say(text);
    return code;
}

/// Qt's messages while the application starts, before it is known whether it will.
QStringList& startMessages()
{
    static QStringList messages;
    return messages;
}
bool isStarting = false;

/// Where Qt cannot start, one line says so instead of a core dump; an earlier message has the
/// cause.
void handleMessage(QtMsgType type, const QMessageLogContext&, const QString& text)
{
    if (type == QtFatalMsg) {
        const QStringList causes = startMessages().filter(QStringLiteral("display"));
        fail(exitFailed, QStringLiteral("display: %1; start it in a desktop session, or under Xvfb")
                             .arg(causes.value(0, text).simplified()));
        std::_Exit(exitFailed);
    }
    if (isStarting)
        startMessages() += text;
    else
        std::fprintf(stderr, "%s\n", qPrintable(text));
}

QString about(const Options& options, const QString& text)
{
    return QStringLiteral("%1: %2").arg(LiveAddress::title(options.file), text);
}

/// Opens the recording and says what is amiss with it.
Recording open(const Options& options)
{
    Recording recording = Recording::open(options.file, options.recording);
    for (const QString& notice : recording.notices)
        say(about(options, notice));
    return recording;
}

void resetSettings()
{
    QFile file(values::Persistant::StoreFile());
    if (!file.exists() || file.remove())
        say(Options::tr("settings: forgotten, as --reset says (%1)").arg(file.fileName()));
    else
        say(Options::tr("settings: %1 cannot be removed (%2); remove it by hand")
                .arg(file.fileName(), file.errorString()));
}

/// What the estimate of a symbol rate says, where it is wanted; none for a channel that is not
/// there, which others complain of.
std::optional<SymbolRateEstimate> estimated(const Recording& recording, const Options& options)
{
    if (!options.isSymbolRateAuto || options.channel.last() >= recording.source->valueCount())
        return std::nullopt;
    return SymbolRateEstimate::ofSource(*recording.source, options.channel, options.receiver);
}

int run(MainWindow& window, const Options& options)
{
    constexpr QSize usualSize(1280, 800);
    window.resize(options.size.value_or(usualSize));
    if (options.snapshotFolder.isEmpty()) {
        constexpr int frame = 40; // of the window, and a little room
        if (!options.size)
            window.resize(usualSize.boundedTo(window.screen()->availableSize() - QSize(0, frame)));
        window.restoreParameters();
        if (!options.size)
            window.restoreRoom();
    }
    QString why;
    window.feed().iq().setTrajectory(options.isTrajectory);
    if (!options.file.isEmpty()) {
        if (options.receiver.isOn)
            window.feed().setReceiver(options.receiver);
        Recording recording = open(options);
        why = recording.why;
        std::optional<double> symbolRate = options.symbolRate;
        if (const auto estimate = recording.source ? estimated(recording, options) : std::nullopt) {
            if (estimate->verdict == SymbolRateEstimate::Verdict::None)
                return fail(exitFailed, about(options, estimate->sentence()));
            std::printf("%s\n", qPrintable(estimate->sentence()));
            std::fflush(stdout);
            symbolRate = estimate->symbolRate;
        }
        if (!recording.source ||
            !window.player().open(std::move(recording), options.channel, symbolRate, why))
            return fail(exitFailed, about(options, why));
        if (const QString flaw = window.feed().receiverFlaw(); !flaw.isEmpty())
            return fail(exitFailed, about(options, flaw));
        if (options.snapshotFolder.isEmpty())
            window.remember(options.file);
        if (const QString notice = window.player().eyeNotice(); !notice.isEmpty())
            say(about(options, notice));
    } else if (options.demo) {
        window.player().openDemo(*options.demo);
    } else {
        window.player().openBuiltIn(options.builtIn);
    }
    if (options.eyeSymbolCount)
        window.feed().eye().setSymbolCount(*options.eyeSymbolCount);
    if (options.eyeBandwidth)
        window.feed().eye().setBandwidth(*options.eyeBandwidth);
    if (options.speed)
        window.feed().setSpeed(*options.speed);
    if (options.spanSeconds)
        window.feed().setSpan(*options.spanSeconds);
    window.refresh();

    if (options.snapshotFolder.isEmpty()) {
        window.show();
        QApplication::processEvents(); // the first picture takes long; the signal starts after it
        window.feed().play();
        const OrderlyExit exit(window);
        return QApplication::exec();
    }
    const Snapshot::Result taken =
        Snapshot::take(window, options.seconds, options.snapshotFolder, options.formats);
    if (taken.files.isEmpty())
        return fail(exitFailed, taken.error);
    for (const QString& file : taken.files)
        std::printf("%s\n", qPrintable(file));
    if (!taken.notice.isEmpty())
        say(taken.notice);
    return 0;
}

/// Prints what is known of a recording.
int inform(const Options& options)
{
    const Recording recording = open(options);
    if (!recording.source)
        return fail(exitFailed, about(options, recording.why));
    for (const QString& line : Recording::describe(*recording.source) + recording.details)
        std::printf("%s\n", qPrintable(line));
    if (const auto estimate = estimated(recording, options))
        std::printf("%s\n", qPrintable(estimate->sentence()));
    return 0;
}

/// Does what needs no display: help, complaints and information.
/// @return exit code; none when options were read that need one.
std::optional<int> runWithoutDisplay(int& argc, char** argv, Options& options)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    TranslationCenter::Instance().Register(QStringLiteral("OrvaneWorkbench"));
    const QString language = Options::languageIn(arguments);
    if (!language.isEmpty())
        TranslationCenter::Instance().SetLanguage(language);
    const Options::Result commandLine = Options::parse(arguments);
    if (commandLine.isWrong)
        return fail(exitWrongUsage, commandLine.text);
    if (!commandLine.options) {
        std::printf("%s", qPrintable(commandLine.text));
        return 0;
    }
    options = *commandLine.options;
    return options.isInfo ? std::optional<int>(inform(options)) : std::nullopt;
}

} // namespace

int main(int argc, char** argv)
{
    // Started without a standard input, no other file must be taken for it.
    if (fcntl(STDIN_FILENO, F_GETFD) < 0)
        ::open("/dev/null", O_RDONLY);
    qInstallMessageHandler(handleMessage);
    QCoreApplication::setOrganizationName(QStringLiteral("Orvane"));
    QCoreApplication::setApplicationName(QStringLiteral("orvane-workbench"));
    QCoreApplication::setApplicationVersion(QStringLiteral(ORVANE_VERSION));
    // Numbers read and write as the diagrams have them, with a point.
    QLocale::setDefault(QLocale::c());

    Options options;
    if (const auto exitCode = runWithoutDisplay(argc, argv, options))
        return *exitCode;
    if (!options.settingsFile.isEmpty())
        values::Persistant::SetStoreFile(options.settingsFile);
    if (options.isReset)
        resetSettings();

    if (options.scale)
        qputenv("QT_SCALE_FACTOR", QByteArray::number(*options.scale));
    QApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    isStarting = true;
    QApplication application(argc, argv);
    isStarting = false;
    for (const QString& message : startMessages())
        std::fprintf(stderr, "%s\n", qPrintable(message));
    SchemeChoice scheme(options.scheme);
    appearance::setStyle();
    MainWindow window(scheme);
    return run(window, options);
}
