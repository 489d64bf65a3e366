// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
// Cost of the time diagram, each beside a floor or a peer measured in the same run:
//   AddData   against a plain pass that finds the extent and writes one level for each sample;
//   a paint   against QPainter polylines through the same samples, both into a picture.
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
#include <random>
#include <vector>

namespace {

constexpr int recordCount = 100;
constexpr int width = 1280;
constexpr int height = 300;

std::vector<double> signal(std::size_t count)
{
    std::mt19937 generator(1);
    std::normal_distribution<double> noise(0.0, 0.2);
    std::vector<double> samples(count);
    for (std::size_t i = 0; i < count; ++i)
        samples[i] = (i / 10 % 2 ? 1.0 : -1.0) + noise(generator);
    return samples;
}

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
        diagram->SetBaudrate(1.0F);
        diagram->SetYStart(-2.0);
        diagram->SetYStop(2.0);
        xAxis->SetRange(-double(samplesPerRecord * recordCount), 0.0);
        for (int i = 0; i < recordCount; ++i) {
            std::vector<double> samples = signal(samplesPerRecord);
            diagram->AddData(samples);
        }
    }
    ~Plot() { frame.RemoveWidget(*diagram); }
};

void addData(benchmark::State& state)
{
    const auto count = static_cast<std::size_t>(state.range(0));
    Plot plot(count);
    // From the 101st data set on, each call hands the samples of a recycled record back.
    std::vector<double> samples = signal(count);
    plot.diagram->AddData(samples);
    samples = signal(count);
    for (int i = 0; i <= recordCount; ++i) // each record has its memory then
        plot.diagram->AddData(samples);
    for ([[maybe_unused]] auto _ : state)
        plot.diagram->AddData(samples);
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void addDataFloor(benchmark::State& state)
{
    const std::vector<double> samples = signal(static_cast<std::size_t>(state.range(0)));
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
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void paint(benchmark::State& state)
{
    Plot plot(static_cast<std::size_t>(state.range(0)));
    QImage image(width, height, QImage::Format_RGB32);
    for ([[maybe_unused]] auto _ : state) {
        QPainter painter(&image);
        plot.frame.Render(painter);
    }
}

void paintPolylines(benchmark::State& state)
{
    const std::vector<double> samples = signal(static_cast<std::size_t>(state.range(0)));
    const double recordWidth = double(width) / recordCount;
    QPolygonF points(static_cast<int>(samples.size()));
    QImage image(width, height, QImage::Format_RGB32);
    for ([[maybe_unused]] auto _ : state) {
        image.fill(Qt::black);
        QPainter painter(&image);
        painter.setPen(Qt::white);
        for (int record = 0; record < recordCount; ++record) {
            for (int i = 0; i < points.size(); ++i)
                points[i] =
                    QPointF(record * recordWidth + i * recordWidth / points.size(),
                            height / 2.0 - samples[static_cast<std::size_t>(i)] * height / 4.0);
            painter.drawPolyline(points);
        }
    }
}

BENCHMARK(addData)->Name("time AddData/ours")->Arg(100)->Arg(10'000)->Arg(1'000'000);
BENCHMARK(addDataFloor)->Name("time AddData/floor")->Arg(100)->Arg(10'000)->Arg(1'000'000);
BENCHMARK(paint)
    ->Name("time paint/ours")
    ->Arg(10)
    ->Arg(1000)
    ->Arg(100000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(paintPolylines)
    ->Name("time paint/QPainter")
    ->Arg(10)
    ->Arg(1000)
    ->Arg(100000)
    ->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
