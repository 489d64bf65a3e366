// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QOpenGLWidget>
#include <QSurfaceFormat>

#include <functional>

class QPainter;

/// What a frame paints on with OpenGL: a child that fills it, below the Qt widgets in it, and
/// leaves all events of the user to it. It has a compatibility context (OpenGL 2.1 or its like).
class GLSurface : public QOpenGLWidget
{
public:
    /// Paints the frame; whether the painter draws with the surface's own context.
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
    bool m_awaitsContext = false; // that of another window, see event()
};
