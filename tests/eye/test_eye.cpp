// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "EyeTestAccess.h"

#include <QDoubleSpinBox>
#include <QSpinBox>

#include <gmock/gmock.h>

#include <cmath>

using namespace OndoChartDisplay;

namespace {

constexpr double nan = NAN;

struct Eye : EyeFixture, testing::Test
{
    void add(std::vector<double> samples) { eye->AddData(samples); }
    std::pair<double, double> range()
    {
        std::pair<double, double> result;
        eye->GetYStartStop(result.first, result.second);
        return result;
    }
};

TEST_F(Eye, TracesLieOverTheUnitInterval)
{
    add({});
    add({1});
    EXPECT_TRUE(TestAccess::records(*eye).empty());
    add({3, 4});
    eye->SetBaudrate(300);
    EXPECT_THAT(TestAccess::values(*eye, "MeasDataX"),
                testing::ElementsAre(0.0, 1.0 / 1.001, 2.0 / 1.001));
    EXPECT_THAT(TestAccess::values(*eye, "MeasDataY"),
                testing::ElementsAre(3, 4, testing::IsNan()));
    for (const auto& [length, kept] : std::initializer_list<std::pair<std::size_t, std::size_t>>{
             {100, 10}, {300, 4}, {1500, 1}}) {
        for (int i = 0; i < 30; ++i)
            add(std::vector<double>(length, i));
        EXPECT_EQ(TestAccess::records(*eye).size(), kept);
        EXPECT_EQ(TestAccess::values(*eye, "MeasDataX").size(), 1000U);
        EXPECT_TRUE(std::isnan(TestAccess::values(*eye, "MeasDataY").back()));
    }
}

TEST_F(Eye, AutoScalePassesOverSamplesThatAreNoNumbers)
{
    attach(200, 100);
    eye->AutoScale();
    add({-1, nan, 1});
    EXPECT_EQ(range(), std::make_pair(double(-1.1F), double(1.1F)));
    eye->SetYStart(nan); // no sample moves it
    eye->SetYStop(nan);
    add({0, 3});
    EXPECT_TRUE(std::isnan(range().first) && std::isnan(range().second));
    TestAccess::timer(*eye).stop();
    eye->AutoScale();
    add({nan, nan}); // a huge reversed range
    EXPECT_FALSE(picture(*eye).isNull());
    EXPECT_GT(range().first, range().second);
}

TEST_F(Eye, SettingsPageLimitsTheXRangeAndSizesTheBuffer)
{
    attach(200, 100);
    xAxis->SetRange(-20.0, 0.5);
    for (int i = 0; i < 10; ++i)
        add(std::vector<double>(99, i));
    IHasPropertyPage& pages = *eye;
    const std::unique_ptr<QWidget> page(pages.GetPropertyPage(nullptr, "page"));
    EXPECT_EQ(page->findChildren<QDoubleSpinBox*>()[1]->value(), 0.0); // limited to -100 to 0
    const auto before = object<CDataArrayD>("MeasDataX").GetState();
    eye->slotAcceptPropertyChanges();
    EXPECT_EQ(xAxis->GetStopValue(), 0.5);
    EXPECT_TRUE(object<CDataArrayD>("MeasDataX").GetState() == before);
    page->findChild<QSpinBox*>()->setValue(300);
    eye->slotAcceptPropertyChanges();
    for (const char* name : {"MeasDataX", "MeasDataY"})
        EXPECT_EQ(TestAccess::values(*eye, name).size(), 300U);
    EXPECT_EQ(TestAccess::records(*eye).size(), 10U);
    add({0, 1});
    EXPECT_EQ(TestAccess::records(*eye).size(), 5U); // 2 + 4 * 99 >= 300
}

TEST_F(Eye, PaintSetsUpTheSceneAndShowsTheTrace)
{
    eye->resize(400, 300);
    EXPECT_EQ(picture(*eye).pixel(200, 150), qRgb(255, 0, 255)); // no X axis: nothing painted
    xAxis->SetRange(-3.0, 7.0);
    eye->setXAxisWidget(xAxis); // without a length yet
    picture(*eye);
    EXPECT_EQ(object<CGridCartesian>("X-Grid").m_mode, "LIN");
    EXPECT_EQ(xAxis->GetStartValue(), 0.0);
    EXPECT_EQ(xAxis->GetStopValue(), 1.0);
    EXPECT_EQ(object<CLayoutCell>("BackgroundLayoutCell").m_geometry, QRect(0, -300, 400, 600));
    EXPECT_EQ(object<CLayoutCell>("DiagramLayoutCell").m_geometry, QRect(0, 0, 400, 300));

    attach(400, 300);
    add(std::vector<double>(100, 0.1));
    for (const double ratio : {1.0, 2.0}) {
        const QPointF at = QPointF(200, 135) * ratio; // 0.1 of -1..1 over 299 rows
        EXPECT_EQ(picture(*eye, ratio).pixel(at.toPoint()), colorOf(IColorBase::colEyeTrace));
    }
    TestAccess::showGrid(*eye) = false;
    picture(*eye);
    for (const char* name : {"LineStyleGridMajorX", "LineStyleGridMajorY"})
        EXPECT_EQ(object<CStyleResource>(name).m_lineStyle, 0);
    attach(150, 300);
    picture(*eye);
    EXPECT_EQ(TestAccess::values(*eye, "X-Grid-Data").size(),
              xAxis->XPixelMap()->GetAxisDefinition().GetGridPos().size());
    EXPECT_EQ(object<CGridCartesian>("X-Grid").m_mode, "USERDEF");
}

} // namespace
