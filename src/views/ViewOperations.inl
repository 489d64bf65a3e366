// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
// Operations that all views have, written once. Each view's source includes this file after
// `using View = VCGL...;` and so defines them as members of its own class.
// NOLINTBEGIN(misc-definitions-in-headers)

bool View::SetData1_ValuePath(const QString& path) { return Frame::BindList(*this, m_data1, path); }

bool View::SetHasChangedTrigger_ValuePath(const QString& path)
{
    return Frame::Bind(*this, m_hasChangedTrigger, path);
}

bool View::SetXAxisMin_ValuePath(const QString& path)
{
    return Frame::Bind(*this, m_xAxisMin, path);
}

bool View::SetXAxisMax_ValuePath(const QString& path)
{
    return Frame::Bind(*this, m_xAxisMax, path);
}

bool View::SetYAxisMin_ValuePath(const QString& path)
{
    return Frame::Bind(*this, m_yAxisMin, path);
}

bool View::SetYAxisMax_ValuePath(const QString& path)
{
    return Frame::Bind(*this, m_yAxisMax, path);
}

void View::AutoScale()
{
    guiThread::checkObject(*this);
    if (Diagram())
        Diagram()->AutoScale();
}

DiagramCaption* View::GetToolbarCaption() { return m_pCaption; }

void View::SetXAxisRange(double min, double max) { Frame::SetXAxisRange(*this, min, max); }

void View::SetYAxisRange(double min, double max) { Frame::SetYAxisRange(*this, min, max); }

std::pair<double, double> View::GetXAxisRange() const
{
    return {m_xAxis->GetStartValue(), m_xAxis->GetStopValue()};
}

std::pair<double, double> View::GetYAxisRange() const
{
    std::pair<double, double> range;
    Diagram()->GetYStartStop(range.first, range.second);
    return range;
}

axisDefinition& View::GetXAxisDefinition() const
{
    return m_xAxis->XPixelMap()->GetAxisDefinition();
}

QMenu* View::GetDiagramMenu()
{
    IHasContextMenu* provider = Diagram();
    return provider ? provider->getContextMenu(nullptr, nullptr, 1) : nullptr;
}

void View::SetPaused(bool paused) { m_pCaption->setPaused(paused); }

bool View::IsPaused() const { return m_pCaption->isPaused(); }

void View::SetCaptionNote(const QString& text) { m_pCaption->setNote(text); }

QRect View::GetPlotRect() const { return DiagramWidget().geometry(); }

QRect View::GetPlotRect(const QSize& size) const
{
    const int top = m_pCaption->getBaseWidget()->FixedHeight();
    return {0, top, size.width(), std::max(0, size.height() - top - m_xAxis->FixedHeight())};
}

void View::slotPaused(bool takeData) { Frame::SetTakeData(*this, takeData); }

// NOLINTEND(misc-definitions-in-headers)
