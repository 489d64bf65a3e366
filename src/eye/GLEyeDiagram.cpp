// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "eye/GLEyeDiagram.h"

#include "eye/EyeScene.h"
#include "foundations/DiagramFrame.h"
#include "foundations/Extent.h"
#include "platform/chart/CDataArrayD.h"
#include "platform/chart/CGraphicEngineSwitch.h"

#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QPointer>

#include <limits>

using namespace OndoChartDisplay;
using OndoChartDisplayComfort::CGraphicEngineSwitch;

namespace {

constexpr int autoScalePeriodMs = 2000;
// The last sample stays clear of the right border.
constexpr double spanWidening = 1.001;

QString caption() { return QCoreApplication::translate("VCGLEyeDiagram", "Eye Diagram"); }

QWidget* dialogParent(GLEyeDiagram& diagram) { return &diagram; }

} // namespace

using Diagram = GLEyeDiagram;
using Frame = DiagramFrame<Diagram>;

GLEyeDiagram::GLEyeDiagram(QWidget* parent)
    : QWidget(parent, Qt::WindowFlags())
    , m_propertiesAction(tr("Properties..."))
    , m_autoScaleAction(tr("Auto Scaling"))
    , m_caption(caption())
{
    Frame::SetUp(*this, "GLEyeDiagram", autoScalePeriodMs);

    m_pChartDisplay = new CChartDisplay;
    m_pEngineSwitch = new CGraphicEngineSwitch(m_pChartDisplay, this,
                                               OndoChartDisplayComfort::geRaster, true, false);
    eyeScene::build(*m_pChartDisplay, static_cast<std::size_t>(m_bufferSize));
}

GLEyeDiagram::~GLEyeDiagram()
{
    delete m_pChartDisplay;
    delete m_pEngineSwitch;
    Frame::TakeDown(*this);
}

void GLEyeDiagram::AddData(std::vector<double>& data) { AddData(data.data(), data.size()); }

void GLEyeDiagram::AddData(const float* data, std::size_t count)
{
    const std::vector<double> samples(data, data + count);
    AddData(samples.data(), count);
}

void GLEyeDiagram::AddData(const double* data, std::size_t count)
{
    guiThread::checkObject(*this);
    if (count < 2)
        return;

    const double span = static_cast<double>(m_xSpan > 0.1F ? m_xSpan : 0.1F);
    const double divisor = span * spanWidening * static_cast<double>(count - 1);
    const auto x = eyeScene::object<CDataArrayD>(*m_pChartDisplay, "MeasDataX");
    const auto y = eyeScene::object<CDataArrayD>(*m_pChartDisplay, "MeasDataY");
    if (x && y) {
        AppendPositions(*x, count + 1, divisor); // the last one is for the NaN that ends the trace
        y->Append(data, count);
        constexpr double separator = std::numeric_limits<double>::quiet_NaN();
        y->Append(&separator, 1);
    }

    Extent extent;
    for (const double* value = data; value != data + count; ++value)
        extent.Take(static_cast<float>(*value));
    extent.AddMargin();
    *AddRecord() = {extent.min, extent.max, count};
    m_recorded += count;

    ScaleTo(extent);
    TrimHistory();
}

void GLEyeDiagram::AppendPositions(CDataArrayD& array, std::size_t count, double divisor)
{
    constexpr std::size_t most = 256;
    for (std::size_t first = 0; first < count; first += most) {
        const std::size_t wanted = std::min(most, count - first);
        std::vector<double>& values = m_positions.values;
        if (first != m_positions.first || divisor != m_positions.divisor ||
            values.size() < wanted) {
            values.clear();
            for (std::size_t i = 0; i < wanted; ++i)
                values.push_back(static_cast<double>(first + i) / divisor);
            m_positions.first = first;
            m_positions.divisor = divisor;
        }
        array.Append(values.data(), wanted);
    }
}

void GLEyeDiagram::Clear()
{
    guiThread::checkObject(*this);
    while (!m_records.empty())
        RemoveRecord();
    m_recorded = 0;
    for (const char* name : {"MeasDataX", "MeasDataY"}) {
        if (const auto array = eyeScene::object<CDataArrayD>(*m_pChartDisplay, name))
            array->Replace(nullptr, 0);
    }
    update();
}

std::vector<std::vector<QPointF>> GLEyeDiagram::GetTraces() const
{
    std::vector<std::vector<QPointF>> traces;
    const auto xData = eyeScene::object<CDataArrayD>(*m_pChartDisplay, "MeasDataX");
    const auto yData = eyeScene::object<CDataArrayD>(*m_pChartDisplay, "MeasDataY");
    if (!xData || !yData)
        return traces;
    double last = std::numeric_limits<double>::infinity();
    for (std::size_t i = 0; i + 1 < std::min(xData->Size(), yData->Size()); ++i) {
        const double x = xData->At(i);
        // A position before a step back is the separator at the end of a trace.
        if (xData->At(i + 1) < x) {
            last = x;
            continue;
        }
        if (x < last)
            traces.emplace_back();
        last = x;
        traces.back().emplace_back(x * static_cast<double>(m_xSpan) * spanWidening, yData->At(i));
    }
    return traces;
}

// Replaces or widens the Y range while auto-scaling.
void GLEyeDiagram::ScaleTo(Extent extent)
{
    if (m_autoScalePending)
        m_autoScalePending = false;
    else if (m_autoScaleTimer.isActive())
        extent.Widen(m_yStart, m_yStop);
    else
        return;
    SetYStart(static_cast<double>(extent.min));
    SetYStop(static_cast<double>(extent.max));
}

