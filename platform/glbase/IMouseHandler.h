// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/base/Export.h"

class GLCommonWidget;
class GLPainter;
class QEvent;
class QMouseEvent;
class QWheelEvent;

/// Takes part in the mouse handling and the painting of a GLCommonWidget (an axis, a ruler). Event
/// positions are in the widget's pixel frame. Each operation but the last three returns whether it
/// took the event; a taken event goes no further. The handler that took a press (or double click)
/// receives all further events until all buttons are up, wherever the pointer is. When a popup
/// swallows the release, the next move without buttons takes its place.
class ORVANE_PLATFORM_API IMouseHandler
{
public:
    virtual ~IMouseHandler();
    virtual bool mousePress(GLCommonWidget* widget, QMouseEvent* event) = 0;
    virtual bool mouseMove(GLCommonWidget* widget, QMouseEvent* event) = 0;
    virtual bool mouseRelease(GLCommonWidget* widget, QMouseEvent* event) = 0;
    virtual bool mouseDoubleClick(GLCommonWidget* widget, QMouseEvent* event) = 0;
    virtual bool wheel(GLCommonWidget* widget, QWheelEvent* event) = 0;
    /// The pointer left the widget.
    virtual void leave(GLCommonWidget* widget) = 0;
    /// The handler was added to a widget, or (null) removed from it, or the widget was destroyed.
    virtual void attached(GLCommonWidget* widget) = 0;
    /// Draws on top of the widget's own picture, in its pixel frame.
    virtual void drawOverlay(GLCommonWidget* widget, GLPainter& painter) = 0;
};
