// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/base/Export.h"

#include <QString>

/// The one renderer with which all frames of a process paint, chosen when the first frame is made.
///
/// OpenGL where there is hardware with a compatibility profile of at least 2.0. Otherwise OpenGL
/// would run on the processor or no context can be created; then the processor paints straight into
/// the pictures of the windows, which costs far less. The pictures are the same.
///
/// The environment variable ORVANE_RENDERER (auto, gl or raster) overrides what the application
/// wants. The log says what was chosen and why, in the category "orvane.renderer". GUI thread only.
class ORVANE_PLATFORM_API Renderer
{
public:
    enum class Kind { OpenGL, Raster };
    enum class Wish { Automatic, OpenGL, Raster };

    /// Sets the renderer that the application wants; Automatic at first.
    /// @return false, and nothing changes, once the renderer is chosen.
    static bool Want(Wish wish);
    /// The renderer. The first call chooses it and needs a QGuiApplication. It creates an OpenGL
    /// context only where there is a choice and, on Linux, a graphics device.
    static Kind Current();
    /// The renderer and the reason for it, in one line; chooses like Current.
    static QString Description();
    /// Whether an OpenGL renderer of this name runs on the processor.
    static bool IsSoftware(const QString& name);
};
