// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "eye/GLEyeDiagram.h"

#include "foundations/DiagramDialogs.h"
#include "foundations/Extent.h"
#include "foundations/GLOrvanePropertyPage.h"
#include "foundations/TraceHistory.h"
#include "platform/base/GuiThread.h"
#include "platform/chart/CChartDisplay.h"
#include "platform/chart/CDataArrayD.h"
#include "platform/chart/CGraphicEngineSwitch.h"
#include "platform/glwidgets/XAxisWidget.h"
#include "platform/gui/ColorSet.h"

#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QFont>
#include <QMenu>
#include <QPointer>

#include <limits>

using namespace OndoChartDisplay;
using OndoChartDisplayComfort::CGraphicEngineSwitch;

namespace {

constexpr int autoScalePeriodMs = 2000;
// The last sample stays clear of the right border.
constexpr double spanWidening = 1.001;

// Line style codes of the scene.
constexpr int hiddenLine = 0;
constexpr int curveLine = 1;
constexpr int gridLine = 2;

CColor color(IColorBase::ECOLOR number)
{
    const QColor& own = ColorSet::Instance()[number];
    return {255, static_cast<std::uint8_t>(own.red()), static_cast<std::uint8_t>(own.green()),
            static_cast<std::uint8_t>(own.blue())};
}

QString caption() { return QCoreApplication::translate("VCGLEyeDiagram", "Eye Diagram"); }

} // namespace

GLEyeDiagram::GLEyeDiagram(QWidget* parent)
    : QWidget(parent, Qt::WindowFlags())
    , m_propertiesAction(tr("Properties..."))
    , m_autoScaleAction(tr("Auto Scaling"))
    , m_caption(caption())
{
    connect(&m_propertiesAction, SIGNAL(triggered()), this, SLOT(ShowProperties()));
    connect(&m_autoScaleAction, SIGNAL(triggered()), this, SLOT(AutoScale()));
    m_autoScaleTimer.setSingleShot(true);
    m_autoScaleTimer.setInterval(autoScalePeriodMs);

    m_pPersistant = new values::Persistant(QStringLiteral("GLEyeDiagram"), this);
    m_pPersistant->Add(&m_showGrid, QStringLiteral("ShowGrid"), true);
    m_pPersistant->Read(QString(), static_cast<ICfg::View>(0));

    m_pChartDisplay = new CChartDisplay;
    m_pEngineSwitch = new CGraphicEngineSwitch(m_pChartDisplay, this,
                                               OndoChartDisplayComfort::geRaster, true, false);
    BuildScene();
}

GLEyeDiagram::~GLEyeDiagram()
{
    delete m_pChartDisplay;
    delete m_pEngineSwitch;
    if (m_autoScaleTimer.isActive())
        m_autoScaleTimer.stop();
    diagramDialogs::discard(m_pContextMenu);
    traceHistory::freeHistory(m_records, m_freeRecords);
    m_pPersistant->Write(QString(), static_cast<ICfg::View>(0));
    delete m_pPersistant;
    m_pPersistant = nullptr;
}

template<class T>
CSmartPtr<T> GLEyeDiagram::Object(const char* name) const
{
    return CSmartPtr<T>(m_pChartDisplay->FindBaseObject(name));
}

template<class T, class Configure>
void GLEyeDiagram::AddObject(const char* name, const Configure& configure)
{
    CPtr handle = m_pChartDisplay->Factory().InternalCreateObject(T::CLASS, name);
    if (const auto object = CSmartPtr<T>(handle.CheckAndGetBaseObject()))
        configure(*object);
    handle.FreeRef();
}

