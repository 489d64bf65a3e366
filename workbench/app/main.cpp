// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/base/QtVersions.h"
#include "platform/glbase/Renderer.h"
#include "platform/startup/TranslationCenter.h"
#include "platform/values/Persistant.h"
#include "workbench/app/MeasureCommand.h"
#include "workbench/app/Options.h"
#include "workbench/app/OrderlyExit.h"
#include "workbench/app/Snapshot.h"
#include "workbench/player/Hints.h"
#include "workbench/receiver/SymbolRateEstimate.h"
#include "workbench/sources/LiveAddress.h"
#include "workbench/sources/PlainText.h"
#include "workbench/sources/QuietLibraries.h"
#include "workbench/sources/RecordingOpener.h"
#include "workbench/window/Appearance.h"
#include "workbench/window/MainWindow.h"
#include "workbench/window/SchemeChoice.h"
#include "workbench/window/density/Densities.h"
#include "workbench/window/density/MaskChoice.h"

#include <QApplication>
#include <QFile>
#include <QLoggingCategory>
#include <QScreen>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <new>

#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr int exitFailed = 1;
constexpr int exitWrongUsage = 2;
constexpr int exitMaskFailed = 3;

void say(const QString& text)
{
    std::fprintf(stderr, "orvane-workbench: %s\n", qPrintable(plainText(text, 2 * maxLineLength)));
}

int fail(int code, const QString& text)
{
    say(text);
    return code;
}

/// Messages of Qt while the application starts, which may fail.
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

