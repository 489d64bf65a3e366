// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
// The part of DeviceRaster that writes pixels.
#include "platform/base/Saturate.h"
#include "platform/glbase/DeviceRaster.h"
#include "platform/glbase/PixelTarget.h"

#include <QBrush>
#include <QImage>
#include <QPainter>
#include <QTransform>

#include <algorithm>
#include <cstddef>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

/// One direction of what FillPoints does, as Scale::Point and Sees do it.
struct DeviceRaster::PointMap
{
    double factor;
    double shift;
    double scale;
    double offset;
    double first;
    double end;

    double Device(float value) const
    {
        return (static_cast<double>(value) * factor + shift) * scale + offset + pointShift;
    }
    bool Sees(double device) const { return device >= first && device < end; }
};

void DeviceRaster::FillPointsIn(const PixelTarget& pixels, const std::vector<float>& points,
                                const PointMap& x, const PointMap& y, QRgb color)
{
    const float* point = points.data();
    const float* const end = point + points.size() / 2 * 2;
#ifdef __SSE2__
    // Both coordinates of a point at once.
    const auto both = [](double forX, double forY) { return _mm_set_pd(forY, forX); };
    const __m128d factor = both(x.factor, y.factor);
    const __m128d shift = both(x.shift, y.shift);
    const __m128d scale = both(x.scale, y.scale);
    const __m128d offset = both(x.offset, y.offset);
    const __m128d toCentre = both(pointShift, pointShift);
    const __m128d first = both(x.first, y.first);
    const __m128d last = both(x.end, y.end);
    QRgb* const origin = pixels.Row(0);
    const std::ptrdiff_t stride = pixels.Row(1) - origin;
    for (; point != end; point += 2) {
        const __m128d value =
            _mm_cvtps_pd(_mm_castpd_ps(_mm_load_sd(reinterpret_cast<const double*>(point))));
        const __m128d logical = _mm_add_pd(_mm_mul_pd(value, factor), shift);
        const __m128d device = _mm_add_pd(_mm_add_pd(_mm_mul_pd(logical, scale), offset), toCentre);
        const __m128d isSeen = _mm_and_pd(_mm_cmpge_pd(device, first), _mm_cmplt_pd(device, last));
        if (_mm_movemask_pd(isSeen) != 3)
            continue;
        const __m128i pixel = _mm_cvttpd_epi32(device);
        const int column = _mm_cvtsi128_si32(pixel);
        const int row = _mm_cvtsi128_si32(_mm_shuffle_epi32(pixel, 1));
        origin[row * stride + column] = color;
    }
#else
    for (; point != end; point += 2) {
        const double column = x.Device(point[0]);
        const double row = y.Device(point[1]);
        if (x.Sees(column) && y.Sees(row))
            pixels.Row(static_cast<int>(row))[static_cast<int>(column)] = color;
    }
#endif
}

void DeviceRaster::FillPoints(const std::vector<float>& points, const QTransform& toLogical,
                              const QColor& color) const
{
    for (const QRect& part : m_pixels->Clip()) {
        const QRect area = VisibleDeviceRect() & part;
        const QRectF seen(area);
        const PointMap x{toLogical.m11(), toLogical.dx(), m_x.factor,
                         m_x.offset,      seen.left(),    seen.right()};
        const PointMap y{toLogical.m22(), toLogical.dy(), m_y.factor,
                         m_y.offset,      seen.top(),     seen.bottom()};
        FillPointsIn(*m_pixels, points, x, y, color.rgb());
    }
}

bool DeviceRaster::FillByRow(const QRect& rect, const QBrush& brush) const
{
    const auto edge = [](const Scale& scale, int logical, const Span& span) {
        return truncateSaturated<int>(scale.Edge(logical), span.first, span.last);
    };
    const QRect device(
        QPoint(edge(m_x, rect.left(), m_x.visible), edge(m_y, rect.top(), m_y.visible)),
        QPoint(edge(m_x, rect.right() + 1, m_x.visible) - 1,
               edge(m_y, rect.bottom() + 1, m_y.visible) - 1));
    QRect seen;
    for (const QRect& part : m_pixels->Clip())
        seen |= device & part;
    if (seen.isEmpty())
        return true;
    // From the start of the row, even if that is not visible: the colours of a gradient depend on
    // it.
    const int left = std::min(device.left(), 0);
    constexpr qint64 longestRow = 32767;
    const qint64 length = qint64{device.right()} + 1 - left;
    if (length > longestRow)
        return false;
    QImage row(static_cast<int>(length), 1, QImage::Format_RGB32);
    if (row.isNull())
        return false;
    QPainter painter(&row);
    painter.setTransform(
        QTransform(m_x.factor, 0.0, 0.0, m_y.factor, m_x.offset - left, m_y.offset - device.top()));
    painter.fillRect(LogicalRect(QRect(device.left(), device.top(), device.width(), 1)), brush);
    painter.end();
    const QRgb* pixels = reinterpret_cast<const QRgb*>(row.constScanLine(0)) - left;
    for (const QRect& part : m_pixels->Clip()) {
        const QRect area = device & part;
        for (int y = area.top(); y <= area.bottom() && !area.isEmpty(); ++y)
            std::copy_n(pixels + area.left(), area.width(), m_pixels->Row(y) + area.left());
    }
    return true;
}
