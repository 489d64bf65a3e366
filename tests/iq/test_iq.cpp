// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "glbase/FrameFixture.h"
#include "iq/GLIQDiagram.h"
#include "platform/glwidgets/XAxisWidget.h"
#include "platform/glwidgets/YAxisHandler.h"
#include "platform/gui/ColorSet.h"

#include <QDoubleSpinBox>
#include <QTest>
#include <QTimer>

using Samples = std::vector<float>;

struct Range
{
    double start;
    double stop;
};

/// A diagram of 201 x 101 pixels below a header and above a footer; red points, all else is black.
struct TestAccess : FrameFixture
{
    std::shared_ptr<GLIQDiagram> diagram = std::make_shared<GLIQDiagram>("IQDiagram", nullptr);
    std::shared_ptr<XAxisWidget> xAxis = std::make_shared<XAxisWidget>("XAxis", nullptr);
    std::vector<GLIQDiagram::ValueRecord*>& records = diagram->m_records;
    std::vector<GLIQDiagram::ValueRecord*>& freeRecords = diagram->m_freeRecords;
    QTimer& timer = diagram->m_autoScaleTimer;
    QDateTime& lastPaint = diagram->m_lastPaintTime;
    double& aging = diagram->m_aging;

    TestAccess()
    {
        frame.RemoveWidget(*plot);
        frame.RemoveWidget(*footer);
        frame.AddWidget(diagram);
        frame.AddWidget(footer);
        frame.resize(201, 25 + 101 + 16);
        diagram->setXAxisWidget(xAxis);
        for (int number = 0; number < 200; ++number)
            ColorSet::Instance()[static_cast<IColorBase::ECOLOR>(number)] = Qt::black;
        ColorSet::Instance()[IColorBase::colIQPoint] = QColor(255, 0, 0, 9); // alpha: no matter
    }
    ~TestAccess() { frame.RemoveWidget(*diagram); }
    void setRanges(const Range& x, const Range& y)
    {
        xAxis->SetRange(x.start, x.stop);
        diagram->SetYStart(y.start);
        diagram->SetYStop(y.stop);
    }
    void add(Samples samples) { diagram->AddData(samples); }
    void expectPoints(const QImage& picture, const std::vector<QPointF>& pixels)
    {
        QImage expected = Expected({});
        for (const QPointF& pixel : pixels) {
            const QPointF at = (pixel + diagram->geometry().topLeft()) * ratio;
            expected.setPixelColor(at.toPoint(), Qt::red);
        }
        ExpectSamePicture(picture, expected, "points");
    }
    void expectRanges(const Samples& ends)
    {
        const AxisHandler& yAxis = *diagram->GetYAxisHandler();
        const double actual[] = {xAxis->GetStartValue(), xAxis->GetStopValue(),
                                 yAxis.GetStartValue(), yAxis.GetStopValue()};
        for (std::size_t i = 0; i < 4; ++i)
            EXPECT_EQ(actual[i], double(ends[i])) << i;
    }
};

