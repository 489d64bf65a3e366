// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/glbase/GLFrameWidget.h"

#include "platform/base/ErrorHandler.h"
#include "platform/glbase/DeviceRaster.h"
#include "platform/glbase/GLBaseWidget.h"
#include "platform/glbase/GLPainter.h"
#include "platform/gui/ColorSet.h"

#include <QEvent>
#include <QLabel>
#include <QPaintEngine>
#include <QPainter>
#include <QPointer>
#include <QScopedValueRollback>
#include <QShowEvent>
#include <QSurfaceFormat>

#include <utility>

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
    const QPointer<GLFrameWidget> alive(this); // whoever hears of a resize may destroy it
    const QEvent::Type type = event->type();
    // Where it is hidden or has no size in another window, Qt would take its context, and yet make
    // that window compose its last picture. It keeps it until it is shown with a size.
    const bool isThere = !size().isEmpty() && (type != QEvent::WindowChangeInternal || !isHidden());
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
    const bool isTaken = keepsContext ? QWidget::event(event) : QOpenGLWidget::event(event);
    if (alive && (type == QEvent::Show || type == QEvent::Resize || type == QEvent::LanguageChange))
        ShowNotice();
    return isTaken;
}

namespace {

QColor colorOf(IColorBase::ECOLOR number)
{
    IColorBase& own = ColorSet::Instance();
    return (GLFrameWidget::m_pColors ? *GLFrameWidget::m_pColors : own)[number];
}

} // namespace

void GLFrameWidget::ShowNotice()
{
    // Before it is shown or has a size, nobody knows.
    const bool isNeeded = isVisible() && !size().isEmpty() && !isValid();
    if (!isNeeded && !m_pNotice)
        return;
    const QString text = tr("This view needs OpenGL 2.1, which this display does not have. Install "
                            "a graphics driver that has it; the software driver of Mesa will do.");
    if (!m_pNotice) {
        m_pNotice = new QLabel(this);
        // A window of its own: one with OpenGL in it shows nothing at all where OpenGL fails late.
        m_pNotice->setAttribute(Qt::WA_DontCreateNativeAncestors);
        m_pNotice->setAttribute(Qt::WA_NativeWindow);
        m_pNotice->setAlignment(Qt::AlignCenter);
        m_pNotice->setWordWrap(true);
        m_pNotice->setMargin(8);
        m_pNotice->setAutoFillBackground(true);
        static bool isReported = false;
        if (m_pErrorHandler && !std::exchange(isReported, true))
            m_pErrorHandler->Report(text);
    }
    QPalette palette;
    palette.setColor(QPalette::Window, colorOf(IColorBase::colBackground));
    palette.setColor(QPalette::WindowText, colorOf(IColorBase::colLabel));
    m_pNotice->setPalette(palette);
    m_pNotice->setText(text);
    m_pNotice->setGeometry(rect());
    m_pNotice->raise();
    m_pNotice->setVisible(isNeeded);
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

    QColor ground = colorOf(IColorBase::colBackground);
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
