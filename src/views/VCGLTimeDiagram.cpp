// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "views/VCGLTimeDiagram.h"

#include "platform/glwidgets/YAxisHandler.h"
#include "time/GLTimeDiagram.h"
#include "views/GLTimeStringFormatter.h"
#include "views/ViewFrame.h"

namespace {

constexpr const char* diagramName = "TimeDiagram";

} // namespace

using Frame = ViewFrame<VCGLTimeDiagram>;

VCGLTimeDiagram::VCGLTimeDiagram(QWidget* parent)
    : GLLayout(parent)
    , m_hasChangedTrigger(this)
    , m_xAxisMin(this)
    , m_xAxisMax(this)
    , m_yAxisMin(this)
    , m_yAxisMax(this)
    , m_baudrateValue(this)
{
    Frame::BuildCaption(*this, QT_TR_NOOP("Time Diagram"));

    m_diagram = std::make_shared<GLTimeDiagram>(diagramName);
    Frame::AddDiagram(*this, m_diagram);
    m_diagram->addContextMenu(std::weak_ptr<IHasContextMenu>(m_diagram), GLCommonWidget::zoBottom);

    Frame::BuildXAxis(*this, diagramName, std::make_shared<GLTimeStringFormatter>());
    m_ruler.init(m_diagram, m_xAxis, m_diagram->GetYAxisHandler(), m_pCaption->getCaptionWidget());
}

VCGLTimeDiagram::~VCGLTimeDiagram()
{
    Frame::TakeDown(*this, *m_diagram);
    m_diagram.reset();
    delete m_pCaption;
    m_pCaption = nullptr;
}

bool VCGLTimeDiagram::SetData1_ValuePath(const QString& path) { return m_data1.SetPath(path); }

bool VCGLTimeDiagram::SetBaudrateData_ValuePath(const QString& path)
{
    return m_baudrateData.SetPath(path);
}

bool VCGLTimeDiagram::SetHasChangedTrigger_ValuePath(const QString& path)
{
    return Frame::Bind(*this, m_hasChangedTrigger, path);
}

bool VCGLTimeDiagram::SetXAxisMin_ValuePath(const QString& path)
{
    return Frame::Bind(*this, m_xAxisMin, path);
}

bool VCGLTimeDiagram::SetXAxisMax_ValuePath(const QString& path)
{
    return Frame::Bind(*this, m_xAxisMax, path);
}

bool VCGLTimeDiagram::SetYAxisMin_ValuePath(const QString& path)
{
    return Frame::Bind(*this, m_yAxisMin, path);
}

bool VCGLTimeDiagram::SetYAxisMax_ValuePath(const QString& path)
{
    return Frame::Bind(*this, m_yAxisMax, path);
}

bool VCGLTimeDiagram::SetBaudrate_ValuePath(const QString& path)
{
    return Frame::Bind(*this, m_baudrateValue, path);
}

void VCGLTimeDiagram::Update(Observable* source, TChangeCode code)
{
    if (code == ccContent)
        Frame::DispatchWithBaudrate(*this, source);
}

bool VCGLTimeDiagram::Feed() { return Frame::FeedSegments(*this); }

void VCGLTimeDiagram::AutoScale()
{
    if (m_diagram)
        m_diagram->AutoScale();
}

DiagramCaption* VCGLTimeDiagram::GetToolbarCaption() { return m_pCaption; }

QMenu* VCGLTimeDiagram::getContextMenu()
{
    IHasContextMenu* provider = m_diagram.get();
    return provider ? provider->getContextMenu(nullptr, nullptr, 1) : nullptr;
}

void VCGLTimeDiagram::FillData(std::vector<double>& data, bool repaint)
{
    Frame::Fill(*this, repaint, data);
}

void VCGLTimeDiagram::FillData(const double* data, std::size_t count, bool repaint)
{
    Frame::Fill(*this, repaint, data, count);
}

void VCGLTimeDiagram::FillData(const float* data, std::size_t count, bool repaint)
{
    Frame::Fill(*this, repaint, data, count);
}

std::shared_ptr<AxisHandler> VCGLTimeDiagram::GetYAxis() const
{
    return m_diagram->GetYAxisHandler();
}

void VCGLTimeDiagram::SetXAxisRange(double min, double max)
{
    Frame::SetXAxisRange(*this, min, max);
}

void VCGLTimeDiagram::SetYAxisRange(double min, double max)
{
    Frame::SetYAxisRange(*this, min, max);
}

void VCGLTimeDiagram::SetBaudrate(double baudrate)
{
    Diagram()->SetBaudrate(static_cast<float>(baudrate));
    Diagram()->update();
}

void VCGLTimeDiagram::Clear()
{
    m_pending.clear();
    m_segmentLength = 0.0F;
    m_ruler.clear();
    Diagram()->Clear();
}

void VCGLTimeDiagram::slotPaused(bool takeData) { Frame::SetTakeData(*this, takeData); }
