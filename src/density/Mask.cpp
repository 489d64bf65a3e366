// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "density/Mask.h"

#include <QPainterPath>
#include <QPainterPathStroker>

#include <cmath>

namespace density {

bool Mask::isUsable() const
{
    constexpr double farthest = 1e6;
    const auto isNear = [](double number) { return std::abs(number) <= farthest; };
    if (polygons.empty() || polygons.size() > mostPolygons || !isNear(margin) || mostHits < 0 ||
        symbolCount < 1)
        return false;
    for (const QPolygonF& polygon : polygons) {
        if (polygon.size() < 3 || polygon.size() > mostPoints)
            return false;
        for (const QPointF& point : polygon) {
            if (!isNear(point.x()) || !isNear(point.y()))
                return false;
        }
    }
    return true;
}

namespace {

QPolygonF grown(const QPolygonF& polygon, double margin)
{
    if (margin == 0.0)
        return polygon;
    // Qt's paths flatten curves in steps that suit pixels.
    constexpr double scale = 1e4;
    QPainterPath path;
    path.addPolygon(QTransform::fromScale(scale, scale).map(polygon));
    path.closeSubpath();
    QPainterPathStroker stroker;
    stroker.setWidth(2.0 * std::abs(margin) * scale);
    stroker.setJoinStyle(Qt::MiterJoin);
    const QPainterPath border = stroker.createStroke(path);
    const QPainterPath result = margin > 0.0 ? path.united(border) : path.subtracted(border);
    return QTransform::fromScale(1.0 / scale, 1.0 / scale).map(result.toFillPolygon());
}

} // namespace

std::vector<QPolygonF> Mask::placed(double instant, double low, double high) const
{
    const bool isRelative = levels == Levels::Relative;
    const double start = instant - (origin == Origin::Crossing ? 0.5 : 0.0);
    const double distance = isRelative ? high - low : 1.0;
    const QTransform place = QTransform::fromScale(1.0, distance) *
                             QTransform::fromTranslate(start, isRelative ? low : 0.0);
    std::vector<QPolygonF> result;
    for (const QPolygonF& polygon : polygons) {
        const QPolygonF whole = place.map(grown(polygon, margin));
        if (whole.size() >= 3)
            result.push_back(whole);
    }
    return result;
}

QPointF Mask::pointAt(const QPointF& place, double instant, double low, double high) const
{
    const double time = place.x() - instant + (origin == Origin::Crossing ? 0.5 : 0.0);
    if (levels == Levels::Absolute)
        return {time, place.y()};
    return {time, (place.y() - low) / (high - low)};
}

const std::vector<Mask>& Mask::standard()
{
    const auto make = [](const char* name, const char* source, double overshoot,
                         const QPolygonF& eye) {
        Mask mask;
        mask.name = QString::fromLatin1(name);
        mask.source =
            QString::fromLatin1(source) + QStringLiteral("; not compared with the standard's text");
        mask.origin = Origin::Crossing;
        // Above the highest level and below the lowest one, over the whole symbol.
        constexpr double far = 10.0;
        mask.polygons = {eye, QPolygonF(QRectF(0.0, 1.0 + overshoot, 1.0, far)),
                         QPolygonF(QRectF(0.0, -overshoot - far, 1.0, far))};
        return mask;
    };
    static const std::vector<Mask> masks{
        make("STM-1", "ITU-T G.957, figure 2", 0.2,
             QPolygonF(
                 {{0.15, 0.5}, {0.35, 0.8}, {0.65, 0.8}, {0.85, 0.5}, {0.65, 0.2}, {0.35, 0.2}})),
        make("STM-4", "ITU-T G.957, figure 2", 0.2,
             QPolygonF({{0.25, 0.5}, {0.4, 0.8}, {0.6, 0.8}, {0.75, 0.5}, {0.6, 0.2}, {0.4, 0.2}})),
        make("STM-16", "ITU-T G.957, figure 2", 0.25,
             QPolygonF({{0.4, 0.25}, {0.4, 0.75}, {0.6, 0.75}, {0.6, 0.25}})),
        [&] {
            Mask mask = make("1000BASE-X", "IEEE 802.3, figure 38-2", 0.2,
                             QPolygonF({{0.22, 0.5},
                                        {0.375, 0.8},
                                        {0.625, 0.8},
                                        {0.78, 0.5},
                                        {0.625, 0.2},
                                        {0.375, 0.2}}));
            mask.polygons[1].translate(0.0, 0.1); // above 1.3
            return mask;
        }()};
    return masks;
}

} // namespace density
