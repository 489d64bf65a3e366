// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/glbase/GLLineStyle.h"

GLLineStyle::GLLineStyle(eLineStyle style, int width, const QColor& color)
    : m_style(style)
    , m_width(width)
    , m_color(color)
{}

void GLLineStyle::SetStyle(eLineStyle style, int width, const QColor& color)
{
    *this = GLLineStyle(style, width, color);
}
