// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "eye/EyeScene.h"

#include "platform/chart/CDataArrayD.h"
#include "platform/chart/CGraphicEngineSwitch.h"
#include "platform/glwidgets/XAxisWidget.h"
#include "platform/gui/ColorSet.h"

#include <QFont>

#include <vector>

using namespace OndoChartDisplay;
using OndoChartDisplayComfort::CGraphicEngineSwitch;

namespace {

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

/// Adds the objects of the scene in order.
class Builder
{
public:
    explicit Builder(CChartDisplay& display)
        : m_display(display)
    {}

    void addGround()
    {
        add<CLayerDescription>(
            "Layer1", [](auto& layer) { layer.m_rendererId = CGraphicEngineSwitch::RENDERER_ID; });
        add<CLayoutCell>("BackgroundLayoutCell", nothing);
        add<CLayoutCell>("DiagramLayoutCell", nothing);
        add<CStyleResource>("FillStyleRect",
                            [](auto& style) { style.m_fillStyle = CStyleResource::gradientFill; });
        add<CRectangle>("DisplayBackground", [](auto& rectangle) {
            rectangle.m_layer = "Layer1";
            rectangle.m_layoutCell = "BackgroundLayoutCell";
            rectangle.m_style = "FillStyleRect";
        });
        draw("DisplayBackground");
    }
    void addScales()
    {
        add<CDiagramArea>("DiagramArea",
                          [](auto& area) { area.m_layoutCell = "DiagramLayoutCell"; });
        add<CCoordinateSystemCartesian>("CoordinateSystemCartesian", [](auto& system) {
            system.m_diagramArea = "DiagramArea";
            system.m_scales[0] = "X-Scale";
            system.m_scales[1] = "Y-Scale";
        });
        add<CScale>("X-Scale", [](auto& scale) { scale.SetRange(-1.0, 0.0, 0); });
        add<CScale>("Y-Scale", [](auto& scale) { scale.SetRange(-1.0, 1.0, 0); });
    }
    void addGrid()
    {
        const auto gridStyle = [](auto& style) {
            style.m_secondColor = {0, 0, 0, 0};
            style.m_firstColor = {255, 0, 0, 0};
            style.m_lineWidth = CQuantity(1.0, quLineWidth, nullptr);
            style.m_fillStyle = CStyleResource::noFill;
        };
        add<CStyleResource>("LineStyleGridMajorX", gridStyle);
        add<CStyleResource>("LineStyleGridMajorY", gridStyle);
        add<CGridCartesian>("X-Grid", [](auto& grid) {
            grid.m_coordinateSystem = "CoordinateSystemCartesian";
            grid.m_dimension = 0;
            grid.m_layer = "Layer1";
            grid.m_mode = CGridCartesian::linear;
            grid.m_lineStyles[0] = grid.m_lineStyles[1] = "LineStyleGridMajorX";
        });
        add<CGridCartesian>("Y-Grid", [](auto& grid) {
            grid.m_coordinateSystem = "CoordinateSystemCartesian";
            grid.m_dimension = 1;
            grid.m_layer = "Layer1";
            grid.m_mode = CGridCartesian::linear;
            grid.m_count = 8;
            grid.m_lineStyles[0] = grid.m_lineStyles[1] = "LineStyleGridMajorY";
        });
        draw("X-Grid");
        draw("Y-Grid");
        add<CDataArrayD>("X-Grid-Data", nothing);
    }
    void addLabels()
    {
        add<CFontResource>("LabelFont", nothing);
        add<CStyleResource>("FontStyle", [](auto& style) {
            style.m_lineStyle = 1;
            style.m_fillStyle = CStyleResource::plainFill;
        });
        add<CAxisLabel>("AxisLabelY", [](auto& label) {
            label.m_layer = "Layer1";
            label.m_layoutCell = "DiagramLayoutCell";
            label.m_cellPlacement[0] = 0;
            label.m_cellPlacement[1] = 2;
            label.m_options[0] = label.m_options[1] = 0;
            label.m_positions[0] = {true, "LabelFont", "FontStyle"};
            label.m_positions[1] = {false, "LabelFont", "FontStyle"};
        });
        if (const auto grid = eyeScene::object<CGridCartesian>(m_display, "Y-Grid"))
            grid->m_axisLabel = "AxisLabelY";
        draw("AxisLabelY");
    }
    void addCurve(std::size_t capacity)
    {
        add<CStyleResource>("CurveLineStyle", [](auto& style) { style.m_lineStyle = curveLine; });
        const auto keepNewest = [capacity](auto& array) {
            array.SetMode(CDataArrayD::modeKeepNewest);
            array.SetCapacity(capacity);
        };
        add<CDataArrayD>("MeasDataX", keepNewest);
        add<CDataArrayD>("MeasDataY", keepNewest);
        add<CCurveCartesian>("CurveCartesian", [](auto& curve) {
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

private:
    template<class T, class Configure>
    void add(const char* name, const Configure& configure)
    {
        CPtr handle = m_display.Factory().InternalCreateObject(T::CLASS, name);
        if (const auto object = CSmartPtr<T>(handle.CheckAndGetBaseObject()))
            configure(*object);
        handle.FreeRef();
    }
    static void nothing(CBaseObject&) {}
    void draw(const char* name) { m_display.ObjectManager().AddObject(name, "", 0); }

    CChartDisplay& m_display;
};

} // namespace

void eyeScene::build(CChartDisplay& display, std::size_t capacity)
{
    Builder builder(display);
    builder.addGround();
    builder.addScales();
    builder.addGrid();
    builder.addLabels();
    builder.addCurve(capacity);
}

void eyeScene::setCapacity(CChartDisplay& display, std::size_t capacity)
{
    for (const char* name : {"MeasDataX", "MeasDataY"}) {
        if (const auto array = object<CDataArrayD>(display, name))
            array->SetCapacity(capacity);
    }
}

namespace {

void takeLooks(CChartDisplay& display, const eyeScene::Look& look)
{
    using eyeScene::object;
    if (const auto cell = object<CLayoutCell>(display, "BackgroundLayoutCell"))
        cell->m_geometry = QRect(0, -look.size.height(), look.size.width(), 2 * look.size.height());
    if (const auto cell = object<CLayoutCell>(display, "DiagramLayoutCell"))
        cell->m_geometry = QRect(QPoint(0, 0), look.size);
    if (const auto style = object<CStyleResource>(display, "FillStyleRect")) {
        style->m_firstColor = color(IColorBase::colEyeBackground);
        style->m_secondColor = color(IColorBase::colEyeBackgroundEnd);
    }
    for (const char* name : {"LineStyleGridMajorX", "LineStyleGridMajorY"}) {
        if (const auto style = object<CStyleResource>(display, name)) {
            style->m_firstColor = color(IColorBase::colGrid);
            style->m_lineStyle = look.showGrid ? gridLine : hiddenLine;
        }
    }
    if (const auto style = object<CStyleResource>(display, "FontStyle")) {
        style->m_secondColor = color(IColorBase::colLabelBack);
        style->m_firstColor = color(IColorBase::colLabel);
    }
    if (const auto resource = object<CFontResource>(display, "LabelFont")) {
        const QFont font;
        resource->m_family = font.family().toStdWString();
        resource->m_size = CQuantity(font.pointSize(), quPoint, nullptr);
    }
}

// Puts the grid where the X axis has its lines. While the axis has none, the grid stays.
void takeXGrid(CChartDisplay& display, const XAxisWidget& xAxis)
{
    using eyeScene::object;
    const std::vector<int> pixels = xAxis.XPixelMap()->GetAxisDefinition().GetGridPos();
    if (pixels.empty())
        return;
    std::vector<double> positions;
    positions.reserve(pixels.size());
    for (const int pixel : pixels)
        positions.push_back(xAxis.PixelToValue(pixel));
    if (const auto grid = object<CGridCartesian>(display, "X-Grid")) {
        grid->m_mode = CGridCartesian::userDefined;
        grid->m_userLines = "X-Grid-Data";
    }
    if (const auto lines = object<CDataArrayD>(display, "X-Grid-Data"))
        lines->Replace(positions.data(), positions.size());
}

} // namespace

void eyeScene::update(CChartDisplay& display, const Look& look, const XAxisWidget& xAxis)
{
    takeLooks(display, look);
    if (const auto scale = object<CScale>(display, "X-Scale")) {
        scale->SetRange(xAxis.GetStartValue(), xAxis.GetStopValue(), 0);
        scale->m_reciprocalSpan = 1.0 / look.xSpan;
    }
    if (const auto style = object<CStyleResource>(display, "CurveLineStyle"))
        style->m_firstColor = color(IColorBase::colEyeTrace);
    takeXGrid(display, xAxis);
    display.Update();
}
