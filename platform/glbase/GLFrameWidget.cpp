// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/glbase/GLFrameWidget.h"

#include "platform/base/ErrorHandler.h"
#include "platform/glbase/DeviceRaster.h"
#include "platform/glbase/GLSurface.h"
#include "platform/glbase/PixelTarget.h"
#include "platform/glbase/Renderer.h"
#include "platform/gui/ColorSet.h"

#include <QEvent>
#include <QLabel>
#include <QPaintEvent>
#include <QPainter>
#include <QPointer>
#include <QScopedValueRollback>

#include <utility>

IErrorHandlerBase* GLFrameWidget::m_pErrorHandler = nullptr;
IColorBase* GLFrameWidget::m_pColors = nullptr;

GLFrameWidget::GLFrameWidget(QWidget* parent)
    : QWidget(parent)
{
    setAttribute(Qt::WA_OpaquePaintEvent); // the ground covers it
    if (Renderer::Current() == Renderer::Kind::OpenGL)
        m_pSurface = new GLSurface(*this, [this](QPainter& painter, bool hasContext) {
            PaintOnScreen(painter, hasContext);
        });
}

GLFrameWidget::~GLFrameWidget() { delete m_pSurface; }

bool GLFrameWidget::event(QEvent* event)
{
    if (event->type() == QEvent::ParentAboutToChange && m_pSurface)
        m_pSurface->LeaveWindow();
    const QPointer<GLFrameWidget> alive(this); // a receiver of the resize may destroy it
    const QEvent::Type type = event->type();
    const bool isTaken = QWidget::event(event);
    if (!alive)
        return true;
    if (type == QEvent::Resize && m_pSurface)
        m_pSurface->setGeometry(rect());
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

QColor groundColor()
{
    QColor ground = colorOf(IColorBase::colBackground);
    ground.setAlpha(255);
    return ground;
}

} // namespace

void GLFrameWidget::ShowNotice()
{
    // Not known before the frame is shown and has a size.
    const bool isNeeded = isVisible() && !size().isEmpty() && !isValid();
    if (!isNeeded) {
        if (m_pNotice)
            m_pNotice->hide();
        return;
    }
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
    m_pNotice->show();
}

void GLFrameWidget::paintEvent(QPaintEvent* event)
{
    if (m_pSurface)
        return;
    const QScopedValueRollback<QRegion> exposed(m_exposed, event->region());
    QPainter painter(this);
    PaintOnScreen(painter, false);
    PixelTarget::FreeRegisters();
}

void GLFrameWidget::PaintOnScreen(QPainter& painter, bool hasContext)
{
    const QScopedValueRollback<bool> context(m_hasContext, hasContext);
    Render(painter);
}

QImage GLFrameWidget::grabFramebuffer()
{
    if (m_pSurface) {
        m_pSurface->setGeometry(rect()); // a frame that was never shown received no resize event
        return m_pSurface->grabFramebuffer();
    }
    const double ratio = devicePixelRatioF();
    QImage image((QSizeF(size()) * ratio).toSize(), QImage::Format_RGB32);
    image.setDevicePixelRatio(ratio);
    QPainter painter(&image);
    Render(painter);
    return image;
}

bool GLFrameWidget::isValid() const { return !m_pSurface || m_pSurface->isValid(); }

void GLFrameWidget::UpdateContent() { UpdateContent(rect()); }

void GLFrameWidget::UpdateContent(const QRect& rect)
{
    if (m_pSurface)
        m_pSurface->update();
    else
        update(rect);
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
    if (!m_hasBaseClip)
        m_pixels = PixelTarget::Of(painter);

    const QRect content(QPoint(0, 0), ContentSize());
    if (PixelsFor(groundColor())) {
        m_bareGround = content;
    } else {
        DeviceRaster raster(painter, content);
        raster.AddVisible();
        raster.Fill(groundColor());
    }
    PaintChildren(painter);
    PaintGround(content);
    m_pixels.reset();
    painter.restore();
}

void GLFrameWidget::PaintGround(const QRect& place)
{
    const QRegion bare = m_bareGround & place;
    m_bareGround -= bare;
    for (const QRect& part : bare)
        m_pixels->Fill(DeviceRaster(*m_pixels, QPoint(0, 0), part).VisibleDeviceRect(),
                       groundColor().rgb());
}

void GLFrameWidget::PaintChildren(QPainter&) {}