// Keeps the newest records, as many as it takes to fill the buffer.
void GLEyeDiagram::TrimHistory()
{
    const auto wanted = static_cast<std::uint64_t>(m_bufferSize);
    while (m_recorded - m_records.back()->m_count >= wanted) {
        m_recorded -= m_records.back()->m_count;
        RemoveRecord();
    }
}

void GLEyeDiagram::SetBufferSize(int samples)
{
    if (samples < 1)
        return;
    Keep(samples);
    update();
}

void GLEyeDiagram::Keep(int samples)
{
    if (samples == m_bufferSize)
        return;
    m_bufferSize = samples;
    eyeScene::setCapacity(*m_pChartDisplay, static_cast<std::size_t>(m_bufferSize));
}

void GLEyeDiagram::SetBaudrate(float) {}

void GLEyeDiagram::ShowYRange()
{
    if (const auto scale = eyeScene::object<CScale>(*m_pChartDisplay, "Y-Scale"))
        scale->SetRange(m_yStart, m_yStop, 0);
}

void GLEyeDiagram::GetYStartStop(double& start, double& stop)
{
    if (const auto scale = eyeScene::object<CScale>(*m_pChartDisplay, "Y-Scale")) {
        start = scale->GetStart();
        stop = scale->GetStop();
    }
}

void GLEyeDiagram::setXAxisWidget(const std::shared_ptr<XAxisWidget>& xAxisWidget)
{
    if (m_xAxisWidget) {
        disconnect(m_xAxisWidget.get(), nullptr, this, nullptr);
        m_xAxisWidget->ReleaseShownRange();
    }
    m_xAxisWidget = xAxisWidget;
    setAttribute(Qt::WA_OpaquePaintEvent, m_xAxisWidget != nullptr);
    if (m_xAxisWidget) {
        m_xAxisWidget->FixShownRange(0.0, static_cast<double>(m_xSpan));
        // A paint sets the axis back to 0 to 1, so a change of it asks for one.
        connect(m_xAxisWidget.get(), SIGNAL(si_rangeChanged()), this, SLOT(update()));
    }
}

QMenu* GLEyeDiagram::getContextMenu(QContextMenuEvent*, GLCommonWidget*, int)
{
    if (!m_pContextMenu)
        m_pContextMenu = diagramDialogs::createContextMenu(this, m_propertiesAction,
                                                           m_autoScaleAction, &GLEyeDiagram::tr);
    return m_pContextMenu;
}

void GLEyeDiagram::contextMenuEvent(QContextMenuEvent* event)
{
    IHasContextMenu* provider = this;
    if (QMenu* menu = provider->getContextMenu(event, nullptr, 0))
        menu->exec(event->globalPos());
}

QWidget* GLEyeDiagram::GetPropertyPage(QWidget* parent, const char* name)
{
    constexpr double xLimit = 100.0;
    constexpr double yLimit = 10000.0;
    constexpr int smallestBuffer = 100;
    constexpr int largestBuffer = 10000;
    const double xStart = m_xAxisWidget ? m_xAxisWidget->GetStartValue() : 0.0;
    const double xStop =
        m_xAxisWidget ? m_xAxisWidget->GetStopValue() : static_cast<double>(m_xSpan);
    m_pPropertyPage = new GLOrvanePropertyPage(parent, name, true, false);
    m_pPropertyPage->SetXAxisMin(-xLimit, 0.0, xStart, false);
    m_pPropertyPage->SetXAxisMax(-xLimit, 0.0, xStop, false);
    m_pPropertyPage->SetYAxisMin(-yLimit, yLimit, m_yStart, true);
    m_pPropertyPage->SetYAxisMax(-yLimit, yLimit, m_yStop, true);
    m_pPropertyPage->SetShowGrid(m_showGrid, true);
    m_pPropertyPage->SetBufferSize(smallestBuffer, largestBuffer, m_bufferSize, true);
    diagramDialogs::forgetDestroyed(m_pPropertyPage, *this);
    return m_pPropertyPage;
}

void GLEyeDiagram::slotAcceptPropertyChanges()
{
    if (!m_pPropertyPage)
        return;
    SetYStart(m_pPropertyPage->GetYAxisMin());
    SetYStop(m_pPropertyPage->GetYAxisMax());
    m_showGrid = m_pPropertyPage->GetShowGrid();
    Keep(m_pPropertyPage->GetBufferSize());
    update();
}

void GLEyeDiagram::resizeEvent(QResizeEvent*) { update(); }

void GLEyeDiagram::paintEvent(QPaintEvent*)
{
    if (UpdateScene(size()))
        m_pEngineSwitch->Update(false);
}

void GLEyeDiagram::PaintPicture(QPainter& painter, const QSize& size)
{
    if (UpdateScene(size))
        m_pEngineSwitch->Render(painter, size);
}

// Brings the scene up to date. Returns whether there is anything to paint.
bool GLEyeDiagram::UpdateScene(const QSize& size)
{
    if (!m_xAxisWidget || m_xSpan == 0.0F)
        return false;
    // An observer of the axis may take it away, or destroy the diagram.
    const QPointer<GLEyeDiagram> alive(this);
    const std::shared_ptr<XAxisWidget> xAxis = m_xAxisWidget;
    xAxis->SetStartValue(0.0);
    if (!alive)
        return false;
    xAxis->SetStopValue(static_cast<double>(m_xSpan));
    if (!alive || !m_xAxisWidget)
        return false;
    eyeScene::update(*m_pChartDisplay, {size, m_showGrid, static_cast<double>(m_xSpan)},
                     *m_xAxisWidget);
    return true;
}

#include "foundations/DiagramOperations.inl"
