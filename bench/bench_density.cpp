// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
// Cost of counting traces of two symbols, of an eye with two levels, into 800 x 600 cells. Counters
// are medians of all rounds, in which ours and the floor take turns, in processor time:
//   traces_s   traces counted and kept in a second of one core;
//   floor/ours the time of a loop that does nothing but increment the cells of the same traces,
//              from the first row of each column to the last, known beforehand, over ours;
//   list       our time over that of a loop through a list of all of these cells;
//   numpy/ours time of numpy's histogram2d over ours, of a point a column; left out where numpy is
//              not installed.
// "anew" counts 100,000 kept traces again, as a zoom does: its time is that of a zoom.
#include "density/Counter.h"
#include "density/TraceRaster.h"

#include <benchmark/benchmark.h>

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>
#include <cmath>
#include <ctime>
#include <optional>
#include <random>

namespace {

using namespace density;

constexpr std::size_t traceCount = 500;
const Window window{-1.0, 1.0, -1.4, 1.4};

double processorSeconds() { return static_cast<double>(std::clock()) / CLOCKS_PER_SEC; }

double median(std::vector<double> values)
{
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

TraceShape shapeOf(const benchmark::State& state)
{
    return {static_cast<int>(state.range(0)), 2.0};
}

/// Transitions between two levels within 0.4 of a symbol, and noise.
std::vector<float> makeTraces(const TraceShape& shape)
{
    std::mt19937 random(1);
    std::normal_distribution<double> noise(0.0, 0.05);
    std::vector<float> samples;
    for (std::size_t trace = 0; trace < traceCount; ++trace) {
        double levels[4];
        for (double& level : levels)
            level = random() % 2 ? 0.8 : -0.8;
        for (int k = 0; k < shape.sampleCount; ++k) {
            const double time = shape.timeOf(k) + 1.5;
            const int symbol = std::min(static_cast<int>(time), 2);
            const double progress = std::min(1.0, (time - symbol) / 0.4);
            const double step = 0.5 * (1.0 - std::cos(M_PI * progress));
            const double level = levels[symbol] + (levels[symbol + 1] - levels[symbol]) * step;
            samples.push_back(static_cast<float>(level + noise(random)));
        }
    }
    return samples;
}

/// The runs of cells that the traces touch, trace by trace.
std::vector<Cells::Run> runsOf(const std::vector<float>& samples, const TraceShape& shape)
{
    TraceRaster raster(shape, window, GridSize());
    std::vector<Cells::Run> runs;
    for (std::size_t k = 0; k < samples.size(); k += static_cast<std::size_t>(shape.sampleCount)) {
        const Cells& touched = raster.take(&samples[k]);
        for (int column = touched.firstColumn; column <= touched.lastColumn; ++column) {
            const auto index = static_cast<std::size_t>(column);
            runs.push_back({column, touched.begin[index], touched.end[index]});
        }
    }
    return runs;
}

/// The floor: 32-bit counts of the cells of each run.
void incrementRuns(const std::vector<Cells::Run>& runs, std::vector<std::uint32_t>& counts)
{
    constexpr std::ptrdiff_t columns = 800;
    for (const Cells::Run& run : runs) {
        std::uint32_t* const cells = counts.data() + run.column;
        for (int row = run.begin; row < run.end; ++row)
            ++cells[row * columns];
    }
    benchmark::DoNotOptimize(counts.data());
}

void incrementCells(const std::vector<std::uint32_t>& cells, std::vector<std::uint32_t>& counts)
{
    for (const std::uint32_t cell : cells)
        ++counts[cell];
    benchmark::DoNotOptimize(counts.data());
}

/// Seconds a trace by numpy, in a process of its own; none where it is not installed.
std::optional<double> countByNumpy(const std::vector<float>& samples, const TraceShape& shape)
{
    const QTemporaryDir folder;
    QFile file(folder.filePath("traces.f32"));
    const auto size = static_cast<qint64>(samples.size()) * qint64{sizeof(float)};
    if (!file.open(QIODevice::WriteOnly) ||
        file.write(reinterpret_cast<const char*>(samples.data()), size) != size || !file.flush())
        return std::nullopt;
    const GridSize grid;
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start("/usr/bin/python3",
                  {ORVANE_NUMPY_SCRIPT, file.fileName(), QString::number(shape.sampleCount),
                   QString::number(grid.columns), QString::number(grid.rows),
                   QString::number(window.bottom), QString::number(window.top)});
    if (!process.waitForFinished(-1) || process.exitCode() != 0)
        return std::nullopt;
    return process.readAllStandardOutput().trimmed().toDouble();
}

Counter::Settings settingsOf(const TraceShape& shape)
{
    Counter::Settings settings;
    settings.shape = shape;
    settings.home = window;
    return settings;
}

void addAll(Counter& counter, const std::vector<float>& samples, std::size_t length)
{
    std::int64_t symbol = 0;
    for (std::size_t k = 0; k < samples.size(); k += length)
        counter.add(&samples[k], length, symbol++);
}

void density_count(benchmark::State& state)
{
    const TraceShape shape = shapeOf(state);
    const auto length = static_cast<std::size_t>(shape.sampleCount);
    const std::vector<float> samples = makeTraces(shape);
    const std::vector<Cells::Run> runs = runsOf(samples, shape);
    std::vector<std::uint32_t> cells;
    for (const Cells::Run& run : runs) {
        for (int row = run.begin; row < run.end; ++row)
            cells.push_back(static_cast<std::uint32_t>(row * GridSize().columns + run.column));
    }
    Counter counter(settingsOf(shape));
    std::vector<std::uint32_t> counts(GridSize().cellCount());
    std::vector<double> ours, floor, list;
    const auto secondsOf = [](const auto& work) {
        const double start = processorSeconds();
        for (int turn = 0; turn < 40; ++turn)
            work();
        return (processorSeconds() - start) / (40.0 * traceCount);
    };
    for ([[maybe_unused]] auto _ : state) {
        ours.push_back(secondsOf([&] { addAll(counter, samples, length); }));
        floor.push_back(ours.back() / secondsOf([&] { incrementRuns(runs, counts); }));
        list.push_back(ours.back() / secondsOf([&] { incrementCells(cells, counts); }));
        state.SetIterationTime(ours.back() * traceCount);
    }
    state.counters["traces_s"] = 1.0 / median(ours);
    state.counters["floor/ours"] = 1.0 / median(floor);
    state.counters["list"] = median(list);
    if (const auto numpy = countByNumpy(samples, shape))
        state.counters["numpy/ours"] = *numpy / median(ours);
}

void density_anew(benchmark::State& state)
{
    const TraceShape shape = shapeOf(state);
    const std::vector<float> samples = makeTraces(shape);
    Counter counter(settingsOf(shape));
    while (counter.kept().count() < counter.kept().capacity())
        addAll(counter, samples, static_cast<std::size_t>(shape.sampleCount));
    double right = 0.5;
    for ([[maybe_unused]] auto _ : state) {
        right -= 1e-3;
        counter.setZoom(Window{-0.5, right, -0.6, 0.7});
    }
}

BENCHMARK(density_count)
    ->Arg(33)
    ->Arg(17)
    ->Iterations(21)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(density_anew)->Arg(33)->Iterations(11)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
