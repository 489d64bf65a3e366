// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
// Random sequences of operations, see World. As a fuzz target (ORVANE_FUZZER) it takes them from
// libFuzzer. Else:
//   sequences SECONDS [SEED]   runs sequences from a seed on for so long (at least 60 of them);
//   one
//                              that fails is cut to the steps that it takes, and printed
//   sequences replay FILE      runs the steps in a file
#include "World.h"
#include "platform/values/Persistant.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <cstdio>
#include <cstring>
#include <random>

namespace {

std::vector<Step> stepsOf(const char* bytes, std::size_t count)
{
    std::vector<Step> steps(count / sizeof(Step));
    if (!steps.empty())
        std::memcpy(steps.data(), bytes, steps.size() * sizeof(Step));
    return steps;
}

/// Qt complains of sizes and painters that are meant to be odd.
void beQuiet(QtMsgType, const QMessageLogContext&, const QString&) {}

} // namespace

#ifdef ORVANE_FUZZER

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    qInstallMessageHandler(beQuiet);
    new QApplication(*argc, *argv);
    static const QTemporaryDir settings;
    values::Persistant::SetStoreFile(settings.filePath("settings.ini"));
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    World world;
    world.run(stepsOf(reinterpret_cast<const char*>(data), size));
    return 0;
}

#else

namespace {

constexpr unsigned atLeast = 60;
constexpr int exitFailed = 1;

std::vector<Step> randomSteps(unsigned seed)
{
    std::mt19937 random(seed);
    std::vector<Step> steps(20 + random() % 100);
    for (Step& step : steps) {
        const auto bits = static_cast<std::uint32_t>(random());
        std::memcpy(&step, &bits, sizeof step);
    }
    // Half of the sequences start with what most hosts have.
    constexpr Step usual[] = {{0, 0, 0, 0}, {0, 1, 1, 1}, {0, 2, 2, 0}, {3, 0, 0, 0}, {3, 0, 1, 0},
                              {3, 0, 2, 2}, {3, 0, 3, 3}, {2, 0, 0, 0}, {2, 0, 1, 1}, {2, 0, 2, 2},
                              {2, 1, 0, 0}, {2, 1, 1, 1}, {2, 1, 2, 2}, {2, 2, 0, 0}, {2, 2, 1, 1},
                              {2, 2, 2, 2}, {5, 7, 0, 1}, {5, 7, 1, 8}};
    if (seed % 2 == 0)
        steps.insert(steps.begin(), std::begin(usual), std::end(usual));
    return steps;
}

/// Runs sequences one after the other, the number of each in the file of progress before it starts.
int runMany(unsigned seed, int seconds, const QString& progress)
{
    QFile file(progress);
    if (!file.open(QFile::WriteOnly | QFile::Unbuffered))
        return exitFailed;
    QElapsedTimer clock;
    clock.start();
    for (unsigned done = 0; done < atLeast || clock.elapsed() < qint64(1000) * seconds; ++done) {
        file.seek(0);
        file.write(QByteArray::number(seed + done) + '\n');
        World world;
        world.run(randomSteps(seed + done));
    }
    return 0;
}

/// A process of its own, whose end says whether the steps fail.
bool fails(const QString& program, const std::vector<Step>& steps, const QString& fileName,
           QByteArray* said = nullptr)
{
    QFile file(fileName);
    if (!file.open(QFile::WriteOnly))
        return false;
    file.write(reinterpret_cast<const char*>(steps.data()),
               static_cast<qint64>(steps.size()) * static_cast<qint64>(sizeof(Step)));
    file.close();
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, {"replay", fileName});
    constexpr int patienceMs = 60000;
    const bool isDone = process.waitForFinished(patienceMs);
    if (said)
        *said = process.readAll();
    return !isDone || process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0;
}

/// Leaves out as many steps as possible, in ever smaller runs of them.
std::vector<Step> shrunk(const QString& program, std::vector<Step> steps, const QString& file)
{
    for (std::size_t length = std::max<std::size_t>(steps.size() / 2, 1); length > 0; length /= 2) {
        for (std::size_t start = 0; start < steps.size();) {
            std::vector<Step> fewer(steps.begin(),
                                    steps.begin() + static_cast<std::ptrdiff_t>(start));
            fewer.insert(fewer.end(),
                         steps.begin() +
                             static_cast<std::ptrdiff_t>(std::min(start + length, steps.size())),
                         steps.end());
            if (fails(program, fewer, file))
                steps = fewer;
            else
                start += length;
        }
    }
    return steps;
}

int supervise(const QString& program, unsigned seed, int seconds)
{
    const QTemporaryDir folder;
    const QString progress = folder.filePath("progress");
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, {"many", QString::number(seed), QString::number(seconds), progress});
    process.waitForFinished(-1);
    QFile file(progress);
    file.open(QFile::ReadOnly);
    const unsigned last = file.readAll().trimmed().toUInt();
    std::printf("sequences run: %u, from seed %u on\n", last - seed + 1, seed);
    if (process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0)
        return 0;
    const QByteArray firstSaid = process.readAll();
    const QString replay = QDir::current().filePath(QStringLiteral("failed-%1.steps").arg(last));
    const std::vector<Step> whole = randomSteps(last);
    if (!fails(program, whole, replay)) {
        std::printf("sequence %u failed, but does not fail alone:\n%s\n", last,
                    firstSaid.constData());
        return exitFailed;
    }
    const std::vector<Step> few = shrunk(program, whole, replay);
    QByteArray said;
    fails(program, few, replay, &said);
    std::printf("sequence %u fails; replay %s:\n", last, qPrintable(replay));
    for (const Step& step : few)
        std::printf("  %s\n", World::name(step).c_str());
    std::printf("%s\n", said.constData());
    return exitFailed;
}

} // namespace

int main(int argc, char** argv)
{
    const QString program = QString::fromLocal8Bit(argv[0]);
    const QStringList arguments = [&] {
        QStringList result;
        for (int i = 1; i < argc; ++i)
            result += QString::fromLocal8Bit(argv[i]);
        return result;
    }();
    if (arguments.value(0) != "many" && arguments.value(0) != "replay") {
        const QCoreApplication application(argc, argv);
        return supervise(program, arguments.value(1, "1").toUInt(), arguments.value(0).toInt());
    }
    qInstallMessageHandler(beQuiet);
    QApplication application(argc, argv);
    const QTemporaryDir settings;
    values::Persistant::SetStoreFile(settings.filePath("settings.ini"));
    if (arguments[0] == "many")
        return runMany(arguments.value(1).toUInt(), arguments.value(2).toInt(), arguments.value(3));
    QFile file(arguments.value(1));
    if (!file.open(QFile::ReadOnly))
        return exitFailed;
    const QByteArray bytes = file.readAll();
    World world;
    world.run(stepsOf(bytes.constData(), static_cast<std::size_t>(bytes.size())));
    return 0;
}

#endif
