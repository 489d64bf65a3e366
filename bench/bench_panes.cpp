// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
// The whole cost of a view in a window of 800 x 600 pixels, from a change to the last pixel: axes,
// caption, ruler, and what Qt takes to bring it to the screen. Beside windows of two plotting
// libraries with axes, which paint all of the same signal anew. With the renderer of
// ORVANE_RENDERER.
#include "PainterName.h"
#include "Signals.h"
#include "iq/GLIQDiagram.h"
#include "platform/glbase/Renderer.h"
#include "views/VCGLEyeDiagram.h"
#include "views/VCGLIQDiagram.h"
#include "views/VCGLTimeDiagram.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QWindow>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace {

constexpr std::size_t samplesPerRecord = 1000;

void show(QWidget& window)
{
    window.resize(800, 600);
    window.show();
    while (!window.windowHandle()->isExposed())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    QCoreApplication::processEvents();
}

void loop(benchmark::State& state, const std::function<void()>& change)
{
    for ([[maybe_unused]] auto _ : state) {
        change();
        QCoreApplication::processEvents(); // paints what is to be painted, once
    }
}

void peer(benchmark::State& state, std::unique_ptr<PeerPlot> plot)
{
    if (!plot) {
        state.SkipWithError("not installed");
        return;
    }
    show(plot->window());
    loop(state, [&] { plot->replot(); });
}

void timeOneSet(benchmark::State& state)
{
    VCGLTimeDiagram view;
    view.SetBaudrate(1.0);
    view.SetXAxisRange(-double(drawn::recordCount * samplesPerRecord), 0.0);
    view.SetYAxisRange(-2.0, 2.0);
    show(view);
    const std::vector<double> samples = drawn::square(samplesPerRecord);
    for (int i = 0; i < drawn::recordCount; ++i)
        view.FillData(samples.data(), samples.size(), true);
    loop(state, [&] { view.FillData(samples.data(), samples.size(), true); });
    state.SetLabel(painterName(view));
}

void iqOneSet(benchmark::State& state)
{
    VCGLIQDiagram view;
    view.GetDiagram()->SetAgesByData(true); // no data set is old
    view.SetXAxisRange(-1.0, 1.0);
    view.SetYAxisRange(-1.0, 1.0);
    show(view);
    const std::vector<float> points = drawn::constellation(samplesPerRecord);
    for (int i = 0; i < drawn::recordCount; ++i)
        view.AddData(points.data(), points.size());
    loop(state, [&] {
        view.AddData(points.data(), points.size());
        view.UpdateContent();
    });
    state.SetLabel(painterName(view));
}

struct Eye
{
    explicit Eye(drawn::Eye kind)
        : traces(drawn::eye(kind))
    {
        view.SetBufferSize(drawn::eyeBufferSize);
        view.SetYAxisRange(-1.0, 1.0);
        show(view);
        for (const std::vector<double>& trace : traces)
            view.FillData(trace.data(), trace.size(), true);
        QCoreApplication::processEvents();
    }
    std::vector<std::vector<double>> traces;
    VCGLEyeDiagram view;
};

void eyeAfresh(benchmark::State& state, drawn::Eye kind)
{
    Eye eye(kind);
    bool isOther = false;
    loop(state, [&] {
        isOther = !isOther;
        eye.view.SetYAxisRange(-1.0, isOther ? 1.01 : 1.0);
    });
    state.SetLabel(painterName(eye.view));
}

void eyeOneTrace(benchmark::State& state, drawn::Eye kind)
{
    Eye eye(kind);
    std::size_t next = 0;
    loop(state, [&] {
        const std::vector<double>& trace = eye.traces[next++ % eye.traces.size()];
        eye.view.FillData(trace.data(), trace.size(), true);
    });
    state.SetLabel(painterName(eye.view));
}

using Run = std::function<void(benchmark::State&)>;

void measure(const std::string& name, const Run& ours,
             const std::function<PeerSignal()>& signalForPeers)
{
    const std::string renderer =
        Renderer::Current() == Renderer::Kind::OpenGL ? " with OpenGL" : std::string();
    const auto add = [&](const char* role, const Run& run) {
        const std::string full = "pane of " + name + renderer + "/" + role;
        benchmark::RegisterBenchmark(full.c_str(), run)
            ->Unit(benchmark::kMicrosecond)
            ->MeasureProcessCPUTime();
    };
    add("ours", ours);
    add("Qwt", [=](benchmark::State& state) { peer(state, makeQwtPlot(signalForPeers())); });
    add("QCustomPlot",
        [=](benchmark::State& state) { peer(state, makeCustomPlot(signalForPeers())); });
}

void measureEye(const std::string& name, void (*ours)(benchmark::State&, drawn::Eye))
{
    for (const drawn::Eye kind : {drawn::twoLevels, drawn::noise})
        measure(
            "eye " + name + (kind == drawn::noise ? ", noise" : ", two levels"),
            [=](benchmark::State& state) { ours(state, kind); },
            [=] { return drawn::eyeForPeers(kind); });
}

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    measure("time after one data set", timeOneSet,
            [] { return drawn::squareForPeers(samplesPerRecord, 2.0); });
    measure("IQ after one data set", iqOneSet,
            [] { return drawn::constellationForPeers(samplesPerRecord); });
    measureEye("afresh", eyeAfresh);
    measureEye("after one trace", eyeOneTrace);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
