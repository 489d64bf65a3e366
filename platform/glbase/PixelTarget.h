// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QImage>
#include <QPainter>
#include <QRect>
#include <QRgb>
#include <QSize>
#include <QTransform>

#include <memory>
#include <vector>

/// Direct access to the pixels that a painter paints: those of a picture with 32 bits a pixel, by a
/// painter that neither rotates nor mirrors. For thousands of small areas this is many times
/// faster, because each call of a painter costs more than the pixels, and because some processors
/// are slow at the short runs that Qt fills.
class PixelTarget
{
public:
    /// Null where the painter has to paint. Of the painter's clips only that of its device counts.
    /// @param painter  must stay open as long as this object is used.
    static std::unique_ptr<PixelTarget> Of(const QPainter& painter);

    /// What beside colours and fonts decides which pixels a painter makes of a drawing; at the time
    /// of construction.
    struct Medium
    {
        QTransform toDevice; ///< From logical to device pixels.
        QImage::Format format = QImage::Format_Invalid;
        QSize dotsPerInch;
        QPainter::RenderHints hints;

        bool operator==(const Medium& other) const
        {
            return toDevice == other.toDevice && format == other.format &&
                   dotsPerInch == other.dotsPerInch && hints == other.hints;
        }
    };
    const Medium& GetMedium() const { return m_medium; }
    const QTransform& ToDevice() const { return m_medium.toDevice; }
    /// The area in which pixels may be written, in device pixels.
    const std::vector<QRect>& Clip() const { return m_clip; }
    QRgb* Row(int y) const { return m_first + y * m_stride; }
    void Fill(const QRect& deviceRect, QRgb color) const;
    /// Rows [first, last) of a column of pixels.
    struct Stroke
    {
        int first;
        int last;
    };
    /// Fills strokes in neighbouring columns.
    void FillColumns(int left, const std::vector<Stroke>& strokes, QRgb color) const;

    /// To be called before arithmetic when something else has painted: Qt's AVX code leaves the
    /// upper halves of registers in use, which slows all arithmetic that follows.
    static void FreeRegisters();

    /// Storage for areas, which is used again from one call to the next.
    std::vector<QRect> rects;
    std::vector<Stroke> strokes;

private:
    PixelTarget() = default;
    void FillChunk(int left, const Stroke* strokes, int count, QRgb color) const;

    Medium m_medium;
    std::vector<QRect> m_clip;
    QRgb* m_first = nullptr;
    std::ptrdiff_t m_stride = 0; // pixels
};
