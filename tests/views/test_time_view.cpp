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

#include <limits>
#include <memory>

struct TestAccess
{
    static GLTimeDiagram& diagram(VCGLTimeDiagram& v) { return *v.m_diagram; }
    static std::weak_ptr<GLTimeDiagram> weakDiagram(VCGLTimeDiagram& v) { return v.m_diagram; }
    static XAxisWidget& xAxis(VCGLTimeDiagram& v) { return *v.m_xAxis; }
    static std::size_t pending(VCGLTimeDiagram& v) { return v.m_pending.size(); }
    static float baudrate(VCGLTimeDiagram& v) { return v.m_diagram->m_baudrate; }
    /// Samples of the stored traces, oldest first.
    static std::vector<std::vector<double>> traces(VCGLTimeDiagram& v)
    {
        std::vector<std::vector<double>> result;
        for (auto it = v.m_diagram->m_records.rbegin(); it != v.m_diagram->m_records.rend(); ++it)
            result.push_back((*it)->m_samples);
        return result;
    }
};

namespace {

using Traces = std::vector<std::vector<double>>;

struct TimeView : testing::Test
{
    ~TimeView() override
    {
        for (const char* path : {"T/Data", "T/Markers", "T/Trigger", "T/A", "T/B"})
            tree.Remove(path);
    }
    void bindData()
    {
        EXPECT_TRUE(view->SetData1_ValuePath("T/Data"));
        EXPECT_TRUE(view->SetBaudrateData_ValuePath("T/Markers"));
        EXPECT_TRUE(view->SetHasChangedTrigger_ValuePath("T/Trigger"));
    }
    void feed(const std::vector<double>& samples, const std::vector<double>& marks)
    {
        data->GetList().assign(samples.begin(), samples.end());
        markers->GetList().assign(marks.begin(), marks.end());
        trigger->SetValue(false); // its content means nothing
    }
    void show()
    {
        view->resize(400, 300);
        view->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(view.get()));
    }
    Traces traces() { return TestAccess::traces(*view); }
    AxisHandler& yAxis() { return *TestAccess::diagram(*view).GetYAxisHandler(); }
    AxisHandler& xAxis() { return TestAccess::xAxis(*view); }
    CaptionWidget* caption() { return view->findChild<CaptionWidget*>(); }
    std::size_t observers() const
    {
        return data->ObserverCount() + markers->ObserverCount() + trigger->ObserverCount() +
               a->ObserverCount() + b->ObserverCount();
    }

    values::Tree& tree = values::Tree::Instance();
    values::ValueList<double>* data = tree.Create<values::ValueList<double>>("T/Data");
    values::ValueList<double>* markers = tree.Create<values::ValueList<double>>("T/Markers");
    values::Value<bool>* trigger = tree.Create<values::Value<bool>>("T/Trigger");
    values::ValueNumeric<double>* a = tree.Create<values::ValueNumeric<double>>("T/A");
    values::ValueNumeric<double>* b = tree.Create<values::ValueNumeric<double>>("T/B");
    std::unique_ptr<VCGLTimeDiagram> view = std::make_unique<VCGLTimeDiagram>();
};

TEST_F(TimeView, CutsTheStreamAtTheMarkers)
{
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    struct Step
    {
        std::vector<double> samples, markers;
        Traces added;
        std::size_t pending;
    };
    const std::vector<std::vector<Step>> stories{
        {{{1, 2, 3, 4, 5, 6}, {3, 0, 0, 3, 0, 0}, {{1, 2, 3}, {4, 5, 6}}, 0}},
        {{{1, 2}, {4, 0}, {}, 2}, {{3, 4}, {0, 0}, {{1, 2, 3, 4}}, 0}}, // over two notifications
        {{{1, 2, 3}, {}, {}, 3}, {{4}, {1}, {{1, 2, 3}, {4}}, 0}},      // no marker for a while
        {{{1, 2, 3}, {2}, {}, 3},
         {{4, 5}, {0, 2}, {{1, 2, 3, 4}}, 1}}, // too long: the marker ends it
        {{{1, 2}, {1e-50, nan}, {{1}}, 1},
         {{3}, {-3}, {{2}}, 1}},                              // zero as float; any other counts
        {{{1}, {1, 1, 1, 1}, {{1}}, 0}, {{}, {5, 5}, {}, 0}}, // markers beyond the samples
    };
    for (const auto& story : stories) {
        view = std::make_unique<VCGLTimeDiagram>();
        data->GetList().clear();
        bindData();
        Traces expected;
        for (const Step& step : story) {
            feed(step.samples, step.markers);
            expected.insert(expected.end(), step.added.begin(), step.added.end());
            EXPECT_EQ(traces(), expected);
            EXPECT_EQ(TestAccess::pending(*view), step.pending);
        }
    }
    // Later, the diagram hands old samples back.
    for (double i = 0; i < 105; ++i)
        feed({i, i}, {2, 0});
    EXPECT_EQ(traces().front(), (std::vector<double>{5, 5}));
    EXPECT_EQ(traces().back(), (std::vector<double>{104, 104}));
}

