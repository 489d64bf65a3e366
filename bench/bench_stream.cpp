// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
// The window while a program writes so many million samples of I and Q a second into its pipe: the
// part of them that is left out, and the longest time that the window did not answer.
#include "workbench/player/Player.h"
#include "workbench/sources/StreamSource.h"
#include "workbench/window/MainWindow.h"
#include "workbench/window/SchemeChoice.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <memory>
#include <random>
#include <thread>

#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr int warmMs = 1500;
constexpr int measuredMs = 4000;
constexpr std::size_t sampleSize = 2; // bytes, cu8

/// Writes noise at a rate for as long as it lives.
class Writer
{
public:
    explicit Writer(double sampleRate)
    {
        if (pipe(m_ends) != 0)
            std::abort();
        m_id = fork();
        if (m_id == 0)
            write(sampleRate);
    }
    ~Writer()
    {
        kill(m_id, SIGKILL);
        waitpid(m_id, nullptr, 0);
        close(m_ends[0]);
        close(m_ends[1]);
    }
    int end() const { return m_ends[0]; }

private:
    [[noreturn]] void write(double sampleRate) const
    {
        using Clock = std::chrono::steady_clock;
        constexpr auto period = std::chrono::milliseconds(10);
        std::mt19937 random(1);
        std::vector<char> bytes(sampleSize * static_cast<std::size_t>(sampleRate / 100.0));
        std::generate(bytes.begin(), bytes.end(), [&] { return static_cast<char>(random()); });
        for (auto next = Clock::now();; next += period) {
            std::this_thread::sleep_until(next);
            for (std::size_t done = 0; done < bytes.size();) {
                const auto count = ::write(m_ends[1], bytes.data() + done, bytes.size() - done);
                if (count <= 0)
                    _exit(0);
                done += static_cast<std::size_t>(count);
            }
        }
    }

    int m_ends[2] = {};
    pid_t m_id = 0;
};

void waitFor(int ms)
{
    QEventLoop loop;
    QTimer::singleShot(ms, &loop, &QEventLoop::quit);
    loop.exec();
}

void stream(benchmark::State& state)
{
    const double sampleRate = 1e6 * static_cast<double>(state.range(0));
    const QTemporaryDir folder;
    values::Persistant::SetStoreFile(folder.filePath("settings.ini"));
    double leftOut = 0.0;
    qint64 longestMs = 0;
    for ([[maybe_unused]] auto _ : state) {
        SchemeChoice scheme{std::nullopt};
        MainWindow window(scheme);
        window.resize(1280, 800);
        window.show();
        const Writer writer(sampleRate);
        Recording recording;
        recording.source = std::make_unique<StreamSource>("pipe", writer.end(),
                                                          *SampleFormat::parse("cu8"), sampleRate);
        if (!window.player().open(std::move(recording), 0, std::nullopt)) {
            state.SkipWithError("the pipe cannot be played");
            break;
        }
        window.feed().transport().play();
        waitFor(warmMs);
        const double before = window.feed().leftOutPart() * warmMs;
        const auto gapsBefore = window.feed().gapCount();
        QElapsedTimer since;
        QTimer ticks;
        QObject::connect(&ticks, &QTimer::timeout, [&] {
            longestMs = std::max(longestMs, since.isValid() ? since.restart() : 0);
            if (!since.isValid())
                since.start();
        });
        ticks.start(1);
        waitFor(measuredMs);
        if (window.feed().gapCount() > gapsBefore)
            leftOut = (window.feed().leftOutPart() * (warmMs + measuredMs) - before) / measuredMs;
    }
    state.counters["left out [%]"] = 100.0 * leftOut;
    state.counters["longest wait of the window [ms]"] = static_cast<double>(longestMs);
}

BENCHMARK(stream)
    ->Name("million samples a second by a pipe/ours")
    ->Arg(2)
    ->Arg(10)
    ->Iterations(1)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
