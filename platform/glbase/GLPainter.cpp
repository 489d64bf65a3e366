// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/glbase/GLPainter.h"

#include "platform/glbase/DeviceRaster.h"
#include "platform/glbase/GLFrameWidget.h"
#include "platform/glbase/KeptPixels.h"
#include "platform/glbase/KeptTexts.h"
#include "platform/glbase/PixelTarget.h"

#include <QImage>
#include <QLinearGradient>
#include <QOpenGLFunctions>
#include <QPainter>
#include <QTransform>

#include <algorithm>

#include <GL/gl.h>

GLPainter::GLPainter(GLFrameWidget* frame)
    : GLPainterState(frame ? frame->m_pPainter : nullptr)
    , m_pFrame(frame)
{
    if (!m_pPainter)
        return;
    // From the frame's own transform and clip, so that a nested handle gives the same area.
    const QRect place = m_pFrame->CurrentPlace();
    m_area = QRect(QPoint(0, 0), place.size());
    m_origin = place.topLeft();
    m_pPainter->save();
    m_pPainter->setWorldTransform(m_pFrame->m_baseTransform);
    if (m_pFrame->m_hasBaseClip)
        m_pPainter->setClipRegion(m_pFrame->m_baseClip);
    DeviceRaster(*m_pPainter, place)
        .ClipToVisible(m_pFrame->m_hasBaseClip ? Qt::IntersectClip : Qt::ReplaceClip);
    m_pPainter->translate(place.topLeft());
}

GLPainter::~GLPainter()
{
    if (!m_pPainter)
        return;
    endNativePainting();
    while (depth() > 0)
        restore();
    m_pPainter->restore();
}

namespace {

QBrush GradientBrush(const QPoint& stop, const QColor& first, const QColor& second)
{
    QLinearGradient gradient(QPointF(0.0, 0.0), stop);
    gradient.setColorAt(0.0, first);
    gradient.setColorAt(1.0, second);
    return gradient;
}

} // namespace

void GLPainter::setHGradientBrush(const QColor& first, const QColor& second)
{
    setBrush(GradientBrush({m_area.width(), 0}, first, second));
}

void GLPainter::setVGradientBrush(const QColor& first, const QColor& second)
{
    setBrush(GradientBrush({0, m_area.height()}, first, second));
}

QPainter* GLPainter::qtPainter() const
{
    m_isShared = true;
    if (m_pPainter)
        m_pFrame->PaintGround();
    return m_pPainter;
}

PixelTarget* GLPainter::PixelsFor(const QColor& color) const
{
    return m_isShared || !m_pPainter ? nullptr : m_pFrame->PixelsFor(color);
}

template<class Use>
void GLPainter::Raster(const QColor& color, const Use& use)
{
    m_pFrame->PaintGround();
    if (PixelTarget* pixels = PixelsFor(color))
        use(DeviceRaster(*pixels, m_origin, m_area));
    else
        use(DeviceRaster(*m_pPainter, m_area));
}

void GLPainter::drawRect(const QRect& rect)
{
    if (!m_pPainter)
        return;
    fillRect(rect, m_pPainter->brush());
    const QPen pen = m_pPainter->pen();
    if (pen.style() == Qt::NoPen)
        return;
    const GLLineStyle style(lsSolid, std::max(1, pen.width()), pen.color());
    const QRect outline(rect.topLeft(), rect.size() + QSize(1, 1));
    const QPoint below(0, 1);
    Raster(style.Color(), [&](DeviceRaster&& raster) {
        raster.AddLine(QLineF(outline.topLeft(), outline.topRight()), style);
        raster.AddLine(QLineF(outline.bottomLeft(), outline.bottomRight()), style);
        raster.AddLine(QLineF(outline.topLeft() + below, outline.bottomLeft() - below), style);
        raster.AddLine(QLineF(outline.topRight() + below, outline.bottomRight() - below), style);
        raster.Fill(style.Color());
    });
}

void GLPainter::fillRect(const QRect& rect, const QBrush& brush)
{
    if (!m_pPainter || brush.style() == Qt::NoBrush)
        return;
    const bool coversAll = rect.contains(m_area);
    if (!coversAll)
        m_pFrame->PaintGround();
    if (FillByRow(rect, brush)) {
        if (coversAll)
            m_pFrame->m_bareGround -= m_pFrame->CurrentPlace();
        return;
    }
    m_pFrame->PaintGround();
    const DeviceRaster raster(*m_pPainter, m_area);
    m_pPainter->fillRect(raster.Snapped(rect), brush);
}

/// Where all rows are alike, one of them is painted and copied.
bool GLPainter::FillByRow(const QRect& rect, const QBrush& brush)
{
    const QGradient* gradient = brush.gradient();
    bool isLevel = brush.style() == Qt::SolidPattern;
    if (gradient && gradient->type() == QGradient::LinearGradient &&
        gradient->coordinateMode() == QGradient::LogicalMode && brush.transform().isIdentity()) {
        const auto& linear = *static_cast<const QLinearGradient*>(gradient);
        isLevel = linear.start().y() == linear.finalStop().y();
    }
    PixelTarget* pixels = isLevel && brush.isOpaque() ? PixelsFor(Qt::black) : nullptr;
    return pixels && DeviceRaster(*pixels, m_origin, m_area).FillByRow(rect, brush);
}

