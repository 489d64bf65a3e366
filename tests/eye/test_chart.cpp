// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "EyeTestAccess.h"
#include "platform/chart/CGraphicEngineSwitch.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <deque>
#include <limits>
#include <memory>
#include <random>

using namespace OndoChartDisplay;
using OndoChartDisplayComfort::CGraphicEngineSwitch;

namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double inf = std::numeric_limits<double>::infinity();
constexpr QRgb ground = 0xff102030U;
constexpr QRgb trace = 0xffffff00U;

/// A plain ground and one curve over the whole widget.
struct Chart : QWidget
{
    std::unique_ptr<CChartDisplay> scene = std::make_unique<CChartDisplay>();
    CGraphicEngineSwitch following{scene.get(), this, OndoChartDisplayComfort::geRaster, true,
                                   false};
    CGraphicEngineSwitch* engine = &following;

    Chart()
    {
        add<CLayerDescription>("Layer").m_rendererId = CGraphicEngineSwitch::RENDERER_ID;
        add<CLayoutCell>("Cell");
        auto& fill = add<CStyleResource>("Fill");
        fill.m_fillStyle = CStyleResource::plainFill;
        fill.m_firstColor = {255, 0x10, 0x20, 0x30};
        auto& rectangle = add<CRectangle>("Ground");
        rectangle.m_layer = "Layer";
        rectangle.m_layoutCell = "Cell";
        rectangle.m_style = "Fill";
        add<CDiagramArea>("Area").m_layoutCell = "Cell";
        auto& system = add<CCoordinateSystemCartesian>("System");
        system.m_diagramArea = "Area";
        system.m_scales[0] = "X";
        system.m_scales[1] = "Y";
        add<CScale>("X");
        add<CScale>("Y");
        auto& grid = add<CGridCartesian>("Grid");
        grid.m_layer = "Layer";
        grid.m_coordinateSystem = "System";
        grid.m_dimension = 1;
        grid.m_lineStyles[0] = "GridStyle";
        grid.m_axisLabel = "Label";
        add<CStyleResource>("GridStyle").m_lineStyle = CStyleResource::noLine;
        add<CStyleResource>("LabelStyle").m_fillStyle = CStyleResource::plainFill;
        auto& label = add<CAxisLabel>("Label");
        label.m_layer = "Layer";
        label.m_layoutCell = "Cell";
        label.m_positions[1] = {false, "", "LabelStyle"};
        add<CStyleResource>("Style").m_firstColor = {255, 0xff, 0xff, 0};
        x.SetMode(CDataArrayD::modeKeepNewest);
        y.SetMode(CDataArrayD::modeKeepNewest);
        setCapacity(300);
        curve.m_layer = "Layer";
        curve.m_coordinateSystem = "System";
        curve.m_on = true;
        curve.m_lineStyle = "Style";
        curve.m_data[0] = "XData";
        curve.m_data[1] = "YData";
        for (const char* name : {"Ground", "Grid", "Label", "Curve"})
            scene->ObjectManager().AddObject(name, "", 0);
        resize(40, 30);
    }
    template<class T>
    T& add(const char* name)
    {
        return dynamic_cast<T&>(
            *scene->Factory().InternalCreateObject(T::CLASS, name).CheckAndGetBaseObject());
    }
    template<class T>
    T& get(const char* name)
    {
        return *CSmartPtr<T>(scene->FindBaseObject(name));
    }
    void setCapacity(std::size_t capacity)
    {
        x.SetCapacity(capacity);
        y.SetCapacity(capacity);
    }
    void append(const std::vector<std::pair<double, double>>& points)
    {
        for (const auto& [px, py] : points) {
            x.Append(&px, 1);
            y.Append(&py, 1);
        }
    }
    void paintEvent(QPaintEvent*) override
    {
        get<CLayoutCell>("Cell").m_geometry = rect();
        scene->Update();
        engine->Update(false);
    }
    QImage afresh(double ratio)
    {
        CGraphicEngineSwitch other(scene.get(), this, OndoChartDisplayComfort::geRaster, true,
                                   false);
        engine = &other;
        QImage image = picture(*this, ratio);
        engine = &following;
        return image;
    }
    CDataArrayD& x = add<CDataArrayD>("XData");
    CDataArrayD& y = add<CDataArrayD>("YData");
    CCurveCartesian& curve = add<CCurveCartesian>("Curve");
};

int countLit(const QImage& image)
{
    int lit = 0;
    for (int row = 0; row < image.height(); ++row) {
        for (int column = 0; column < image.width(); ++column)
            lit += image.pixel(column, row) == trace;
    }
    return lit;
}