/// Opens the recording and prints its notices.
Result<Recording> open(const Options& options)
{
    auto recording = RecordingOpener::open(options.file, options.recording);
    if (recording) {
        for (const QString& notice : Hints::texts(recording->notices))
            say(about(options, notice));
    }
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

/// An estimate of the symbol rate, when it is wanted or a picture needs it; none for a missing
/// channel, which is reported elsewhere.
std::optional<SymbolRateEstimate> estimated(const Recording& recording, const Options& options)
{
    const SignalSource& source = *recording.source;
    const bool isMissed = !options.snapshotFolder.isEmpty() && !options.symbolRate &&
                          !source.facts().symbolRate && !source.facts().isLive;
    if (!(options.isSymbolRateAuto || isMissed) ||
        options.channel.last() >= source.facts().valueCount())
        return std::nullopt;
    return SymbolRateEstimate::ofSource(*recording.source, options.channel, options.receiver);
}

/// Opens the recording in the window. @return exit code where it cannot be shown.
std::optional<int> openRecording(MainWindow& window, const Options& options)
{
    const auto refuse = [&options](int code, const Message& why) {
        return std::optional<int>(fail(code, about(options, Hints::text(why))));
    };
    if (options.receiver.isOn || options.receiver.characterBits)
        window.feed().setReceiver(options.receiver);
    auto recording = open(options);
    if (!recording)
        return refuse(exitFailed, recording.error());
    if (options.lacksSymbolRate(recording->source->facts().symbolRate))
        return refuse(exitWrongUsage,
                      Options::tr("--%1 needs the symbol rate; give --symbol-rate, too")
                          .arg(options.receiver.modulation ? QStringLiteral("modulation")
                                                           : QStringLiteral("characters")));
    std::optional<double> symbolRate = options.symbolRate;
    const auto estimate = estimated(*recording, options);
    const bool isFound = estimate && estimate->isToBeTaken(options.isSymbolRateAuto);
    if (isFound)
        symbolRate = estimate->symbolRate;
    if (isFound && options.isSymbolRateAuto) {
        std::printf("%s\n", qPrintable(Hints::text(estimate->message())));
        std::fflush(stdout);
    } else if (estimate && options.isSymbolRateAuto) { // the recording is shown all the same
        say(about(options, Hints::text(estimate->message())));
    }
    if (const auto opened =
            window.player().open(std::move(*recording), options.channel, symbolRate);
        !opened)
        return refuse(exitFailed, opened.error());
    if (isFound)
        window.player().setConfidence(estimate->confidence);
    const auto length = window.feed().transport().length();
    if (options.start && length && *options.start >= *length)
        return refuse(exitFailed,
                      Options::tr("it has ended before %1 s; start earlier").arg(*options.start));
    if (const auto receiver = window.feed().checkReceiver(); !receiver)
        return refuse(exitFailed, receiver.error());
    if (options.snapshotFolder.isEmpty())
        window.remember(options.file);
    if (const auto eye = window.player().checkEye(); !eye && (isFound || !estimate))
        say(about(options, Hints::text(eye.error())));
    return std::nullopt;
}

/// Applies the options to the signal that was opened.
void apply(const Options& options, MainWindow& window)
{
    SignalFeed& feed = window.feed();
    if (options.eyeSymbolCount)
        feed.eye().setSymbolCount(*options.eyeSymbolCount);
    if (options.eyeBandwidth)
        feed.eye().setBandwidth(*options.eyeBandwidth);
    if (options.speed)
        window.player().setSpeed(*options.speed);
    if (options.spanSeconds)
        feed.setSpan(*options.spanSeconds);
    if (options.start && options.hasSeconds)
        window.player().fixGate(*options.start, *options.start + options.seconds,
                                options.spanSeconds);
    else if (!options.snapshotFolder.isEmpty() && !options.file.isEmpty() && !options.spanSeconds)
        // Figures, eye and constellation are of all samples that are played, even if the time view
        // shows fewer.
        window.player().fixGate(options.start.value_or(0.0),
                                options.start.value_or(0.0) + options.seconds,
                                std::min(feed.span(), options.seconds));
    else if (options.start)
        feed.transport().seek(*options.start);
    window.refresh();
}

/// Switches the densities on that are asked for. @return exit code where there is no mask.
std::optional<int> prepareDensities(MainWindow& window, const Options& options)
{
    Densities& densities = window.densities();
    if (options.isDensity) {
        densities.eye().setOn(true);
        densities.iq().setOn(true);
    }
    if (options.maskFile.isEmpty())
        return std::nullopt;
    const auto mask = MaskChoice::read(options.maskFile);
    if (!mask)
        return fail(exitFailed,
                    QStringLiteral("%1: %2").arg(options.maskFile, mask.error().sentence));
    densities.eye().setOn(true);
    densities.masks().choose(*mask);
    return std::nullopt;
}

/// Says how the test of a snapshot went. @return exit code.
int tellMask(MainWindow& window)
{
    const MaskChoice& masks = window.densities().masks();
    if (!masks.mask())
        return 0;
    say(Options::tr("mask: %1").arg(masks.text()));
    const auto result = masks.result();
    const bool hasPassed = result && result->verdict == density::MaskTest::Verdict::Pass;
    return hasPassed ? 0 : exitMaskFailed;
}

void prepare(MainWindow& window, const Options& options)
{
    constexpr QSize usualSize(1280, 800);
    window.resize(options.size.value_or(usualSize));
    window.feed().iq().setTrajectory(options.isTrajectory);
    if (!options.snapshotFolder.isEmpty())
        return;
    constexpr int frame = 40; // of the window, with a little room
    if (!options.size)
        window.resize(usualSize.boundedTo(window.screen()->availableSize() - QSize(0, frame)));
    window.restoreParameters();
    window.player().setEstimating(true);
    if (!options.size)
        window.restoreRoom();
}

int run(MainWindow& window, const Options& options)
{
    prepare(window, options);
    if (const auto exitCode = prepareDensities(window, options))
        return *exitCode;
    if (!options.file.isEmpty()) {
        if (const auto exitCode = openRecording(window, options))
            return *exitCode;
    } else if (options.demo) {
        window.player().openDemo(*options.demo);
    } else {
        window.player().openBuiltIn(options.builtIn);
    }
    apply(options, window);
    if (options.snapshotFolder.isEmpty()) {
        window.show();
        QApplication::processEvents();       // the signal starts after the first, slow picture
        if (!window.feed().gate().isFixed()) // that stands still
            window.feed().transport().play();
        const OrderlyExit exit(window);
        return QApplication::exec();
    }
    const auto taken =
        Snapshot::take(window, options.seconds, options.snapshotFolder, options.formats);
    if (!taken) {
        const QString why = Hints::text(taken.error());
        return fail(exitFailed, window.feed().hasFailed() ? about(options, why) : why);
    }
    if (const auto trouble = window.feed().trouble(); trouble && !window.feed().source().isLive)
        say(about(options, Hints::text(*trouble)));
    for (const QString& file : taken->files)
        std::printf("%s\n", qPrintable(file));
    if (!taken->notice.isEmpty())
        say(taken->notice);
    return tellMask(window);
}

/// Prints the facts about a recording.
int inform(const Options& options)
{
    const auto recording = open(options);
    if (!recording)
        return fail(exitFailed, about(options, Hints::text(recording.error())));
    for (const QString& line : Recording::describe(*recording->source) + recording->details)
        std::printf("%s\n", qPrintable(line));
    if (const auto estimate = estimated(*recording, options))
        std::printf("%s\n", qPrintable(Hints::text(estimate->message())));
    return 0;
}

/// Does all that needs no display: help, errors and information.
/// @return exit code; none when a display is needed.
std::optional<int> runWithoutDisplay(int& argc, char** argv, Options& options)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    TranslationCenter::Instance().Register(QStringLiteral("OrvaneWorkbench"));
    const QString language = Options::languageIn(arguments);
    if (!language.isEmpty())
        TranslationCenter::Instance().SetLanguage(language);
    const auto parsed = Options::parse(arguments);
    if (!parsed)
        return fail(exitWrongUsage, parsed.error().sentence);
    options = *parsed;
    std::printf("%s", qPrintable(options.answer));
    const bool wantsRenderer = options.isVersion && options.isVerbose;
    if (!options.answer.isEmpty())
        return wantsRenderer ? std::nullopt : std::optional<int>(0);
    if (options.isMeasure)
        return MeasureCommand(options).run(say);
    return options.isInfo ? std::optional<int>(inform(options)) : std::nullopt;
}

