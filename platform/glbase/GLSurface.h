// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QOpenGLWidget>
#include <QSurfaceFormat>

#include <functional>

class QPainter;

/// The child widget on which a frame paints with OpenGL. It fills the frame, lies below the other
/// Qt widgets in it, and leaves all input to the frame. It has a compatibility context (OpenGL 2.1
/// or compatible).
class GLSurface : public QOpenGLWidget
{
public:
    /// Paints the frame. The flag tells whether the painter draws with the surface's own context.
    using Paint = std::function<void(QPainter&, bool)>;

    GLSurface(QWidget& frame, Paint paint);
    ~GLSurface() override;

    static QSurfaceFormat Format();
    /// To be called before the frame leaves its window.
    void LeaveWindow();

protected:
    bool event(QEvent* event) override;
    void paintGL() override;

private:
    Paint m_paint;
    bool m_awaitsContext = false; // keeps the context of another window, see event()
};
