// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "PeerPlot.h"

#include <QImage>
#include <QLinearGradient>
#include <QPainter>

#include <qwt_plot.h>
#include <qwt_plot_canvas.h>
#include <qwt_plot_curve.h>
#include <qwt_plot_grid.h>
#include <qwt_scale_map.h>

namespace {

class QwtPeer final : public PeerPlot
{
public:
    QwtPeer(const PeerSignal& signal, bool isBuffered)
        : m_signal(signal)
    {
        for (const PeerSignal::Trace& trace : m_signal.traces) {
            // Owned by the plot, which deletes what is attached.
            auto* curve = new QwtPlotCurve;
            curve->setPen(QColor(m_signal.trace), 1.0);
            curve->setPaintAttribute(QwtPlotCurve::FilterPoints, !isBuffered);
            curve->setPaintAttribute(QwtPlotCurve::ImageBuffer, isBuffered);
            if (m_signal.kind == PeerSignal::Kind::Points)
                curve->setStyle(QwtPlotCurve::Dots);
            curve->setRawSamples(trace.x.constData(), trace.y.constData(), trace.x.size());
            curve->attach(&m_plot);
            m_curves.push_back(curve);
        }
        auto* grid = new QwtPlotGrid;
        grid->setPen(QColor(m_signal.grid), 1.0);
        grid->attach(&m_plot);
        auto* canvas = new QwtPlotCanvas(&m_plot);
        canvas->setPaintAttribute(QwtPlotCanvas::BackingStore, false); // all of it changes
        canvas->setFrameStyle(QFrame::NoFrame);
        m_plot.setCanvas(canvas);
        m_plot.setAutoReplot(false);
        m_plot.setCanvasBackground(QColor(m_signal.ground));
        m_plot.setAxisScale(QwtPlot::xBottom, m_signal.xMin, m_signal.xMax);
        setYRange(m_signal.yMin, m_signal.yMax);
    }
    void setYRange(double min, double max) override
    {
        m_signal.yMin = min;
        m_signal.yMax = max;
        m_plot.setAxisScale(QwtPlot::yLeft, min, max);
    }
    void paint(QImage& picture) override
    {
        const int right = picture.width() - 1;
        const int bottom = picture.height() - 1;
        QPainter painter(&picture);
        QLinearGradient gradient(0.0, -bottom, 0.0, bottom);
        gradient.setColorAt(0.0, QColor(m_signal.ground));
        gradient.setColorAt(1.0, QColor(m_signal.groundEnd));
        painter.fillRect(picture.rect(), gradient);
        painter.setPen(QColor(m_signal.grid));
        for (int i = 0; i <= 10; ++i)
            painter.drawLine(i * right / 10, 0, i * right / 10, bottom);
        for (int i = 0; i <= 4; ++i)
            painter.drawLine(0, i * bottom / 4, right, i * bottom / 4);
        QwtScaleMap x;
        x.setScaleInterval(m_signal.xMin, m_signal.xMax);
        x.setPaintInterval(0.0, right);
        QwtScaleMap y;
        y.setScaleInterval(m_signal.yMin, m_signal.yMax);
        y.setPaintInterval(bottom, 0.0);
        for (QwtPlotCurve* curve : m_curves)
            curve->draw(&painter, x, y, picture.rect());
    }
    QWidget& window() override { return m_plot; }
    void replot() override { m_plot.replot(); }

private:
    PeerSignal m_signal; // the curves read its samples
    QwtPlot m_plot;
    std::vector<QwtPlotCurve*> m_curves;
};

} // namespace

std::unique_ptr<PeerPlot> makeQwtPlot(const PeerSignal& signal, bool isBuffered)
{
    return std::make_unique<QwtPeer>(signal, isBuffered);
}
