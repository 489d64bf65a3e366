// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "views/VCGLEyeDiagram.h"

#include "eye/GLEyeDiagram.h"
#include "views/GLEyeStringFormatter.h"
#include "views/ViewFrame.h"

#include <QContextMenuEvent>

namespace {

constexpr const char* diagramName = "EyeDiagram";

/// Place of the diagram in the layout; offers its menu to the axis, which has no zoom to reset.
class EyeHost : public GLBaseWidget, public IHasContextMenu
{
public:
    explicit EyeHost(GLEyeDiagram& diagram)
        : GLBaseWidget(diagramName, nullptr)
        , m_diagram(diagram)
    {
        SetQWidget(&diagram);
    }
    QMenu* getContextMenu(QContextMenuEvent* event, GLCommonWidget* widget, int zone) override
    {
        return static_cast<IHasContextMenu&>(m_diagram).getContextMenu(event, widget, zone);
    }
    void contextMenuClosed() override {}

protected:
    void PaintCarried(QPainter& painter, const QSize& size) override
    {
        m_diagram.PaintPicture(painter, size);
    }
    // For the menu key. On a right click Qt asks the diagram itself, which is a widget.
    void contextMenuEvent(QContextMenuEvent* event) override
    {
        static_cast<QObject&>(m_diagram).event(event);
    }

private:
    GLEyeDiagram& m_diagram;
};

} // namespace

using View = VCGLEyeDiagram;
using Frame = ViewFrame<View>;

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
    const auto host = std::make_shared<EyeHost>(*m_pEyeDiagram);
    m_eyeHost = host;
    Frame::AddDiagram(*this, m_eyeHost);

    Frame::BuildXAxis(*this, diagramName, std::make_shared<GLEyeStringFormatter>());
    m_xAxis->addContextMenu(std::weak_ptr<IHasContextMenu>(host), GLCommonWidget::zoBottom);
}

VCGLEyeDiagram::~VCGLEyeDiagram()
{
    Frame::TakeDown(*this, *m_eyeHost);
    delete m_pEyeDiagram;
    m_pEyeDiagram = nullptr;
    delete m_pCaption;
    m_pCaption = nullptr;
}

std::vector<std::vector<QPointF>> VCGLEyeDiagram::GetTraces() const
{
    return m_pEyeDiagram->GetTraces();
}

void VCGLEyeDiagram::SetBufferSize(int samples) { m_pEyeDiagram->SetBufferSize(samples); }

QWidget* VCGLEyeDiagram::GetCanvas() { return m_pEyeDiagram; }

GLBaseWidget& VCGLEyeDiagram::DiagramWidget() const { return *m_eyeHost; }

void VCGLEyeDiagram::Clear()
{
    m_pending.clear();
    m_segmentLength = 0.0F;
    Diagram()->Clear();
}

#include "views/SegmentViewOperations.inl"
#include "views/ViewOperations.inl"
