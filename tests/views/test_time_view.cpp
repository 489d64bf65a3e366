// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/glwidgets/CaptionWidget.h"
#include "platform/glwidgets/DiagramCaption.h"
#include "platform/glwidgets/XAxisWidget.h"
#include "platform/glwidgets/YAxisHandler.h"
#include "platform/gui/ColorSet.h"
#include "time/GLTimeDiagram.h"
#include "views/VCGLTimeDiagram.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <QSignalSpy>
#include <QTest>
#include <QToolButton>

#include <gtest/gtest.h>

#include <cmath>

using Trace = std::vector<double>;
using Traces = std::vector<Trace>;

struct TestAccess
{
    static std::shared_ptr<GLTimeDiagram> diagram(VCGLTimeDiagram& v) { return v.m_diagram; }
    static XAxisWidget& xAxis(VCGLTimeDiagram& v) { return *v.m_xAxis; }
    /// Samples of the stored traces, oldest first.
    static Traces traces(VCGLTimeDiagram& v)
    {
        Traces result;
        for (const auto* record : v.m_diagram->m_records)
            result.insert(result.begin(), record->m_samples);
        return result;
    }
};

namespace {

struct TimeView : testing::Test
{
    ~TimeView() override
    {
        for (const char* path : {"Data", "Markers", "Trigger", "A", "B"})
            tree.Remove(path);
    }
    void bindData()
    {
        EXPECT_TRUE(view->SetData1_ValuePath("Data"));
        EXPECT_TRUE(view->SetBaudrateData_ValuePath("Markers"));
        EXPECT_TRUE(view->SetHasChangedTrigger_ValuePath("Trigger"));
    }
    void feed(const Trace& samples, const Trace& marks)
    {
        data->Assign(samples.begin(), samples.end());
        markers->Assign(marks.begin(), marks.end());
        trigger->SetValue(false); // its content means nothing
    }
    void show()
    {
        view->resize(400, 300);
        view->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(view.get()));
        QCoreApplication::processEvents();
    }
    Traces traces() { return TestAccess::traces(*view); }
    AxisHandler& yAxis() { return *TestAccess::diagram(*view)->GetYAxisHandler(); }
    XAxisWidget& xAxis() { return TestAccess::xAxis(*view); }
    CaptionWidget* caption() { return view->findChild<CaptionWidget*>(); }

    values::Tree& tree = values::Tree::Instance();
    values::ValueList<double>* data = tree.Create<values::ValueList<double>>("Data");
    values::ValueList<double>* markers = tree.Create<values::ValueList<double>>("Markers");
    values::Value<bool>* trigger = tree.Create<values::Value<bool>>("Trigger");
    values::ValueNumeric<double>* a = tree.Create<values::ValueNumeric<double>>("A");
    values::ValueNumeric<double>* b = tree.Create<values::ValueNumeric<double>>("B");
    std::unique_ptr<VCGLTimeDiagram> view = std::make_unique<VCGLTimeDiagram>();
};

TEST_F(TimeView, CutsTheStreamAtTheMarkers)
{
    using Step = std::tuple<Trace, Trace, Traces>; // samples, markers, traces added
    const std::vector<std::vector<Step>> stories{
        {{{1, 2, 3, 4, 5, 6}, {3, 0, 0, 3, 0, 0}, {{1, 2, 3}, {4, 5, 6}}}},
        {{{1, 2}, {4, 0}, {}}, {{3, 4}, {0, 0}, {{1, 2, 3, 4}}}}, // over two notifications
        {{{1, 2, 3}, {}, {}}, {{4}, {1}, {{1, 2, 3}, {4}}}},      // no marker for a while
        // Too long: the marker ends it.
        {{{1, 2, 3}, {2}, {}}, {{4, 5}, {0, 2}, {{1, 2, 3, 4}}}, {{6}, {}, {{5, 6}}}},
        // Zero as float is zero; anything else counts.
        {{{1, 2}, {1e-50, std::nan("")}, {{1}}}, {{3}, {-3}, {{2}}}, {{4}, {1}, {{3}, {4}}}},
        {{{1}, {1, 1, 1}, {{1}}}, {{}, {5, 5}, {}}, {{2}, {}, {{2}}}}, // markers beyond the samples
    };
    for (const auto& story : stories) {
        view = std::make_unique<VCGLTimeDiagram>();
        data->GetList().clear();
        bindData();
        Traces expected;
        for (const auto& [samples, marks, added] : story) {
            feed(samples, marks);
            expected.insert(expected.end(), added.begin(), added.end());
            EXPECT_EQ(traces(), expected);
        }
    }
    // Later, the diagram hands old samples back.
    for (double i = 0; i < 105; ++i)
        feed({i, i}, {2, 0});
    EXPECT_EQ(traces().front(), (Trace{5, 5}));
    EXPECT_EQ(traces().back(), (Trace{104, 104}));
}

