// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
// Cost of a step line, each beside a peer or a floor measured in the same run; the counter is the
// peer's time divided by ours:
//   drawing   against one QPainter polyline through all levels, with GL and into a picture;
//   SetData   against a copy of the levels and one pass for their extremes.
#include "platform/glbase/GLCommonWidget.h"
#include "platform/glbase/GLLayout.h"
#include "platform/glbase/GLPainter.h"
#include "platform/glbase/Renderer.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QImage>
#include <QOpenGLContext>
#include <QOpenGLFunctions>
#include <QPainter>

#include <algorithm>
#include <functional>
#include <limits>
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

/// Seconds that a call takes, the best of three.
double secondsOf(const std::function<void()>& call)
{
    double best = std::numeric_limits<double>::max();
    for (int i = 0; i < 3; ++i) {
        QElapsedTimer timer;
        timer.start();
        call();
        best = std::min(best, static_cast<double>(timer.nsecsElapsed()) / 1e9);
    }
    return best;
}

/// Runs a call in the loop of a benchmark, and counts how much longer the peer takes.
void compare(benchmark::State& state, const char* name, const std::function<void()>& peer,
             const std::function<void()>& call)
{
    const double peerSeconds = secondsOf(peer);
    QElapsedTimer timer;
    timer.start();
    for ([[maybe_unused]] auto _ : state)
        call();
    const double seconds = static_cast<double>(timer.nsecsElapsed()) / 1e9;
    state.counters[name] = peerSeconds * static_cast<double>(state.iterations()) / seconds;
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

struct Plot : GLCommonWidget
{
    Plot()
        : GLCommonWidget("Plot", nullptr)
    {}
    void paintEvent(QPaintEvent*) override
    {
        GLPainter painter(GetFrameWidget());
        paint(*painter.painter());
    }
    std::function<void(QPainter&)> paint;
};

/// @param finish  makes sure that what was drawn is there.
void drawAndCompare(benchmark::State& state, GLFrameWidget& frame, QPainter& painter,
                    const std::function<void()>& finish)
{
    const std::vector<unsigned char> values = levels(state);
    GLStepLine line;
    line.SetLineStyle(GLLineStyle(lsSolid, 1, Qt::white));
    line.SetDestRect(0, 0, width, height);
    line.SetData(values.data(), values.size());
    QPolygonF points;
    for (std::size_t i = 0; i < values.size(); ++i) {
        const double y = height - 1 - values[i] * (height - 1) / 255.0;
        points << QPointF(static_cast<double>(i * width) / static_cast<double>(values.size()), y);
    }
    const auto polyline = [&] {
        painter.setPen(Qt::white);
        painter.drawPolyline(points);
        finish();
    };
    compare(state, "polyline/ours", polyline, [&] {
        frame.DrawStepLine(line);
        finish();
    });
}

void draw(benchmark::State& state, bool isGl)
{
    GLLayout frame;
    const auto plot = std::make_shared<Plot>();
    frame.AddWidget(plot);
    frame.resize(width, height);
    bool isDone = false; // further paints of the frame draw nothing
    plot->paint = [&](QPainter& painter) {
        if (std::exchange(isDone, true))
            return;
        drawAndCompare(state, frame, painter, [&] {
            if (!isGl)
                return;
            painter.beginNativePainting();
            QOpenGLContext::currentContext()->functions()->glFinish();
            painter.endNativePainting();
        });
    };
    if (isGl) {
        frame.grabFramebuffer();
    } else {
        QImage image(width, height, QImage::Format_RGB32);
        QPainter painter(&image);
        frame.Render(painter);
    }
    if (!isDone)
        state.SkipWithError("nothing was painted");
}

void drawWithGl(benchmark::State& state) { draw(state, true); }
void drawIntoPicture(benchmark::State& state) { draw(state, false); }

void setData(benchmark::State& state)
{
    const std::vector<unsigned char> values = levels(state);
    std::vector<unsigned char> copy;
    GLStepLine line;
    const auto floor = [&] {
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
    };
    compare(state, "floor/ours", floor, [&] {
        line.SetData(values.data(), values.size());
        benchmark::DoNotOptimize(line.Levels().data());
    });
}

// A fixed number of iterations, because the peer runs anew whenever the number changes. Most
// columns hold no step at the smallest size, each holds hundreds of levels at the largest.
BENCHMARK(drawWithGl)
    ->RangeMultiplier(10)
    ->Range(10, 1'000'000)
    ->Iterations(30)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(drawIntoPicture)
    ->RangeMultiplier(10)
    ->Range(10, 1'000'000)
    ->Iterations(30)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(setData)->RangeMultiplier(10)->Range(1'000, 1'000'000)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    Renderer::Want(Renderer::Wish::OpenGL);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
