// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
// Operations of the diagrams that are GL plots beside those of DiagramOperations.inl, and included
// alike.
// NOLINTBEGIN(misc-definitions-in-headers)

void Diagram::Clear()
{
    guiThread::checkObject(*this);
    while (!m_records.empty())
        RemoveRecord();
    update();
}

void Diagram::ShowYRange() { m_yAxisHandler->SetRange(m_yStart, m_yStop, 0); }

void Diagram::GetYStartStop(double& start, double& stop)
{
    start = m_yAxisHandler->GetStartValue();
    stop = m_yAxisHandler->GetStopValue();
}

std::shared_ptr<AxisHandler> Diagram::GetYAxisHandler() { return m_yAxisHandler; }

void Diagram::SetYUnit(const QString& unit)
{
    m_yAxisHandler->SetUnitText(unit.isEmpty() ? QStringLiteral(" ") : unit);
}

void Diagram::setXAxisWidget(const std::shared_ptr<XAxisWidget>& xAxisWidget)
{
    m_xAxisWidget = xAxisWidget;
}

QMenu* Diagram::getContextMenu(QContextMenuEvent*, GLCommonWidget*, int)
{
    if (!m_pContextMenu) {
        m_pContextMenu = diagramDialogs::createContextMenu(GetFrameWidget(), m_propertiesAction,
                                                           m_autoScaleAction, &Diagram::tr);
        // The frame is the menu's parent and may be destroyed before the diagram.
        connect(m_pContextMenu, &QObject::destroyed, this, [this] { m_pContextMenu = nullptr; });
    }
    return m_pContextMenu;
}

void Diagram::resizeEvent(QResizeEvent* event)
{
    GLCommonWidget::resizeEvent(event);
    m_yAxisHandler->resizeEvent(event);
}

// NOLINTEND(misc-definitions-in-headers)
