// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "iq/GLIQDiagram.h"

#include "foundations/DiagramFrame.h"
#include "foundations/Extent.h"
#include "platform/base/AxisPixel.h"
#include "platform/base/Saturate.h"
#include "platform/glbase/GLPainter.h"
#include "platform/gui/ColorSet.h"

#include <QCoreApplication>
#include <QPointer>
#include <QTransform>

#include <algorithm>
#include <cmath>

#include <GL/gl.h>

namespace {

constexpr std::size_t maxRecordCount = 100;
constexpr int autoScalePeriodMs = 1000;
constexpr double msPerSecond = 1000.0;

QString caption() { return QCoreApplication::translate("VCGLIQDiagram", "IQ Diagram"); }

QWidget* dialogParent(GLIQDiagram& diagram) { return diagram.GetFrameWidget(); }

} // namespace

using Diagram = GLIQDiagram;
using Frame = DiagramFrame<Diagram>;

/// Mapping of one paint from samples to the pixel frame of the widget.
struct GLIQDiagram::Plot
{
    QTransform toPixel;
    bool isUsable;

    Plot(int width, int height, const AxisHandler& xAxis, const AxisHandler& yAxis)
    {
        const double xStart = xAxis.GetStartValue();
        const double yStart = yAxis.GetStartValue();
        const double xSpan = xAxis.GetStopValue() - xStart;
        const double ySpan = yAxis.GetStopValue() - yStart;
        const double left = std::trunc(axisPixel(0.0, xStart, xAxis.GetStopValue(), width));
        const double top =
            height - std::trunc(axisPixel(0.0, yStart, yAxis.GetStopValue(), height));
        const double xScale = width / xSpan;
        const double yScale = -height / ySpan;
        toPixel = QTransform(xScale, 0.0, 0.0, yScale, left, top);
        isUsable = std::isfinite(xSpan) && std::isfinite(ySpan) && std::isfinite(left) &&
                   std::isfinite(top) && std::isfinite(xScale) && std::isfinite(yScale);
    }
};

GLIQDiagram::GLIQDiagram(const std::string& name, GLLayout* layout)
    : ScanBufferWidgetBase(name.c_str(), layout, static_cast<EWindowType>(0))
    , m_propertiesAction(tr("Properties..."))
    , m_autoScaleAction(tr("Auto Scaling"))
    , m_lastPaintTime(QDateTime::currentDateTimeUtc())
    , m_caption(caption())
{
    Frame::SetUpPlot(*this);
    Frame::SetUp(*this, "GLIQDiagram", autoScalePeriodMs);
}

GLIQDiagram::~GLIQDiagram() { Frame::TakeDown(*this); }

void GLIQDiagram::AddData(std::vector<float>& data)
{
    guiThread::checkObject(*this);
    if (data.empty() || data.size() % 2 != 0)
        return;

    ValueRecord& record = *AddRecord();
    record.m_time = QDateTime::currentDateTimeUtc();
    record.m_samples.swap(data);
    const QPointer<GLIQDiagram> alive(this);
    if (m_autoScalePending || m_autoScaleTimer.isActive())
        ScaleTo(record.m_samples);
    if (!alive)
        return;
    while (m_records.size() > maxRecordCount)
        RemoveRecord();
}

void GLIQDiagram::AddData(const float* data, std::size_t count)
{
    m_copy.assign(data, data + count);
    AddData(m_copy);
}

void GLIQDiagram::AddData(const double* data, std::size_t count)
{
    m_copy.resize(count);
    std::transform(data, data + count, m_copy.begin(),
                   [](double value) { return static_cast<float>(value); });
    AddData(m_copy);
}

void GLIQDiagram::SetAging(double seconds)
{
    if (!(seconds >= 0.0))
        return;
    m_aging = seconds;
    update();
}

void GLIQDiagram::SetAgesByData(bool byData) { m_agesByData = byData; }

std::vector<float> GLIQDiagram::GetSamples() const
{
    std::vector<float> samples;
    for (auto record = m_records.rbegin(); record != m_records.rend(); ++record)
        samples.insert(samples.end(), (*record)->m_samples.begin(), (*record)->m_samples.end());
    return samples;
}

// Replaces or widens both ranges, one end after the other: observers see each step, and an axis may
// be reversed for a moment.
void GLIQDiagram::ScaleTo(const std::vector<float>& samples)
{
    Extent x;
    Extent y;
    for (std::size_t i = 0; i < samples.size(); i += 2) {
        x.Take(samples[i]);
        y.Take(samples[i + 1]);
    }
    x.AddMargin();
    y.AddMargin();
    if (!m_autoScalePending) {
        if (m_xAxisWidget)
            x.Widen(m_xAxisWidget->GetStartValue(), m_xAxisWidget->GetStopValue());
        y.Widen(m_yStart, m_yStop);
    }
    m_autoScalePending = false;
    // An observer may take the axis away, or destroy the diagram.
    const QPointer<GLIQDiagram> alive(this);
    if (m_xAxisWidget)
        m_xAxisWidget->SetStartValue(static_cast<double>(x.min));
    if (alive && m_xAxisWidget)
        m_xAxisWidget->SetStopValue(static_cast<double>(x.max));
    if (alive)
        SetYStart(static_cast<double>(y.min));
    if (alive)
        SetYStop(static_cast<double>(y.max));
}

