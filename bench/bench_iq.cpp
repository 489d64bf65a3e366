// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
// Cost of a paint of the IQ diagram with 100 data sets. Counters, of the best of all runs:
//   whole     ours against a paint of the empty plot and bare OpenGL calls for the points;
//   points    what the points cost us, against these calls alone;
//   bare_us   these calls.
// All draw the same points with the same context, in turns. And of a paint by the processor into
// a picture with one data set that is new, beside QPainter, a plotting library, and one pass over
// the floats that writes pixels over a ground made before.
#include "PainterName.h"
#include "Signals.h"
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
#include <cstring>
#include <limits>
#include <memory>
#include <vector>

#include <GL/gl.h>

namespace {

constexpr int side = 400;

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
    const auto points = drawn::constellation(static_cast<std::size_t>(state.range(0)));
    const std::vector<std::vector<float>> records(drawn::recordCount, points);
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
    for (int i = 0; i <= drawn::recordCount; ++i) {
        ours->AddData(samples);
        samples = points;
    }
    for ([[maybe_unused]] auto _ : state) {
        // Younger than the paint before, so that all are drawn; the samples go round.
        for (int i = 0; i < drawn::recordCount; ++i)
            ours->AddData(samples);
        frame.grabFramebuffer();
        state.SetIterationTime(ours->last);
    }
    state.SetLabel(painterName(frame));
    state.counters["whole"] = ours->best / plotWithBare->best;
    state.counters["points"] = (ours->best - plot->best) / bare->best;
    state.counters["bare_us"] = bare->best * 1e6;
    for (const auto& diagram : {ours, plotWithBare, bare, plot})
        frame.RemoveWidget(*diagram);
}

BENCHMARK(paint)
    ->Name("IQ paint with OpenGL, 100 x/ours")
    ->Arg(100)
    ->Arg(1'000)
    ->Arg(10'000)
    ->Iterations(10)
    ->UseManualTime()
    ->Unit(benchmark::kMicrosecond);

/// Paints all data sets into a picture again and again.
template<class Paint>
void paintAgain(benchmark::State& state, const Paint& paintInto)
{
    QImage image(side, side, QImage::Format_RGB32);
    for ([[maybe_unused]] auto _ : state) {
        paintInto(image);
        benchmark::ClobberMemory();
    }
}

struct Plot
{
    GLLayout frame;
    std::shared_ptr<XAxisWidget> xAxis = std::make_shared<XAxisWidget>("XAxis", nullptr);
    std::shared_ptr<GLIQDiagram> diagram = std::make_shared<GLIQDiagram>("IQDiagram", &frame);

    Plot()
    {
        xAxis->SetLength(side);
        diagram->setXAxisWidget(xAxis);
        diagram->SetAgesByData(true);
        frame.AddWidget(diagram);
        frame.resize(side, side);
        xAxis->SetRange(-1.0, 1.0);
        diagram->SetYStart(-1.0);
        diagram->SetYStop(1.0);
    }
    ~Plot() { frame.RemoveWidget(*diagram); }
    void paint(QImage& picture)
    {
        QPainter painter(&picture);
        frame.Render(painter);
    }
};

std::vector<float> pointsOf(const benchmark::State& state)
{
    return drawn::constellation(static_cast<std::size_t>(state.range(0)));
}

void paintPixels(benchmark::State& state)
{
    Plot plot;
    std::vector<float> points = pointsOf(state);
    for (int i = 0; i <= drawn::recordCount; ++i)
        plot.diagram->AddData(points.data(), points.size());
    paintAgain(state, [&](QImage& image) {
        plot.diagram->AddData(points); // the newest goes, the oldest comes back
        plot.paint(image);
    });
    state.SetLabel("raster"); // pictures are, whatever windows are painted with
}

QImage emptyPlot()
{
    QImage ground(side, side, QImage::Format_RGB32);
    Plot().paint(ground);
    return ground;
}

void paintPass(benchmark::State& state)
{
    const QImage ground = emptyPlot();
    const std::vector<std::vector<float>> records(drawn::recordCount, pointsOf(state));
    const QRgb color = ColorSet::Instance()[IColorBase::colIQPoint].rgb();
    paintAgain(state, [&](QImage& image) {
        auto* pixels = reinterpret_cast<QRgb*>(image.bits());
        std::memcpy(pixels, ground.constBits(), static_cast<std::size_t>(ground.sizeInBytes()));
        constexpr float half = side / 2.0F;
        for (const std::vector<float>& record : records) {
            for (std::size_t i = 1; i < record.size(); i += 2) {
                const float x = half + record[i - 1] * half;
                const float y = half - record[i] * half;
                if (x >= 0.0F && x < side && y >= 0.0F && y < side)
                    pixels[static_cast<int>(y) * side + static_cast<int>(x)] = color;
            }
        }
    });
}

void paintQPainter(benchmark::State& state)
{
    const QImage ground = emptyPlot();
    const std::vector<float> samples = pointsOf(state);
    std::vector<QPointF> points;
    for (int record = 0; record < drawn::recordCount; ++record)
        for (std::size_t i = 1; i < samples.size(); i += 2)
            points.emplace_back(double{samples[i - 1]}, double{samples[i]});
    std::vector<QPointF> pixels(points.size());
    paintAgain(state, [&](QImage& image) {
        constexpr double half = side / 2.0;
        std::transform(points.begin(), points.end(), pixels.begin(), [&](const QPointF& point) {
            return QPointF(half + point.x() * half, half - point.y() * half);
        });
        QPainter painter(&image);
        painter.drawImage(0, 0, ground);
        painter.setPen(ColorSet::Instance()[IColorBase::colIQPoint]);
        painter.drawPoints(pixels.data(), static_cast<int>(pixels.size()));
    });
}

void paintPeer(benchmark::State& state, std::unique_ptr<PeerPlot> plot)
{
    if (plot)
        paintAgain(state, [&](QImage& image) { plot->paint(image); });
    else
        state.SkipWithError("not installed");
}

PeerSignal signalForPeers(const benchmark::State& state)
{
    return drawn::constellationForPeers(static_cast<std::size_t>(state.range(0)));
}
void paintQwt(benchmark::State& state) { paintPeer(state, makeQwtPlot(signalForPeers(state))); }
void paintQwtBuffered(benchmark::State& state)
{
    paintPeer(state, makeQwtPlot(signalForPeers(state), true));
}

void perPaint(benchmark::internal::Benchmark* benchmark)
{
    for (const int count : {100, 1'000, 10'000})
        benchmark->Arg(count);
    benchmark->Unit(benchmark::kMicrosecond)->MeasureProcessCPUTime();
}
BENCHMARK(paintPixels)->Name("IQ paint, 100 x/ours")->Apply(perPaint);
BENCHMARK(paintPass)->Name("IQ paint, 100 x/floor")->Apply(perPaint);
BENCHMARK(paintQPainter)->Name("IQ paint, 100 x/QPainter")->Apply(perPaint);
BENCHMARK(paintQwt)->Name("IQ paint, 100 x/Qwt")->Apply(perPaint);
BENCHMARK(paintQwtBuffered)->Name("IQ paint, 100 x/Qwt by image buffer")->Apply(perPaint);

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    Renderer::Want(Renderer::Wish::OpenGL);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
