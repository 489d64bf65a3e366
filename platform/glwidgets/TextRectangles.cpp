// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/glwidgets/TextRectangles.h"

#include "platform/glbase/GLPainter.h"
#include "platform/gui/ColorSet.h"

#include <QFontMetrics>
#include <QPainter>

#include <algorithm>
#include <climits>
#include <utility>
#include <vector>

namespace {

constexpr int padding = 4;
constexpr int gap = 6;           // between anchor and box
constexpr int groundAlpha = 220; // traces shimmer through

QPoint kept(const QPoint& point, const QRect& area)
{
    return {qBound(area.left(), point.x(), area.right()),
            qBound(area.top(), point.y(), area.bottom())};
}

/// Places boxes inside an area, one after the other.
class Places
{
public:
    Places(const QRect& area, std::vector<QPoint> anchors)
        : m_area(area)
        , m_anchors(std::move(anchors))
    {}

    /// Tries the corners of an anchor, right below first, then places beside the anchors and boxes
    /// in the way. Takes the place that covers the fewest of them.
    QRect Next(const QSize& size, const QPoint& anchor)
    {
        QRect best;
        int least = INT_MAX;
        QRect tried;
        const auto tryAt = [&](const QPoint& at) {
            for (int corner = 0; corner < 4 && least > 0; ++corner) {
                const QRect box = Beside(size, at, corner % 2 != 0, corner / 2 != 0);
                tried |= box;
                if (Covered(box) < least) {
                    best = box;
                    least = Covered(box);
                }
            }
        };
        tryAt(anchor);
        const QRect around = tried;
        for (const QPoint& other : m_anchors) {
            if (around.contains(other)) {
                tryAt({other.x(), anchor.y()});
                tryAt({anchor.x(), other.y()});
            }
        }
        for (const QRect& other : m_boxes) {
            if (around.intersects(other)) {
                for (const int y : {other.top(), other.bottom()})
                    tryAt({anchor.x(), y});
                for (const int x : {other.left(), other.right()})
                    tryAt({x, anchor.y()});
            }
        }
        m_boxes.push_back(best);
        return best;
    }

private:
    QRect Beside(const QSize& size, const QPoint& at, bool flipsX, bool flipsY) const
    {
        const auto start = [](int from, int length, int low, int high, bool flips) {
            const bool isAfter = (from + gap + length <= high + 1) != flips;
            const int wish = isAfter ? from + gap : from - gap - length;
            return std::max(low, std::min(wish, high + 1 - length));
        };
        return QRect(QPoint(start(at.x(), size.width(), m_area.left(), m_area.right(), flipsX),
                            start(at.y(), size.height(), m_area.top(), m_area.bottom(), flipsY)),
                     size);
    }

    int Covered(const QRect& box) const
    {
        constexpr int margin = 2;
        const QRect wide = box.adjusted(-margin, -margin, margin, margin);
        return static_cast<int>(
            std::count_if(m_anchors.begin(), m_anchors.end(),
                          [&](const QPoint& anchor) { return wide.contains(anchor); }) +
            std::count_if(m_boxes.begin(), m_boxes.end(),
                          [&](const QRect& other) { return wide.intersects(other); }));
    }

    QRect m_area;
    std::vector<QPoint> m_anchors;
    std::vector<QRect> m_boxes;
};

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
    if (m_items.empty() || !painter.isActive())
        return;
    const QRect area = painter.area();
    const QFontMetrics metrics(painter.font());
    ColorSet& colors = ColorSet::Instance();
    QColor ground = colors[IColorBase::colLabelBack];
    ground.setAlpha(groundAlpha);
    const QColor text = colors[IColorBase::colLabel];
    std::vector<QPoint> anchors;
    for (const auto& [key, item] : m_items)
        anchors.push_back(kept(item.anchor, area));
    Places places(area, anchors);
    painter.save();
    for (const auto& [key, item] : m_items) {
        const QSize textSize = metrics.size(0, item.text);
        const QRect box =
            places.Next(textSize + QSize(2 * padding, 2 * padding), kept(item.anchor, area));
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
