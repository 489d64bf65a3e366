// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "views/VCGLEyeDiagram.h"

#include "eye/GLEyeDiagram.h"
#include "views/GLEyeStringFormatter.h"
#include "views/ViewFrame.h"

#include <QContextMenuEvent>

namespace {

constexpr const char* diagramName = "EyeDiagram";

/// Place of the diagram in the layout.
class EyeHost : public GLBaseWidget
{
public:
    explicit EyeHost(GLEyeDiagram& diagram)
        : GLBaseWidget(diagramName, nullptr)
        , m_diagram(diagram)
    {
        SetQWidget(&diagram);
    }

protected:
    void PaintCarried(QPainter& painter, const QSize& size) override
    {
        m_diagram.PaintPicture(painter, size);
    }
    // That of the mouse comes to the diagram by itself, as a widget.
    void contextMenuEvent(QContextMenuEvent* event) override
    {
        static_cast<QObject&>(m_diagram).event(event);
    }

private:
    GLEyeDiagram& m_diagram;
};

} // namespace

using Frame = ViewFrame<VCGLEyeDiagram>;

VCGLEyeDiagram::VCGLEyeDiagram(QWidget* parent)
    : GLLayout(parent)
    , m_hasChangedTrigger(this)
    , m_xAxisMin(this)
    , m_xAxisMax(this)
    , m_yAxisMin(this)
    , m_yAxisMax(this)
    , m_baudrateValue(this)
{
    Frame::BuildCaption(*this, QT_TR_NOOP("Eye Diagram"));

    m_pEyeDiagram = new GLEyeDiagram(this);
    m_eyeHost = std::make_shared<EyeHost>(*m_pEyeDiagram);
    Frame::AddDiagram(*this, m_eyeHost);

    Frame::BuildXAxis(*this, diagramName, std::make_shared<GLEyeStringFormatter>());
}

VCGLEyeDiagram::~VCGLEyeDiagram()
{
    Frame::TakeDown(*this, *m_eyeHost);
    delete m_pEyeDiagram;
    m_pEyeDiagram = nullptr;
    delete m_pCaption;
    m_pCaption = nullptr;
}

bool VCGLEyeDiagram::SetData1_ValuePath(const QString& path) { return m_data1.SetPath(path); }

bool VCGLEyeDiagram::SetBaudrateData_ValuePath(const QString& path)
{
    return m_baudrateData.SetPath(path);
}

bool VCGLEyeDiagram::SetHasChangedTrigger_ValuePath(const QString& path)
{
    return Frame::Bind(*this, m_hasChangedTrigger, path);
}

bool VCGLEyeDiagram::SetXAxisMin_ValuePath(const QString& path)
{
    return Frame::Bind(*this, m_xAxisMin, path);
}

bool VCGLEyeDiagram::SetXAxisMax_ValuePath(const QString& path)
{
    return Frame::Bind(*this, m_xAxisMax, path);
}

bool VCGLEyeDiagram::SetYAxisMin_ValuePath(const QString& path)
{
    return Frame::Bind(*this, m_yAxisMin, path);
}

bool VCGLEyeDiagram::SetYAxisMax_ValuePath(const QString& path)
{
    return Frame::Bind(*this, m_yAxisMax, path);
}

bool VCGLEyeDiagram::SetBaudrate_ValuePath(const QString& path)
{
    return Frame::Bind(*this, m_baudrateValue, path);
}

void VCGLEyeDiagram::Update(Observable* source, TChangeCode code)
{
    if (code == ccContent)
        Frame::DispatchWithBaudrate(*this, source);
}

bool VCGLEyeDiagram::Feed() { return Frame::FeedSegments(*this); }

void VCGLEyeDiagram::AutoScale()
{
    if (m_pEyeDiagram)
        m_pEyeDiagram->AutoScale();
}

DiagramCaption* VCGLEyeDiagram::GetToolbarCaption() { return m_pCaption; }

QMenu* VCGLEyeDiagram::getContextMenu()
{
    IHasContextMenu* provider = m_pEyeDiagram;
    return provider ? provider->getContextMenu(nullptr, nullptr, 1) : nullptr;
}

void VCGLEyeDiagram::FillData(std::vector<double>& data, bool repaint)
{
    Frame::Fill(*this, repaint, data);
}

void VCGLEyeDiagram::FillData(const double* data, std::size_t count, bool repaint)
{
    Frame::Fill(*this, repaint, data, count);
}

void VCGLEyeDiagram::FillData(const float* data, std::size_t count, bool repaint)
{
    Frame::Fill(*this, repaint, data, count);
}

void VCGLEyeDiagram::SetXAxisRange(double min, double max)
{
    Frame::SetXAxisRange(*this, min, max);
}

void VCGLEyeDiagram::SetYAxisRange(double min, double max)
{
    Frame::SetYAxisRange(*this, min, max);
}

void VCGLEyeDiagram::SetBaudrate(double baudrate)
{
    Diagram()->SetBaudrate(static_cast<float>(baudrate));
    Diagram()->update();
}

void VCGLEyeDiagram::Clear()
{
    m_pending.clear();
    m_segmentLength = 0.0F;
    Diagram()->Clear();
}

void VCGLEyeDiagram::slotPaused(bool takeData) { Frame::SetTakeData(*this, takeData); }
