// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/base/Export.h"

#include <QString>

/// What the frames of a process paint with: all the same, chosen when the first frame is made.
///
/// OpenGL where it is hardware with a compatibility profile of at least 2.0. Otherwise, where the
/// processor would have to be OpenGL or no context can be had, the processor paints straight into
/// the pictures of the windows, which costs it far less; the pictures are the same.
///
/// The environment variable ORVANE_RENDERER (auto, gl or raster) overrides what the application
/// wants. The log says what was chosen and why, in the category "orvane.renderer". GUI thread only.
class ORVANE_PLATFORM_API Renderer
{
public:
    enum class Kind { OpenGL, Raster };
    enum class Wish { Automatic, OpenGL, Raster };

    /// Says what frames shall paint with; Automatic as long as nothing is said.
    /// @return false once it is chosen: then nothing changes any more.
    static bool Want(Wish wish);
    /// Chooses at the first call, which needs a QGuiApplication. An OpenGL context is made for it
    /// only where there is a choice and, on Linux, a graphics device.
    static Kind Current();
    /// What was chosen and why, in one line; chooses like Current.
    static QString Description();
    /// Whether the name of an OpenGL renderer is that of one that runs on the processor.
    static bool IsSoftware(const QString& name);
};
