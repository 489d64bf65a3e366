// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/base/GuiThread.h"
#include "platform/glbase/GLFrameWidget.h"
#include "platform/glbase/IStringFormatter.h"
#include "platform/glbase/axisDefinition.h"
#include "platform/glwidgets/DiagramCaption.h"
#include "platform/glwidgets/PixelMap.h"
#include "platform/glwidgets/XAxisWidget.h"
#include "platform/values/Values.h"
#include "views/ValueObservingPtr.h"
#include "views/ValuePtr.h"

#include <QPointer>
#include <QString>
#include <QStringList>

#include <cstddef>
#include <list>
#include <memory>
#include <utility>
#include <vector>

/// Warns once (category orvane.views) when several roles of a view share a value.
void warnOfSharedValue(const QObject& view, const QString& path, const QStringList& roles);

// clang-format off
/// Code that the value-connected views share. Each view declares all its members itself, because
/// their order decides the order of destruction. The shared code is therefore a struct beside the
/// views, which each view makes a friend.
///
/// A view has the members named below and
///   Diagram()   its diagram, or null
///   Feed()      hands the data lists to the diagram, unless the view is paused; false when a list
///               is unbound
///
/// An observer of an axis may destroy the view or change its values whenever a range is set. The
/// functions therefore check that the view still exists before they go on.
template<class View>
struct ViewFrame
// clang-format on
{
    static bool BindList(View& view, values::ValuePtr<values::ValueList<double>>& list,
                         const QString& path)
    {
        guiThread::checkObject(view);
        return list.SetPath(path);
    }

    /// Binds a pointer and applies the value's content to the view. Returns whether it is bound
    /// now.
    template<class Pointer>
    static bool Bind(View& view, Pointer& pointer, const QString& path)
    {
        guiThread::checkObject(view);
        const QPointer<View> alive(&view);
        if (pointer.SetPath(path))
            WarnOfSharedValue(view, *pointer.Get());
        pointer.NotifyOwner();
        return alive && pointer.Get() != nullptr;
    }

    /// Applies a change of a trigger or an axis limit in the first role that has the value. Returns
    /// whether one has it.
    static bool Dispatch(View& view, const Observable* source)
    {
        if (view.m_hasChangedTrigger.IsFrom(source)) {
            const QPointer<View> alive(&view);
            if (view.m_takeData && view.Diagram() && view.Feed() && alive)
                view.Diagram()->update();
        } else if (view.m_xAxisMin.IsFrom(source)) {
            if (view.m_xAxis)
                view.m_xAxis->SetStartValue(view.m_xAxisMin.Get()->GetValue());
        } else if (view.m_xAxisMax.IsFrom(source)) {
            if (view.m_xAxis)
                view.m_xAxis->SetStopValue(view.m_xAxisMax.Get()->GetValue());
        } else if (view.m_yAxisMin.IsFrom(source)) {
            if (view.Diagram())
                view.Diagram()->SetYStart(view.m_yAxisMin.Get()->GetValue());
        } else if (view.m_yAxisMax.IsFrom(source)) {
            if (view.Diagram())
                view.Diagram()->SetYStop(view.m_yAxisMax.Get()->GetValue());
        } else {
            return false;
        }
        return true;
    }

    /// Like Dispatch, for views with a baud rate.
    static bool DispatchWithBaudrate(View& view, const Observable* source)
    {
        if (Dispatch(view, source))
            return true;
        if (!view.m_baudrateValue.IsFrom(source))
            return false;
        if (view.Diagram())
            view.Diagram()->SetBaudrate(static_cast<float>(view.m_baudrateValue.Get()->GetValue()));
        return true;
    }

    /// Cuts the sample list into segments at the non-zero entries of the marker list and hands each
    /// to the diagram. The open segment stays in m_pending until a marker or its full length ends
    /// it.
    static bool FeedSegments(View& view)
    {
        if (!view.m_data1.Get() || !view.m_baudrateData.Get())
            return false;
        // Not in place: while the diagram takes a segment, the lists may change and the view be fed
        // again. The memory of the copies is used again.
        std::vector<double> samples;
        samples.swap(view.m_samples);
        std::vector<std::pair<std::size_t, float>> starts;
        starts.swap(view.m_starts);
        Read(view.m_data1.Get()->GetList(), view.m_baudrateData.Get()->GetList(), samples, starts);
        const QPointer<View> alive(&view);
        std::size_t position = 0;
        const auto takeUntil = [&](std::size_t end) {
            view.m_pending.insert(view.m_pending.end(),
                                  samples.begin() + static_cast<std::ptrdiff_t>(position),
                                  samples.begin() + static_cast<std::ptrdiff_t>(end));
            position = end;
        };
        for (const auto& [index, length] : starts) {
            takeUntil(index);
            view.m_segmentLength = length;
            HandOver(view);
            if (!alive)
                return true;
        }
        takeUntil(samples.size());
        if (static_cast<float>(view.m_pending.size()) == view.m_segmentLength)
            HandOver(view);
        if (alive) {
            samples.swap(view.m_samples);
            starts.swap(view.m_starts);
        }
        return true;
    }

    /// Hands data to the diagram, and repaints on request.
    template<class... Data>
    static void Fill(View& view, bool repaint, Data&... data)
    {
        guiThread::checkObject(view);
        const QPointer<View> alive(&view);
        view.Diagram()->AddData(data...);
        if (alive && repaint)
            view.Diagram()->update();
    }

    static void SetXAxisRange(View& view, double min, double max)
    {
        guiThread::checkObject(view);
        const QPointer<View> alive(&view);
        view.m_xAxis->SetStartValue(min);
        if (alive && view.m_xAxis)
            view.m_xAxis->SetStopValue(max);
        if (alive)
            view.Diagram()->update();
    }
    static void SetYAxisRange(View& view, double min, double max)
    {
        guiThread::checkObject(view);
        const QPointer<View> alive(&view);
        view.Diagram()->SetYStart(min);
        if (alive)
            view.Diagram()->SetYStop(max);
        if (alive)
            view.Diagram()->update();
    }

    /// Opens or closes the pause gate, then tells the host.
    static void SetTakeData(View& view, bool takeData)
    {
        view.m_takeData = takeData;
        if (takeData)
            emit view.StopButtonPressedForStop();
        else
            emit view.StopButtonPressedForStart();
    }

    /// Creates the caption bar and puts it at the top.
    /// @param title  source text, translated in the context of the view's class.
    static void BuildCaption(View& view, const char* title)
    {
        view.m_pCaption = new DiagramCaption(&view, View::tr(title), true);
        QObject::connect(view.m_pCaption, SIGNAL(si_paused(bool)), &view, SLOT(slotPaused(bool)));
        QObject::connect(view.m_pCaption, &DiagramCaption::si_languageChanged, &view,
                         [&view, title] { view.m_pCaption->setTitle(View::tr(title)); });
        view.setFocusPolicy(Qt::StrongFocus);
        view.setFocusProxy(view.m_pCaption->getCaptionWidget());
        view.AddWidget(view.m_pCaption->getBaseWidget());
    }

    /// Puts the GL widget of the diagram below the caption bar.
    static void AddDiagram(View& view, const std::shared_ptr<GLBaseWidget>& widget)
    {
        widget->SetHorizontalAlignment("Top", static_cast<eHorizontalAlignment>(1), 1.0);
        view.AddWidget(widget);
    }

    /// Creates the X axis below the diagram and hands it to the diagram.
    static void BuildXAxis(View& view, const char* diagramName,
                           std::shared_ptr<IStringFormatter> formatter)
    {
        view.m_xAxis = std::make_shared<XAxisWidget>("XAxis", &view);
        view.m_xAxis->SetHorizontalAlignment(diagramName, static_cast<eHorizontalAlignment>(1),
                                             1.0);
        view.AddWidget(view.m_xAxis);
        view.m_xAxis->XPixelMap()->GetAxisDefinition().SetStringFormatter(std::move(formatter));
        view.Diagram()->setXAxisWidget(view.m_xAxis);
    }

    /// First half of the destruction: takes the children out of the layout.
    static void TakeDown(View& view, GLBaseWidget& diagramWidget)
    {
        view.Diagram()->setXAxisWidget({});
        view.RemoveWidget(*view.m_xAxis);
        view.RemoveWidget(diagramWidget);
        view.RemoveWidget(*view.m_pCaption->getBaseWidget());
        view.m_xAxis.reset();
    }

private:
    /// Warns when roles share a value: Dispatch gives its changes to the first of them only.
    static void WarnOfSharedValue(const View& view, const values::ValueBase& value)
    {
        QStringList roles;
        const auto add = [&](const auto& pointer, const char* role) {
            if (pointer.IsFrom(&value))
                roles += QString::fromLatin1(role);
        };
        add(view.m_xAxisMin, "start of X");
        add(view.m_xAxisMax, "stop of X");
        add(view.m_yAxisMin, "start of Y");
        add(view.m_yAxisMax, "stop of Y");
        if (const auto* baudrate = BaudrateOf(view, 0))
            add(*baudrate, "baud rate");
        warnOfSharedValue(view, value.GetPathName(), roles);
    }
    template<class Any>
    static auto BaudrateOf(const Any& view, int) -> decltype(&view.m_baudrateValue)
    {
        return &view.m_baudrateValue;
    }
    template<class Any>
    static const values::ValueObservingPtr<values::ValueNumeric<double>>* BaudrateOf(const Any&,
                                                                                     long)
    {
        return nullptr;
    }

    /// Copies the samples, and finds where segments start and how many samples each announces. In
    /// one loop: the ways through both lists wait for memory at the same time.
    static void Read(const std::list<double>& list, const std::list<double>& markers,
                     std::vector<double>& samples,
                     std::vector<std::pair<std::size_t, float>>& starts)
    {
        samples.resize(list.size());
        starts.clear();
        std::size_t index = 0;
        auto marker = markers.begin();
        for (const double sample : list) {
            samples[index] = sample;
            if (marker != markers.end()) {
                const auto length = static_cast<float>(*marker);
                if (length != 0.0F)
                    starts.emplace_back(index, length);
                ++marker;
            }
            ++index;
        }
    }

    static void HandOver(View& view)
    {
        // Moved out of the view first: the diagram's observers may feed the view again.
        std::vector<double> segment;
        segment.swap(view.m_pending);
        const QPointer<View> alive(&view);
        view.Diagram()->AddData(segment);
        if (!alive || !view.m_pending.empty())
            return;
        // Keep the memory of the samples that the diagram swapped in.
        segment.clear();
        segment.swap(view.m_pending);
    }
};
