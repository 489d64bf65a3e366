// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "Prepared.h"

#include <algorithm>
#include <cstring>

Prepared::Prepared(const QImage& picture, const QImage& ground)
    : m_ground(ground)
{
    for (int x = 0; x < picture.width(); ++x) {
        for (int y = 0; y < picture.height(); ++y) {
            const QRgb color = picture.pixel(x, y);
            if (color == ground.pixel(x, y))
                continue;
            const bool continues = !m_strokes.empty() && m_strokes.back().column == x &&
                                   m_strokes.back().last == y - 1 &&
                                   m_strokes.back().color == color;
            if (continues)
                m_strokes.back().last = y;
            else
                m_strokes.push_back({x, y, y, color});
        }
    }
}

void Prepared::paint(QImage& picture) const
{
    std::memcpy(picture.bits(), m_ground.constBits(),
                static_cast<std::size_t>(m_ground.sizeInBytes()));
    auto* const pixels = reinterpret_cast<QRgb*>(picture.bits());
    const std::ptrdiff_t stride = picture.bytesPerLine() / std::ptrdiff_t{sizeof(QRgb)};
    for (const Stroke& stroke : m_strokes) {
        QRgb* pixel = pixels + stroke.first * stride + stroke.column;
        for (int y = stroke.first; y <= stroke.last; ++y, pixel += stride)
            *pixel = stroke.color;
    }
}
