// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/glbase/GLLineStyle.h"
#include "platform/glbase/GLLines.h"
#include "platform/glbase/GLStepLine.h"

#include <QImage>
#include <QPointer>
#include <QRegion>
#include <QTransform>
#include <QWidget>

#include <memory>

class GLSurface;
class IColorBase;
class IErrorHandlerBase;
class PixelTarget;
class QLabel;
class QPainter;

/// The Qt widget that a group of GL widgets is painted into: fills itself with the ground colour
/// and opens one painter for all its children, with OpenGL or without, see Renderer. Line
/// primitives draw with that painter, in the pixel frame of the child that is being painted;
/// outside of painting they draw nothing. Where OpenGL was asked for and there is none, it shows a
/// notice instead of the picture, and reports it once to the error handler.
class ORVANE_PLATFORM_API GLFrameWidget : public QWidget
{
    Q_OBJECT
public:
    using GLLineStyle = ::GLLineStyle;
    using GLLines = ::GLLines;
    using GLStepLine = ::GLStepLine;

    /// Services of the application, which diagrams set to their singletons. Without them, errors
    /// are not reported, and colours are those of the ColorSet.
    static IErrorHandlerBase* m_pErrorHandler;
    static IColorBase* m_pColors;

    explicit GLFrameWidget(QWidget* parent = nullptr);
    ~GLFrameWidget() override;

    void DrawLines(const GLLines& lines);
    void DrawStepLine(const GLStepLine& line);

    /// Paints the frame's content with another painter (a picture, a printer), in logical pixels
    /// with the origin at the frame's top left corner. Must not be called while the frame paints.
    /// Does nothing with a painter that is not open.
    void Render(QPainter& painter);
    /// The frame as it is on the screen, without the Qt widgets in it.
    QImage grabFramebuffer();
    /// Whether the frame can paint on the screen; with OpenGL false until it has painted once.
    bool isValid() const;
    /// Schedules a repaint of all children, or of those in a rectangle (logical pixels).
    void UpdateContent();
    void UpdateContent(const QRect& rect);

    /// Whether the frame paints into a picture that is kept, see GLLayout::RenderPicture. Such a
    /// paint must not change what later paints show.
    bool IsPaintingPicture() const { return m_pictureSize.isValid(); }

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    /// Paints the children with the open painter; the frame itself has none.
    virtual void PaintChildren(QPainter& painter);
    /// Size that the content is laid out for: the frame's own, or that of the picture.
    QSize ContentSize() const { return IsPaintingPicture() ? m_pictureSize : size(); }

    bool IsExposed(const QRect& place) const
    {
        return m_exposed.isEmpty() || m_exposed.intersects(place);
    }

    /// Place of the child that is being painted, set by PaintChildren; empty while there is none.
    QRect m_currentPlace;
    /// Part of the frame that is painted; empty for all of it.
    QRegion m_exposed;
    /// Size of the picture that is painted; not valid while there is none.
    QSize m_pictureSize;

private:
    friend class GLPainter;
    friend struct TestAccess;
    void ShowNotice();
    void PaintOnScreen(QPainter& painter, bool hasContext);
    /// Place of the child that is being painted; the whole frame while there is none.
    QRect CurrentPlace() const
    {
        return m_currentPlace.isEmpty() ? QRect(QPoint(0, 0), ContentSize()) : m_currentPlace;
    }
    /// The pixels to write an opaque colour into; null where the painter has to paint it.
    PixelTarget* PixelsFor(const QColor& color) const;
    /// Paints what is left of the ground in the place of the child that is being painted.
    void PaintGround()
    {
        if (!m_bareGround.isEmpty())
            PaintGround(CurrentPlace());
    }
    void PaintGround(const QRect& place);
    template<class Add>
    void Draw(const QColor& color, const Add& add);

    QPointer<GLSurface> m_pSurface; // null where frames paint without OpenGL
    QLabel* m_pNotice = nullptr;    // instead of the picture; none as long as there is OpenGL
    QPainter* m_pPainter = nullptr; // open painter, while painting
    QTransform m_baseTransform;     // its transform and clip before any child was painted
    QRegion m_baseClip;
    bool m_hasBaseClip = false;
    std::unique_ptr<PixelTarget>
        m_pixels;              // of the open painter; null where only the painter paints
    QRegion m_bareGround;      // of which the ground is not painted yet: a child may cover it
    bool m_hasContext = false; // the open painter draws with the frame's own GL context
};