TEST(DataArray, KeepsTheNewestValuesThroughAppendsAndCapacities)
{
    std::mt19937 random(3);
    CDataArrayD array;
    array.SetMode(CDataArrayD::modeKeepNewest);
    std::deque<double> model;
    std::size_t capacity = 0;
    double next = 0.0;
    for (int i = 0; i < 2000; ++i) {
        if (random() % 8 == 0) {
            capacity = random() % 30;
            array.SetCapacity(capacity);
        } else {
            std::vector<double> values(random() % 50);
            for (double& value : values)
                value = next++;
            array.Append(values.data(), values.size());
            model.insert(model.end(), values.begin(), values.end());
        }
        while (model.size() > capacity)
            model.pop_front();
        ASSERT_THAT(array.Values(), testing::ElementsAreArray(model)) << i;
        ASSERT_TRUE(model.empty() || array.At(model.size() / 2) == model[model.size() / 2]) << i;
    }
    EXPECT_TRUE(std::isnan(array.At(model.size())));
    const double few[] = {1, 2};
    array.SetCapacity(10);
    array.Replace(few, 2);
    EXPECT_THAT(array.Values(), testing::ElementsAre(1, 2));
    array.Append(nullptr, 0);
    array.SetMode(CDataArrayD::modeUnbounded);
    for (int i = 0; i < 10; ++i)
        array.Append(few, 2);
    EXPECT_EQ(array.Size(), 22U);
}

TEST(ChartScene, HandlesLeadToObjectsOfTheSceneWhileThereIsOne)
{
    auto scene = std::make_unique<CChartDisplay>();
    CFactory& factory = scene->Factory();
    CPtr handle = factory.InternalCreateObject(CScale::CLASS, "Scale");
    EXPECT_EQ(handle.CheckAndGetBaseObject(), scene->FindBaseObject("Scale"));
    const std::pair<const char*, const char*> bad[] = {{CScale::CLASS, "Scale"},
                                                       {"COther", "A"},
                                                       {CScale::CLASS, ""},
                                                       {nullptr, "A"},
                                                       {CScale::CLASS, nullptr}};
    for (const auto& [className, name] : bad)
        EXPECT_FALSE(factory.InternalCreateObject(className, name).CheckAndGetBaseObject());
    EXPECT_FALSE(scene->FindBaseObject("A"));
    EXPECT_FALSE(scene->FindBaseObject(nullptr));
    EXPECT_FALSE(CSmartPtr<CLayoutCell>(scene->FindBaseObject("Scale")));
    handle.AddRef();
    handle.FreeRef();
    EXPECT_TRUE(handle.CheckAndGetBaseObject());
    for (int i = 0; i < 3; ++i)
        handle.FreeRef();
    handle.AddRef();
    EXPECT_FALSE(handle.CheckAndGetBaseObject());

    const CPtr other = factory.InternalCreateObject(CScale::CLASS, "Other");
    const CSmartPtr<CScale> held(scene->FindBaseObject("Scale"));
    scene.reset();
    EXPECT_FALSE(other.CheckAndGetBaseObject());
    held->SetRange(1.0, 2.0, 0);
    EXPECT_EQ(held->GetStop(), 2.0);

    Chart chart;
    chart.scene.reset();
    chart.following.Update(true); // nothing to draw, no widget's paint
}

TEST(Chart, FollowedPictureIsThePictureDrawnAfresh)
{
    std::mt19937 random(5);
    std::normal_distribution<double> level(0.5, 0.5);
    const double odd[] = {nan, inf, -inf, 1e35, -1e308};
    for (const double ratio : {1.0, 1.5, 2.0}) {
        Chart chart;
        for (int i = 0; i < 300; ++i) {
            switch (random() % 24) {
            case 0:
                chart.setCapacity(random() % 400);
                break;
            case 1:
                chart.get<CScale>("Y").SetRange(level(random), level(random), 0);
                break;
            case 2:
                chart.resize(static_cast<int>(random() % 80), static_cast<int>(random() % 60));
                break;
            case 3:
                chart.curve.m_on = !chart.curve.m_on;
                chart.get<CAxisLabel>("Label").m_positions[1].on = random() % 2;
                chart.get<CStyleResource>("GridStyle").m_lineStyle = static_cast<int>(random() % 2);
                break;
            case 4:
                chart.get<CStyleResource>("Style").m_lineWidth =
                    CQuantity(1.0 + double(random() % 3), quLineWidth, nullptr);
                break;
            case 5:
                (random() % 2 ? chart.x : chart.y).Append(&odd[3], 1); // the pairs are others now
                break;
            case 6:
                chart.y.Replace(chart.y.Values().data(), chart.y.Size() / 2);
                break;
            default: {
                std::vector<std::pair<double, double>> points;
                const std::size_t count = random() % 40;
                for (std::size_t k = 0; k <= count; ++k)
                    points.emplace_back(double(k) / double(count),
                                        random() % 30 ? level(random) : odd[random() % 5]);
                if (random() % 4)
                    points.back().second = nan;
                chart.append(points);
            }
            }
            ASSERT_EQ(picture(chart, ratio), chart.afresh(ratio)) << ratio << ' ' << i;
        }
    }
}

