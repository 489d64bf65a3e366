// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "EyeTestAccess.h"
#include "platform/values/Tree.h"
#include "platform/values/Values.h"

#include <QMenu>
#include <QTest>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

namespace {

struct EyeView : testing::Test
{
    ~EyeView() override
    {
        for (const char* path : {"E/Data", "E/Markers", "E/Trigger", "E/A", "E/B"})
            tree.Remove(path);
    }
    void feed(std::initializer_list<double> samples, std::initializer_list<double> marks)
    {
        data->GetList() = samples;
        markers->GetList() = marks;
        trigger->SetValue(true);
    }
    std::vector<double> samples()
    {
        return TestAccess::values(TestAccess::diagram(*view), "MeasDataY");
    }

    values::Tree& tree = values::Tree::Instance();
    values::ValueList<double>* data = tree.Create<values::ValueList<double>>("E/Data");
    values::ValueList<double>* markers = tree.Create<values::ValueList<double>>("E/Markers");
    values::Value<bool>* trigger = tree.Create<values::Value<bool>>("E/Trigger");
    values::ValueNumeric<double>* a = tree.Create<values::ValueNumeric<double>>("E/A");
    values::ValueNumeric<double>* b = tree.Create<values::ValueNumeric<double>>("E/B");
    std::unique_ptr<VCGLEyeDiagram> view = std::make_unique<VCGLEyeDiagram>();
};

TEST_F(EyeView, ShowsTheSegmentsOfItsValuesBetweenCaptionAndAxis)
{
    EXPECT_TRUE(view->SetHasChangedTrigger_ValuePath("E/Trigger"));
    EXPECT_TRUE(view->SetData1_ValuePath("E/Data"));
    EXPECT_FALSE(view->SetBaudrateData_ValuePath("E/A"));
    feed({1, 2}, {2, 0});
    EXPECT_THAT(samples(), testing::IsEmpty()); // markers unbound
    EXPECT_TRUE(view->SetBaudrateData_ValuePath("E/Markers"));
    feed({1, 2, 3, 4, 5, 6}, {3, 0, 0, 3, 0, 0});
    using testing::IsNan;
    EXPECT_THAT(samples(), testing::ElementsAre(1, 2, 3, IsNan(), 4, 5, 6, IsNan()));
    std::vector<double> direct{7, 8};
    view->FillData(direct, true);
    EXPECT_THAT(direct, testing::ElementsAre(7, 8));
    EXPECT_EQ(samples().size(), 11U);

    a->SetValue(-4.0);
    b->SetValue(8.0);
    EXPECT_TRUE(view->SetYAxisMin_ValuePath("E/A"));
    EXPECT_TRUE(view->SetYAxisMax_ValuePath("E/B"));
    EXPECT_TRUE(view->SetXAxisMin_ValuePath("E/A")); // a second role of the value
    EXPECT_TRUE(view->SetBaudrate_ValuePath("E/B"));
    EXPECT_EQ(TestAccess::xAxis(*view).GetStartValue(), -4.0);
    double start = 0.0, stop = 0.0;
    TestAccess::diagram(*view).GetYStartStop(start, stop);
    EXPECT_EQ(std::make_pair(start, stop), std::make_pair(-4.0, 8.0));

    view->resize(300, 240);
    view->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(view.get()));
    GLEyeDiagram& eye = TestAccess::diagram(*view);
    EXPECT_EQ(eye.width(), 300);
    EXPECT_GT(eye.y(), 0);
    EXPECT_LT(eye.y() + eye.height(), 240);
    EXPECT_EQ(TestAccess::xAxis(*view).GetStartValue(), 0.0); // the paint decides
    struct : QObject
    {
        int paints = 0;
        bool eventFilter(QObject*, QEvent* event) override
        {
            paints += event->type() == QEvent::Paint;
            return false;
        }
    } counter;
    eye.installEventFilter(&counter);
    QCoreApplication::processEvents();
    counter.paints = 0;
    view->FillData(direct, true);
    EXPECT_TRUE(QTest::qWaitFor([&] { return counter.paints > 0; }));
    counter.paints = 0;
    trigger->SetValue(true);
    EXPECT_TRUE(QTest::qWaitFor([&] { return counter.paints > 0; }));
    const QImage image = view->grab().toImage().convertToFormat(QImage::Format_RGB32);
    EXPECT_GT(count(image.copy(eye.geometry()), IColorBase::colEyeTrace), 600); // three traces
}

TEST_F(EyeView, PauseDropsTriggersAndTakesDownInAnyOrder)
{
    for (bool bound :
         {view->SetHasChangedTrigger_ValuePath("E/Trigger"), view->SetData1_ValuePath("E/Data"),
          view->SetBaudrateData_ValuePath("E/Markers"), view->SetYAxisMin_ValuePath("E/A")})
        EXPECT_TRUE(bound);
    QMetaObject::invokeMethod(view.get(), "slotPaused", Q_ARG(bool, false));
    feed({1, 2}, {2, 0});
    a->SetValue(-7.0);
    double start = 0.0, stop = 0.0;
    TestAccess::diagram(*view).GetYStartStop(start, stop);
    EXPECT_EQ(start, -7.0);
    EXPECT_THAT(samples(), testing::IsEmpty());
    QMetaObject::invokeMethod(view.get(), "slotPaused", Q_ARG(bool, true));
    feed({1, 2}, {2, 0});
    EXPECT_EQ(samples().size(), 3U);
    EXPECT_EQ(view->getContextMenu()->actions().size(), 2);
    tree.Remove("E/Markers");
    trigger->SetValue(true);
    EXPECT_EQ(samples().size(), 3U);
    view.reset();
    EXPECT_EQ(data->ObserverCount() + trigger->ObserverCount() + a->ObserverCount(), 0U);
    view = std::make_unique<VCGLEyeDiagram>();
    view->AutoScale();
}

} // namespace
