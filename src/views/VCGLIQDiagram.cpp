// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "views/VCGLIQDiagram.h"

#include "iq/GLIQDiagram.h"
#include "platform/glwidgets/YAxisHandler.h"
#include "views/GLIQStringFormatter.h"
#include "views/ViewFrame.h"

namespace {

constexpr const char* diagramName = "IQDiagram";

double aspect(const QSize& plot) { return static_cast<double>(plot.width()) / plot.height(); }

/// Widens the range of an axis by a factor about its middle until it is destroyed, without telling
/// observers.
class WidenedAxis
{
public:
    WidenedAxis(axisDefinition& axis, double factor)
        : m_axis(axis)
        , m_start(axis.GetStart())
        , m_stop(axis.GetStop())
    {
        const double middle = m_start + (m_stop - m_start) / 2.0;
        m_axis.SetRange(middle + (m_start - middle) * factor, middle + (m_stop - middle) * factor);
    }
    ~WidenedAxis() { m_axis.SetRange(m_start, m_stop); }
    WidenedAxis(const WidenedAxis&) = delete;
    WidenedAxis& operator=(const WidenedAxis&) = delete;

private:
    axisDefinition& m_axis;
    const double m_start;
    const double m_stop;
};

} // namespace

using View = VCGLIQDiagram;
using Frame = ViewFrame<View>;

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

bool VCGLIQDiagram::SetData2_ValuePath(const QString& path)
{
    return Frame::BindList(*this, m_data2, path);
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
    // Not in place: while the diagram takes it, the view may be fed again.
    std::vector<float> pairs;
    pairs.swap(m_pairs);
    pairs.resize(2 * iSamples.size());
    auto q = qSamples.begin();
    float* next = pairs.data();
    for (const double i : iSamples) {
        *next++ = static_cast<float>(i);
        *next++ = q != qSamples.end() ? static_cast<float>(*q++) : 0.0F;
    }
    const QPointer<VCGLIQDiagram> alive(this);
    m_diagram->AddData(pairs);
    if (alive)
        pairs.swap(m_pairs); // of the data set that the diagram gave up
    return true;
}

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

axisDefinition& VCGLIQDiagram::GetYAxisDefinition() const
{
    return GetYAxis()->XPixelMap()->GetAxisDefinition();
}

void VCGLIQDiagram::SetYUnit(const QString& unit) { m_diagram->SetYUnit(unit); }

std::vector<float> VCGLIQDiagram::GetSamples() const { return m_diagram->GetSamples(); }

void VCGLIQDiagram::SetAging(double seconds) { m_diagram->SetAging(seconds); }

void VCGLIQDiagram::SetAgesByData(bool byData) { m_diagram->SetAgesByData(byData); }

void VCGLIQDiagram::RenderInProportion(QPainter& painter, const QSize& size)
{
    const QSize shown = GetPlotRect().size();
    const QSize wanted = GetPlotRect(size).size();
    if (shown == wanted || shown.isEmpty() || wanted.isEmpty()) {
        RenderPicture(painter, size);
        return;
    }
    const double shownAspect = aspect(shown);
    const double wantedAspect = aspect(wanted);
    const WidenedAxis x(GetXAxisDefinition(),
                        std::max(wantedAspect, 1.0) / std::max(shownAspect, 1.0));
    const WidenedAxis y(GetYAxisDefinition(),
                        std::max(1.0 / wantedAspect, 1.0) / std::max(1.0 / shownAspect, 1.0));
    RenderPicture(painter, size);
}

QWidget* VCGLIQDiagram::GetCanvas() { return this; }

GLBaseWidget& VCGLIQDiagram::DiagramWidget() const { return *m_diagram; }

void VCGLIQDiagram::Clear()
{
    m_ruler.clear();
    Diagram()->Clear();
}

#include "views/ViewOperations.inl"
