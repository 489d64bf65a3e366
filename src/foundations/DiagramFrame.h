// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundations/DiagramDialogs.h"
#include "foundations/GLOrvanePropertyPage.h"
#include "foundations/TraceHistory.h"
#include "platform/base/ErrorHandler.h"
#include "platform/base/GuiThread.h"
#include "platform/glbase/GLFrameWidget.h"
#include "platform/glwidgets/XAxisWidget.h"
#include "platform/glwidgets/YAxisHandler.h"
#include "platform/gui/ColorSet.h"
#include "platform/values/Persistant.h"

#include <QMenu>
#include <QPointer>

#include <memory>

/// Code that the diagrams share. Each diagram declares all its members itself, because their order
/// decides the order of destruction. The shared code is therefore a struct beside the diagrams,
/// which each diagram makes a friend. DiagramOperations.inl and PlotOperations.inl define
/// operations of the diagrams with it.
template<class Diagram>
struct DiagramFrame
{
    /// Connects the actions, sets the timer up and reads the persisted grid switch.
    static void SetUp(Diagram& diagram, const char* group, int autoScalePeriodMs)
    {
        QObject::connect(&diagram.m_propertiesAction, SIGNAL(triggered()), &diagram,
                         SLOT(ShowProperties()));
        QObject::connect(&diagram.m_autoScaleAction, SIGNAL(triggered()), &diagram,
                         SLOT(AutoScale()));
        diagram.m_autoScaleTimer.setSingleShot(true);
        diagram.m_autoScaleTimer.setInterval(autoScalePeriodMs);

        diagram.m_pPersistant = new values::Persistant(QString::fromLatin1(group), &diagram);
        diagram.m_pPersistant->Add(&diagram.m_showGrid, QStringLiteral("ShowGrid"), true);
        diagram.m_pPersistant->Read(QString(), static_cast<ICfg::View>(0));
    }
    static void TakeDown(Diagram& diagram)
    {
        if (diagram.m_autoScaleTimer.isActive())
            diagram.m_autoScaleTimer.stop();
        diagramDialogs::discard(diagram.m_pContextMenu);
        traceHistory::freeHistory(diagram.m_records, diagram.m_freeRecords);
        diagram.m_pPersistant->Write(QString(), static_cast<ICfg::View>(0));
        delete diagram.m_pPersistant;
        diagram.m_pPersistant = nullptr;
    }

    /// Connects a GL plot to the services of the application and creates its Y axis.
    static void SetUpPlot(Diagram& diagram)
    {
        GLFrameWidget::m_pErrorHandler = &ErrorHandler::Instance();
        GLFrameWidget::m_pColors = &ColorSet::Instance();

        constexpr int yAxisKind = 3;
        diagram.m_yAxisHandler = std::make_shared<YAxisHandler>(yAxisKind);
        diagram.m_yAxisHandler->SetUnitText(QStringLiteral(" "));
        diagram.m_yStart = diagram.m_yAxisHandler->GetStartValue();
        diagram.m_yStop = diagram.m_yAxisHandler->GetStopValue();
        diagram.addMouseObject(std::weak_ptr<IMouseHandler>(diagram.m_yAxisHandler),
                               Diagram::zoAxis);
        diagram.addContextMenu(std::weak_ptr<IHasContextMenu>(diagram.m_yAxisHandler),
                               Diagram::zoAxis);
    }
    /// Fills the settings page of a GL plot with ranges and grid switch. The limits bound what the
    /// page accepts.
    static void FillPage(Diagram& diagram, double xLowest, double xHighest, double yLimit)
    {
        GLOrvanePropertyPage& page = *diagram.m_pPropertyPage;
        if (diagram.m_xAxisWidget) {
            page.SetXAxisMin(xLowest, xHighest, diagram.m_xAxisWidget->GetStartValue(), true);
            page.SetXAxisMax(xLowest, xHighest, diagram.m_xAxisWidget->GetStopValue(), true);
        }
        page.SetYAxisMin(-yLimit, yLimit, diagram.m_yAxisHandler->GetStartValue(), true);
        page.SetYAxisMax(-yLimit, yLimit, diagram.m_yAxisHandler->GetStopValue(), true);
        page.SetShowGrid(diagram.m_showGrid, true);
        diagramDialogs::forgetDestroyed(diagram.m_pPropertyPage, diagram);
    }
    /// Applies the ranges of the settings page of a GL plot. Returns false when the diagram is
    /// gone: an observer of an axis may close the dialog and destroy the diagram.
    static bool ApplyRanges(Diagram& diagram)
    {
        const GLOrvanePropertyPage& page = *diagram.m_pPropertyPage;
        const double yMin = page.GetYAxisMin();
        const double yMax = page.GetYAxisMax();
        const QPointer<Diagram> alive(&diagram);
        if (diagram.m_xAxisWidget)
            diagram.m_xAxisWidget->SetRange(page.GetXAxisMin(), page.GetXAxisMax());
        if (alive)
            diagram.m_yAxisHandler->SetRange(yMin, yMax, 0);
        return alive;
    }
    /// Draws the grid lines of a GL plot, if they are on.
    static void DrawGrid(Diagram& diagram, GLPainter& painter)
    {
        if (!diagram.m_showGrid)
            return;
        diagram.m_xAxisWidget->XPixelMap()->GetGridDrawer().Draw(painter, &diagram,
                                                                 diagram.m_drawParam);
        diagram.m_yAxisHandler->XPixelMap()->GetGridDrawer().Draw(painter, &diagram,
                                                                  diagram.m_drawParam);
    }
};
