// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
// Operations that the views of segments have beside those of ViewOperations.inl, and included
// alike. NOLINTBEGIN(misc-definitions-in-headers)

bool View::SetBaudrateData_ValuePath(const QString& path)
{
    return Frame::BindList(*this, m_baudrateData, path);
}

bool View::SetBaudrate_ValuePath(const QString& path)
{
    return Frame::Bind(*this, m_baudrateValue, path);
}

void View::Update(Observable* source, TChangeCode code)
{
    if (code == ccContent)
        Frame::DispatchWithBaudrate(*this, source);
}

bool View::Feed() { return Frame::FeedSegments(*this); }

QMenu* View::getContextMenu() { return GetDiagramMenu(); }

void View::FillData(std::vector<double>& data, bool repaint) { Frame::Fill(*this, repaint, data); }

void View::FillData(const double* data, std::size_t count, bool repaint)
{
    Frame::Fill(*this, repaint, data, count);
}

void View::FillData(const float* data, std::size_t count, bool repaint)
{
    Frame::Fill(*this, repaint, data, count);
}

void View::SetBaudrate(double baudrate)
{
    guiThread::checkObject(*this);
    Diagram()->SetBaudrate(static_cast<float>(baudrate));
    Diagram()->update();
}

// NOLINTEND(misc-definitions-in-headers)
