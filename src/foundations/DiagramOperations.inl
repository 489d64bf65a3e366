// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
// Operations that all diagrams have, written once. Each diagram's source includes this file after
// `using Diagram = GL...;` and so defines them as members of its own class. The source has
//   caption()           the diagram's title, in the language of the moment;
//   dialogParent(...)   the widget that the diagram's dialog and menu belong to.
// NOLINTBEGIN(misc-definitions-in-headers)

void Diagram::SetYStart(double start)
{
    m_yStart = start;
    ShowYRange();
}

void Diagram::SetYStop(double stop)
{
    m_yStop = stop;
    ShowYRange();
}

const QString& Diagram::GetPropertyPagePath()
{
    return m_caption = caption(); // the language may have changed
}

void Diagram::ShowProperties()
{
    const QPointer<Diagram> self(this);
    diagramDialogs::runProperties(dialogParent(*this), this, this, m_pContextMenu);
    if (self)
        m_pPropertyPage = nullptr;
}

// The constructor calls it too.
void Diagram::ApplyPersistantAfterRead() { update(); }

void Diagram::AutoScale()
{
    if (m_autoScaleTimer.isActive())
        return;
    m_autoScalePending = true;
    m_autoScaleTimer.start();
}

Diagram::ValueRecord* Diagram::AddRecord()
{
    return traceHistory::addRecord(m_records, m_freeRecords);
}

void Diagram::RemoveRecord() { traceHistory::removeRecord(m_records, m_freeRecords); }

// NOLINTEND(misc-definitions-in-headers)