namespace {

constexpr float nan = NAN, inf = INFINITY;

struct IqDiagram : testing::Test, TestAccess
{};

TEST_F(IqDiagram, LightsOneDevicePixelForEachPointInside)
{
    aging = 1e6;
    add({0, 0, 0.5F, 0.5F});
    add({0.994F, -0.96F});
    add({0, 1.03F, 0, -0.99F, -1.1F, 0, 1.01F, 0, nan, 0, 0, inf, 1e30F, -1e30F}); // outside
    expectPoints(Painted(), {{100, 51}, {150.25, 25.75}, {199.897, 99.48}});
    expectPoints(frame.grab().toImage().convertToFormat(QImage::Format_RGB32),
                 {{100, 51}, {150.25, 25.75}, {199.897, 99.48}});
    setRanges({1, -1}, {1, -1}); // reversed: 100 - 100.5 I and 51 + 50.5 Q
    expectPoints(Painted(), {{100, 51}, {49.75, 76.25}, {0.103, 2.52}, {100, 1.005}});
    setRanges({-0.6725, 0.3275}, {-0.6725, 0.3275}); // trunc(200 * 0.6725), trunc(-67.25) + 101
    expectPoints(Painted(), {{134, 34}});
    for (const Range& none :
         {Range{0, 0}, {nan, 1}, {0, 5e-324}, {-1.7e308, 1.7e308}, {-inf, inf}}) {
        setRanges(none, {-1, 1});
        expectPoints(Painted(), {});
        setRanges({-1, 1}, none);
        expectPoints(Painted(), {});
    }
    ColorSet::Instance()[IColorBase::colLabel] = Qt::white;
    const QImage before = PaintedOnScreen();
    diagram->AddMarker("m", "text", {50, 50});
    EXPECT_NE(PaintedOnScreen(), before);
}

TEST_F(IqDiagram, DropsTheFirstDataSetThatIsTooOldAndAllBehindIt)
{
    struct Case
    {
        double aging;          // s
        std::vector<int> ages; // ms before the end of the previous paint, oldest data set first
        std::size_t kept;
        bool byData = false;
    };
    for (const Case& c : {Case{1.0, {0, 1001, 1000, -5}, 2},
                          {0.0, {1, 0, -1}, 2},
                          {2.01, {2010, 2009}, 1}, // 2.01 s are slightly less than 2010 ms
                          {1.0, {5000}, 0},
                          {1.0, {4001, 4000, 3000}, 2, true}}) {
        const QDateTime now = QDateTime::currentDateTime();
        lastPaint = now.addSecs(-3600);
        for (const int age : c.ages) {
            add({0, 0});
            records.front()->m_time = lastPaint.addMSecs(-age);
        }
        aging = c.aging;
        diagram->SetAgesByData(c.byData);
        PaintedOnScreen();
        EXPECT_EQ(records.size(), c.kept);
        EXPECT_GE(lastPaint, now);
        aging = -1e9;
        setRanges({1, 1}, {-1, 1}); // data age on an axis without extent, too
        PaintedOnScreen();
        EXPECT_EQ(records.size(), 0U);
    }
    EXPECT_EQ(freeRecords.size(), 4U);
    diagram->setXAxisWidget({});
    const QDateTime before = lastPaint;
    PaintedOnScreen();
    EXPECT_EQ(lastPaint, before);
}

TEST_F(IqDiagram, SwapsPairsInAndRecyclesTheOldestOfMoreThan100)
{
    Samples data{1, 2, 3};
    diagram->AddData(data);
    EXPECT_EQ(data.size(), 3U);
    add({});
    for (float i = 0; i < 101; ++i)
        add({i, -1});
    EXPECT_EQ(records.size(), 100U);
    EXPECT_EQ(freeRecords.size(), 1U);
    const QDateTime before = QDateTime::currentDateTime();
    data = {-20, 5, 20, 5};
    diagram->AutoScale();
    diagram->AddData(data);
    EXPECT_EQ(data, (Samples{0, -1}));
    expectRanges({-22, 22, 5, 5}); // of the new samples, not the recycled ones
    EXPECT_GE(records.front()->m_time, before);
}

TEST_F(IqDiagram, ScalesBothAxesOnRequest)
{
    diagram->AutoScale();
    add({-1, 2, 1, -2});
    expectRanges({-1.1F, 1.1F, -2.2F, 2.2F});
    add({1, 0, 3, 0});
    expectRanges({-1.1F, 3.1F, -2.2F, 2.2F});
    setRanges({-0.3, 0.3}, {-0.7, 0.7});           // is rounded to single precision, too
    diagram->GetYAxisHandler()->SetRange(-50, 50); // a zoom of the user's
    add({0, 0});
    expectRanges({-0.3F, 0.3F, -0.7F, 0.7F});
    timer.stop();
    diagram->AutoScale();
    add({100, 7, nan, nan, 200, 7});
    expectRanges({95, 205, 7, 7});
    timer.stop();
    diagram->setXAxisWidget({});
    diagram->AutoScale();
    add({3, 4, 3, 5});
    expectRanges({95, 205, 3.95F, 5.05F});
}

TEST_F(IqDiagram, TakesItsAgingFromTheSettings)
{
    const std::unique_ptr<QWidget> page(diagram->GetPropertyPage(nullptr, "page"));
    const auto editors = page->findChildren<QDoubleSpinBox*>();
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(editors[i]->maximum(), i < 4 ? 10000 : 10);
    editors[4]->setValue(6);
    diagram->slotAcceptPropertyChanges();
    EXPECT_EQ(aging, 6.0);
}

} // namespace
