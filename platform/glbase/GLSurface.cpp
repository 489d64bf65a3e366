// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/glbase/GLSurface.h"

#include <QEvent>
#include <QPaintEngine>
#include <QPainter>
#include <QPointer>
#include <QShowEvent>

#include <utility>

GLSurface::GLSurface(QWidget& frame, Paint paint)
    : QOpenGLWidget(&frame)
    , m_paint(std::move(paint))
{
    setFormat(Format());
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setGeometry(frame.rect());
    lower();
}

GLSurface::~GLSurface() { LeaveWindow(); }

QSurfaceFormat GLSurface::Format()
{
    // No profile and a version up to 2.1 is what makes every driver keep the fixed functions.
    // Without multisampling a point of one pixel is one pixel.
    QSurfaceFormat format;
    format.setRenderableType(QSurfaceFormat::OpenGL);
    format.setVersion(2, 1);
    format.setProfile(QSurfaceFormat::NoProfile);
    format.setSamples(0);
    return format;
}

void GLSurface::LeaveWindow()
{
    // A window keeps a pointer to each GL widget that it has painted until it paints again, and Qt
    // does not request that when a widget without a size leaves.
    if (size().isEmpty())
        window()->update();
}

bool GLSurface::event(QEvent* event)
{
    const QPointer<GLSurface> alive(this); // a receiver of the resize may destroy it
    const QEvent::Type type = event->type();
    // A surface that moves to another window while it is hidden or has no size would lose its
    // context, and Qt would still let that window compose its last picture. So it keeps the context
    // until it is shown with a size.
    const bool isThere = !size().isEmpty() && (type != QEvent::WindowChangeInternal ||
                                               !(isHidden() || parentWidget()->isHidden()));
    const bool keepsContext =
        !isThere && (type == QEvent::WindowChangeInternal || type == QEvent::Show);
    m_awaitsContext |= keepsContext;
    if (isThere && m_awaitsContext && (type == QEvent::Show || type == QEvent::Resize)) {
        m_awaitsContext = false;
        QShowEvent show; // where it asks whether the context suits the window
        if (type == QEvent::Resize)
            QOpenGLWidget::event(&show);
        if (!alive)
            return true;
    }
    // NOLINTNEXTLINE(bugprone-parent-virtual-call): past the one that would take the context
    return keepsContext ? QWidget::event(event) : QOpenGLWidget::event(event);
}

void GLSurface::paintGL()
{
    QPainter painter(this);
    // Also called when the window is grabbed, with a painter on a picture.
    if (painter.isActive()) // not on an empty picture
        m_paint(painter, painter.paintEngine()->type() == QPaintEngine::OpenGL2);
}
