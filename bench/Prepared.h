// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QImage>

#include <vector>

/// The floor of a paint: what a picture has over its ground, as a list of strokes made beforehand.
/// Pictures have 32 bits a pixel.
class Prepared
{
public:
    /// @param ground  the same picture without what is drawn on it.
    Prepared(const QImage& picture, const QImage& ground);
    /// Copies the ground, then writes the strokes, pixel by pixel.
    void paint(QImage& picture) const;
    std::size_t strokeCount() const { return m_strokes.size(); }

private:
    /// Pixels of one colour, one below the other.
    struct Stroke
    {
        int column;
        int first;
        int last;
        QRgb color;
    };
    QImage m_ground;
    std::vector<Stroke> m_strokes;
};
