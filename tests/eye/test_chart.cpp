// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "EyeTestAccess.h"

#include <gmock/gmock.h>

#include <cmath>
#include <deque>
#include <random>

using namespace OndoChartDisplay;

namespace {

constexpr double nan = NAN;
constexpr double inf = INFINITY;
/// The eye's scene of 40 x 30 pixels, with a curve of any points.
struct Chart : EyeFixture
{
    Chart()
    {
        attach(40, 30);
        eye->SetYStart(0.0);
        setCapacity(300);
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
    QImage afresh(double ratio = 1.0) { return TestAccess::paintedAfresh(*eye, ratio); }
    int lit(double ratio = 1.0) { return count(picture(*eye, ratio), IColorBase::colEyeTrace); }

    CDataArrayD& x = object<CDataArrayD>("MeasDataX");
    CDataArrayD& y = object<CDataArrayD>("MeasDataY");
    CCurveCartesian& curve = object<CCurveCartesian>("CurveCartesian");
};

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
}

TEST(Chart, FollowedPictureIsThePictureDrawnAfresh)
{
    std::mt19937 random(5);
    std::normal_distribution<double> level(0.0, 0.5);
    const double odd[] = {nan, inf, -inf, 1e35, -1e308};
    for (const double ratio : {1.0, 1.25, 1.5, 2.0, 3.0}) {
        Chart chart;
        for (int i = 0; i < 300; ++i) {
            switch (random() % 24) {
            case 0:
                chart.setCapacity(random() % 400);
                break;
            case 1:
                chart.eye->SetYStart(random() % 2 ? 0.0 : 0.5 + level(random));
                chart.eye->SetYStop(random() % 2 ? 1.0 : 0.5 + level(random));
                break;
            case 2:
                chart.eye->resize(static_cast<int>(random() % 200),
                                  random() % 2 ? static_cast<int>(random() % 120) : 59);
                break;
            case 3:
                chart.curve.m_on = random() % 4 > 0;
                TestAccess::showGrid(*chart.eye) = random() % 2;
                break;
            case 4:
                chart.object<CStyleResource>("CurveLineStyle").m_lineWidth = CQuantity(
                    random() % 8 ? 1.0 + double(random() % 3) : 100.0, quLineWidth, nullptr);
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
                const double spread = random() % 2 ? 1.0 : 0.1; // steep and flat lines
                const bool onPixels = random() % 2;             // where rounding decides
                for (std::size_t k = 0; k <= count; ++k) {
                    const double y = 0.5 + spread * level(random);
                    points.emplace_back(double(k) / double(count),
                                        random() % 30 ? onPixels ? std::round(58 * y) / 58 : y
                                                      : odd[random() % 5]);
                }
                if (random() % 4)
                    points.back().second = nan;
                chart.append(points);
            }
            }
            ASSERT_EQ(picture(*chart.eye, ratio), chart.afresh(ratio)) << ratio << ' ' << i;
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
        const QImage image = picture(*chart.eye);
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
                const bool isLit = image.pixel(column, row) == colorOf(IColorBase::colEyeTrace);
                ASSERT_TRUE(isLit ? !isFar : !isNear) << i << ' ' << column << ' ' << row;
            }
        }
    }
}

TEST(Chart, WidthAndBreaks)
{
    Chart chart;
    std::vector<std::pair<double, double>> points;
    for (const auto& [column, row] : std::initializer_list<std::pair<double, double>>{
             {5, 19}, {10, 19}, {15, nan}, {20, 19}, {25, 19}, {25, inf}, {30, 19}})
        points.emplace_back(column / 39, 1.0 - row / 29);
    chart.append(points);
    EXPECT_EQ(chart.lit(2.0), 2 * 10 * 2); // two lines of ten device pixels, two thick
    const QImage image = picture(*chart.eye, 2.0);
    for (const int row : {38, 39})
        EXPECT_EQ(image.pixel(15, row), colorOf(IColorBase::colEyeTrace));

    picture(*chart.eye);
    const std::vector<double> lower(points.size(), 0.3);
    chart.y.Replace(lower.data(), lower.size());
    EXPECT_EQ(picture(*chart.eye), chart.afresh());
    for (CDataArrayD* array : {&chart.y, &chart.x}) { // a pair that comes in two parts
        const double value = 0.9;
        array->Append(&value, 1);
        EXPECT_EQ(picture(*chart.eye), chart.afresh());
    }
}

// More segments cover a pixel than 16 bits can count.
TEST(Chart, ManyValuesOverOnePixel)
{
    Chart chart;
    chart.setCapacity(200000);
    const auto append = [&chart](std::size_t count, double level) {
        for (std::size_t i = 0; i < count; ++i)
            chart.append({{i % 2 ? 0.25 : 0.5, level}});
        picture(*chart.eye);
    };
    for (const std::size_t count : {45000, 20500, 100})
        append(count, 0.5);
    chart.setCapacity(65500); // as many go as there were too many
    EXPECT_EQ(picture(*chart.eye), chart.afresh());
    chart.setCapacity(200000);
    chart.setCapacity(65500);
    append(65500, 0.5);
    append(30000, 0.5); // they come before as many go
    EXPECT_EQ(picture(*chart.eye), chart.afresh());
    chart.setCapacity(200000);
    append(100000, 0.75);
    chart.setCapacity(160000);
    EXPECT_EQ(picture(*chart.eye), chart.afresh());
    EXPECT_GE(chart.lit(), 20); // two levels
}

TEST(Chart, DegenerateScalesDrawNoTrace)
{
    Chart chart;
    chart.append({{0, 0}, {1, 1}, {0, 1}});
    for (const auto& [start, stop] : std::initializer_list<std::pair<double, double>>{
             {1, 1}, {nan, 1}, {0, inf}, {-1.7e308, 1.7e308}, {0, 5e-324}}) {
        chart.eye->SetYStart(start);
        chart.eye->SetYStop(stop);
        EXPECT_EQ(chart.lit(), 0) << start << stop;
    }
    chart.eye->SetYStart(1.1e35); // a huge reversed range still maps
    chart.eye->SetYStop(-1.1e35);
    EXPECT_EQ(chart.lit(), 39);
    chart.curve.m_coordinateSystem = "DiagramArea"; // an object of another class
    EXPECT_EQ(chart.lit(), 0);
}

} // namespace
