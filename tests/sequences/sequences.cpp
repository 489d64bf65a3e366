// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
// Random sequences of operations, see World. As a fuzz target (ORVANE_FUZZER) it takes them from
// libFuzzer. Else:
//   sequences SECONDS [SEED]   runs sequences from a seed on for so long (at least 60 of them). The
//                              one that runs lies in the file sequence.steps: where it fails,
//                              fuzz_views -minimize_crash=1 cuts it to the steps that it takes
//   sequences replay FILE      prints and runs the steps in a file
#include "World.h"
#include "platform/values/Persistant.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <cstdio>
#include <cstring>

namespace {

std::vector<Step> stepsOf(const char* bytes, std::size_t count)
{
    std::vector<Step> steps(count / sizeof(Step));
    if (!steps.empty())
        std::memcpy(steps.data(), bytes, steps.size() * sizeof(Step));
    return steps;
}

/// Settings of its own, and no complaints of Qt about sizes and painters that are meant to be odd.
void prepare()
{
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    static const QTemporaryDir settings;
    values::Persistant::SetStoreFile(settings.filePath("settings.ini"));
}

} // namespace

#ifdef ORVANE_FUZZER

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    new QApplication(*argc, *argv);
    prepare();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    World().run(stepsOf(reinterpret_cast<const char*>(data), size));
    return 0;
}

#else

int main(int argc, char** argv)
{
    constexpr unsigned atLeast = 60;
    const QApplication application(argc, argv);
    prepare();
    const QByteArray first = argc > 1 ? argv[1] : "0", second = argc > 2 ? argv[2] : "1";
    const bool isReplay = first == "replay";
    QFile file(isReplay ? QFile::decodeName(second) : "sequence.steps");
    if (!file.open(isReplay ? QFile::ReadOnly : QFile::WriteOnly))
        return 1;
    if (isReplay) {
        const QByteArray bytes = file.readAll();
        const auto steps = stepsOf(bytes.constData(), static_cast<std::size_t>(bytes.size()));
        for (const Step& step : steps)
            std::printf("%s\n", World::name(step).c_str());
        std::fflush(stdout);
        World().run(steps);
        return 0;
    }
    QElapsedTimer clock;
    clock.start();
    unsigned done = 0;
    for (; done < atLeast || clock.elapsed() < 1000LL * first.toInt(); ++done) {
        const std::vector<Step> steps = randomSteps(second.toUInt() + done);
        file.resize(0);
        file.seek(0);
        file.write(reinterpret_cast<const char*>(steps.data()),
                   static_cast<qint64>(steps.size()) * qint64{sizeof(Step)});
        file.flush();
        World().run(steps);
    }
    file.remove();
    std::printf("sequences run: %u, from seed %u on\n", done, second.toUInt());
    return 0;
}

#endif
