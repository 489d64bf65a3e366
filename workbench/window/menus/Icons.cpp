// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/menus/Icons.h"

#include <QApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>

namespace {

constexpr double grid = 16.0; // the signs are laid out on a square of this side

/// Areas to fill.
QPainterPath solidPart(Sign sign)
{
    QPainterPath path;
    switch (sign) {
    case Sign::Play:
        path.addPolygon(QPolygonF({{4.5, 2.5}, {4.5, 13.5}, {13.0, 8.0}, {4.5, 2.5}}));
        break;
    case Sign::Pause:
        path.addRect(4.0, 3.0, 3.0, 10.0);
        path.addRect(9.0, 3.0, 3.0, 10.0);
        break;
    case Sign::ToStart:
        path.addRect(3.0, 3.0, 2.0, 10.0);
        path.addPolygon(QPolygonF({{13.0, 3.0}, {13.0, 13.0}, {6.0, 8.0}, {13.0, 3.0}}));
        break;
    case Sign::Repeat:
        path.addPolygon(QPolygonF({{10.5, 1.0}, {10.5, 6.0}, {14.0, 3.5}, {10.5, 1.0}}));
        break;
    case Sign::AutoScale:
        path.addPolygon(QPolygonF({{8.0, 1.0}, {5.5, 4.5}, {10.5, 4.5}, {8.0, 1.0}}));
        path.addPolygon(QPolygonF({{8.0, 15.0}, {5.5, 11.5}, {10.5, 11.5}, {8.0, 15.0}}));
        break;
    case Sign::Density: // the bars of a histogram
        path.addRect(2.0, 10.0, 2.5, 4.0);
        path.addRect(5.2, 6.0, 2.5, 8.0);
        path.addRect(8.4, 2.0, 2.5, 12.0);
        path.addRect(11.6, 8.0, 2.5, 6.0);
        break;
    case Sign::Open:
        break;
    }
    return path;
}

/// Lines to stroke.
QPainterPath linePart(Sign sign)
{
    QPainterPath path;
    switch (sign) {
    case Sign::Open:
        path.addPolygon(
            QPolygonF({{2.0, 13.0}, {2.0, 3.5}, {6.0, 3.5}, {7.5, 5.5}, {13.0, 5.5}, {13.0, 7.5}}));
        path.addPolygon(
            QPolygonF({{2.0, 13.0}, {4.5, 7.5}, {15.0, 7.5}, {12.5, 13.0}, {2.0, 13.0}}));
        break;
    case Sign::Repeat:
        path.moveTo(11.0, 3.5);
        path.arcTo(QRectF(3.0, 3.5, 10.0, 9.5), 90.0, 270.0);
        break;
    case Sign::AutoScale:
        path.moveTo(8.0, 4.0);
        path.lineTo(8.0, 12.0);
        path.moveTo(2.0, 1.5);
        path.lineTo(14.0, 1.5);
        path.moveTo(2.0, 14.5);
        path.lineTo(14.0, 14.5);
        break;
    case Sign::Play:
    case Sign::Pause:
    case Sign::ToStart:
    case Sign::Density:
        break;
    }
    return path;
}

class SignEngine : public QIconEngine
{
public:
    explicit SignEngine(Sign sign)
        : m_sign(sign)
    {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override
    {
        const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
        const QColor color = QApplication::palette().color(group, QPalette::ButtonText);
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->translate(rect.topLeft());
        painter->scale(rect.width() / grid, rect.height() / grid);
        painter->fillPath(solidPart(m_sign), color);
        painter->strokePath(linePart(m_sign), QPen(color, 1.2));
        painter->restore();
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return pixmap;
    }
    QIconEngine* clone() const override { return new SignEngine(*this); } // the icon owns it

private:
    Sign m_sign;
};

} // namespace

QIcon signIcon(Sign sign) { return QIcon(new SignEngine(sign)); }
