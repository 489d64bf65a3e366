// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/base/Export.h"

#include <QColor>

enum eLineStyle : int {
    lsNone = 0,
    lsSolid = 1,
    lsDash = 2,
    lsDot = 3,
};

/// Style, width in logical pixels and colour of a line; a plain value.
class ORVANE_PLATFORM_API GLLineStyle
{
public:
    GLLineStyle() = default;
    GLLineStyle(eLineStyle style, int width, const QColor& color);
    void SetStyle(eLineStyle style, int width, const QColor& color);

    eLineStyle Style() const { return m_style; }
    int Width() const { return m_width; }
    const QColor& Color() const { return m_color; }

private:
    eLineStyle m_style = lsSolid;
    int m_width = 1;
    QColor m_color = Qt::white;
};
