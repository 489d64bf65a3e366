// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "time/GLTimeDiagram.h"

#include "foundations/DiagramFrame.h"
#include "foundations/Extent.h"
#include "platform/base/AxisPixel.h"
#include "platform/base/Saturate.h"
#include "platform/glbase/GLPainter.h"
#include "platform/gui/ColorSet.h"
#include "time/Quantiser.h"

#include <QCoreApplication>
#include <QPointer>

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace {

constexpr std::size_t maxRecordCount = 100;
constexpr int autoScalePeriodMs = 1000;

// The band of the levels is slightly wider than the bounds, and a level slightly higher than 1/256
// of them: the largest sample stays below level 256 even where rounding swallows the margin.
constexpr float bandWidening = 0.00001F;
constexpr float levelHeight = 0.0039063282F;

QColor color(IColorBase::ECOLOR number) { return ColorSet::Instance()[number]; }

QString caption() { return QCoreApplication::translate("VCGLTimeDiagram", "Time Diagram"); }

QWidget* dialogParent(GLTimeDiagram& diagram) { return diagram.GetFrameWidget(); }

} // namespace

using Diagram = GLTimeDiagram;
using Frame = DiagramFrame<Diagram>;

/// Pixel mapping of one paint.
struct GLTimeDiagram::Plot
{
    int width;
    int height;
    double xStart;
    double xStop;
    double yStart;
    double yStop;

    int xPixel(double time) const { return truncateToPixel(axisPixel(time, xStart, xStop, width)); }
    int yPixel(double value) const
    {
        return height - truncateToPixel(axisPixel(value, yStart, yStop, height));
    }
    bool isUsable() const
    {
        const double xSpan = xStop - xStart;
        const double ySpan = yStop - yStart;
        return std::isfinite(xSpan) && xSpan != 0.0 && std::isfinite(ySpan) && ySpan != 0.0;
    }
};

GLTimeDiagram::GLTimeDiagram(const std::string& name)
    : ScanBufferWidgetBase(name.c_str(), nullptr, static_cast<EWindowType>(0))
    , m_propertiesAction(tr("Properties..."))
    , m_autoScaleAction(tr("Auto Scaling"))
    , m_caption(caption())
{
    Frame::SetUpPlot(*this);
    Frame::SetUp(*this, "GLTimeDiagram", autoScalePeriodMs);
}

GLTimeDiagram::~GLTimeDiagram() { Frame::TakeDown(*this); }

void GLTimeDiagram::AddData(std::vector<double>& data)
{
    guiThread::checkObject(*this);
    if (data.empty())
        return;

    ValueRecord& record = *AddRecord();
    record.m_first = static_cast<float>(data.front());
    record.m_last = static_cast<float>(data.back());

    Extent extent = quantiser::extentOf(data);
    extent.AddMargin();
    record.m_min = extent.min;
    record.m_max = extent.max;

    const QPointer<GLTimeDiagram> alive(this);
    ScaleTo(extent);
    if (!alive)
        return;
    Quantise(record, data);
    record.m_samples.swap(data);
    while (m_records.size() > maxRecordCount)
        RemoveRecord();
}

void GLTimeDiagram::AddData(const double* data, std::size_t count)
{
    m_copy.assign(data, data + count);
    AddData(m_copy);
}

void GLTimeDiagram::AddData(const float* data, std::size_t count)
{
    m_copy.assign(data, data + count);
    AddData(m_copy);
}

std::vector<std::vector<double>> GLTimeDiagram::GetTraces() const
{
    std::vector<std::vector<double>> traces;
    for (auto record = m_records.rbegin(); record != m_records.rend(); ++record)
        traces.push_back((*record)->m_samples);
    return traces;
}

// Replaces or widens the Y range while auto-scaling. The ends are set one after the other:
// observers see both steps. Returns false when one of them destroyed the diagram.
bool GLTimeDiagram::ScaleTo(Extent extent)
{
    if (m_autoScalePending)
        m_autoScalePending = false;
    else if (m_autoScaleTimer.isActive())
        extent.Widen(m_yStart, m_yStop);
    else
        return true;
    const QPointer<GLTimeDiagram> alive(this);
    SetYStart(static_cast<double>(extent.min));
    if (alive)
        SetYStop(static_cast<double>(extent.max));
    return !alive.isNull();
}

void GLTimeDiagram::Quantise(ValueRecord& record, const std::vector<double>& data)
{
    const float span = record.m_max - record.m_min;
    m_stepData.resize(data.size());
    if (span == 0.0F) {
        std::fill(m_stepData.begin(), m_stepData.end(), static_cast<unsigned char>(0));
    } else {
        const float widening = span * bandWidening;
        const float step = span * levelHeight;
        record.m_min -= widening;
        record.m_max += widening;
        quantiser::quantise(data, record.m_min, step, m_stepData.data());
    }
    record.m_stepLine.SetData(m_stepData.data(), m_stepData.size());
}