TEST_F(TimeView, FeedsOnlyOnNewContentWithAllListsBound)
{
    data->GetList() = {1, 2};
    markers->GetList() = {2, 0};
    EXPECT_TRUE(view->SetHasChangedTrigger_ValuePath("Trigger")); // replay finds no lists
    EXPECT_TRUE(view->SetData1_ValuePath("Data"));
    trigger->SetValue(true);
    EXPECT_TRUE(view->SetBaudrateData_ValuePath("Markers"));
    for (const TChangeCode code : {ccState, ccAttributes, ccSelection})
        trigger->Notify(code);
    EXPECT_TRUE(traces().empty());
    EXPECT_TRUE(view->SetHasChangedTrigger_ValuePath("Trigger")); // rebinding replays
    EXPECT_EQ(traces().size(), 1U);
    trigger->SetValue(true);
    trigger->SetValue(true);          // equal content announces new data, too
    view->Update(nullptr, ccContent); // matches no role that is unbound
    EXPECT_EQ(traces().size(), 3U);
}

TEST_F(TimeView, AppliesLimitsAtOnceFirstMatchingRoleOnly)
{
    a->SetValue(-5.0);
    EXPECT_TRUE(view->SetXAxisMin_ValuePath("A"));
    EXPECT_EQ(xAxis().GetStartValue(), -5.0);
    const double yStart = yAxis().GetStartValue();
    EXPECT_TRUE(view->SetYAxisMin_ValuePath("A")); // its replay matches the X role first
    a->SetValue(-7.0);
    EXPECT_EQ(xAxis().GetStartValue(), -7.0);
    EXPECT_EQ(yAxis().GetStartValue(), yStart);
    b->SetValue(3.0);
    EXPECT_TRUE(view->SetYAxisMin_ValuePath("B"));
    EXPECT_EQ(yAxis().GetStartValue(), 3.0);
    a->SetValue(-8.0); // rebinding one role leaves the other hearing
    EXPECT_EQ(xAxis().GetStartValue(), -8.0);

    EXPECT_TRUE(view->SetXAxisMax_ValuePath("B"));
    EXPECT_TRUE(view->SetYAxisMax_ValuePath("A"));
    EXPECT_EQ(xAxis().GetStopValue(), 3.0);
    EXPECT_FALSE(view->SetXAxisMin_ValuePath("Data")); // a list is no number
    a->SetValue(9.0); // no longer X start: the next role in order takes it
    EXPECT_EQ(yAxis().GetStopValue(), 9.0);
}

TEST_F(TimeView, PausesDataByMouseAndSpaceButNotTheLimits)
{
    bindData();
    show();
    QSignalSpy forStart(view.get(), SIGNAL(StopButtonPressedForStart()));
    QSignalSpy forStop(view.get(), SIGNAL(StopButtonPressedForStop()));
    QSignalSpy frames(view.get(), &QOpenGLWidget::frameSwapped);
    const auto framesOf = [&](const auto& act) {
        QCoreApplication::processEvents(); // what was requested before
        frames.clear();
        act();
        QCoreApplication::processEvents();
        return frames.count();
    };
    EXPECT_EQ(framesOf([&] { feed({1, 2, 3}, {4}); }), 1); // nothing complete, still a repaint
    QTest::mouseClick(caption()->findChild<QToolButton*>(), Qt::LeftButton);
    EXPECT_EQ(forStart.count(), 1);
    EXPECT_EQ(framesOf([&] { feed({9, 9}, {2, 0}); }), 0); // lost
    EXPECT_TRUE(view->SetXAxisMax_ValuePath("A"));
    a->SetValue(4.0);
    EXPECT_EQ(xAxis().GetStopValue(), 4.0);
    // Direct data pass, and leave the open segment alone.
    view->AutoScale();
    for (const bool repaint : {false, true}) {
        Trace direct{5, 6};
        view->FillData(direct, false);
        EXPECT_EQ(framesOf([&] { view->FillData(direct = {5, 6}, repaint); }), repaint);
    }
    EXPECT_NEAR(yAxis().GetStopValue(), 6.05, 1e-6);
    EXPECT_EQ(view->focusProxy(), caption());
    QTest::keyClick(caption(), Qt::Key_Space);
    EXPECT_EQ(forStop.count(), 1);
    feed({4}, {});
    EXPECT_EQ(traces().back(), (Trace{1, 2, 3, 4}));
}