TEST_F(TimeView, FeedsOnlyOnNewContentWithAllListsBound)
{
    data->GetList() = {1, 2};
    markers->GetList() = {2, 0};
    EXPECT_TRUE(view->SetHasChangedTrigger_ValuePath("T/Trigger")); // replay finds no lists
    EXPECT_TRUE(view->SetData1_ValuePath("T/Data"));
    trigger->SetValue(true);
    EXPECT_TRUE(view->SetBaudrateData_ValuePath("T/Markers"));
    for (const TChangeCode code : {ccState, ccAttributes, ccSelection})
        trigger->Notify(code);
    EXPECT_TRUE(traces().empty());
    EXPECT_TRUE(view->SetHasChangedTrigger_ValuePath("T/Trigger")); // rebinding replays
    EXPECT_EQ(traces().size(), 1U);
    trigger->SetValue(true);
    trigger->SetValue(true); // equal content announces new data, too
    EXPECT_EQ(traces().size(), 3U);
    view->Update(nullptr, ccContent); // matches no role that is unbound
    EXPECT_EQ(traces().size(), 3U);
}

TEST_F(TimeView, AppliesLimitsAtOnceFirstMatchingRoleOnly)
{
    a->SetValue(-5.0);
    EXPECT_TRUE(view->SetXAxisMin_ValuePath("T/A"));
    EXPECT_EQ(xAxis().GetStartValue(), -5.0);
    const double yStart = yAxis().GetStartValue();
    EXPECT_TRUE(view->SetYAxisMin_ValuePath("T/A")); // its replay matches the X role first
    a->SetValue(-7.0);
    EXPECT_EQ(xAxis().GetStartValue(), -7.0);
    EXPECT_EQ(yAxis().GetStartValue(), yStart);
    b->SetValue(3.0);
    EXPECT_TRUE(view->SetYAxisMin_ValuePath("T/B"));
    EXPECT_EQ(yAxis().GetStartValue(), 3.0);
    a->SetValue(-8.0); // rebinding one role leaves the other hearing
    EXPECT_EQ(xAxis().GetStartValue(), -8.0);

    EXPECT_TRUE(view->SetXAxisMax_ValuePath("T/B"));
    EXPECT_TRUE(view->SetYAxisMax_ValuePath("T/A"));
    EXPECT_EQ(xAxis().GetStopValue(), 3.0);
    EXPECT_FALSE(view->SetXAxisMin_ValuePath("T/Data")); // a list is no number
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
    const auto framesOfFeeding = [&](const auto&... lists) {
        QCoreApplication::processEvents(); // what was requested before
        frames.clear();
        feed(lists...);
        QCoreApplication::processEvents();
        return frames.count();
    };
    using List = std::vector<double>;
    EXPECT_EQ(framesOfFeeding(List{1, 2, 3}, List{4}), 1); // nothing complete, still a repaint
    QTest::mouseClick(caption()->findChild<QToolButton*>(), Qt::LeftButton);
    EXPECT_EQ(forStart.count(), 1);
    EXPECT_EQ(framesOfFeeding(List{9, 9}, List{2, 0}), 0); // lost
    EXPECT_EQ(traces(), Traces{});
    a->SetValue(4.0);
    EXPECT_TRUE(view->SetBaudrate_ValuePath("T/A"));
    EXPECT_EQ(TestAccess::baudrate(*view), 4.0F);
    List direct{5, 6};
    view->FillData(direct, false); // direct data pass, and leave the open segment alone
    EXPECT_EQ(traces(), (Traces{{5, 6}}));

    EXPECT_EQ(view->focusProxy(), caption());
    QTest::keyClick(caption(), Qt::Key_Space);
    EXPECT_EQ(forStop.count(), 1);
    feed({4}, {});
    EXPECT_EQ(traces(), (Traces{{5, 6}, {1, 2, 3, 4}}));
}