// Each lit pixel touches the line; between the ends each column, or row where it is steep, is lit.
TEST(Chart, LitPixelsLieOnTheLine)
{
    std::mt19937 random(7);
    std::uniform_real_distribution<double> place(-0.5, 1.5);
    for (int i = 0; i < 200; ++i) {
        Chart chart;
        const double x1 = place(random), y1 = place(random), x2 = place(random), y2 = place(random);
        chart.append({{nan, nan}, {x1, y1}, {x2, y2}});
        const QImage image = picture(chart);
        // Centres of the points in pixels; y points up.
        const double px1 = 0.5 + 39 * x1, px2 = 0.5 + 39 * x2;
        const double py1 = 0.5 + 29 * (1 - y1), py2 = 0.5 + 29 * (1 - y2);
        const bool steep = std::abs(py2 - py1) > std::abs(px2 - px1);
        for (int row = 0; row < 30; ++row) {
            for (int column = 0; column < 40; ++column) {
                const double t =
                    steep ? (row + 0.5 - py1) / (py2 - py1) : (column + 0.5 - px1) / (px2 - px1);
                const double distance = steep ? px1 + t * (px2 - px1) - (column + 0.5)
                                              : py1 + t * (py2 - py1) - (row + 0.5);
                // Rounding decides at the edges of pixels, and at the ends of the line.
                const bool isNear = t > 0.001 && t < 0.999 && std::abs(distance) < 0.499;
                const bool isFar = t < -0.05 || t > 1.05 || std::abs(distance) > 0.501;
                const QRgb pixel = image.pixel(column, row);
                ASSERT_TRUE(!isNear || pixel == trace) << i << ' ' << column << ' ' << row;
                ASSERT_TRUE(!isFar || pixel == ground) << i << ' ' << column << ' ' << row;
            }
        }
    }
}

TEST(Chart, WidthAndBreaks)
{
    Chart chart;
    chart.get<CScale>("X").SetRange(0.0, 39.0, 0);
    chart.get<CScale>("Y").SetRange(0.0, 29.0, 0);
    chart.append({{5, 10}, {10, 10}, {15, nan}, {20, 10}, {25, 10}, {25, inf}, {30, 10}});
    QImage image = picture(chart, 2.0);
    EXPECT_EQ(countLit(image), 2 * 10 * 2); // two lines of ten device pixels, two thick
    EXPECT_EQ(image.pixel(15, 38), trace);
    EXPECT_EQ(image.pixel(15, 39), trace);

    picture(chart);
    const std::vector<double> lower(chart.y.Size(), 3.0);
    chart.y.Replace(lower.data(), lower.size());
    EXPECT_EQ(picture(chart), chart.afresh(1.0));
}

// More segments cover a pixel than 16 bits can count.
TEST(Chart, ManyValuesOverOnePixel)
{
    Chart chart;
    chart.setCapacity(200000);
    const auto append = [&chart](std::size_t count, double level) {
        for (std::size_t i = 0; i < count; ++i)
            chart.append({{i % 2 ? 0.25 : 0.5, level}});
        picture(chart);
    };
    for (const std::size_t count : {45000, 20500, 100})
        append(count, 0.5);
    chart.setCapacity(65500); // as many go as there were too many
    EXPECT_EQ(picture(chart), chart.afresh(1.0));
    chart.setCapacity(200000);
    append(100000, 0.75);
    chart.setCapacity(160000);
    EXPECT_EQ(picture(chart), chart.afresh(1.0));
    EXPECT_GE(countLit(picture(chart)), 20); // two levels
}

TEST(Chart, DegenerateScalesDrawTheGroundAlone)
{
    for (const auto& [start, stop] : std::initializer_list<std::pair<double, double>>{
             {1, 1}, {nan, 1}, {0, inf}, {-1.7e308, 1.7e308}, {0, 5e-324}}) {
        for (const char* scale : {"X", "Y"}) {
            Chart chart;
            chart.append({{0, 0}, {1, 1}, {0, 1}});
            chart.get<CStyleResource>("GridStyle").m_lineStyle = 1;
            chart.get<CScale>(scale).SetRange(start, stop, 0);
            EXPECT_EQ(countLit(picture(chart)), 0) << scale << start << stop;
        }
    }
    Chart chart;
    chart.append({{0, 0}, {1, 1}});
    chart.get<CScale>("Y").SetRange(1.1e35, -1.1e35, 0); // a huge reversed range still maps
    EXPECT_EQ(countLit(picture(chart)), 39);
    chart.curve.m_coordinateSystem = "Area"; // an object of another class
    EXPECT_EQ(countLit(picture(chart)), 0);
}

} // namespace