TEST_F(TimeView, ShowsItsTracesAndOffersMenusAndRuler)
{
    bindData();
    b->SetValue(1.0);
    EXPECT_TRUE(view->SetBaudrate_ValuePath("B"));
    xAxis().SetRange(-100.0, 0.0);
    show();
    feed(Trace(100, 0.5), {100});
    const QImage picture = view->grabFramebuffer().convertToFormat(QImage::Format_RGB32);
    const QRect plot = view->Widgets().at(1)->geometry();
    int columns = 0;
    for (int x = plot.left(); x <= plot.right(); ++x)
        for (int y = plot.top(); y < plot.center().y(); ++y)
            columns += picture.pixelColor(x, y) == ColorSet::Instance()[IColorBase::colTimeTrace];
    EXPECT_GT(columns, plot.width() / 2); // labels cover the rest
    EXPECT_EQ(xAxis().XPixelMap()->GetAxisDefinition().LabelWithUnit(-2.5), "-2.5 t/T");

    QTest::mouseClick(view->windowHandle(), Qt::LeftButton, {}, plot.center());
    EXPECT_FALSE(caption()->readout().isEmpty());
    view->getContextMenu(); // exists before it is asked for by the mouse
    const QPoint onAxes[] = {plot.topLeft() + QPoint(9, 99), plot.bottomLeft() + QPoint(99, 9)};
    for (const auto& [at, entries] :
         {std::pair(plot.center(), 2), {onAxes[0], 1}, {onAxes[1], 1}}) {
        int shown = 0;
        QTimer::singleShot(0, [&shown] {
            auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            ASSERT_NE(menu, nullptr);
            shown = menu->actions().size();
            menu->close();
        });
        QContextMenuEvent event(QContextMenuEvent::Mouse, at, view->mapToGlobal(at));
        QCoreApplication::sendEvent(view.get(), &event);
        EXPECT_EQ(shown, entries);
    }
}

TEST_F(TimeView, TakesItselfDownInOrder)
{
    bindData();
    for (auto setter :
         {&VCGLTimeDiagram::SetXAxisMin_ValuePath, &VCGLTimeDiagram::SetXAxisMax_ValuePath,
          &VCGLTimeDiagram::SetYAxisMin_ValuePath, &VCGLTimeDiagram::SetYAxisMax_ValuePath,
          &VCGLTimeDiagram::SetBaudrate_ValuePath})
        EXPECT_TRUE((view.get()->*setter)("A"));
    const std::weak_ptr<GLTimeDiagram> diagram = TestAccess::diagram(*view);
    QStringList gone;
    const std::pair<QObject*, QString> parts[] = {{&xAxis(), "axis"},
                                                  {diagram.lock().get(), "diagram"},
                                                  {view->GetToolbarCaption(), "caption"}};
    for (const auto& [object, name] : parts)
        QObject::connect(object, &QObject::destroyed, [&gone, name = name] { gone << name; });
    const int released = tree.ReleaseCount();
    view.reset();
    EXPECT_EQ(gone, (QStringList{"axis", "diagram", "caption"}));
    for (const values::ValueBase* value :
         std::initializer_list<values::ValueBase*>{data, markers, trigger, a})
        EXPECT_EQ(value->ObserverCount(), 0U);
    EXPECT_EQ(tree.ReleaseCount(), released);
}

} // namespace