void GLTimeDiagram::SetBaudrate(float baudrate) { m_baudrate = baudrate; }

QWidget* GLTimeDiagram::GetPropertyPage(QWidget* parent, const char* name)
{
    constexpr double xLimit = 100.0;
    constexpr double yLimit = 10000.0;
    m_pPropertyPage = new GLOrvanePropertyPage(parent, name, false, false);
    Frame::FillPage(*this, -xLimit, 0.0, yLimit);
    return m_pPropertyPage;
}

void GLTimeDiagram::slotAcceptPropertyChanges()
{
    if (!m_pPropertyPage)
        return;
    const bool showGrid = m_pPropertyPage->GetShowGrid();
    if (!Frame::ApplyRanges(*this))
        return;
    m_showGrid = showGrid;
    update();
}

void GLTimeDiagram::paintEvent(QPaintEvent* event)
{
    GLFrameWidget* frame = GetFrameWidget();
    if (!frame || !m_xAxisWidget || m_baudrate == 0.0F)
        return;

    GLPainter painter(frame);
    m_background.m_color1 = IColorBase::colTimeBackground;
    m_background.m_color2 = IColorBase::colTimeBackgroundEnd;
    m_background.Draw(painter, this, 0);

    const Plot plot{truncateToPixel(static_cast<double>(m_right - m_left)),
                    truncateToPixel(static_cast<double>(m_bottom - m_top)),
                    m_xAxisWidget->GetStartValue(),
                    m_xAxisWidget->GetStopValue(),
                    m_yAxisHandler->GetStartValue(),
                    m_yAxisHandler->GetStopValue()};
    Frame::DrawGrid(*this, painter);
    // An axis without extent has no place for traces: none is drawn and none is dropped.
    if (plot.isUsable()) {
        const std::size_t visible = DrawTraces(plot, *frame);
        while (m_records.size() > visible)
            RemoveRecord();
    }
    GLCommonWidget::paintEvent(event);
    TextRects()->draw(painter);
}

// Draws the traces from the newest to the first that reaches past the left border. Returns their
// number.
std::size_t GLTimeDiagram::DrawTraces(const Plot& plot, GLFrameWidget& frame)
{
    const GLLineStyle traceStyle(lsSolid, 1, color(IColorBase::colTimeTrace));
    const GLLineStyle markerStyle(lsSolid, 1, color(IColorBase::colTimeMarker));
    const int zeroY = plot.yPixel(0.0);
    const auto addLine = [](GLLines& lines, int x1, int y1, int x2, int y2) {
        lines.AddLine(static_cast<float>(x1), static_cast<float>(y1), static_cast<float>(x2),
                      static_cast<float>(y2));
    };

    GLLines lines;
    int xRight = plot.width;
    std::int64_t position = 0; // start of the trace, in samples from the newest sample's end
    std::size_t index = 0;
    for (; index < m_records.size() && xRight >= 0; ++index) {
        ValueRecord& record = *m_records[index];
        position -= static_cast<std::int64_t>(record.m_samples.size());
        const float time = static_cast<float>(position) / m_baudrate;
        const int xLeft = plot.xPixel(static_cast<double>(time));
        const int top = plot.yPixel(static_cast<double>(record.m_max));
        const int height = std::max(plot.yPixel(static_cast<double>(record.m_min)) - top, 2);
        const int firstY = plot.yPixel(static_cast<double>(record.m_first));

        record.m_stepLine.SetStepLineStyle(slStep);
        record.m_stepLine.SetLineStyle(traceStyle);
        record.m_stepLine.SetDestRect(xLeft, top, xRight - xLeft, height);
        frame.DrawStepLine(record.m_stepLine);

        lines.SetLineStyle(traceStyle);
        if (index + 1 < m_records.size()) {
            const auto olderLast = static_cast<double>(m_records[index + 1]->m_last);
            addLine(lines, xLeft, firstY, xLeft - 1, plot.yPixel(olderLast));
        } else {
            addLine(lines, xLeft, firstY, xLeft, zeroY);
            addLine(lines, xLeft, zeroY, 0, zeroY);
        }
        frame.DrawLines(lines);

        lines.Clear();
        lines.SetLineStyle(markerStyle);
        addLine(lines, xLeft, firstY, xLeft, zeroY);
        frame.DrawLines(lines);
        lines.Clear();

        xRight = xLeft;
    }
    return index;
}

#include "foundations/DiagramOperations.inl"
#include "foundations/PlotOperations.inl"
