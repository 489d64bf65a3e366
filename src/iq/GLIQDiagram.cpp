// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "iq/GLIQDiagram.h"

#include "foundations/DiagramDialogs.h"
#include "foundations/Extent.h"
#include "foundations/GLOrvanePropertyPage.h"
#include "foundations/TraceHistory.h"
#include "platform/base/ErrorHandler.h"
#include "platform/base/GuiThread.h"
#include "platform/base/Saturate.h"
#include "platform/glbase/GLPainter.h"
#include "platform/glwidgets/XAxisWidget.h"
#include "platform/glwidgets/YAxisHandler.h"
#include "platform/gui/ColorSet.h"

#include <QCoreApplication>
#include <QMenu>
#include <QPointer>
#include <QTransform>

#include <algorithm>
#include <cmath>

#include <GL/gl.h>

namespace {

constexpr std::size_t maxRecordCount = 100;
constexpr int autoScalePeriodMs = 1000;
constexpr int yAxisKind = 3;
constexpr double msPerSecond = 1000.0;

QString caption() { return QCoreApplication::translate("VCGLIQDiagram", "IQ Diagram"); }

} // namespace

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
        const double left = std::trunc((width - 1) * (0 - xStart) / xSpan);
        const double top = std::trunc((height - 1) * yStart / ySpan) + height;
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
    GLFrameWidget::m_pErrorHandler = &ErrorHandler::Instance();
    GLFrameWidget::m_pColors = &ColorSet::Instance();

    m_yAxisHandler = std::make_shared<YAxisHandler>(yAxisKind);
    m_yAxisHandler->SetUnitText(QStringLiteral(" "));
    m_yStart = m_yAxisHandler->GetStartValue();
    m_yStop = m_yAxisHandler->GetStopValue();
    addMouseObject(std::weak_ptr<IMouseHandler>(m_yAxisHandler), zoAxis);
    addContextMenu(std::weak_ptr<IHasContextMenu>(m_yAxisHandler), zoAxis);

    connect(&m_propertiesAction, SIGNAL(triggered()), this, SLOT(ShowProperties()));
    connect(&m_autoScaleAction, SIGNAL(triggered()), this, SLOT(AutoScale()));
    m_autoScaleTimer.setSingleShot(true);
    m_autoScaleTimer.setInterval(autoScalePeriodMs);

    m_pPersistant = new values::Persistant(QStringLiteral("GLIQDiagram"), this);
    m_pPersistant->Add(&m_showGrid, QStringLiteral("ShowGrid"), true);
    m_pPersistant->Read(QString(), static_cast<ICfg::View>(0));
}

GLIQDiagram::~GLIQDiagram()
{
    if (m_autoScaleTimer.isActive())
        m_autoScaleTimer.stop();
    diagramDialogs::discard(m_pContextMenu);
    traceHistory::freeHistory(m_records, m_freeRecords);
    m_pPersistant->Write(QString(), static_cast<ICfg::View>(0));
    delete m_pPersistant;
    m_pPersistant = nullptr;
}

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

