// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QColor>
#include <QImage>

#include <algorithm>

/// Rows of a picture with a colour.
inline int litRows(const QImage& picture, const QColor& color)
{
    const QImage image = picture.convertToFormat(QImage::Format_RGB32);
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        const auto* row = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        count += std::find(row, row + image.width(), color.rgb()) != row + image.width();
    }
    return count;
}
