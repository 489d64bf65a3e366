// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/glbase/GLFrameWidget.h"

#include "platform/glbase/DeviceRaster.h"
#include "platform/glbase/GLBaseWidget.h"
#include "platform/glbase/GLPainter.h"
#include "platform/gui/ColorSet.h"

#include <QEvent>
#include <QPaintEngine>
#include <QPainter>
#include <QScopedValueRollback>
#include <QSurfaceFormat>

IErrorHandlerBase* GLFrameWidget::m_pErrorHandler = nullptr;
IColorBase* GLFrameWidget::m_pColors = nullptr;

GLFrameWidget::GLFrameWidget(QWidget* parent)
    : QOpenGLWidget(parent)
{
    // No profile and a version up to 2.1 is what makes every driver keep the fixed functions.
    // Without multisampling a point of one pixel is one pixel.
    QSurfaceFormat format;
    format.setRenderableType(QSurfaceFormat::OpenGL);
    format.setVersion(2, 1);
    format.setProfile(QSurfaceFormat::NoProfile);
    format.setSamples(0);
    setFormat(format);
}

namespace {

// A window keeps a pointer to each GL widget that it painted until it paints anew, for which Qt
// does not ask when an empty one leaves.
void leaveWindow(QWidget& widget)
{
    if (widget.size().isEmpty())
        widget.window()->update();
}

} // namespace

GLFrameWidget::~GLFrameWidget() { leaveWindow(*this); }

bool GLFrameWidget::event(QEvent* event)
{
    if (event->type() == QEvent::ParentAboutToChange)
        leaveWindow(*this);
    return QOpenGLWidget::event(event);
}

void GLFrameWidget::paintGL()
{
    QPainter painter(this);
    if (!painter.isActive()) // on an empty picture
        return;
    // Whoever grabs a window has this called, too, with a painter on a picture.
    const bool isOnFrame = painter.paintEngine()->type() == QPaintEngine::OpenGL2;
    const QScopedValueRollback<bool> hasContext(m_hasContext, isOnFrame);
    Render(painter);
}

void GLFrameWidget::Render(QPainter& painter)
{
    if (!painter.isActive())
        return;
    const QScopedValueRollback<QPainter*> open(m_pPainter, &painter);
    painter.save();
    m_baseTransform = painter.worldTransform();
    m_hasBaseClip = painter.hasClipping();
    m_baseClip = m_hasBaseClip ? painter.clipRegion() : QRegion();

    QColor ground = ColorSet::Instance()[IColorBase::colBackground];
    ground.setAlpha(255);
    const QRect content(QPoint(0, 0), ContentSize());
    painter.fillRect(DeviceRaster(painter, content).Snapped(content), ground);
    PaintChildren(painter);
    painter.restore();
}

void GLFrameWidget::PaintChildren(QPainter&) {}

void GLFrameWidget::DrawLines(const GLLines& lines)
{
    GLPainter handle(this);
    if (!handle.painter())
        return;
    DeviceRaster raster(*handle.painter(), handle.area());
    for (const QLineF& line : lines.Lines())
        raster.AddLine(line, lines.LineStyle());
    raster.Fill(lines.LineStyle().Color());
}

void GLFrameWidget::DrawStepLine(const GLStepLine& line)
{
    GLPainter handle(this);
    if (!handle.painter())
        return;
    DeviceRaster raster(*handle.painter(), handle.area());
    raster.AddStepLine(line);
    raster.Fill(line.LineStyle().Color());
}
