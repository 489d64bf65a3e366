// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QOpenGLContext>
#include <QOpenGLFunctions>
#include <QOpenGLWidget>
#include <QWidget>

#include <string>

/// What paints a frame, as a label of a benchmark: "OpenGL" with the driver's name for it where it
/// has an OpenGL widget that has painted, "raster" where it has none.
inline std::string painterName(const QWidget& frame)
{
    auto* surface = frame.findChild<QOpenGLWidget*>();
    if (!surface)
        return "raster";
    if (!surface->isValid())
        return "none";
    surface->makeCurrent();
    const auto* name =
        reinterpret_cast<const char*>(surface->context()->functions()->glGetString(GL_RENDERER));
    surface->doneCurrent();
    return std::string("OpenGL, ") + (name ? name : "without a name");
}
