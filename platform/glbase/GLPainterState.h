// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/base/Export.h"

#include <QBrush>
#include <QFont>
#include <QPen>

class QPainter;

/// What a handle on a painter sets up before it draws: pen and brush, which nest. Without a painter
/// it does nothing.
class ORVANE_PLATFORM_API GLPainterState
{
public:
    GLPainterState(const GLPainterState&) = delete;
    GLPainterState& operator=(const GLPainterState&) = delete;

    void save();
    void restore();
    /// Number of save() calls not yet restored.
    int depth() const { return m_depth; }

    void setPen(const QPen& pen);
    void setBrush(const QBrush& brush);
    QPen pen() const;
    QBrush brush() const;
    /// The font that texts are drawn in.
    QFont font() const;

    /// False when the handle is inert.
    bool isActive() const { return m_pPainter != nullptr; }

protected:
    /// @param painter  null for an inert handle; else open, and outlives this.
    explicit GLPainterState(QPainter* painter)
        : m_pPainter(painter)
    {}
    ~GLPainterState() = default;

    QPainter* const m_pPainter;

private:
    int m_depth = 0;
};
