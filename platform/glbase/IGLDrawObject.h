// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/base/Export.h"

#include <QString>

class GLBaseWidget;
class GLPainter;

/// Something that draws itself into a GL widget: a background, a grid.
class ORVANE_PLATFORM_API IGLDrawObject
{
public:
    virtual bool IsEnabled() = 0;
    /// @param painter    open painter in the widget's pixel frame.
    /// @param widget     the widget whose area is drawn.
    /// @param parameter  the widget's draw parameter.
    virtual void Draw(GLPainter& painter, GLBaseWidget* widget, int parameter) = 0;
    virtual const QString& GetDescription() = 0;
    virtual ~IGLDrawObject();
    virtual void SetDescription(const QString& description) = 0;
};
