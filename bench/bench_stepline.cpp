// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
// Cost of a step line:
//   drawing   beside one QPainter polyline through all levels, with OpenGL and into a picture;
//   SetData   beside a copy of the levels and one pass for their extremes.
#include "PainterName.h"
#include "platform/glbase/GLCommonWidget.h"
#include "platform/glbase/GLLayout.h"
#include "platform/glbase/GLPainter.h"
#include "platform/glbase/Renderer.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QImage>
#include <QOpenGLContext>
#include <QOpenGLFunctions>
#include <QPainter>

#include <algorithm>
#include <functional>
#include <memory>
#include <random>
#include <utility>
#include <vector>

namespace {

constexpr int width = 1280;
constexpr int height = 300;

std::vector<unsigned char> levels(benchmark::State& state)
{
    std::mt19937 generator(1);
    std::normal_distribution<double> noise(0.0, 12.0);
    std::vector<unsigned char> result(static_cast<std::size_t>(state.range(0)));
    for (std::size_t i = 0; i < result.size(); ++i) {
        const double level = (i / 10 % 2 ? 190.0 : 60.0) + noise(generator);
        result[i] = static_cast<unsigned char>(std::clamp(level, 0.0, 255.0));
    }
    return result;
}

struct Plot : GLCommonWidget
{
    Plot()
        : GLCommonWidget("Plot", nullptr)
    {}
    void paintEvent(QPaintEvent*) override
    {
        GLPainter painter(GetFrameWidget());
        paint(*painter.qtPainter());
    }
    std::function<void(QPainter&)> paint;
};

QPolygonF polylineOf(const std::vector<unsigned char>& values)
{
    QPolygonF points;
    for (std::size_t i = 0; i < values.size(); ++i) {
        const double y = height - 1 - values[i] * (height - 1) / 255.0;
        points << QPointF(static_cast<double>(i * width) / static_cast<double>(values.size()), y);
    }
    return points;
}

/// Runs a benchmark's loop while the only widget of a frame is painted.
void draw(benchmark::State& state, bool isGl,
          const std::function<void(GLFrameWidget&, QPainter&)>& call)
{
    GLLayout frame;
    const auto plot = std::make_shared<Plot>();
    frame.AddWidget(plot);
    frame.resize(width, height);
    bool isDone = false; // further paints of the frame draw nothing
    plot->paint = [&](QPainter& painter) {
        if (std::exchange(isDone, true))
            return;
        for ([[maybe_unused]] auto _ : state) {
            call(frame, painter);
            if (isGl) {
                painter.beginNativePainting();
                QOpenGLContext::currentContext()->functions()->glFinish();
                painter.endNativePainting();
            }
        }
    };
    if (isGl) {
        frame.grabFramebuffer();
        state.SetLabel(painterName(frame));
    } else {
        QImage image(width, height, QImage::Format_RGB32);
        QPainter painter(&image);
        frame.Render(painter);
        state.SetLabel("raster");
    }
    if (!isDone)
        state.SkipWithError("nothing was painted");
}

void drawStepLine(benchmark::State& state, bool isGl)
{
    const std::vector<unsigned char> values = levels(state);
    GLStepLine line;
    line.SetLineStyle(GLLineStyle(lsSolid, 1, Qt::white));
    line.SetDestRect(0, 0, width, height);
    line.SetData(values.data(), values.size());
    draw(state, isGl, [&](GLFrameWidget& frame, QPainter&) { frame.DrawStepLine(line); });
}

void drawPolyline(benchmark::State& state, bool isGl)
{
    const QPolygonF points = polylineOf(levels(state));
    draw(state, isGl, [&](GLFrameWidget&, QPainter& painter) {
        painter.setPen(Qt::white);
        painter.drawPolyline(points);
    });
}

void setData(benchmark::State& state)
{
    const std::vector<unsigned char> values = levels(state);
    GLStepLine line;
    for ([[maybe_unused]] auto _ : state) {
        line.SetData(values.data(), values.size());
        benchmark::DoNotOptimize(line.Levels().data());
    }
}

void setDataFloor(benchmark::State& state)
{
    const std::vector<unsigned char> values = levels(state);
    std::vector<unsigned char> copy;
    for ([[maybe_unused]] auto _ : state) {
        copy.assign(values.begin(), values.end());
        unsigned char low = 255;
        unsigned char high = 0;
        constexpr std::size_t chunk = 64; // a known count, which the compiler turns into vectors
        for (std::size_t i = 0; i + chunk <= copy.size(); i += chunk) {
            for (std::size_t k = i; k < i + chunk; ++k) {
                low = std::min(low, copy[k]);
                high = std::max(high, copy[k]);
            }
        }
        benchmark::DoNotOptimize(low);
        benchmark::DoNotOptimize(high);
    }
}

// Most columns hold no step at the smallest size, each holds hundreds of levels at the largest.
void perDrawing(benchmark::internal::Benchmark* benchmark)
{
    for (const int count : {10, 1'000, 100'000, 1'000'000})
        benchmark->Arg(count);
    benchmark->Unit(benchmark::kMicrosecond)->MeasureProcessCPUTime();
}
void perCopy(benchmark::internal::Benchmark* benchmark)
{
    for (const int count : {1'000, 100'000, 1'000'000})
        benchmark->Arg(count);
    benchmark->Unit(benchmark::kMicrosecond)->MeasureProcessCPUTime();
}
BENCHMARK_CAPTURE(drawStepLine, gl, true)->Name("step line with OpenGL/ours")->Apply(perDrawing);
BENCHMARK_CAPTURE(drawPolyline, gl, true)
    ->Name("step line with OpenGL/QPainter")
    ->Apply(perDrawing);
BENCHMARK_CAPTURE(drawStepLine, raster, false)->Name("step line/ours")->Apply(perDrawing);
BENCHMARK_CAPTURE(drawPolyline, raster, false)->Name("step line/QPainter")->Apply(perDrawing);
BENCHMARK(setData)->Name("step line taken/ours")->Apply(perCopy);
BENCHMARK(setDataFloor)->Name("step line taken/floor")->Apply(perCopy);

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    Renderer::Want(Renderer::Wish::OpenGL);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
