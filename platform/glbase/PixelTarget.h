// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QRect>
#include <QRgb>
#include <QTransform>

#include <memory>
#include <vector>

class QPainter;

/// The pixels that a painter paints, where they can be written without it: those of a picture with
/// 32 bits a pixel, by a painter that neither turns nor mirrors. For thousands of small areas that
/// is many times faster, as each call of a painter costs more than the pixels, and as some
/// processors are slow at the short runs that Qt fills.
class PixelTarget
{
public:
    /// Null where the painter has to paint. Of its clips only that of its device is heeded.
    /// @param painter  open, and longer so than this object is used.
    static std::unique_ptr<PixelTarget> Of(const QPainter& painter);

    /// From logical to device pixels, as it was at first.
    const QTransform& ToDevice() const { return m_toDevice; }
    /// Where pixels may be written, in device pixels.
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

    /// To be called before arithmetic, after anything else has painted: Qt's fills for AVX leave
    /// the upper halves of registers in use, which makes all arithmetic after them slow.
    static void FreeRegisters();

    /// For whoever collects areas, so that their memory is used again.
    std::vector<QRect> rects;
    std::vector<Stroke> strokes;

private:
    PixelTarget() = default;
    void FillChunk(int left, const Stroke* strokes, int count, QRgb color) const;

    QTransform m_toDevice;
    std::vector<QRect> m_clip;
    QRgb* m_first = nullptr;
    std::ptrdiff_t m_stride = 0; // pixels
};
