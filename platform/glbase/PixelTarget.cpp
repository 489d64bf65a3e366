// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/glbase/PixelTarget.h"

#include <QPaintEngine>

#include <algorithm>

#if defined(__x86_64__) && defined(__GNUC__)
#include <immintrin.h>
#endif

std::unique_ptr<PixelTarget> PixelTarget::Of(const QPainter& painter)
{
    const QPaintEngine* engine = painter.paintEngine();
    if (!engine || engine->type() != QPaintEngine::Raster ||
        engine->paintDevice()->devType() != QInternal::Image)
        return nullptr;
    const QTransform& toDevice = painter.deviceTransform();
    const bool isUpright =
        toDevice.type() <= QTransform::TxScale && toDevice.m11() > 0.0 && toDevice.m22() > 0.0;
    const auto& image = *static_cast<const QImage*>(engine->paintDevice());
    const bool hasWords = image.format() == QImage::Format_RGB32 ||
                          image.format() == QImage::Format_ARGB32_Premultiplied;
    if (!isUpright || !hasWords)
        return nullptr;

    std::unique_ptr<PixelTarget> target(new PixelTarget);
    target->m_medium = {toDevice, image.format(), QSize(image.logicalDpiX(), image.logicalDpiY()),
                        painter.renderHints()};
    const QRegion systemClip = engine->systemClip();
    const QRegion clip = systemClip.isEmpty() ? image.rect() : systemClip & image.rect();
    target->m_clip.assign(clip.begin(), clip.end());
    // The painter has made sure that the picture shares its pixels with no other.
    target->m_first = reinterpret_cast<QRgb*>(const_cast<uchar*>(image.constBits()));
    target->m_stride = image.bytesPerLine() / static_cast<int>(sizeof(QRgb));
    return target;
}

#if defined(__x86_64__) && defined(__GNUC__)

namespace {

__attribute__((target("avx"))) void zeroUpper() { _mm256_zeroupper(); }

} // namespace

void PixelTarget::FreeRegisters()
{
    static const bool hasAvx = __builtin_cpu_supports("avx") != 0;
    if (hasAvx)
        zeroUpper();
}

#else

void PixelTarget::FreeRegisters() {}

#endif

void PixelTarget::Fill(const QRect& deviceRect, QRgb color) const
{
    for (const QRect& part : m_clip) {
        const QRect rect = deviceRect & part;
        if (rect.isEmpty())
            continue;
        QRgb* row = Row(rect.top()) + rect.left();
        const int width = rect.width();
        if (width == 1) {
            for (int i = rect.height(); i > 0; --i, row += m_stride)
                *row = color;
        } else {
            for (int i = rect.height(); i > 0; --i, row += m_stride)
                std::fill_n(row, width, color);
        }
    }
}

namespace {

/// Number of columns that are filled together, row by row: a cache line. Column by column, each
/// pixel would fetch a cache line of its own.
constexpr int chunkWidth = 16;

using Stroke = PixelTarget::Stroke;

/// Rows of a chunk.
struct Rows
{
    QRgb* pixels; ///< At the left in the first row.
    std::ptrdiff_t stride;
    Stroke all;
    Stroke full; ///< Those that all strokes fill.
    QRgb color;
};

/// Fills a chunk by vectors: so many columns from the left, and as many to the right, which may
/// overlap. Their number is a constant, so that the compiler makes vectors.
template<int width>
void fillRows(const Rows& rows, const Stroke* strokes, int count)
{
    int first[2][width];
    int last[2][width];
    const int starts[2] = {0, count - width};
    for (int part = 0; part < 2; ++part) {
        for (int i = 0; i < width; ++i) {
            first[part][i] = strokes[starts[part] + i].first;
            last[part][i] = strokes[starts[part] + i].last;
        }
    }
    const int parts = count == width ? 1 : 2;
    QRgb* row = rows.pixels;
    const auto fillSome = [&](int from, int to) {
        for (int y = from; y < to; ++y, row += rows.stride) {
            for (int part = 0; part < parts; ++part) {
                QRgb* const pixels = row + starts[part];
                for (int i = 0; i < width; ++i) {
                    const bool isIn = (y >= first[part][i]) & (y < last[part][i]);
                    pixels[i] = isIn ? rows.color : pixels[i];
                }
            }
        }
    };
    fillSome(rows.all.first, rows.full.first);
    for (int y = rows.full.first; y < rows.full.last; ++y, row += rows.stride) {
        for (int part = 0; part < parts; ++part) {
            for (int i = 0; i < width; ++i)
                row[starts[part] + i] = rows.color;
        }
    }
    fillSome(rows.full.last, rows.all.last);
}

} // namespace

void PixelTarget::FillColumns(int left, const std::vector<Stroke>& strokes, QRgb color) const
{
    for (const QRect& part : m_clip) {
        const int end = std::min(left + static_cast<int>(strokes.size()), part.right() + 1);
        for (int x = std::max(left, part.left()); x < end;) {
            const int chunkEnd = std::min(end, (x / chunkWidth + 1) * chunkWidth);
            Stroke chunk[chunkWidth];
            for (int i = 0; i < chunkEnd - x; ++i) {
                const Stroke& stroke = strokes[static_cast<std::size_t>(x + i - left)];
                chunk[i].first = std::max(stroke.first, part.top());
                chunk[i].last = std::max(std::min(stroke.last, part.bottom() + 1), chunk[i].first);
            }
            FillChunk(x, chunk, chunkEnd - x, color);
            x = chunkEnd;
        }
    }
}

void PixelTarget::FillChunk(int left, const Stroke* strokes, int count, QRgb color) const
{
    int first = strokes[0].first;
    int last = strokes[0].last;
    Stroke common = strokes[0];
    int pixelCount = 0;
    for (int i = 0; i < count; ++i) {
        first = std::min(first, strokes[i].first);
        last = std::max(last, strokes[i].last);
        common.first = std::max(common.first, strokes[i].first);
        common.last = std::min(common.last, strokes[i].last);
        pixelCount += strokes[i].last - strokes[i].first;
    }
    const int rowCount = last - first;
    constexpr int denseColumns = 3;
    if (pixelCount < rowCount * denseColumns || count < chunkWidth / 4) {
        for (int i = 0; i < count; ++i) {
            QRgb* pixel = Row(strokes[i].first) + left + i;
            for (int y = strokes[i].first; y < strokes[i].last; ++y, pixel += m_stride)
                *pixel = color;
        }
        return;
    }
    const int commonFirst = std::min(common.first, last);
    const Rows rows{Row(first) + left,
                    m_stride,
                    {first, last},
                    {commonFirst, std::max(common.last, commonFirst)},
                    color};
    if (count == chunkWidth)
        fillRows<chunkWidth>(rows, strokes, count);
    else if (count >= chunkWidth / 2)
        fillRows<chunkWidth / 2>(rows, strokes, count);
    else
        fillRows<chunkWidth / 4>(rows, strokes, count);
}
