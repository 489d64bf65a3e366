// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "density/MaskTest.h"

#include <algorithm>
#include <cmath>

namespace density {

namespace {

/// Twice the area of a triangle, above 0 where it turns left.
double turn(const QPointF& a, const QPointF& b, const QPointF& c)
{
    return (b.x() - a.x()) * (c.y() - a.y()) - (b.y() - a.y()) * (c.x() - a.x());
}

/// Whether two ranges have a number in common.
bool overlap(double a, double b, double c, double d)
{
    return std::max(std::min(a, b), std::min(c, d)) <= std::min(std::max(a, b), std::max(c, d));
}

/// Whether two lines have a point in common, their ends included; either may be a point.
bool meet(const QPointF& a, const QPointF& b, const QPointF& c, const QPointF& d)
{
    const auto areApart = [](double one, double other) {
        return (one > 0.0 && other > 0.0) || (one < 0.0 && other < 0.0);
    };
    return overlap(a.x(), b.x(), c.x(), d.x()) && overlap(a.y(), b.y(), c.y(), d.y()) &&
           !areApart(turn(a, b, c), turn(a, b, d)) && !areApart(turn(c, d, a), turn(c, d, b));
}

} // namespace

std::optional<MaskTest::Place> MaskTest::Place::of(const Mask& mask, const EyeFigures& figures,
                                                   Withheld* reason)
{
    const bool hasLevels = figures.levels.size() >= 2;
    const bool isPlaced = hasLevels || mask.levels == Mask::Levels::Absolute;
    if (reason) {
        *reason = isPlaced                         ? Withheld::No
                  : figures.reason == Withheld::No ? Withheld::NoLevels
                                                   : figures.reason;
    }
    if (!isPlaced)
        return std::nullopt;
    Place place;
    place.instant = figures.instant;
    // The best instant may be anywhere in the eye's middle; crossings are where they are.
    double times = 0.0, share = 0.0;
    for (const EyeFigures::Eye& eye : figures.eyes) {
        if (eye.jitter.rms.isGiven()) {
            times += eye.transitionShare * eye.jitter.mean;
            share += eye.transitionShare;
        }
    }
    if (mask.origin == Mask::Origin::Crossing && share > 0.0)
        place.instant = times / share + 0.5;
    if (hasLevels) {
        place.low = figures.levels.front().spread.mean.value;
        place.high = figures.levels.back().spread.mean.value;
    }
    return place;
}

MaskTest::MaskTest(const Mask& mask, const TraceShape& shape, double instant, double low,
                   double high)
    : m_mask(mask)
    , m_shape(shape)
{
    if (mask.isUsable() && shape.isUsable())
        m_polygons = mask.placed(instant, low, high);
    for (const QPolygonF& polygon : m_polygons)
        m_bounds.push_back(polygon.boundingRect());
    m_byPolygon.resize(m_polygons.size());
}

bool MaskTest::touches(const float* trace, std::size_t index) const
{
    const QPolygonF& polygon = m_polygons[index];
    const QRectF& bounds = m_bounds[index];
    QPointF before;
    bool hasBefore = false;
    for (int k = 0; k < m_shape.sampleCount; ++k) {
        if (!std::isfinite(trace[k])) {
            hasBefore = false;
            continue;
        }
        const QPointF here(m_shape.timeOf(k), static_cast<double>(trace[k]));
        const QPointF from = hasBefore ? before : here;
        before = here;
        hasBefore = true;
        if (std::max(from.x(), here.x()) < bounds.left() || from.x() > bounds.right() ||
            std::max(from.y(), here.y()) < bounds.top() ||
            std::min(from.y(), here.y()) > bounds.bottom())
            continue;
        if (polygon.containsPoint(here, Qt::OddEvenFill))
            return true;
        for (int side = 0; side < polygon.size(); ++side) {
            if (meet(from, here, polygon[side], polygon[(side + 1) % polygon.size()]))
                return true;
        }
    }
    return false;
}

bool MaskTest::add(const float* trace, std::int64_t symbol)
{
    if (m_symbolCount >= m_mask.symbolCount || m_polygons.empty())
        return false;
    ++m_symbolCount;
    bool isHit = false;
    for (std::size_t k = 0; k < m_polygons.size(); ++k) {
        if (touches(trace, k)) {
            ++m_byPolygon[k];
            isHit = true;
        }
    }
    if (!isHit)
        return false;
    ++m_hitCount;
    m_newestHits.push_front(symbol);
    if (m_newestHits.size() > mostKeptHits)
        m_newestHits.pop_back();
    return true;
}

void MaskTest::restart()
{
    m_symbolCount = m_hitCount = 0;
    m_byPolygon.assign(m_polygons.size(), 0);
    m_newestHits.clear();
}

MaskTest::Result MaskTest::result() const
{
    Result result;
    result.symbolCount = m_symbolCount;
    result.hitCount = m_hitCount;
    result.byPolygon = m_byPolygon;
    result.newestHits.assign(m_newestHits.begin(), m_newestHits.end());
    if (m_hitCount > m_mask.mostHits)
        result.verdict = Verdict::Fail;
    else if (m_symbolCount >= m_mask.symbolCount)
        result.verdict = Verdict::Pass;
    return result;
}

} // namespace density