void GLEyeDiagram::BuildScene()
{
    const auto draw = [this](const char* name) {
        m_pChartDisplay->ObjectManager().AddObject(name, "", 0);
    };
    const auto nothing = [](auto&) {};

    AddObject<CLayerDescription>(
        "Layer1", [](auto& layer) { layer.m_rendererId = CGraphicEngineSwitch::RENDERER_ID; });
    AddObject<CLayoutCell>("BackgroundLayoutCell", nothing);
    AddObject<CLayoutCell>("DiagramLayoutCell", nothing);
    AddObject<CStyleResource>(
        "FillStyleRect", [](auto& style) { style.m_fillStyle = CStyleResource::gradientFill; });
    AddObject<CRectangle>("DisplayBackground", [](auto& rectangle) {
        rectangle.m_layer = "Layer1";
        rectangle.m_layoutCell = "BackgroundLayoutCell";
        rectangle.m_style = "FillStyleRect";
    });
    draw("DisplayBackground");

    AddObject<CDiagramArea>("DiagramArea",
                            [](auto& area) { area.m_layoutCell = "DiagramLayoutCell"; });
    AddObject<CCoordinateSystemCartesian>("CoordinateSystemCartesian", [](auto& system) {
        system.m_diagramArea = "DiagramArea";
        system.m_scales[0] = "X-Scale";
        system.m_scales[1] = "Y-Scale";
    });
    AddObject<CScale>("X-Scale", [](auto& scale) { scale.SetRange(-1.0, 0.0, 0); });
    AddObject<CScale>("Y-Scale", [](auto& scale) { scale.SetRange(-1.0, 1.0, 0); });

    const auto gridStyle = [](auto& style) {
        style.m_secondColor = {0, 0, 0, 0};
        style.m_firstColor = {255, 0, 0, 0};
        style.m_lineWidth = CQuantity(1.0, quLineWidth, nullptr);
        style.m_fillStyle = CStyleResource::noFill;
    };
    AddObject<CStyleResource>("LineStyleGridMajorX", gridStyle);
    AddObject<CStyleResource>("LineStyleGridMajorY", gridStyle);
    AddObject<CGridCartesian>("X-Grid", [](auto& grid) {
        grid.m_coordinateSystem = "CoordinateSystemCartesian";
        grid.m_dimension = 0;
        grid.m_layer = "Layer1";
        grid.m_mode = CGridCartesian::linear;
        grid.m_lineStyles[0] = grid.m_lineStyles[1] = "LineStyleGridMajorX";
    });
    AddObject<CGridCartesian>("Y-Grid", [](auto& grid) {
        grid.m_coordinateSystem = "CoordinateSystemCartesian";
        grid.m_dimension = 1;
        grid.m_layer = "Layer1";
        grid.m_mode = CGridCartesian::linear;
        grid.m_count = 8;
        grid.m_lineStyles[0] = grid.m_lineStyles[1] = "LineStyleGridMajorY";
    });
    draw("X-Grid");
    draw("Y-Grid");
    AddObject<CDataArrayD>("X-Grid-Data", nothing);

    AddObject<CFontResource>("LabelFont", nothing);
    AddObject<CStyleResource>("FontStyle", [](auto& style) {
        style.m_lineStyle = 1;
        style.m_fillStyle = CStyleResource::plainFill;
    });
    AddObject<CAxisLabel>("AxisLabelY", [](auto& label) {
        label.m_layer = "Layer1";
        label.m_layoutCell = "DiagramLayoutCell";
        label.m_cellPlacement[0] = 0;
        label.m_cellPlacement[1] = 2;
        label.m_options[0] = label.m_options[1] = 0;
        label.m_positions[0] = {true, "LabelFont", "FontStyle"};
        label.m_positions[1] = {false, "LabelFont", "FontStyle"};
    });
    if (const auto grid = Object<CGridCartesian>("Y-Grid"))
        grid->m_axisLabel = "AxisLabelY";
    draw("AxisLabelY");

    AddObject<CStyleResource>("CurveLineStyle", [](auto& style) { style.m_lineStyle = curveLine; });
    const auto keepNewest = [this](auto& array) {
        array.SetMode(CDataArrayD::modeKeepNewest);
        array.SetCapacity(static_cast<std::size_t>(m_bufferSize));
    };
    AddObject<CDataArrayD>("MeasDataX", keepNewest);
    AddObject<CDataArrayD>("MeasDataY", keepNewest);
    AddObject<CCurveCartesian>("CurveCartesian", [](auto& curve) {
        curve.m_layer = "Layer1";
        curve.m_coordinateSystem = "CoordinateSystemCartesian";
        curve.m_on = true;
        curve.m_lineStyle = "CurveLineStyle";
        curve.m_type = "EYE_DIAGRAM";
        curve.m_data[0] = "MeasDataX";
        curve.m_data[1] = "MeasDataY";
    });
    draw("CurveCartesian");
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
    const auto x = Object<CDataArrayD>("MeasDataX");
    const auto y = Object<CDataArrayD>("MeasDataY");
    if (x && y) {
        // The last one belongs to the NaN that ends the trace.
        for (std::size_t i = 0; i <= count; ++i) {
            const double position = static_cast<double>(i) / divisor;
            x->Append(&position, 1);
        }
        y->Append(data, count);
        constexpr double separator = std::numeric_limits<double>::quiet_NaN();
        y->Append(&separator, 1);
    }

    Extent extent;
    for (const double* value = data; value != data + count; ++value)
        extent.Take(static_cast<float>(*value));
    extent.AddMargin();
    *AddRecord() = {extent.min, extent.max, count};

    ScaleTo(extent);
    TrimHistory();
}

