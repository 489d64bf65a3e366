// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "NastyData.h"

#include "eye/GLEyeDiagram.h"
#include "foundations/GLOrvanePropertyPage.h"
#include "iq/GLIQDiagram.h"
#include "platform/glwidgets/CaptionWidget.h"
#include "platform/glwidgets/DiagramCaption.h"
#include "platform/glwidgets/XAxisWidget.h"
#include "platform/glwidgets/YAxisHandler.h"
#include "time/GLTimeDiagram.h"
#include "views/VCGLEyeDiagram.h"
#include "views/VCGLIQDiagram.h"
#include "views/VCGLTimeDiagram.h"

#include <QCheckBox>
#include <QCoreApplication>
#include <QDoubleSpinBox>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>
#include <QSpinBox>
#include <QWheelEvent>

#include <functional>
#include <memory>
#include <vector>

// What is done with a view. Two numbers choose the arguments.

struct TestAccess
{
    template<class View>
    static auto* diagram(View& view)
    {
        return view.Diagram();
    }
    template<class View>
    static std::shared_ptr<XAxisWidget> xAxis(View& view)
    {
        return view.m_xAxis;
    }
    template<class View>
    static std::size_t recordCount(View& view)
    {
        return view.Diagram()->m_records.size();
    }
};

/// A view of any kind.
struct Place
{
    std::unique_ptr<GLLayout> widget;
    QPointer<QWidget> watched; // which is null once the widget is destroyed
    std::unique_ptr<QWidget> page;

    template<class View>
    void create(QWidget* parent)
    {
        page.reset();
        widget.reset();
        widget = std::make_unique<View>(parent);
        watched = widget.get();
    }

    template<class Action>
    void with(const Action& action) const
    {
        if (auto* time = dynamic_cast<VCGLTimeDiagram*>(widget.get()))
            action(*time);
        else if (auto* eye = dynamic_cast<VCGLEyeDiagram*>(widget.get()))
            action(*eye);
        else if (auto* iq = dynamic_cast<VCGLIQDiagram*>(widget.get()))
            action(*iq);
    }
};

template<class View>
void bind(View& view, std::uint8_t role, const char* path)
{
    using Setter = bool (View::*)(const QString&);
    constexpr bool isIq = std::is_same_v<View, VCGLIQDiagram>;
    std::vector<Setter> setters = {
        &View::SetData1_ValuePath,    &View::SetHasChangedTrigger_ValuePath,
        &View::SetXAxisMin_ValuePath, &View::SetXAxisMax_ValuePath,
        &View::SetYAxisMin_ValuePath, &View::SetYAxisMax_ValuePath};
    if constexpr (isIq)
        setters.push_back(&View::SetData2_ValuePath);
    else
        setters.insert(setters.end(),
                       {&View::SetBaudrateData_ValuePath, &View::SetBaudrate_ValuePath});
    (view.*setters[role % setters.size()])(path);
}

template<class View>
void give(View& view, std::uint8_t length, std::uint8_t content)
{
    if constexpr (std::is_same_v<View, VCGLIQDiagram>) {
        auto data = nastyData<std::vector<float>>(length, content);
        view.AddData(data);
    } else {
        auto data = nastyData<std::vector<double>>(length, content);
        view.FillData(data, content % 2);
    }
}

template<class View>
void page(Place& place, View& view, std::uint8_t first, std::uint8_t second)
{
    auto* diagram = TestAccess::diagram(view);
    if (first % 4 == 0) {
        place.page.reset();
    } else if (first % 4 == 1) {
        place.page = std::make_unique<QWidget>();
        diagram->GetPropertyPage(place.page.get(), "page");
    } else if (first % 4 == 2 && place.page) {
        for (auto* editor : place.page->findChildren<QDoubleSpinBox*>())
            editor->setValue(nastyNumber(second++));
        for (auto* editor : place.page->findChildren<QSpinBox*>())
            editor->setValue(nastyLength(second));
        place.page->findChild<QCheckBox*>()->toggle();
    } else {
        diagram->slotAcceptPropertyChanges();
    }
}

