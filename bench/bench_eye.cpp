// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
// Cost of a paint of the eye diagram, 800 x 600 pixels, beside two plotting libraries that draw the
// same traces in the same run; each counter is the peer's time divided by ours:
//   afresh     everything anew, as after a change of the Y range;
//   oneTrace   one new trace, which pushes the oldest out. The peers draw everything again.
// Of an eye with two levels and of noise. The peers draw neither labels nor antialiased.
#include "eye/GLEyeDiagram.h"
#include "platform/glwidgets/XAxisWidget.h"
#include "platform/gui/ColorSet.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QImage>
#include <QPainter>
#include <QSpinBox>

#include <qcustomplot.h>
#include <qwt_plot_curve.h>
#include <qwt_scale_map.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <memory>
#include <random>
#include <vector>

namespace {

constexpr int plotWidth = 800;
constexpr int plotHeight = 600;
constexpr int samplesPerTrace = 100;
constexpr int bufferSize = 10000;
constexpr int traceCount = bufferSize / (samplesPerTrace + 1);

using Trace = std::vector<double>;

enum Signal { twoLevels, noise };

std::vector<Trace> traces(Signal signal)
{
    std::mt19937 random(1);
    std::normal_distribution<double> normal(0.0, signal == noise ? 0.4 : 0.02);
    std::vector<Trace> result(traceCount, Trace(samplesPerTrace));
    double level = 1.0;
    for (Trace& trace : result) {
        for (int i = 0; i < samplesPerTrace; ++i) {
            double value = 0.0;
            if (signal == twoLevels) {
                // Two symbols a trace, a transition in the first quarter of each.
                constexpr int half = samplesPerTrace / 2;
                static double next = 1.0;
                if (i % half == 0) {
                    level = next;
                    next = random() % 2 ? 0.7 : -0.7;
                }
                const double progress = std::min(1.0, 4.0 * (i % half) / half);
                value = level + (next - level) * 0.5 * (1.0 - std::cos(M_PI * progress));
            }
            trace[static_cast<std::size_t>(i)] = value + normal(random);
        }
    }
    return result;
}

double position(int sample) { return sample / (1.001 * (samplesPerTrace - 1)); }

QColor color(IColorBase::ECOLOR number) { return ColorSet::Instance()[number]; }

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

class QwtPeer : public QWidget
{
public:
    explicit QwtPeer(const std::vector<Trace>& signal)
    {
        resize(plotWidth, plotHeight);
        QVector<double> x;
        for (int i = 0; i < samplesPerTrace; ++i)
            x.append(position(i));
        for (const Trace& trace : signal) {
            m_curves.push_back(std::make_unique<QwtPlotCurve>());
            m_curves.back()->setPen(color(IColorBase::colEyeTrace));
            m_curves.back()->setSamples(x, QVector<double>(trace.begin(), trace.end()));
        }
        m_x.setScaleInterval(0.0, 1.0);
        m_x.setPaintInterval(0.0, plotWidth - 1.0);
        m_y.setScaleInterval(-1.0, 1.0);
        m_y.setPaintInterval(plotHeight - 1.0, 0.0);
    }
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        QLinearGradient gradient(0.0, -plotHeight, 0.0, plotHeight);
        gradient.setColorAt(0.0, color(IColorBase::colEyeBackground));
        gradient.setColorAt(1.0, color(IColorBase::colEyeBackgroundEnd));
        painter.fillRect(rect(), gradient);
        painter.setPen(color(IColorBase::colGrid));
        for (int i = 0; i <= 10; ++i)
            painter.drawLine(i * (plotWidth - 1) / 10, 0, i * (plotWidth - 1) / 10, plotHeight - 1);
        for (int i = 0; i <= 4; ++i)
            painter.drawLine(0, i * (plotHeight - 1) / 4, plotWidth - 1, i * (plotHeight - 1) / 4);
        for (const auto& curve : m_curves)
            curve->draw(&painter, m_x, m_y, rect());
    }

private:
    std::vector<std::unique_ptr<QwtPlotCurve>> m_curves;
    QwtScaleMap m_x;
    QwtScaleMap m_y;
};

