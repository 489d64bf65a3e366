// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
// Cost of density plots of an eye with two levels, in 800 x 600 cells. A trace is counted and kept
// in turns with a floor that increments the cells of each column's run, known beforehand; "beside
// its cells" those of a ready list. Counted again are 100,000 kept traces, as by a zoom. Painted is
// what a window repaints after a trace, beside an eye diagram of 800 x 600 pixels; the picture for
// it is what the counting thread makes. 1 MBd comes for three seconds at the pace of a receiver,
// with 30 snapshots a second; ten million symbols in one go.
#include "density/Counter.h"
#include "density/CountingThread.h"
#include "density/DensityExport.h"
#include "density/DensityPlot.h"
#include "density/EyeFigures.h"
#include "density/TraceRaster.h"
#include "eye/GLEyeDiagram.h"
#include "platform/glwidgets/XAxisWidget.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QImage>
#include <QPaintEvent>
#include <QPainter>
#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <ctime>
#include <memory>
#include <optional>
#include <random>
#include <thread>

#include <unistd.h>

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
        raster.take(&samples[k]).forEachRun([&](const Cells::Run& run) { runs.push_back(run); });
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

std::vector<std::uint32_t> cellsOf(const std::vector<Cells::Run>& runs)
{
    std::vector<std::uint32_t> cells;
    for (const Cells::Run& run : runs) {
        for (int row = run.begin; row < run.end; ++row)
            cells.push_back(static_cast<std::uint32_t>(row * GridSize().columns + run.column));
    }
    return cells;
}

void count(benchmark::State& state, bool isBesideCells)
{
    const TraceShape shape = shapeOf(state);
    const auto length = static_cast<std::size_t>(shape.sampleCount);
    const std::vector<float> samples = makeTraces(shape);
    const std::vector<Cells::Run> runs = runsOf(samples, shape);
    const std::vector<std::uint32_t> cells = cellsOf(runs);
    Counter counter(settingsOf(shape));
    std::vector<std::uint32_t> counts(GridSize().cellCount());
    std::vector<double> ours, floor;
    const auto secondsOf = [](const auto& work) {
        const double start = processorSeconds();
        for (int turn = 0; turn < 40; ++turn)
            work();
        return (processorSeconds() - start) / (40.0 * traceCount);
    };
    for ([[maybe_unused]] auto _ : state) {
        ours.push_back(secondsOf([&] { addAll(counter, samples, length); }));
        floor.push_back(ours.back() / secondsOf([&] {
                            isBesideCells ? incrementCells(cells, counts)
                                          : incrementRuns(runs, counts);
                        }));
        state.SetIterationTime(ours.back());
    }
    state.counters["floor/ours"] = 1.0 / median(floor);
    if (isBesideCells)
        return;
    const auto numpy = countByNumpy(samples, shape);
    state.counters["numpy/ours"] = numpy ? *numpy / median(ours) : 0.0; // 0: not installed
}

void countAgain(benchmark::State& state)
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

void paint(QWidget& widget, const QRegion& region)
{
    static QImage canvas(1200, 800, QImage::Format_RGB32);
    QPainter painter(&canvas);
    widget.render(&painter, region.boundingRect().topLeft(), region, QWidget::RenderFlags());
}

/// A plot of 800 x 600 cells that shows the traces.
std::unique_ptr<DensityPlot> makePlot(const std::vector<float>& samples)
{
    auto plot = std::make_unique<DensityPlot>(DensityPlot::Kind::Eye);
    QSize size(900, 700);
    const auto columns = [&] { return plot->snapshot() ? plot->snapshot()->size.columns : 0; };
    const auto rows = [&] { return plot->snapshot() ? plot->snapshot()->size.rows : 0; };
    plot->resize(size);
    plot->show();
    plot->addData(samples.data(), samples.size(), 0);
    const GridSize wanted;
    for (int turn = 0; turn < 3 && !(columns() == wanted.columns && rows() == wanted.rows);
         ++turn) {
        QElapsedTimer timer;
        timer.start();
        while (timer.elapsed() < 600)
            QApplication::processEvents();
        size += QSize(wanted.columns - columns(), wanted.rows - rows());
        plot->resize(size);
    }
    return plot;
}

/// What a window paints of a widget when it shows something new.
struct Repaint : QObject
{
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Paint)
            region = static_cast<QPaintEvent*>(event)->region();
        return false;
    }
    QRegion region;
};

/// An eye diagram of 800 x 600 pixels.
struct Eye
{
    GLEyeDiagram diagram{nullptr};
    std::shared_ptr<XAxisWidget> xAxis = std::make_shared<XAxisWidget>("XAxis", nullptr);

    Eye()
    {
        diagram.resize(800, 600);
        xAxis->SetLength(800);
        diagram.setXAxisWidget(xAxis);
    }
    void addAndPaint(const std::vector<float>& samples, std::size_t first, std::size_t length)
    {
        const auto from = samples.begin() + static_cast<std::ptrdiff_t>(first);
        std::vector<double> trace(from, from + static_cast<std::ptrdiff_t>(length));
        diagram.AddData(trace);
        paint(diagram, diagram.rect());
    }
};