/// Prints what would draw the views, after the version.
int tellRenderer(int argc, char** argv)
{
    if (!qEnvironmentVariableIsSet("DISPLAY") && !qEnvironmentVariableIsSet("WAYLAND_DISPLAY") &&
        !qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    isStarting = true; // only an end of the program is worth a word
    const QApplication application(argc, argv);
    std::printf("renderer: %s\n", qPrintable(Renderer::Description()));
    return 0;
}

int failMemory()
{
    return fail(exitFailed, Options::tr("memory: there is not enough of it; close other programs"));
}

/// Ends the program at an uncaught exception, with a sentence when memory ran out.
[[noreturn]] void endUncaught()
{
    try {
        if (const auto exception = std::current_exception())
            std::rethrow_exception(exception);
    } catch (const std::bad_alloc&) {
        std::_Exit(failMemory());
    } catch (...) { // a bug: leaves a core dump
    }
    std::abort();
}

int runAll(int argc, char** argv)
{
    qInstallMessageHandler(handleMessage);
    QCoreApplication::setOrganizationName(QStringLiteral("Orvane"));
    QCoreApplication::setApplicationName(QStringLiteral("orvane-workbench"));
    QCoreApplication::setApplicationVersion(QStringLiteral(ORVANE_VERSION));
    // Numbers are read and written with a decimal point, as in the diagrams.
    QLocale::setDefault(QLocale::c());

    Options options;
    if (const auto exitCode = runWithoutDisplay(argc, argv, options))
        return *exitCode;
    if (options.isVersion)
        return tellRenderer(argc, argv);
    if (options.isVerbose)
        QLoggingCategory::setFilterRules(QStringLiteral("orvane.*=true"));
    if (!options.settingsFile.isEmpty())
        values::Persistant::SetStoreFile(options.settingsFile);
    if (options.isReset)
        resetSettings();

    if (options.scale)
        qputenv("QT_SCALE_FACTOR", QByteArray::number(*options.scale));
    QtVersions::scaleForHighDpi();
    isStarting = true;
    QApplication application(argc, argv);
    isStarting = false;
    for (const QString& message : startMessages())
        std::fprintf(stderr, "%s\n", qPrintable(message));
    // Then no window asks for an OpenGL driver, which takes long to load and much memory.
    if (Renderer::Current() == Renderer::Kind::Raster)
        QApplication::setAttribute(Qt::AA_ForceRasterWidgets);
    SchemeChoice scheme(options.scheme);
    appearance::setStyle();
    MainWindow window(scheme);
    return run(window, options);
}

} // namespace

int main(int argc, char** argv)
{
    // If a standard stream is closed, no other file must get its descriptor.
    while (fcntl(STDERR_FILENO, F_GETFD) < 0 || fcntl(STDOUT_FILENO, F_GETFD) < 0 ||
           fcntl(STDIN_FILENO, F_GETFD) < 0) {
        if (::open("/dev/null", O_RDONLY) < 0) // a later write fails and is reported
            return exitFailed;
    }
    QuietLibraries::install();
    std::set_terminate(endUncaught);
    int exitCode = exitFailed;
    try {
        exitCode = runAll(argc, argv);
    } catch (const std::bad_alloc&) {
        exitCode = failMemory();
    }
    if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0)
        return fail(exitFailed, Options::tr("standard output: cannot be written; look where it "
                                            "leads to, and whether there is room"));
    return exitCode;
}
