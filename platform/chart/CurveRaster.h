// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/chart/ChartPicture.h"
#include "platform/chart/PixelRuns.h"

#include <QImage>
#include <QPolygonF>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

/// Draws a curve into a picture and keeps it up to date as values come and go, at the cost of those
/// alone.
///
/// For each device pixel it counts the segments of the curve that cover it: a segment that comes
/// adds one to each of its pixels, a segment that goes takes it away, and a pixel is lit while its
/// count is not 0. So the picture that has been followed is the one drawn afresh, pixel by pixel.
/// A fresh start does without counts, which a curve of new values in each picture never needs.
/// A segment covers one pixel in each column, or row where it is steep, of the line's width.
class CurveRaster
{
public:
    /// Draws the curve over a backdrop.
    /// @param ratio  device pixels of a logical pixel.
    /// @param picture  becomes the backdrop with the curve; 32-bit RGB, of the backdrop's size.
    void StartAfresh(const ChartPicture::Curve& curve, double ratio, const QImage& backdrop,
                     QImage& picture);
    /// Whether Follow leads from the last curve to this one, and costs less than a fresh start.
    bool CanFollow(const ChartPicture::Curve& curve, double ratio, const QSize& size) const;
    /// Updates the picture of the last call, which is over the same backdrop.
    void Follow(const ChartPicture::Curve& curve, const QImage& backdrop, QImage& picture);

    /// The curve as lines, cut to its area, in logical pixels.
    static std::vector<QPolygonF> Lines(const ChartPicture::Curve& curve);

private:
    /// Device pixels, as real numbers; not finite where the curve is broken.
    struct Point
    {
        double x;
        double y;
    };
    using Count = std::uint16_t;

    void AppendPoints(const ChartPicture::Curve& curve, std::size_t count);
    void SetClip(const QRect& area, const QSize& size);
    bool IsInside(const Point& point) const
    {
        return point.x >= m_left && point.x <= m_right && point.y >= m_top && point.y <= m_bottom;
    }
    bool Clip(Point& from, Point& to) const;
    template<class Put>
    void Trace(Point from, Point to, const Put& put) const;
    template<class Put>
    void TraceSteep(const Point& from, const Point& to, const Put& put) const;
    template<class Put>
    void TraceFlat(const Point& from, const Point& to, const Put& put) const;
    void AddRuns();
    void AddRuns(Point from, Point to);
    void CountSegments();

    std::optional<ChartPicture::Curve> m_curve; // as drawn
    double m_ratio = 1.0;
    QSize m_size;
    int m_lineWidth = 1;  // device pixels
    double m_shift = 0.0; // from the middle of the line to that of its first pixel
    double m_left = 0.0;  // clip, in device pixels
    double m_top = 0.0;
    double m_right = 0.0;
    double m_bottom = 0.0;
    std::vector<Point> m_points; // of the curve as drawn
    std::vector<Count> m_counts; // by rows, with one row more than the picture; empty until needed
    PixelRuns m_runs;
};