template<class View>
void axes(View& view, std::uint8_t first, std::uint8_t second)
{
    auto* diagram = TestAccess::diagram(view);
    const double number = nastyNumber(second);
    const std::shared_ptr<XAxisWidget> xAxis = TestAccess::xAxis(view);
    const std::function<void()> ways[] = {
        [&] { diagram->SetYStart(number); },
        [&] { diagram->SetYStop(number); },
        [&] { xAxis->SetRange(number, nastyNumber(static_cast<std::uint8_t>(second / 3))); },
        [&] { xAxis->ZoomAt(nastyLength(second), number); },
        [&] { xAxis->PanFrom(-1.0, number, nastyLength(first), nastyLength(second)); },
        [&] { xAxis->ResetZoom(); },
        [&] { diagram->setXAxisWidget(second % 2 ? xAxis : nullptr); },
        [&] {
            if constexpr (!std::is_same_v<View, VCGLIQDiagram>)
                diagram->SetBaudrate(static_cast<float>(second % 2 ? 1.0 : number));
        },
        [&] { xAxis->XPixelMap()->GetAxisDefinition().SetTickLimit(nastyLength(second)); }};
    ways[first % std::size(ways)]();
}

template<class View>
void paint(View& view, std::uint8_t first, std::uint8_t second)
{
    constexpr double scales[] = {1.0, 0.5, 2.5, 1e-300, 1e300, 0.0, -1.0};
    if (first % 2 == 0) {
        view.grab(QRect(0, first % 5, nastyLength(second) % 500, nastyLength(first) % 500));
    } else {
        QImage image(second % 3 * 40, 40, QImage::Format_RGB32);
        QPainter painter(&image);
        if (painter.isActive()) {
            painter.scale(pick(scales, first), pick(scales, second));
            painter.rotate(second % 4 * 45);
        }
        view.RenderPicture(painter, {nastyLength(second) % 2000, 1 + first});
    }
}

template<class View>
void point(View& view, std::uint8_t first, std::uint8_t second)
{
    const QPoint at(second % 16 * view.width() / 16, second / 16 * view.height() / 16);
    constexpr QEvent::Type types[] = {QEvent::MouseButtonPress, QEvent::MouseMove,
                                      QEvent::MouseButtonRelease, QEvent::MouseButtonDblClick};
    if (first % 6 < 4) {
        const QEvent::Type type = types[first % 6];
        const auto button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
        QMouseEvent event(type, at, view.mapToGlobal(at), button,
                          type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton,
                          Qt::NoModifier);
        QCoreApplication::sendEvent(&view, &event);
    } else if (first % 6 == 4) {
        const int delta = first % 4 == 0 ? nastyLength(first) : 120;
        QWheelEvent event(at, view.mapToGlobal(at), {}, {0, delta}, {}, {}, Qt::NoScrollPhase,
                          false);
        QCoreApplication::sendEvent(&view, &event);
    } else {
        QKeyEvent event(QEvent::KeyPress, second % 2 ? Qt::Key_Escape : Qt::Key_Space, {});
        QCoreApplication::sendEvent(view.GetToolbarCaption()->getCaptionWidget(), &event);
    }
}

template<class View>
void texts(View& view, std::uint8_t first, std::uint8_t second)
{
    if constexpr (!std::is_same_v<View, VCGLEyeDiagram>) {
        auto* plot = TestAccess::diagram(view);
        const QString text = QString(first, QChar('x')) + QChar('\n') + QChar(first + 256 * second);
        const std::function<void()> ways[] = {
            [&] {
                plot->AddMarker("m", text, {nastyLength(first), nastyLength(second)});
            },
            [&] { plot->RemoveMarker("m"); }, [&] { plot->addTextFreqList(text); },
            [&] { plot->clear(); }, [&] { plot->setVisible(second % 2); }};
        ways[first % std::size(ways)]();
    }
}
