// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
// Cost of the time diagram, each beside a floor or peers:
//   AddData   beside a plain pass that finds the extent and writes one level for each sample;
//   a paint   of 100 data sets, all at new places, into a picture of 800 x 600, beside two plotting
//             libraries, and beside the same strokes from a list made before.
#include "Allocations.h"
#include "Prepared.h"
#include "Signals.h"
#include "platform/base/Saturate.h"
#include "platform/glbase/GLLayout.h"
#include "platform/glwidgets/XAxisWidget.h"
#include "time/GLTimeDiagram.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QImage>
#include <QPainter>

#include <algorithm>
#include <memory>
#include <vector>

namespace {

constexpr int width = 800;
constexpr int height = 600;
constexpr double yMax = 2.0;
constexpr float baudrate = 1.0F;
constexpr float otherBaudrate = 1.001F; // moves traces, but no grid

struct Plot
{
    GLLayout frame;
    std::shared_ptr<GLTimeDiagram> diagram = std::make_shared<GLTimeDiagram>("TimeDiagram");
    std::shared_ptr<XAxisWidget> xAxis = std::make_shared<XAxisWidget>("XAxis", nullptr);

    explicit Plot(std::size_t samplesPerRecord)
    {
        frame.resize(width, height);
        frame.AddWidget(diagram);
        diagram->setXAxisWidget(xAxis);
        diagram->SetBaudrate(baudrate);
        diagram->SetYStart(-yMax);
        diagram->SetYStop(yMax);
        xAxis->SetRange(-double(samplesPerRecord * drawn::recordCount), 0.0);
        const std::vector<double> samples = drawn::square(samplesPerRecord);
        for (int i = 0; i < drawn::recordCount; ++i)
            diagram->AddData(samples.data(), samples.size());
    }
    ~Plot() { frame.RemoveWidget(*diagram); }

    void paint(QImage& picture)
    {
        QPainter painter(&picture);
        frame.Render(painter);
    }
};

QImage canvas() { return {width, height, QImage::Format_RGB32}; }

void addData(benchmark::State& state)
{
    const auto count = static_cast<std::size_t>(state.range(0));
    Plot plot(count);
    // From the 101st data set on, each call hands the samples of a recycled record back.
    std::vector<double> samples = drawn::square(count);
    plot.diagram->AddData(samples);
    samples = drawn::square(count);
    for (int i = 0; i <= drawn::recordCount; ++i) // each record has its memory then
        plot.diagram->AddData(samples);
    const std::size_t before = allocationCount();
    plot.diagram->AddData(samples);
    state.counters["allocations"] = static_cast<double>(allocationCount() - before);
    for ([[maybe_unused]] auto _ : state)
        plot.diagram->AddData(samples);
}

void addDataFloor(benchmark::State& state)
{
    const std::vector<double> samples = drawn::square(static_cast<std::size_t>(state.range(0)));
    std::vector<unsigned char> levels(samples.size());
    for ([[maybe_unused]] auto _ : state) {
        float low = 1e35F;
        float high = -1e35F;
        for (const double sample : samples) {
            const auto value = static_cast<float>(sample);
            low = std::min(low, value);
            high = std::max(high, value);
        }
        const float step = (high - low) / 255.0F;
        for (std::size_t i = 0; i < samples.size(); ++i) {
            const float level = (static_cast<float>(samples[i]) - low) / step;
            levels[i] = truncateSaturated<unsigned char>(static_cast<double>(level));
        }
        benchmark::DoNotOptimize(levels.data());
        benchmark::ClobberMemory();
    }
}

void paint(benchmark::State& state)
{
    Plot plot(static_cast<std::size_t>(state.range(0)));
    QImage image = canvas();
    bool isOther = false;
    for ([[maybe_unused]] auto _ : state) {
        isOther = !isOther;
        plot.diagram->SetBaudrate(isOther ? otherBaudrate : baudrate);
        plot.paint(image);
    }
    state.SetLabel("raster"); // pictures are, whatever windows are painted with
}

void paintStrokes(benchmark::State& state)
{
    const auto prepare = [&state](float rate) {
        Plot plot(static_cast<std::size_t>(state.range(0)));
        plot.diagram->SetBaudrate(rate);
        QImage picture = canvas();
        plot.paint(picture);
        plot.diagram->Clear();
        QImage ground = canvas();
        plot.paint(ground);
        return Prepared(picture, ground);
    };
    const Prepared one = prepare(baudrate);
    const Prepared other = prepare(otherBaudrate);
    QImage image = canvas();
    bool isOther = false;
    for ([[maybe_unused]] auto _ : state) {
        isOther = !isOther;
        (isOther ? other : one).paint(image);
        benchmark::ClobberMemory();
    }
    state.counters["strokes"] = static_cast<double>(one.strokeCount());
}

template<class Make>
void paintPeer(benchmark::State& state, const Make& make)
{
    const auto count = static_cast<std::size_t>(state.range(0));
    const std::unique_ptr<PeerPlot> plot = make(drawn::squareForPeers(count, yMax));
    if (!plot) {
        state.SkipWithError("not installed");
        return;
    }
    QImage image = canvas();
    for ([[maybe_unused]] auto _ : state)
        plot->paint(image);
}

void paintQwt(benchmark::State& state)
{
    paintPeer(state, [](const PeerSignal& signal) { return makeQwtPlot(signal); });
}
void paintCustomPlot(benchmark::State& state) { paintPeer(state, makeCustomPlot); }

BENCHMARK(addData)
    ->Name("time AddData/ours")
    ->Arg(100)
    ->Arg(10'000)
    ->Arg(1'000'000)
    ->MeasureProcessCPUTime();
BENCHMARK(addDataFloor)
    ->Name("time AddData/floor")
    ->Arg(100)
    ->Arg(10'000)
    ->Arg(1'000'000)
    ->MeasureProcessCPUTime();

void perPaint(benchmark::internal::Benchmark* benchmark)
{
    for (const int count : {100, 1'000, 10'000, 100'000})
        benchmark->Arg(count);
    benchmark->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime();
}
BENCHMARK(paint)->Name("time paint, 100 x/ours")->Apply(perPaint);
BENCHMARK(paintStrokes)->Name("time paint, 100 x/floor")->Apply(perPaint);
BENCHMARK(paintQwt)->Name("time paint, 100 x/Qwt")->Apply(perPaint);
BENCHMARK(paintCustomPlot)->Name("time paint, 100 x/QCustomPlot")->Apply(perPaint);

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
