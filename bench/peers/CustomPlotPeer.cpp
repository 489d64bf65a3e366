// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "PeerPlot.h"

#include <QImage>

#include <limits>

#include <qcustomplot.h>

namespace {

class CustomPlotPeer final : public PeerPlot
{
public:
    explicit CustomPlotPeer(const PeerSignal& signal)
    {
        m_plot.setNotAntialiasedElements(QCP::aeAll);
        m_plot.setPlottingHints(QCP::phFastPolylines | QCP::phCacheLabels);
        m_plot.setBackground(QColor(signal.ground));
        for (QCPAxis* axis : {m_plot.xAxis, m_plot.yAxis}) {
            axis->grid()->setPen(QColor(signal.grid)); // dots and dashes cost more
            axis->grid()->setZeroLinePen(Qt::NoPen);
        }
        m_plot.xAxis->setRange(signal.xMin, signal.xMax);
        m_plot.yAxis->setRange(signal.yMin, signal.yMax);
        addData(signal);
    }
    void setYRange(double min, double max) override { m_plot.yAxis->setRange(min, max); }
    void paint(QImage& picture) override
    {
        m_plot.axisRect()->setAutoMargins(QCP::msNone); // all of it is plot
        m_plot.axisRect()->setMargins({});
        for (QCPAxis* axis : {m_plot.xAxis, m_plot.yAxis}) {
            axis->setTicks(false);
            axis->setTickLabels(false);
            axis->setBasePen(Qt::NoPen);
        }
        QCPPainter painter;
        if (painter.begin(&picture))
            m_plot.toPainter(&painter, picture.width(), picture.height());
    }
    QWidget& window() override { return m_plot; }
    void replot() override { m_plot.replot(QCustomPlot::rpQueuedRefresh); }

private:
    void addData(const PeerSignal& signal)
    {
        QVector<double> x;
        QVector<double> y;
        for (const PeerSignal::Trace& trace : signal.traces) {
            x += trace.x;
            y += trace.y;
            if (signal.kind == PeerSignal::Kind::Traces) { // a gap
                x.append(trace.x.constLast());
                y.append(std::numeric_limits<double>::quiet_NaN());
            }
        }
        if (signal.kind == PeerSignal::Kind::Series) {
            auto* graph = m_plot.addGraph(); // samples itself adaptively
            graph->setPen(QColor(signal.trace));
            graph->setData(x, y, true);
            return;
        }
        auto* curve = new QCPCurve(m_plot.xAxis, m_plot.yAxis); // owned by the plot
        curve->setPen(QColor(signal.trace));
        curve->setData(x, y);
        if (signal.kind == PeerSignal::Kind::Points) {
            curve->setLineStyle(QCPCurve::lsNone);
            curve->setScatterStyle(QCPScatterStyle::ssDot);
        }
    }

    QCustomPlot m_plot;
};

} // namespace

std::unique_ptr<PeerPlot> makeCustomPlot(const PeerSignal& signal)
{
    return std::make_unique<CustomPlotPeer>(signal);
}
