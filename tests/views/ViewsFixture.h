// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "eye/GLEyeDiagram.h"
#include "iq/GLIQDiagram.h"
#include "platform/glwidgets/CaptionWidget.h"
#include "platform/glwidgets/XAxisWidget.h"
#include "time/GLTimeDiagram.h"
#include "views/VCGLEyeDiagram.h"
#include "views/VCGLIQDiagram.h"
#include "views/VCGLTimeDiagram.h"

#include <QOpenGLWidget>
#include <QTest>

#include <gtest/gtest.h>

#include <memory>

using AllViews = testing::Types<VCGLTimeDiagram, VCGLEyeDiagram, VCGLIQDiagram>;
using List = std::vector<double>;
using Traces = std::vector<List>;

struct TestAccess
{
    template<class View>
    static bool& showGrid(View& view)
    {
        return view.Diagram()->m_showGrid;
    }
    template<class View>
    static float baudrate(View& view)
    {
        return view.Diagram()->m_baudrate;
    }
    template<class View>
    static QTimer& scalingTimer(View& view)
    {
        return view.Diagram()->m_autoScaleTimer;
    }
    template<class View>
    static std::size_t traceCount(View& view)
    {
        return view.Diagram()->m_records.size();
    }
    /// Samples of the stored traces, oldest first.
    template<class View>
    static Traces traces(View& view)
    {
        Traces result;
        for (const auto* record : view.Diagram()->m_records)
            result.emplace(result.begin(), record->m_samples.begin(), record->m_samples.end());
        return result;
    }
};

/// What all views do alike, on each of them.
template<class View>
struct Views : testing::Test
{
    static constexpr bool isEye = std::is_same_v<View, VCGLEyeDiagram>;
    static constexpr bool isIq = std::is_same_v<View, VCGLIQDiagram>;

    ~Views() override
    {
        for (const char* path : {"Data", "Second", "Trigger", "A", "B"})
            tree.Remove(path);
    }
    bool bindSecond(const char* path)
    {
        if constexpr (isIq)
            return view->SetData2_ValuePath(path);
        else
            return view->SetBaudrateData_ValuePath(path);
    }
    void bindData()
    {
        EXPECT_TRUE(view->SetData1_ValuePath("Data"));
        EXPECT_TRUE(bindSecond("Second"));
        EXPECT_TRUE(view->SetHasChangedTrigger_ValuePath("Trigger"));
    }
    void feed(const List& samples, const List& others)
    {
        data->Assign(samples.begin(), samples.end());
        second->Assign(others.begin(), others.end());
        trigger->SetValue(false); // its content means nothing
    }
    /// Data without values of the tree; I and Q are the same.
    void give(const List& samples, bool repaint = false)
    {
        if constexpr (isIq) {
            std::vector<float> pairs;
            for (const double sample : samples)
                pairs.insert(pairs.end(), 2, static_cast<float>(sample));
            view->AddData(pairs);
        } else {
            List direct = samples;
            view->FillData(direct, repaint);
        }
    }
    void show()
    {
        view->resize(400, 300);
        view->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(view.get()));
    }
    /// Paints of the diagram that an action asks for.
    template<class Action>
    int paintsBy(Action action)
    {
        struct Counter : QObject
        {
            bool eventFilter(QObject*, QEvent* event) override
            {
                count += event->type() == QEvent::Paint;
                return false;
            }
            int count = 0;
        } counter;
        QCoreApplication::processEvents(); // what was requested before
        QObject* widget = view.get();
        if constexpr (isEye)
            widget = view->GetDiagram();
        else if (auto* surface = view->template findChild<QOpenGLWidget*>())
            widget = surface;
        widget->installEventFilter(&counter);
        action();
        QCoreApplication::processEvents();
        return counter.count;
    }
    std::size_t count() { return TestAccess::traceCount(*view); }
    std::pair<double, double> yRange()
    {
        std::pair<double, double> range;
        view->GetDiagram()->GetYStartStop(range.first, range.second);
        return range;
    }
    XAxisWidget& xAxis() { return *view->GetXAxis(); }
    CaptionWidget* caption() { return view->template findChild<CaptionWidget*>(); }

    values::Tree& tree = values::Tree::Instance();
    values::ValueList<double>* data = tree.Create<values::ValueList<double>>("Data");
    values::ValueList<double>* second = tree.Create<values::ValueList<double>>("Second");
    values::Value<bool>* trigger = tree.Create<values::Value<bool>>("Trigger");
    values::ValueNumeric<double>* a = tree.Create<values::ValueNumeric<double>>("A");
    values::ValueNumeric<double>* b = tree.Create<values::ValueNumeric<double>>("B");
    std::unique_ptr<View> view = std::make_unique<View>();
};
