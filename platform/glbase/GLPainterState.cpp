// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/glbase/GLPainterState.h"

#include <QPainter>

void GLPainterState::save()
{
    if (!m_pPainter)
        return;
    m_pPainter->save();
    ++m_depth;
}

void GLPainterState::restore()
{
    if (m_depth == 0)
        return;
    m_pPainter->restore();
    --m_depth;
}

void GLPainterState::setPen(const QPen& pen)
{
    if (m_pPainter)
        m_pPainter->setPen(pen);
}

void GLPainterState::setBrush(const QBrush& brush)
{
    if (m_pPainter)
        m_pPainter->setBrush(brush);
}

QPen GLPainterState::pen() const { return m_pPainter ? m_pPainter->pen() : QPen(); }

QBrush GLPainterState::brush() const { return m_pPainter ? m_pPainter->brush() : QBrush(); }

QFont GLPainterState::font() const { return m_pPainter ? m_pPainter->font() : QFont(); }
