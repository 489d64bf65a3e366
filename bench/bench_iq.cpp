// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
// Cost of a paint of the IQ diagram with 100 data sets. Counters, of the best of all runs:
//   whole     ours against a paint of the empty plot and bare OpenGL calls for the points;
//   points    what the points cost us, against these calls alone;
//   bare_us   these calls.
// All draw the same points with the same context, in turns. And of a paint by the processor:
//   pass      ours against one pass over the floats that writes pixels over an empty ground.
#include "iq/GLIQDiagram.h"
#include "platform/glbase/GLLayout.h"
#include "platform/glbase/GLPainter.h"
#include "platform/glbase/Renderer.h"
#include "platform/glwidgets/XAxisWidget.h"
#include "platform/gui/ColorSet.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QImage>
#include <QPainter>

#include <algorithm>
#include <limits>
#include <memory>
#include <random>
#include <vector>

#include <GL/gl.h>

namespace {

constexpr int recordCount = 100;
constexpr int side = 400;

/// 16QAM with noise, I, Q, I, Q...
std::vector<float> constellation(std::size_t pointCount)
{
    std::mt19937 generator(1);
    std::uniform_int_distribution<int> level(0, 3);
    std::normal_distribution<float> noise(0.0F, 0.03F);
    std::vector<float> samples(2 * pointCount);
    for (float& sample : samples)
        sample = static_cast<float>(level(generator)) * 0.5F - 0.75F + noise(generator);
    return samples;
}

/// Draws all data sets like the diagram, by nothing but OpenGL calls.
void drawBare(GLFrameWidget& frame, const std::vector<std::vector<float>>& records)
{
    GLPainter painter(&frame);
    painter.beginNativePainting();
    glPushMatrix();
    glTranslated((side - 1) / 2, side - (side - 1) / 2, 0.0);
    glScaled(side / 2.0, -side / 2.0, 1.0);
    const QColor& color = ColorSet::Instance()[IColorBase::colIQPoint];
    glColor3ub(static_cast<GLubyte>(color.red()), static_cast<GLubyte>(color.green()),
               static_cast<GLubyte>(color.blue()));
    glPointSize(1.0F);
    glEnableClientState(GL_VERTEX_ARRAY);
    for (const std::vector<float>& samples : records) {
        glVertexPointer(2, GL_FLOAT, 0, samples.data());
        glDrawArrays(GL_POINTS, 0, static_cast<GLsizei>(samples.size() / 2));
    }
    glDisableClientState(GL_VERTEX_ARRAY);
    glPopMatrix();
}

/// A diagram that keeps the shortest time of its paints, to their last pixel.
struct Diagram : GLIQDiagram
{
    explicit Diagram(GLLayout& frame, const std::shared_ptr<XAxisWidget>& xAxis)
        : GLIQDiagram("IQDiagram", &frame)
    {
        setXAxisWidget(xAxis);
    }
    void paintEvent(QPaintEvent* event) override
    {
        glFinish();
        QElapsedTimer timer;
        timer.start();
        if (hasPlot)
            GLIQDiagram::paintEvent(event);
        if (barePoints)
            drawBare(*GetFrameWidget(), *barePoints);
        glFinish();
        last = static_cast<double>(timer.nsecsElapsed()) / 1e9;
        best = std::min(best, last);
    }
    bool hasPlot = true;
    const std::vector<std::vector<float>>* barePoints = nullptr;
    double last = 0.0; // s
    double best = std::numeric_limits<double>::max();
};

void paint(benchmark::State& state)
{
    GLLayout frame;
    const auto xAxis = std::make_shared<XAxisWidget>("XAxis", nullptr);
    xAxis->SetLength(side);
    const auto points = constellation(static_cast<std::size_t>(state.range(0)));
    const std::vector<std::vector<float>> records(recordCount, points);
    const auto add = [&](bool hasPlot, bool hasBarePoints) {
        auto diagram = std::make_shared<Diagram>(frame, xAxis);
        diagram->hasPlot = hasPlot;
        diagram->barePoints = hasBarePoints ? &records : nullptr;
        frame.AddWidget(diagram);
        return diagram;
    };
    const auto ours = add(true, false);
    const auto plotWithBare = add(true, true);
    const auto bare = add(false, true);
    const auto plot = add(true, false);
    frame.resize(side, 4 * side);

    std::vector<float> samples = points;
    for (int i = 0; i <= recordCount; ++i) {
        ours->AddData(samples);
        samples = points;
    }
    for ([[maybe_unused]] auto _ : state) {
        // Younger than the paint before, so that all are drawn; the samples go round.
        for (int i = 0; i < recordCount; ++i)
            ours->AddData(samples);
        frame.grabFramebuffer();
        state.SetIterationTime(ours->last);
    }
    state.counters["whole"] = ours->best / plotWithBare->best;
    state.counters["points"] = (ours->best - plot->best) / bare->best;
    state.counters["bare_us"] = bare->best * 1e6;
    for (const auto& diagram : {ours, plotWithBare, bare, plot})
        frame.RemoveWidget(*diagram);
}

BENCHMARK(paint)->Arg(100)->Arg(1'000)->Arg(10'000)->Iterations(100)->UseManualTime()->Unit(
    benchmark::kMicrosecond);

void paintPixels(benchmark::State& state)
{
    GLLayout frame;
    const auto xAxis = std::make_shared<XAxisWidget>("XAxis", nullptr);
    xAxis->SetLength(side);
    const auto diagram = std::make_shared<GLIQDiagram>("IQDiagram", &frame);
    diagram->setXAxisWidget(xAxis);
    diagram->SetAgesByData(true);
    frame.AddWidget(diagram);
    frame.resize(side, side);
    const auto points = constellation(static_cast<std::size_t>(state.range(0)));
    const std::vector<std::vector<float>> records(recordCount, points);
    for (const std::vector<float>& record : records)
        diagram->AddData(record.data(), record.size());
    QImage image(side, side, QImage::Format_RGB32);
    const auto secondsOf = [](const auto& call) {
        double best = std::numeric_limits<double>::max();
        for (int i = 0; i < 20; ++i) {
            QElapsedTimer timer;
            timer.start();
            call();
            best = std::min(best, static_cast<double>(timer.nsecsElapsed()) / 1e9);
        }
        return best;
    };
    const double pass = secondsOf([&] {
        auto* pixels = reinterpret_cast<QRgb*>(image.bits());
        std::fill_n(pixels, side * side, 0xff000000U);
        constexpr float half = side / 2.0F;
        for (const std::vector<float>& record : records) {
            for (std::size_t i = 1; i < record.size(); i += 2) {
                const float x = half + record[i - 1] * half;
                const float y = half - record[i] * half;
                if (x >= 0.0F && x < side && y >= 0.0F && y < side)
                    pixels[static_cast<int>(y) * side + static_cast<int>(x)] = 0xffffffffU;
            }
        }
        benchmark::DoNotOptimize(pixels);
    });
    const auto paintOnce = [&] {
        QPainter painter(&image);
        frame.Render(painter);
    };
    for ([[maybe_unused]] auto _ : state)
        paintOnce();
    state.counters["pass"] = secondsOf(paintOnce) / pass;
    frame.RemoveWidget(*diagram);
}

BENCHMARK(paintPixels)->Arg(100)->Arg(1'000)->Arg(10'000)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    Renderer::Want(Renderer::Wish::OpenGL);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
