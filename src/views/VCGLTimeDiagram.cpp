// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "views/VCGLTimeDiagram.h"

#include "platform/glwidgets/YAxisHandler.h"
#include "time/GLTimeDiagram.h"
#include "views/GLTimeStringFormatter.h"
#include "views/ViewFrame.h"

namespace {

constexpr const char* diagramName = "TimeDiagram";

} // namespace

using View = VCGLTimeDiagram;
using Frame = ViewFrame<View>;

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

std::shared_ptr<AxisHandler> VCGLTimeDiagram::GetYAxis() const
{
    return m_diagram->GetYAxisHandler();
}

axisDefinition& VCGLTimeDiagram::GetYAxisDefinition() const
{
    return GetYAxis()->XPixelMap()->GetAxisDefinition();
}

void VCGLTimeDiagram::SetYUnit(const QString& unit) { m_diagram->SetYUnit(unit); }

std::vector<std::vector<double>> VCGLTimeDiagram::GetTraces() const
{
    return m_diagram->GetTraces();
}

QWidget* VCGLTimeDiagram::GetCanvas() { return this; }

GLBaseWidget& VCGLTimeDiagram::DiagramWidget() const { return *m_diagram; }

void VCGLTimeDiagram::Clear()
{
    m_pending.clear();
    m_segmentLength = 0.0F;
    m_ruler.clear();
    Diagram()->Clear();
}

#include "views/SegmentViewOperations.inl"
#include "views/ViewOperations.inl"
