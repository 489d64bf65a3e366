// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "TextRecorder.h"

#include "platform/glbase/GLLayout.h"
#include "platform/glbase/GLPainter.h"
#include "platform/glwidgets/CaptionWidget.h"
#include "platform/glwidgets/DiagramCaption.h"
#include "platform/glwidgets/ScanBufferWidgetBase.h"
#include "platform/glwidgets/StandardMeasRuler.h"
#include "platform/glwidgets/XAxisWidget.h"
#include "platform/glwidgets/YAxisHandler.h"
#include "platform/gui/ColorSet.h"

#include <QPainter>
#include <QTest>
#include <QWindow>

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <utility>
#include <vector>

/// A plot with grid and Y axis that paints itself as the diagrams do.
struct Plot : ScanBufferWidgetBase
{
    Plot()
        : ScanBufferWidgetBase("Plot", nullptr, wtPlot)
    {
        addMouseObject(std::weak_ptr<IMouseHandler>(yAxis), zoAxis);
        addContextMenu(std::weak_ptr<IHasContextMenu>(yAxis), zoAxis);
    }
    void resizeEvent(QResizeEvent* event) override
    {
        GLCommonWidget::resizeEvent(event);
        yAxis->resizeEvent(event);
    }
    void paintEvent(QPaintEvent* event) override
    {
        GLPainter painter(GetFrameWidget());
        painter.fillRect(rect(), Qt::black);
        if (!xAxis.expired())
            xAxis.lock()->XPixelMap()->GetGridDrawer().Draw(painter, this, m_drawParam);
        yAxis->XPixelMap()->GetGridDrawer().Draw(painter, this, m_drawParam);
        for (const auto& [place, color] : traces)
            painter.fillRect(place, color);
        GLCommonWidget::paintEvent(event);
        TextRects()->draw(painter);
    }

    std::shared_ptr<YAxisHandler> yAxis = std::make_shared<YAxisHandler>(3);
    std::weak_ptr<AxisHandler> xAxis;
    std::vector<std::pair<QRect, QColor>> traces;
};

/// Caption, plot, X axis and ruler in a window, put together and taken apart as the views do.
/// Positions of events are those of the window.
struct View : GLLayout
{
    View()
    {
        setGeometry(0, 0, 500, 300);
        setFocusPolicy(Qt::StrongFocus);
        setFocusProxy(bar());
        AddWidget(caption->getBaseWidget());
        AddWidget(plot);
        AddWidget(xAxis);
        plot->xAxis = xAxis;
        ruler.init(plot, xAxis, plot->yAxis, bar());
    }
    ~View() override
    {
        RemoveWidget(*xAxis);
        xAxis.reset();
        RemoveWidget(*plot);
        plot.reset();
        delete caption;
    }
    void open()
    {
        show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(this));
        setFocus();
    }
    CaptionWidget* bar() const { return findChild<CaptionWidget*>(); }
    QPoint inPlot(int x, int y) const { return plot->geometry().topLeft() + QPoint(x, y); }
    QPoint inXAxis(int x) const { return xAxis->geometry().topLeft() + QPoint(x, 10); }

    void drag(const QPoint& from, const QPoint& to, Qt::MouseButton button = Qt::LeftButton)
    {
        QTest::mousePress(windowHandle(), button, {}, from);
        QTest::mouseMove(windowHandle(), (from + to) / 2);
        QTest::mouseMove(windowHandle(), to);
        QTest::mouseRelease(windowHandle(), button, {}, to);
    }
    void wheel(const QPoint& at, int eighthsOfDegree, Qt::KeyboardModifiers modifiers = {})
    {
        QWheelEvent event(at, mapToGlobal(at), {}, {0, eighthsOfDegree}, {}, modifiers, {}, false);
        QApplication::sendEvent(this, &event);
    }
    /// Whether an action has the window painted anew.
    template<class Action>
    bool repaints(Action action)
    {
        QCoreApplication::processEvents(); // what was requested before
        frames = 0;
        action();
        QCoreApplication::processEvents();
        return frames > 0;
    }
    void PaintChildren(QPainter& painter) override
    {
        ++frames;
        GLLayout::PaintChildren(painter);
    }
    std::vector<TextRecorder::Text> texts()
    {
        TextRecorder recorder(size());
        QPainter painter(&recorder);
        Render(painter);
        return recorder.texts;
    }
    /// The plot's part of the picture.
    QImage picture()
    {
        QImage image(size(), QImage::Format_RGB32);
        QPainter painter(&image);
        Render(painter);
        return image.copy(plot->geometry());
    }

    int frames = 0;
    DiagramCaption* caption = new DiagramCaption(this, QStringLiteral("Plot"), true);
    std::shared_ptr<Plot> plot = std::make_shared<Plot>();
    std::shared_ptr<XAxisWidget> xAxis = std::make_shared<XAxisWidget>("XAxis", this);
    StandardMeasRuler ruler;
};