void paintPlot(benchmark::State& state)
{
    const TraceShape shape = shapeOf(state);
    const auto length = static_cast<std::size_t>(shape.sampleCount);
    const std::vector<float> samples = makeTraces(shape);
    const auto plot = makePlot(samples);
    Repaint repaint;
    plot->installEventFilter(&repaint);
    const std::int64_t before = plot->snapshot()->allSymbols;
    plot->addData(samples.data(), length, traceCount);
    for (; plot->snapshot()->allSymbols == before; QApplication::processEvents())
        repaint.region = QRegion();
    while (repaint.region.isEmpty())
        QApplication::processEvents();
    Eye eye;
    for (std::size_t k = 0; k < samples.size(); k += length)
        eye.addAndPaint(samples, k, length);
    std::vector<double> ours, ratios;
    std::size_t next = 0;
    for ([[maybe_unused]] auto _ : state) {
        constexpr int paints = 50;
        double start = processorSeconds();
        for (int k = 0; k < paints; ++k)
            paint(*plot, repaint.region);
        ours.push_back((processorSeconds() - start) / paints);
        start = processorSeconds();
        for (int k = 0; k < paints; ++k)
            eye.addAndPaint(samples, next++ % traceCount * length, length);
        ratios.push_back((processorSeconds() - start) / paints / ours.back());
        state.SetIterationTime(ours.back());
    }
    state.counters["eye/ours"] = median(ratios);
    if (plot->snapshot()->size.columns != GridSize().columns)
        state.SkipWithError("not as many cells");
}

void makePicture(benchmark::State& state)
{
    const TraceShape shape = shapeOf(state);
    const std::vector<float> samples = makeTraces(shape);
    Counter counter(settingsOf(shape));
    for ([[maybe_unused]] auto _ : state) {
        addAll(counter, samples, static_cast<std::size_t>(shape.sampleCount));
        const double start = processorSeconds();
        benchmark::DoNotOptimize(toImage(*counter.snapshot(), ColorMapping()));
        state.SetIterationTime(processorSeconds() - start);
    }
}

void countLive(benchmark::State& state)
{
    using std::chrono::milliseconds;
    using Clock = std::chrono::steady_clock;
    const TraceShape shape = shapeOf(state);
    const std::vector<float> samples = makeTraces(shape);
    constexpr int blocks = 600, tracesPerBlock = 5000, blockMs = 5;
    SnapshotPtr last;
    double cores = 0.0;
    for ([[maybe_unused]] auto _ : state) {
        CountingThread counting(settingsOf(shape));
        const Clock::time_point start = Clock::now();
        const double before = processorSeconds();
        for (int block = 0; block < blocks; ++block) {
            CountingThread::Block next;
            next.firstSymbol = std::int64_t{block} * tracesPerBlock;
            for (std::size_t k = 0; k < tracesPerBlock / traceCount; ++k)
                next.samples.insert(next.samples.end(), samples.begin(), samples.end());
            counting.tryPush(std::move(next));
            if (block % 7 == 0)
                counting.requestSnapshot([&](const SnapshotPtr& seen) { last = seen; });
            std::this_thread::sleep_until(start + milliseconds((block + 1) * blockMs));
        }
        counting.wait();
        const double seconds = processorSeconds() - before;
        counting.requestSnapshot([&](const SnapshotPtr& seen) { last = seen; });
        counting.wait();
        cores = seconds * 1e6 / static_cast<double>(last->allSymbols); // of 1 MBd
    }
    const auto torn = static_cast<double>(last->leftOut.tornTraces);
    state.counters["left out [%]"] = 100.0 * torn / (torn + static_cast<double>(last->allSymbols));
    state.counters["processor [cores]"] = cores;
}

/// Memory of the process, MB.
double memoryInUse()
{
    QFile status("/proc/self/statm");
    const bool isOpen = status.open(QIODevice::ReadOnly);
    const double pages = isOpen ? status.readAll().split(' ').at(1).toDouble() : 0.0;
    return pages * static_cast<double>(sysconf(_SC_PAGESIZE)) / (1024.0 * 1024.0);
}

void countTenMillion(benchmark::State& state)
{
    const TraceShape shape = shapeOf(state);
    const std::vector<float> samples = makeTraces(shape);
    constexpr std::size_t symbols = 10'000'000;
    const double memory = memoryInUse();
    for ([[maybe_unused]] auto _ : state) {
        Counter counter(settingsOf(shape));
        double start = processorSeconds();
        for (std::size_t k = 0; k < symbols / traceCount; ++k)
            addAll(counter, samples, static_cast<std::size_t>(shape.sampleCount));
        state.counters["counting [s]"] = processorSeconds() - start;
        state.counters["memory [MB]"] = memoryInUse() - memory;
        start = processorSeconds();
        benchmark::DoNotOptimize(EyeFigures::of(counter.kept(), shape));
        state.counters["all figures of an eye [s]"] = processorSeconds() - start;
    }
}

void perTrace(benchmark::internal::Benchmark* benchmark)
{
    benchmark->Arg(33)->Arg(17)->Iterations(21)->UseManualTime()->Unit(benchmark::kNanosecond);
}
BENCHMARK_CAPTURE(count, runs, false)->Name("density, a trace counted/ours")->Apply(perTrace);
BENCHMARK_CAPTURE(count, cells, true)
    ->Name("density, a trace counted, beside its cells/ours")
    ->Apply(perTrace);
BENCHMARK(countAgain)->Name("density, counted again/ours")->Arg(33)->Iterations(11);
BENCHMARK(paintPlot)->Name("density painted/ours")->Arg(33)->Iterations(21)->UseManualTime();
BENCHMARK(makePicture)->Name("density, picture/ours")->Arg(33)->Iterations(51)->UseManualTime();
BENCHMARK(countLive)->Name("density, 1 MBd/ours")->Arg(17)->Iterations(1);
BENCHMARK(countTenMillion)->Name("density, ten million symbols/ours")->Arg(17)->Iterations(1);

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