void GLIQDiagram::Clear()
{
    guiThread::checkObject(*this);
    while (!m_records.empty())
        RemoveRecord();
    update();
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

// Replaces or widens both ranges. They are set end by end, so that whoever follows an axis sees
// each step, and an axis may be reversed for a moment.
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
    // Whoever follows it may also take the axis away, or destroy the diagram.
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

void GLIQDiagram::SetYStart(double start)
{
    m_yStart = start;
    ShowYRange();
}

void GLIQDiagram::SetYStop(double stop)
{
    m_yStop = stop;
    ShowYRange();
}

void GLIQDiagram::ShowYRange() { m_yAxisHandler->SetRange(m_yStart, m_yStop, 0); }

void GLIQDiagram::GetYStartStop(double& start, double& stop)
{
    start = m_yAxisHandler->GetStartValue();
    stop = m_yAxisHandler->GetStopValue();
}

std::shared_ptr<AxisHandler> GLIQDiagram::GetYAxisHandler() { return m_yAxisHandler; }

void GLIQDiagram::SetYUnit(const QString& unit)
{
    m_yAxisHandler->SetUnitText(unit.isEmpty() ? QStringLiteral(" ") : unit);
}

void GLIQDiagram::setXAxisWidget(const std::shared_ptr<XAxisWidget>& xAxisWidget)
{
    m_xAxisWidget = xAxisWidget;
}

QMenu* GLIQDiagram::getContextMenu(QContextMenuEvent*, GLCommonWidget*, int)
{
    if (!m_pContextMenu) {
        m_pContextMenu = diagramDialogs::createContextMenu(GetFrameWidget(), m_propertiesAction,
                                                           m_autoScaleAction, &GLIQDiagram::tr);
        // The frame is the menu's parent and may be destroyed before the diagram.
        connect(m_pContextMenu, &QObject::destroyed, this, [this] { m_pContextMenu = nullptr; });
    }
    return m_pContextMenu;
}

QWidget* GLIQDiagram::GetPropertyPage(QWidget* parent, const char* name)
{
    constexpr double limit = 10000.0;
    constexpr double maxAging = 10.0;
    m_pPropertyPage = new GLOrvanePropertyPage(parent, name, false, true);
    if (m_xAxisWidget) {
        m_pPropertyPage->SetXAxisMin(-limit, limit, m_xAxisWidget->GetStartValue(), true);
        m_pPropertyPage->SetXAxisMax(-limit, limit, m_xAxisWidget->GetStopValue(), true);
    }
    m_pPropertyPage->SetYAxisMin(-limit, limit, m_yAxisHandler->GetStartValue(), true);
    m_pPropertyPage->SetYAxisMax(-limit, limit, m_yAxisHandler->GetStopValue(), true);
    m_pPropertyPage->SetShowGrid(m_showGrid, true);
    m_pPropertyPage->SetAging(0.0, maxAging, m_aging, true);
    diagramDialogs::forgetDestroyed(m_pPropertyPage, *this);
    return m_pPropertyPage;
}

const QString& GLIQDiagram::GetPropertyPagePath()
{
    return m_caption = caption(); // the language may have changed
}

void GLIQDiagram::slotAcceptPropertyChanges()
{
    if (!m_pPropertyPage)
        return;
    const double yMin = m_pPropertyPage->GetYAxisMin();
    const double yMax = m_pPropertyPage->GetYAxisMax();
    const bool showGrid = m_pPropertyPage->GetShowGrid();
    const double aging = m_pPropertyPage->GetAging();
    // Whoever observes an axis may close the dialog, and destroy the diagram.
    const QPointer<GLIQDiagram> alive(this);
    if (m_xAxisWidget)
        m_xAxisWidget->SetRange(m_pPropertyPage->GetXAxisMin(), m_pPropertyPage->GetXAxisMax());
    if (alive)
        m_yAxisHandler->SetRange(yMin, yMax, 0);
    if (!alive)
        return;
    m_showGrid = showGrid;
    m_aging = aging;
    update();
}

void GLIQDiagram::ShowProperties()
{
    const QPointer<GLIQDiagram> self(this);
    diagramDialogs::runProperties(GetFrameWidget(), this, this, m_pContextMenu);
    if (self)
        m_pPropertyPage = nullptr;
}

void GLIQDiagram::ApplyPersistantAfterRead() { update(); }

void GLIQDiagram::AutoScale()
{
    if (m_autoScaleTimer.isActive())
        return;
    m_autoScalePending = true;
    m_autoScaleTimer.start();
}

void GLIQDiagram::resizeEvent(QResizeEvent* event)
{
    GLCommonWidget::resizeEvent(event);
    m_yAxisHandler->resizeEvent(event);
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
    if (m_showGrid) {
        m_xAxisWidget->XPixelMap()->GetGridDrawer().Draw(painter, this, m_drawParam);
        m_yAxisHandler->XPixelMap()->GetGridDrawer().Draw(painter, this, m_drawParam);
    }
    // A picture shows what is kept, and is no paint that data sets age by.
    const bool isPicture = frame->IsPaintingPicture();
    const std::size_t young = isPicture ? m_records.size() : CountYoungRecords();
    // On an axis without extent no point can be placed; the data sets age all the same.
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
    const QDateTime& now = byData ? m_records.front()->m_time : m_lastPaintTime;
    const auto isTooOld = [&](const ValueRecord* record) {
        return static_cast<double>(record->m_time.msecsTo(now)) > maxAge;
    };
    const auto firstOld = std::find_if(m_records.begin(), m_records.end(), isTooOld);
    return static_cast<std::size_t>(firstOld - m_records.begin());
}

void GLIQDiagram::DrawPoints(const Plot& plot, std::size_t recordCount, GLPainter& painter) const
{
    const QColor color(ColorSet::Instance()[IColorBase::colIQPoint].rgb()); // opaque
    if (GetFrameWidget()->IsPaintingPicture()) {
        painter.drawPoints(GetSamples(), plot.toPixel,
                           color); // at once: the way follows their count
        return;
    }
    if (!painter.beginNativePainting()) {
        for (std::size_t i = 0; i < recordCount; ++i)
            painter.drawPoints(m_records[i]->m_samples, plot.toPixel, color);
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

GLIQDiagram::ValueRecord* GLIQDiagram::AddRecord()
{
    return traceHistory::addRecord(m_records, m_freeRecords);
}

void GLIQDiagram::RemoveRecord() { traceHistory::removeRecord(m_records, m_freeRecords); }