std::unique_ptr<QCustomPlot> customPlot(const std::vector<Trace>& signal)
{
    auto plot = std::make_unique<QCustomPlot>();
    plot->resize(plotWidth, plotHeight);
    plot->setViewport(plot->rect());
    plot->setNotAntialiasedElements(QCP::aeAll);
    plot->axisRect()->setAutoMargins(QCP::msNone);
    plot->axisRect()->setMargins({});
    plot->setBackground(color(IColorBase::colEyeBackground));
    plot->xAxis->setRange(0.0, 1.0);
    plot->yAxis->setRange(-1.0, 1.0);
    auto* curve = new QCPCurve(plot->xAxis, plot->yAxis);
    curve->setPen(color(IColorBase::colEyeTrace));
    QVector<double> x;
    QVector<double> y;
    for (const Trace& trace : signal) {
        for (int i = 0; i < samplesPerTrace; ++i) {
            x.append(position(i));
            y.append(trace[static_cast<std::size_t>(i)]);
        }
        x.append(position(samplesPerTrace));
        y.append(std::numeric_limits<double>::quiet_NaN());
    }
    curve->setData(x, y);
    return plot;
}

struct Eye
{
    GLEyeDiagram diagram{nullptr};
    std::shared_ptr<XAxisWidget> xAxis = std::make_shared<XAxisWidget>("XAxis", nullptr);

    explicit Eye(std::vector<Trace>& signal)
    {
        diagram.resize(plotWidth, plotHeight);
        xAxis->SetLength(plotWidth);
        diagram.setXAxisWidget(xAxis);
        IHasPropertyPage& pages = diagram;
        const std::unique_ptr<QWidget> page(pages.GetPropertyPage(nullptr, "page"));
        page->findChild<QSpinBox*>()->setValue(bufferSize);
        diagram.slotAcceptPropertyChanges();
        for (Trace& trace : signal)
            diagram.AddData(trace);
        paint(diagram);
    }
};

/// Median seconds of a call.
double secondsOf(const std::function<void()>& call)
{
    std::vector<double> times;
    for (int i = 0; i < 21; ++i) {
        QElapsedTimer timer;
        timer.start();
        call();
        times.push_back(static_cast<double>(timer.nsecsElapsed()) / 1e9);
    }
    std::nth_element(times.begin(), times.begin() + 10, times.end());
    return times[10];
}

/// Runs a call in the loop of a benchmark, and counts how much longer the peers take.
void compare(benchmark::State& state, const std::vector<Trace>& signal,
             const std::function<void()>& call)
{
    QwtPeer qwt(signal);
    const double qwtSeconds = secondsOf([&] { paint(qwt); });
    const auto plot = customPlot(signal);
    QPixmap pixmap(plotWidth, plotHeight);
    QCPPainter plotPainter(&pixmap);
    const double plotSeconds =
        secondsOf([&] { plot->toPainter(&plotPainter, plotWidth, plotHeight); });

    QElapsedTimer timer;
    timer.start();
    for ([[maybe_unused]] auto _ : state)
        call();
    const double seconds =
        static_cast<double>(timer.nsecsElapsed()) / 1e9 / static_cast<double>(state.iterations());
    state.counters["qwt/ours"] = qwtSeconds / seconds;
    state.counters["qcustomplot/ours"] = plotSeconds / seconds;
}

void afresh(benchmark::State& state, Signal kind)
{
    std::vector<Trace> signal = traces(kind);
    Eye eye(signal);
    bool wide = false;
    compare(state, signal, [&] {
        eye.diagram.SetYStop(wide ? 1.0 : 1.01);
        wide = !wide;
        paint(eye.diagram);
    });
}

void oneTrace(benchmark::State& state, Signal kind)
{
    std::vector<Trace> signal = traces(kind);
    Eye eye(signal);
    std::size_t next = 0;
    compare(state, signal, [&] {
        eye.diagram.AddData(signal[next++ % signal.size()]);
        paint(eye.diagram);
    });
}

BENCHMARK_CAPTURE(afresh, two_levels, twoLevels)
    ->Name("eye afresh, two levels/ours")
    ->Iterations(200)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(afresh, noise, noise)
    ->Name("eye afresh, noise/ours")
    ->Iterations(200)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(oneTrace, two_levels, twoLevels)
    ->Name("eye after one trace, two levels/ours")
    ->Iterations(500)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(oneTrace, noise, noise)
    ->Name("eye after one trace, noise/ours")
    ->Iterations(500)
    ->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
