// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/base/Export.h"

#include <QPoint>
#include <QString>

#include <map>

class GLPainter;

/// Short texts over a plot, each in a framed box beside its anchor point, kept inside the plot and,
/// where there is room, clear of all anchors and of one another. Each text has a key, by which its
/// owner moves or removes it.
class ORVANE_PLATFORM_API TextRectangles
{
public:
    /// Adds or replaces the text of a key. The text may hold several lines; an empty one removes.
    void set(const QString& key, const QString& text, const QPoint& anchor);
    void remove(const QString& key);
    void clear();
    bool isEmpty() const { return m_items.empty(); }
    QString text(const QString& key) const;

    /// Draws all boxes inside the area of the widget that the painter is for.
    void draw(GLPainter& painter);

private:
    struct Item
    {
        QString text;
        QPoint anchor;
    };
    std::map<QString, Item> m_items;
};
