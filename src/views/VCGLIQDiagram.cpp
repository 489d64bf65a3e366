// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "views/VCGLIQDiagram.h"

#include "iq/GLIQDiagram.h"
#include "platform/glwidgets/YAxisHandler.h"
#include "views/GLIQStringFormatter.h"
#include "views/ViewFrame.h"

namespace {

constexpr const char* diagramName = "IQDiagram";

} // namespace

using Frame = ViewFrame<VCGLIQDiagram>;

VCGLIQDiagram::VCGLIQDiagram(QWidget* parent)
    : GLLayout(parent)
    , m_hasChangedTrigger(this)
    , m_xAxisMin(this)
    , m_xAxisMax(this)
    , m_yAxisMin(this)
    , m_yAxisMax(this)
{
    Frame::BuildCaption(*this, QT_TR_NOOP("IQ Diagram"));

    m_diagram = std::make_shared<GLIQDiagram>(diagramName, nullptr);
    Frame::AddDiagram(*this, m_diagram);
    m_diagram->addContextMenu(std::weak_ptr<IHasContextMenu>(m_diagram), GLCommonWidget::zoBottom);

    Frame::BuildXAxis(*this, diagramName, std::make_shared<GLIQStringFormatter>());
    m_xAxis->XPixelMap()->GetAxisDefinition().SetUnit(QString()); // I is no time
    AxisHandler::JoinZooms(m_xAxis, m_diagram->GetYAxisHandler());
    m_ruler.init(m_diagram, m_xAxis, m_diagram->GetYAxisHandler(), m_pCaption->getCaptionWidget());
}

VCGLIQDiagram::~VCGLIQDiagram()
{
    Frame::TakeDown(*this, *m_diagram);
    m_diagram.reset();
    delete m_pCaption;
    m_pCaption = nullptr;
}

bool VCGLIQDiagram::SetData1_ValuePath(const QString& path) { return m_data1.SetPath(path); }

bool VCGLIQDiagram::SetData2_ValuePath(const QString& path) { return m_data2.SetPath(path); }

bool VCGLIQDiagram::SetHasChangedTrigger_ValuePath(const QString& path)
{
    return Frame::Bind(*this, m_hasChangedTrigger, path);
}

bool VCGLIQDiagram::SetXAxisMin_ValuePath(const QString& path)
{
    return Frame::Bind(*this, m_xAxisMin, path);
}

bool VCGLIQDiagram::SetXAxisMax_ValuePath(const QString& path)
{
    return Frame::Bind(*this, m_xAxisMax, path);
}

bool VCGLIQDiagram::SetYAxisMin_ValuePath(const QString& path)
{
    return Frame::Bind(*this, m_yAxisMin, path);
}

bool VCGLIQDiagram::SetYAxisMax_ValuePath(const QString& path)
{
    return Frame::Bind(*this, m_yAxisMax, path);
}

void VCGLIQDiagram::Update(Observable* source, TChangeCode code)
{
    if (code == ccContent)
        Frame::Dispatch(*this, source);
}

// Joins the two lists to one data set.
bool VCGLIQDiagram::Feed()
{
    if (!m_data1.Get() || !m_data2.Get())
        return false;
    const std::list<double>& iSamples = m_data1.Get()->GetList();
    const std::list<double>& qSamples = m_data2.Get()->GetList();
    std::vector<float> pairs;
    pairs.reserve(2 * iSamples.size());
    auto q = qSamples.begin();
    for (const double i : iSamples) {
        pairs.push_back(static_cast<float>(i));
        pairs.push_back(q != qSamples.end() ? static_cast<float>(*q++) : 0.0F);
    }
    m_diagram->AddData(pairs);
    return true;
}

void VCGLIQDiagram::AutoScale()
{
    if (m_diagram)
        m_diagram->AutoScale();
}

DiagramCaption* VCGLIQDiagram::GetToolbarCaption() { return m_pCaption; }

void VCGLIQDiagram::AddData(std::vector<float>& data) { Frame::Fill(*this, true, data); }

void VCGLIQDiagram::AddData(const float* data, std::size_t count)
{
    Frame::Fill(*this, true, data, count);
}

void VCGLIQDiagram::AddData(const double* data, std::size_t count)
{
    Frame::Fill(*this, true, data, count);
}

std::shared_ptr<AxisHandler> VCGLIQDiagram::GetYAxis() const
{
    return m_diagram->GetYAxisHandler();
}

void VCGLIQDiagram::SetXAxisRange(double min, double max) { Frame::SetXAxisRange(*this, min, max); }

void VCGLIQDiagram::SetYAxisRange(double min, double max) { Frame::SetYAxisRange(*this, min, max); }

void VCGLIQDiagram::Clear()
{
    m_ruler.clear();
    Diagram()->Clear();
}

void VCGLIQDiagram::slotPaused(bool takeData) { Frame::SetTakeData(*this, takeData); }