void GLPainter::drawText(const QRect& rect, int flags, const QString& text)
{
    if (!m_pPainter)
        return;
    m_pFrame->PaintGround();
    if ((PixelsFor(Qt::black) && keptTexts::draw(*m_pPainter, rect, flags, text)) ||
        (!m_pFrame->IsPaintingPicture() &&
         keptTexts::drawLikeOpenGL(*m_pPainter, rect, flags, text)))
        return;
    m_pPainter->drawText(rect, flags, text);
}

void GLPainter::drawHLine(int x1, int x2, int y, const QColor& color)
{
    drawLine(QLineF(x1, y, x2, y), color);
}

void GLPainter::drawVLine(int x, int y1, int y2, const QColor& color)
{
    drawLine(QLineF(x, y1, x, y2), color);
}

void GLPainter::drawLine(const QLineF& line, const QColor& color)
{
    if (!m_pPainter)
        return;
    Raster(color, [&](DeviceRaster&& raster) {
        raster.AddLine(line, GLLineStyle(lsSolid, 1, color));
        raster.Fill(color);
    });
}

void GLPainter::drawKept(KeptPixels& kept, const std::vector<QRect>& places,
                         const std::function<void()>& draw)
{
    PixelTarget* pixels = PixelsFor(Qt::black);
    if (!pixels) {
        draw();
        return;
    }
    m_pFrame->PaintGround();
    std::vector<QRect> devicePlaces;
    for (const QRect& place : places) {
        const QRect device = DeviceRaster(*pixels, m_origin, place & m_area).VisibleDeviceRect();
        if (!device.isEmpty())
            devicePlaces.push_back(device);
    }
    kept.Paint(*pixels, devicePlaces, draw);
}

bool GLPainter::beginNativePainting()
{
    if (!m_pPainter || m_native || !m_pFrame->m_hasContext)
        return false;
    const QRect scissor = DeviceRaster(*m_pPainter, m_area).VisibleDeviceRect();
    const double scale = m_pPainter->deviceTransform().m11();
    m_pPainter->beginNativePainting();
    m_native = true;

    // Qt has switched the scissor off. Its origin is the lower left corner.
    GLint viewport[4] = {};
    glGetIntegerv(GL_VIEWPORT, viewport);
    glEnable(GL_SCISSOR_TEST);
    glScissor(scissor.left(), viewport[3] - (scissor.top() + scissor.height()), scissor.width(),
              scissor.height());
    glMatrixMode(GL_MODELVIEW);
    const double toCentre = DeviceRaster::pointShift / scale;
    glTranslated(toCentre, toCentre, 0.0);
    return true;
}

void GLPainter::endNativePainting()
{
    if (!m_native)
        return;
    glDisable(GL_SCISSOR_TEST);
    m_pPainter->endNativePainting();
    m_native = false;
}

namespace {

/// Points as squares of a logical pixel, as a picture of four pixels to one, where that is not too
/// large.
QImage PointImage(const QSize& size, const std::vector<float>& points, const QTransform& toWidget,
                  const QColor& color)
{
    constexpr int mostPixels = 8192; // a side
    const int fineness = qBound(1, mostPixels / std::max(size.width(), size.height()), 4);
    QImage image(size * fineness, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.scale(fineness, fineness);
    const QRectF visible(QPointF(0.0, 0.0), size);
    for (std::size_t i = 1; i < points.size(); i += 2) {
        const QRectF square(static_cast<double>(points[i - 1]) * toWidget.m11() + toWidget.dx(),
                            static_cast<double>(points[i]) * toWidget.m22() + toWidget.dy(), 1.0,
                            1.0);
        if (visible.intersects(square)) // NaN does not
            painter.fillRect(square, color);
    }
    return image;
}

} // namespace

void GLPainter::drawPoints(const std::vector<float>& points, const QTransform& toWidget,
                           const QColor& color)
{
    if (!m_pPainter)
        return;
    constexpr std::size_t mostVectors = 10000;
    if (DeviceRaster::IsVector(*m_pPainter) && points.size() / 2 > mostVectors) {
        m_pPainter->drawImage(m_area, PointImage(m_area.size(), points, toWidget, color));
        return;
    }
    const bool isPicture = m_pFrame->IsPaintingPicture();
    Raster(color, [&](DeviceRaster&& raster) {
        if (!isPicture && PixelsFor(color)) {
            raster.FillPoints(points, toWidget, color);
            return;
        }
        const auto add = isPicture ? &DeviceRaster::AddSquare : &DeviceRaster::AddPoint;
        for (std::size_t i = 1; i < points.size(); i += 2) {
            (raster.*add)(static_cast<double>(points[i - 1]) * toWidget.m11() + toWidget.dx(),
                          static_cast<double>(points[i]) * toWidget.m22() + toWidget.dy());
        }
        raster.Fill(color);
    });
}

void GLPainter::drawPoints(const std::vector<const std::vector<float>*>& sets,
                           const QTransform& toWidget, const QColor& color)
{
    if (m_pPainter && !m_pFrame->IsPaintingPicture() && PixelsFor(color)) {
        Raster(color, [&](DeviceRaster&& raster) {
            for (const std::vector<float>* points : sets)
                raster.FillPoints(*points, toWidget, color);
        });
        return;
    }
    for (const std::vector<float>* points : sets)
        drawPoints(*points, toWidget, color);
}
