// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/glwidgets/TextRectangles.h"

#include "platform/glbase/GLPainter.h"
#include "platform/gui/ColorSet.h"

#include <QFontMetrics>
#include <QPainter>

#include <algorithm>

namespace {

constexpr int padding = 4;
constexpr int gap = 6;           // between anchor and box
constexpr int groundAlpha = 220; // traces shimmer through

// Beside the anchor where there is room for it, inside the area in any case.
QRect placed(QSize size, const QPoint& anchor, const QRect& area)
{
    const auto place = [](int wish, int length, int low, int high) {
        const int at = std::max(low, std::min(wish, high));
        int start = at + gap;
        if (start + length > high + 1)
            start = at - gap - length;
        return std::max(low, std::min(start, high + 1 - length));
    };
    return QRect(QPoint(place(anchor.x(), size.width(), area.left(), area.right()),
                        place(anchor.y(), size.height(), area.top(), area.bottom())),
                 size);
}

} // namespace

void TextRectangles::set(const QString& key, const QString& text, const QPoint& anchor)
{
    if (text.isEmpty())
        m_items.erase(key);
    else
        m_items[key] = Item{text, anchor};
}

void TextRectangles::remove(const QString& key) { m_items.erase(key); }

void TextRectangles::clear() { m_items.clear(); }

QString TextRectangles::text(const QString& key) const
{
    const auto found = m_items.find(key);
    return found == m_items.end() ? QString() : found->second.text;
}

void TextRectangles::draw(GLPainter& painter)
{
    if (m_items.empty() || !painter.painter())
        return;
    const QRect area = painter.area();
    const QFontMetrics metrics(painter.painter()->font());
    ColorSet& colors = ColorSet::Instance();
    QColor ground = colors[IColorBase::colLabelBack];
    ground.setAlpha(groundAlpha);
    const QColor text = colors[IColorBase::colLabel];
    painter.save();
    for (const auto& [key, item] : m_items) {
        const QSize textSize = metrics.size(0, item.text);
        const QRect box = placed(textSize + QSize(2 * padding, 2 * padding), item.anchor, area);
        painter.fillRect(box, ground);
        const QColor frame = colors[IColorBase::colGrid];
        painter.drawHLine(box.left(), box.right(), box.top(), frame);
        painter.drawHLine(box.left(), box.right(), box.bottom(), frame);
        painter.drawVLine(box.left(), box.top(), box.bottom(), frame);
        painter.drawVLine(box.right(), box.top(), box.bottom(), frame);
        painter.setPen(QPen(text));
        painter.drawText(box.adjusted(padding, padding, -padding, -padding),
                         Qt::AlignLeft | Qt::AlignTop, item.text);
    }
    painter.restore();
}
