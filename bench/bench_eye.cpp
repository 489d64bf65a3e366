// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
// Cost of a paint of the eye diagram, 800 x 600 pixels, beside two plotting libraries that draw the
// same traces:
//   afresh     everything anew, as after a change of the Y range;
//   oneTrace   one new trace, which pushes the oldest out. The peers draw everything again.
// Of an eye with two levels and of noise. The peers draw neither labels nor antialiased.
#include "Signals.h"
#include "eye/GLEyeDiagram.h"
#include "platform/glwidgets/XAxisWidget.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QImage>
#include <QPainter>

#include <memory>
#include <string>
#include <vector>

namespace {

constexpr int plotWidth = 800;
constexpr int plotHeight = 600;
using Traces = std::vector<std::vector<double>>;

QImage& canvas()
{
    static QImage image(plotWidth, plotHeight, QImage::Format_RGB32);
    return image;
}

void paint(QWidget& widget)
{
    QPainter painter(&canvas());
    widget.render(&painter, {}, {}, QWidget::RenderFlags());
}

struct Eye
{
    GLEyeDiagram diagram{nullptr};
    std::shared_ptr<XAxisWidget> xAxis = std::make_shared<XAxisWidget>("XAxis", nullptr);

    explicit Eye(Traces& signal)
    {
        diagram.resize(plotWidth, plotHeight);
        xAxis->SetLength(plotWidth);
        diagram.setXAxisWidget(xAxis);
        diagram.SetBufferSize(drawn::eyeBufferSize);
        for (std::vector<double>& trace : signal)
            diagram.AddData(trace);
        paint(diagram);
    }
};

void afresh(benchmark::State& state, drawn::Eye kind)
{
    Traces signal = drawn::eye(kind);
    Eye eye(signal);
    bool isOther = false;
    for ([[maybe_unused]] auto _ : state) {
        isOther = !isOther;
        eye.diagram.SetYStop(isOther ? 1.01 : 1.0);
        paint(eye.diagram);
    }
    state.SetLabel("raster"); // the diagram is a widget without OpenGL
}

void oneTrace(benchmark::State& state, drawn::Eye kind)
{
    Traces signal = drawn::eye(kind);
    Eye eye(signal);
    std::size_t next = 0;
    for ([[maybe_unused]] auto _ : state) {
        eye.diagram.AddData(signal[next++ % signal.size()]);
        paint(eye.diagram);
    }
    state.SetLabel("raster");
}

template<class Make>
void peer(benchmark::State& state, drawn::Eye kind, const Make& make)
{
    const std::unique_ptr<PeerPlot> plot = make(drawn::eyeForPeers(kind));
    if (!plot) {
        state.SkipWithError("not installed");
        return;
    }
    bool isOther = false;
    for ([[maybe_unused]] auto _ : state) {
        isOther = !isOther;
        plot->setYRange(-1.0, isOther ? 1.01 : 1.0);
        plot->paint(canvas());
    }
}

void measure(const std::string& name, void (*ours)(benchmark::State&, drawn::Eye), drawn::Eye kind)
{
    const auto add = [&](const char* role, const auto& run) {
        const std::string full = "eye " + name + "/" + role;
        benchmark::RegisterBenchmark(full.c_str(), run)
            ->Unit(benchmark::kMicrosecond)
            ->MeasureProcessCPUTime();
    };
    add("ours", [=](benchmark::State& state) { ours(state, kind); });
    add("Qwt", [=](benchmark::State& state) {
        peer(state, kind, [](const PeerSignal& signal) { return makeQwtPlot(signal); });
    });
    add("QCustomPlot", [=](benchmark::State& state) { peer(state, kind, makeCustomPlot); });
}

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    measure("afresh, two levels", afresh, drawn::twoLevels);
    measure("afresh, noise", afresh, drawn::noise);
    measure("after one trace, two levels", oneTrace, drawn::twoLevels);
    measure("after one trace, noise", oneTrace, drawn::noise);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