QWidget* GLIQDiagram::GetPropertyPage(QWidget* parent, const char* name)
{
    constexpr double limit = 10000.0;
    constexpr double maxAging = 10.0;
    m_pPropertyPage = new GLOrvanePropertyPage(parent, name, false, true);
    Frame::FillPage(*this, -limit, limit, limit);
    m_pPropertyPage->SetAging(0.0, maxAging, m_aging, true);
    return m_pPropertyPage;
}

void GLIQDiagram::slotAcceptPropertyChanges()
{
    if (!m_pPropertyPage)
        return;
    const bool showGrid = m_pPropertyPage->GetShowGrid();
    const double aging = m_pPropertyPage->GetAging();
    if (!Frame::ApplyRanges(*this))
        return;
    m_showGrid = showGrid;
    m_aging = aging;
    update();
}

void GLIQDiagram::paintEvent(QPaintEvent* event)
{
    GLFrameWidget* frame = GetFrameWidget();
    if (!frame || !m_xAxisWidget)
        return;

    GLPainter painter(frame);
    m_background.m_color1 = IColorBase::colIQBackground;
    m_background.m_color2 = IColorBase::colIQBackgroundEnd;
    m_background.Draw(painter, this, 0);

    const Plot plot(truncateToPixel(static_cast<double>(m_right - m_left)),
                    truncateToPixel(static_cast<double>(m_bottom - m_top)), *m_xAxisWidget,
                    *m_yAxisHandler);
    Frame::DrawGrid(*this, painter);
    // A picture shows all data sets and ages none of them.
    const bool isPicture = frame->IsPaintingPicture();
    const std::size_t young = isPicture ? m_records.size() : CountYoungRecords();
    // An axis without extent has no place for points; the data sets age all the same.
    if (plot.isUsable)
        DrawPoints(plot, young, painter);
    if (!isPicture) {
        while (m_records.size() > young)
            RemoveRecord();
        m_lastPaintTime = QDateTime::currentDateTimeUtc();
    }
    GLCommonWidget::paintEvent(event);
    TextRects()->draw(painter);
}

// Counts the data sets from the newest to the first that is too old.
std::size_t GLIQDiagram::CountYoungRecords() const
{
    const double maxAge = m_aging * msPerSecond;
    const bool byData = m_agesByData && !m_records.empty();
    const qint64 now = (byData ? m_records.front()->m_time : m_lastPaintTime).toMSecsSinceEpoch();
    const auto isTooOld = [&](const ValueRecord* record) {
        return static_cast<double>(now - record->m_time.toMSecsSinceEpoch()) > maxAge;
    };
    const auto firstOld = std::find_if(m_records.begin(), m_records.end(), isTooOld);
    return static_cast<std::size_t>(firstOld - m_records.begin());
}

void GLIQDiagram::DrawPoints(const Plot& plot, std::size_t recordCount, GLPainter& painter) const
{
    const QColor color(ColorSet::Instance()[IColorBase::colIQPoint].rgb()); // opaque
    if (GetFrameWidget()->IsPaintingPicture()) {
        painter.drawPoints(GetSamples(), plot.toPixel,
                           color); // all at once: how they are drawn depends on their number
        return;
    }
    if (!painter.beginNativePainting()) {
        std::vector<const std::vector<float>*> sets;
        sets.reserve(recordCount);
        for (std::size_t i = 0; i < recordCount; ++i)
            sets.push_back(&m_records[i]->m_samples);
        painter.drawPoints(sets, plot.toPixel, color);
        return;
    }
    glPushMatrix();
    glTranslated(plot.toPixel.dx(), plot.toPixel.dy(), 0.0);
    glScaled(plot.toPixel.m11(), plot.toPixel.m22(), 1.0);
    glColor3ub(static_cast<GLubyte>(color.red()), static_cast<GLubyte>(color.green()),
               static_cast<GLubyte>(color.blue()));
    glPointSize(1.0F);
    glEnableClientState(GL_VERTEX_ARRAY);
    for (std::size_t i = 0; i < recordCount; ++i) {
        const std::vector<float>& samples = m_records[i]->m_samples;
        glVertexPointer(2, GL_FLOAT, 0, samples.data());
        const std::size_t pointCount = samples.size() / 2;
        glDrawArrays(GL_POINTS, 0, truncateSaturated<int>(static_cast<double>(pointCount)));
    }
    glDisableClientState(GL_VERTEX_ARRAY);
    glPopMatrix();
    painter.endNativePainting();
}

#include "foundations/DiagramOperations.inl"
#include "foundations/PlotOperations.inl"