TEST_F(TimeView, ShowsItsTracesAndOffersMenuAndRuler)
{
    bindData();
    b->SetValue(1.0);
    EXPECT_TRUE(view->SetBaudrate_ValuePath("T/B"));
    xAxis().SetRange(-100.0, 0.0);
    show();
    feed(std::vector<double>(100, 0.5), {100});
    const QImage picture = view->grabFramebuffer().convertToFormat(QImage::Format_RGB32);
    const QRect plot = view->Widgets()[1]->geometry();
    int columns = 0;
    for (int x = plot.left(); x <= plot.right(); ++x)
        for (int y = plot.top(); y < plot.center().y(); ++y)
            columns += picture.pixelColor(x, y) == ColorSet::Instance()[IColorBase::colTimeTrace];
    EXPECT_GT(columns, plot.width() / 2); // labels cover the rest

    QTest::mouseClick(view->windowHandle(), Qt::LeftButton, {}, plot.center());
    EXPECT_FALSE(caption()->readout().isEmpty());
    QMenu* menu = view->getContextMenu();
    QSignalSpy shown(menu, &QMenu::aboutToShow);
    QObject::connect(menu, &QMenu::aboutToShow, menu, &QMenu::close, Qt::QueuedConnection);
    QContextMenuEvent event(QContextMenuEvent::Mouse, plot.center(),
                            view->mapToGlobal(plot.center()));
    QCoreApplication::sendEvent(view.get(), &event);
    EXPECT_EQ(shown.count(), 1);
    EXPECT_EQ(menu->actions().size(), 2);
}

TEST_F(TimeView, TakesItselfDownInOrder)
{
    bindData();
    for (auto setter :
         {&VCGLTimeDiagram::SetXAxisMin_ValuePath, &VCGLTimeDiagram::SetXAxisMax_ValuePath,
          &VCGLTimeDiagram::SetYAxisMin_ValuePath, &VCGLTimeDiagram::SetYAxisMax_ValuePath,
          &VCGLTimeDiagram::SetBaudrate_ValuePath})
        EXPECT_TRUE((view.get()->*setter)("T/A"));
    EXPECT_EQ(view->Widgets().size(), 3U); // caption, diagram, axis: none twice
    EXPECT_EQ(view->qt_metacast("IObserver"), static_cast<IObserver*>(view.get()));
    EXPECT_EQ(TestAccess::xAxis(*view).XPixelMap()->GetAxisDefinition().LabelWithUnit(-2.5),
              QStringLiteral("-2.5 t/T"));

    const std::weak_ptr<GLTimeDiagram> diagram = TestAccess::weakDiagram(*view);
    QStringList gone;
    const std::pair<QObject*, QString> parts[] = {{&TestAccess::xAxis(*view), "axis"},
                                                  {&TestAccess::diagram(*view), "diagram"},
                                                  {view->GetToolbarCaption(), "caption"}};
    for (const auto& [object, name] : parts)
        QObject::connect(object, &QObject::destroyed, [&gone, name = name] { gone << name; });
    const int released = tree.ReleaseCount();
    view.reset();
    EXPECT_EQ(gone, (QStringList{"axis", "diagram", "caption"}));
    EXPECT_TRUE(diagram.expired());
    EXPECT_EQ(observers(), 0U);
    EXPECT_EQ(tree.ReleaseCount(), released);
    a->SetValue(1.0); // reaches nobody
}

} // namespace
