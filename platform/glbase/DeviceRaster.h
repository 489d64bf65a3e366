// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/glbase/GLLineStyle.h"

#include <QLineF>
#include <QRect>
#include <QRgb>

#include <vector>

class GLStepLine;
class PixelTarget;
class QBrush;
class QPainter;
class QTransform;

/// Turns lines into rectangles of whole device pixels and fills them, so that Qt's paint engines
/// all give the same picture.
///
/// A logical coordinate v belongs to the edge of a device pixel: v times the scale of the painter,
/// rounded, halves up. A line one logical pixel wide at x thus covers the device pixels between the
/// edges of x and x + 1, at least one; neighbouring lines meet without gap or overlap. A painter
/// that rotates or mirrors is drawn to in logical pixels.
///
/// A painter that draws vectors has no pixels: for it they are a quarter of a logical pixel, and a
/// point is a logical pixel large, wherever it lies.
///
/// Coordinates may be any numbers; the cost is that of the pixels that can be seen.
class DeviceRaster
{
public:
    /// @param painter  open painter, must outlive this object; its transform must not change.
    /// @param visible  logical rectangle outside of which nothing is drawn.
    DeviceRaster(QPainter& painter, const QRect& visible);
    /// Writes opaque colours into pixels.
    /// @param pixels   must outlive this object.
    /// @param origin   logical position of (0, 0).
    DeviceRaster(PixelTarget& pixels, const QPoint& origin, const QRect& visible);
    ~DeviceRaster();
    DeviceRaster(const DeviceRaster&) = delete;
    DeviceRaster& operator=(const DeviceRaster&) = delete;
    /// Whether a painter draws vectors.
    static bool IsVector(const QPainter& painter);

    /// How far, in device pixels, OpenGL's points are moved: from the corner of a pixel to its
    /// centre, and a little more so that a coordinate between two device pixels goes to the lower
    /// right one, like everything else that is drawn.
    static constexpr double pointShift = 0.5 + 1.0 / 64.0;

    /// Adds the one device pixel that a point of OpenGL lights. A point that is not finite is
    /// dropped.
    void AddPoint(double x, double y);
    /// Adds a point as large as a logical pixel, from (x, y) on. AddPoint does the same for
    /// vectors.
    void AddSquare(double x, double y);
    /// Fills what AddPoint adds for each of many points (x, y, x, y...) at once; in pixels only.
    void FillPoints(const std::vector<float>& points, const QTransform& toLogical,
                    const QColor& color) const;
    /// Includes the pixels of both ends. A segment that is not finite is dropped.
    void AddLine(const QLineF& line, const GLLineStyle& style);
    /// Adds a step line; at most one before each Fill.
    void AddStepLine(const GLStepLine& line);
    /// Adds the visible rectangle.
    void AddVisible() { AddDeviceRect(m_x.visible, m_y.visible); }
    /// Fills all that was added with a colour, and forgets it.
    void Fill(const QColor& color);

    /// Fills a rectangle with an opaque brush that paints all rows of pixels alike; in pixels only.
    /// @return false where a row is too long to be painted; then nothing was filled.
    bool FillByRow(const QRect& rect, const QBrush& brush) const;

    /// The rectangle moved to the edges of device pixels, in logical coordinates.
    QRectF Snapped(const QRectF& rect) const;
    /// Clips the painter to the visible rectangle.
    void ClipToVisible(Qt::ClipOperation operation);
    /// The visible rectangle in device pixels.
    QRect VisibleDeviceRect() const;

private:
    /// Device pixels [first, last).
    struct Span
    {
        int first;
        int last;
        bool operator==(const Span& other) const
        {
            return first == other.first && last == other.last;
        }
    };
    /// Device pixels along one direction.
    struct Scale
    {
        double factor = 1.0;
        double offset = 0.0;
        Span visible{0, 0};

        double Edge(double logical) const;
        /// The device pixel that a point lights, and its fraction.
        double Point(double logical) const { return logical * factor + offset + pointShift; }
        double Logical(double device) const { return (device - offset) / factor; }
        /// False for NaN.
        bool Sees(double device) const { return device >= visible.first && device < visible.last; }
        /// The visible ones of the pixels between two logical coordinates, which are at least one.
        Span VisibleSpan(double from, double to) const;
    };
    struct PointMap;
    struct Segment;
    struct StepMap;
    class StepWalk;

    static void FillPointsIn(const PixelTarget& pixels, const std::vector<float>& points,
                             const PointMap& x, const PointMap& y, QRgb color);
    template<typename StrokeIn, typename Put>
    static void PutRuns(const Span& extent, const StrokeIn& strokeIn, double length,
                        const Put& put);
    template<typename Put>
    static void Rasterise(const Scale& major, const Scale& minor, const Segment& segment,
                          const Put& put);
    void SetScales(const QTransform& toDevice);
    void SetVisible(const QRect& visible);
    QRectF LogicalRect(const QRect& deviceRect) const;
    void AddDeviceRect(const Span& columns, const Span& rows);

    QPainter* const m_painter;   // null where pixels are written
    PixelTarget* const m_pixels; // null where the painter paints
    const bool m_isVector;
    Scale m_x;
    Scale m_y;
    std::vector<QRect> m_rects; // device pixels
    int m_strokesLeft = 0;      // column of the first stroke that the pixels keep
};
