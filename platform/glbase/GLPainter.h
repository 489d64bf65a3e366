// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/glbase/GLPainterState.h"

#include <QColor>
#include <QLineF>
#include <QRect>
#include <QString>

#include <functional>
#include <vector>

class GLFrameWidget;
class KeptPixels;
class PixelTarget;
class QPainter;
class QTransform;

/// Handle on the painter of a frame widget, for the GL child that is being painted: origin at the
/// child's top left corner, y down, logical pixels, clipped to the child.
///
/// Handles nest: one may be created while another is alive, and each leaves the painter as it found
/// it. A handle made while its frame is not painting (or for a null frame) draws nothing.
class ORVANE_PLATFORM_API GLPainter : public GLPainterState
{
public:
    explicit GLPainter(GLFrameWidget* frame);
    /// Undoes whatever is left of save() and beginNativePainting().
    ~GLPainter();
    GLPainter(const GLPainter&) = delete;
    GLPainter& operator=(const GLPainter&) = delete;

    /// Brush that runs from first at the left border of the widget to second at the right.
    void setHGradientBrush(const QColor& first, const QColor& second);
    /// Brush that runs from first at the top of the widget to second at the bottom.
    void setVGradientBrush(const QColor& first, const QColor& second);

    /// Edges of filled areas lie on device pixels. The outline of a pen, always solid, runs along
    /// the left and upper pixels of the rectangle and the first ones beyond it at the right and
    /// bottom, as Qt's does.
    void drawRect(const QRect& rect);
    void fillRect(const QRect& rect, const QBrush& brush);
    /// Text inside rect, with Qt::Alignment flags, in the pen's colour.
    void drawText(const QRect& rect, int flags, const QString& text);
    /// Lines of one logical pixel: (x, y) is the pixel of that index, at any device pixel ratio.
    void drawHLine(int x1, int x2, int y, const QColor& color);
    void drawVLine(int x, int y1, int y2, const QColor& color);

    /// Calls draw, whose every pixel depends on the one below it alone, or puts what is kept of
    /// that; where there are no pixels, always draws. Within the library only.
    /// @param places  outside of which draw paints nothing.
    void drawKept(KeptPixels& kept, const std::vector<QRect>& places,
                  const std::function<void()>& draw);

    /// Between these two calls raw OpenGL 1.1 draws in the widget's pixel frame: integer
    /// coordinates are pixel centres, the scissor is the widget, the current context is the
    /// frame's, the matrix mode is GL_MODELVIEW. Answers false when there is no GL context (a
    /// picture is drawn instead): then draw nothing.
    bool beginNativePainting();
    void endNativePainting();

    /// Draws points where beginNativePainting() answers false, as OpenGL would draw GL_POINTS of
    /// size 1: the device pixel of each point; a point that is not finite is dropped. In a picture
    /// each point is a square of one logical pixel. Where the painter draws vectors, more than
    /// 10000 points become an embedded picture with up to four pixels to a logical one.
    /// @param points    x, y, x, y...; an odd last value is ignored.
    /// @param toWidget  scales and moves them into the widget's pixel frame.
    void drawPoints(const std::vector<float>& points, const QTransform& toWidget,
                    const QColor& color);
    /// The same for many sets of points, which costs less than one after the other.
    void drawPoints(const std::vector<const std::vector<float>*>& sets, const QTransform& toWidget,
                    const QColor& color);

    /// The Qt painter behind the handle; null when the handle is inert. Slows the handle down,
    /// which from then on has to expect that transform and clip were changed.
    QPainter* qtPainter() const;
    /// The area that is drawn into, origin (0, 0); null when the handle is inert.
    const QRect& area() const { return m_area; }

private:
    /// The pixels to write an opaque colour into; null where the painter has to paint it.
    PixelTarget* PixelsFor(const QColor& color) const;
    /// Lets use collect areas in a raster, and fills them with the colour.
    template<class Use>
    void Raster(const QColor& color, const Use& use);
    bool FillByRow(const QRect& rect, const QBrush& brush);
    void drawLine(const QLineF& line, const QColor& color);

    GLFrameWidget* m_pFrame;
    QRect m_area;
    QPoint m_origin;                 // of the area in the frame
    mutable bool m_isShared = false; // others may have changed the painter's transform or clip
    bool m_native = false;
};