void GLEyeDiagram::Clear()
{
    guiThread::checkObject(*this);
    while (!m_records.empty())
        RemoveRecord();
    for (const char* name : {"MeasDataX", "MeasDataY"}) {
        if (const auto array = Object<CDataArrayD>(name))
            array->Replace(nullptr, 0);
    }
    update();
}

std::vector<std::vector<QPointF>> GLEyeDiagram::GetTraces() const
{
    std::vector<std::vector<QPointF>> traces;
    const auto xData = Object<CDataArrayD>("MeasDataX");
    const auto yData = Object<CDataArrayD>("MeasDataY");
    if (!xData || !yData)
        return traces;
    double last = std::numeric_limits<double>::infinity();
    for (std::size_t i = 0; i + 1 < std::min(xData->Size(), yData->Size()); ++i) {
        const double x = xData->At(i);
        // The one before a step back is no sample: it ends its trace.
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

// Keeps the newest records up to the one with which they have as many samples as the buffer.
void GLEyeDiagram::TrimHistory()
{
    std::uint64_t total = 0;
    std::size_t kept = 0;
    while (kept < m_records.size() && total < static_cast<std::uint64_t>(m_bufferSize))
        total += m_records[kept++]->m_count;
    while (m_records.size() > kept)
        RemoveRecord();
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
    for (const char* name : {"MeasDataX", "MeasDataY"}) {
        if (const auto array = Object<CDataArrayD>(name))
            array->SetCapacity(static_cast<std::size_t>(m_bufferSize));
    }
}

void GLEyeDiagram::SetBaudrate(float) {}

void GLEyeDiagram::SetYStart(double start)
{
    m_yStart = start;
    ShowYRange();
}

void GLEyeDiagram::SetYStop(double stop)
{
    m_yStop = stop;
    ShowYRange();
}

void GLEyeDiagram::ShowYRange()
{
    if (const auto scale = Object<CScale>("Y-Scale"))
        scale->SetRange(m_yStart, m_yStop, 0);
}

void GLEyeDiagram::GetYStartStop(double& start, double& stop)
{
    if (const auto scale = Object<CScale>("Y-Scale")) {
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
    if (m_xAxisWidget) {
        m_xAxisWidget->FixShownRange(0.0, static_cast<double>(m_xSpan));
        // What else sets the axis lasts until the next paint, so there is one at once.
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

const QString& GLEyeDiagram::GetPropertyPagePath()
{
    return m_caption = caption(); // the language may have changed
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

void GLEyeDiagram::ShowProperties()
{
    const QPointer<GLEyeDiagram> self(this);
    diagramDialogs::runProperties(this, this, this, m_pContextMenu);
    if (self)
        m_pPropertyPage = nullptr;
}

// Called from the constructor as well, before there is a scene.
void GLEyeDiagram::ApplyPersistantAfterRead() { update(); }

void GLEyeDiagram::AutoScale()
{
    if (m_autoScaleTimer.isActive())
        return;
    m_autoScalePending = true;
    m_autoScaleTimer.start();
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

// Size, colours, font and scale of the moment; whether there is anything to paint.
bool GLEyeDiagram::UpdateScene(const QSize& size)
{
    if (!m_xAxisWidget || m_xSpan == 0.0F)
        return false;
    // Whoever observes the axis may take it away.
    const QPointer<GLEyeDiagram> alive(this);
    const std::shared_ptr<XAxisWidget> xAxis = m_xAxisWidget;
    xAxis->SetStartValue(0.0);
    if (!alive)
        return false;
    xAxis->SetStopValue(static_cast<double>(m_xSpan));
    if (!alive || !m_xAxisWidget)
        return false;
    if (const auto cell = Object<CLayoutCell>("BackgroundLayoutCell"))
        cell->m_geometry = QRect(0, -size.height(), size.width(), 2 * size.height());
    if (const auto cell = Object<CLayoutCell>("DiagramLayoutCell"))
        cell->m_geometry = QRect(QPoint(0, 0), size);
    if (const auto style = Object<CStyleResource>("FillStyleRect")) {
        style->m_firstColor = color(IColorBase::colEyeBackground);
        style->m_secondColor = color(IColorBase::colEyeBackgroundEnd);
    }
    for (const char* name : {"LineStyleGridMajorX", "LineStyleGridMajorY"}) {
        if (const auto style = Object<CStyleResource>(name)) {
            style->m_firstColor = color(IColorBase::colGrid);
            style->m_lineStyle = m_showGrid ? gridLine : hiddenLine;
        }
    }
    if (const auto style = Object<CStyleResource>("FontStyle")) {
        style->m_secondColor = color(IColorBase::colLabelBack);
        style->m_firstColor = color(IColorBase::colLabel);
    }
    if (const auto resource = Object<CFontResource>("LabelFont")) {
        const QFont font;
        resource->m_family = font.family().toStdWString();
        resource->m_size = CQuantity(font.pointSize(), quPoint, nullptr);
    }
    if (const auto scale = Object<CScale>("X-Scale")) {
        scale->SetRange(m_xAxisWidget->GetStartValue(), m_xAxisWidget->GetStopValue(), 0);
        scale->m_reciprocalSpan = 1.0 / static_cast<double>(m_xSpan);
    }
    if (const auto style = Object<CStyleResource>("CurveLineStyle"))
        style->m_firstColor = color(IColorBase::colEyeTrace);
    UpdateXGrid();
    m_pChartDisplay->Update();
    return true;
}

// The grid stands where the X axis has its lines. While that has none, the grid stays.
void GLEyeDiagram::UpdateXGrid()
{
    const std::vector<int> pixels = m_xAxisWidget->XPixelMap()->GetAxisDefinition().GetGridPos();
    if (pixels.empty())
        return;
    std::vector<double> positions;
    positions.reserve(pixels.size());
    for (const int pixel : pixels)
        positions.push_back(m_xAxisWidget->PixelToValue(pixel));
    if (const auto grid = Object<CGridCartesian>("X-Grid")) {
        grid->m_mode = CGridCartesian::userDefined;
        grid->m_userLines = "X-Grid-Data";
    }
    if (const auto lines = Object<CDataArrayD>("X-Grid-Data"))
        lines->Replace(positions.data(), positions.size());
}

GLEyeDiagram::ValueRecord* GLEyeDiagram::AddRecord()
{
    return traceHistory::addRecord(m_records, m_freeRecords);
}

void GLEyeDiagram::RemoveRecord() { traceHistory::removeRecord(m_records, m_freeRecords); }
