// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "EyeTestAccess.h"

#include <QDoubleSpinBox>
#include <QMenu>
#include <QSpinBox>
#include <QTest>

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

TEST_F(Eye, AutoScaleReplacesTheRangeThenWidensIt)
{
    add({-5, 5});
    EXPECT_EQ(range(), std::make_pair(-1.0, 1.0)); // idle
    EXPECT_EQ(TestAccess::timer(*eye).interval(), 2000);
    TestAccess::timer(*eye).setTimerType(Qt::PreciseTimer);
    eye->AutoScale();
    add({-1, nan, 1});
    EXPECT_EQ(range(), std::make_pair(double(-1.1F), double(1.1F)));
    add({0, 3});
    EXPECT_EQ(range(), std::make_pair(double(-1.1F), double(3.15F)));
    QTest::qWait(30);
    eye->AutoScale(); // within the period
    EXPECT_FALSE(TestAccess::pending(*eye));
    EXPECT_LE(TestAccess::timer(*eye).remainingTime(), 2000 - 30);
    TestAccess::timer(*eye).stop();
    add({-9, 9});
    EXPECT_EQ(range().second, double(3.15F));
    eye->AutoScale();
    TestAccess::timer(*eye).stop();
    add({0, 20});
    add({0, 40}); // the period was over before the first came
    EXPECT_EQ(range(), std::make_pair(-1.0, 21.0));
    attach(200, 100);
    eye->AutoScale();
    add({nan, nan}); // a huge reversed range
    EXPECT_FALSE(picture(*eye).isNull());
    EXPECT_GT(range().first, range().second);
    eye->AutoScale();
    TestAccess::timer(*eye).start();
    add({0, 1});
    add({0, 2});
    EXPECT_EQ(range().second, double(2.1F));
    eye->SetYStart(nan); // no sample moves it
    eye->SetYStop(nan);
    add({0, 3});
    EXPECT_TRUE(std::isnan(range().first) && std::isnan(range().second));
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
    static_cast<IHasContextMenu&>(*eye)
        .getContextMenu(nullptr, nullptr, 0)
        ->actions()[1]
        ->trigger();
    EXPECT_TRUE(TestAccess::pending(*eye));
}

TEST_F(Eye, PaintShowsGroundGridLabelsAndTraces)
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

    xAxis->SetRange(-3.0, 7.0); // the lines are those of the range that the paint sets
    attach(400, 300);
    add(std::vector<double>(100, 0.1));
    picture(*eye);
    const std::vector<double> firstLines = TestAccess::values(*eye, "X-Grid-Data");
    EXPECT_THAT(firstLines, testing::Each(testing::AllOf(testing::Ge(0.0), testing::Le(1.0))));
    const std::vector<int> lines = xAxis->XPixelMap()->GetAxisDefinition().GetGridPos();
    ASSERT_GT(lines.size(), 2U);
    EXPECT_EQ(firstLines.size(), lines.size());
    for (const double ratio : {1.0, 2.0}) {
        const QImage image = picture(*eye, ratio);
        const auto at = [&image, ratio](int x, int y) {
            return image.pixel(static_cast<int>(x * ratio), static_cast<int>(y * ratio));
        };
        EXPECT_EQ(at(lines[1], 80), colorOf(IColorBase::colGrid));
        int labels = 0;
        for (int y = 0; y < 300; ++y)
            labels += at(2, y) == colorOf(IColorBase::colLabel);
        EXPECT_TRUE(labels >= 4 && labels <= 8) << labels;
        EXPECT_EQ(at(200, 135), colorOf(IColorBase::colEyeTrace)); // 0.1 of -1..1 over 299 rows
    }
    TestAccess::showGrid(*eye) = false;
    const QImage image = picture(*eye);
    for (const char* name : {"LineStyleGridMajorX", "LineStyleGridMajorY"})
        EXPECT_EQ(object<CStyleResource>(name).m_lineStyle, 0);
    EXPECT_NE(image.pixel(lines[1], 75), colorOf(IColorBase::colGrid));
    EXPECT_EQ(image.pixel(2, 150), colorOf(IColorBase::colLabel)); // labels stay
    attach(150, 300);
    picture(*eye);
    EXPECT_EQ(TestAccess::values(*eye, "X-Grid-Data").size(),
              xAxis->XPixelMap()->GetAxisDefinition().GetGridPos().size());
    EXPECT_EQ(object<CGridCartesian>("X-Grid").m_mode, "USERDEF");
}

} // namespace
