// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QRect>
#include <QString>

class QPainter;

/// Keeps the layout of texts, because shaping a text takes longer than drawing it. GUI thread only.
namespace keptTexts {

/// Draws one line of text in the middle of a rectangle, as QPainter::drawText does.
/// @return false where it is no such text, or does not fit, or where pixels are not logical ones;
///         then nothing was drawn.
bool draw(QPainter& painter, const QRect& rect, int flags, const QString& text);

/// Draws a text into pixels that are not logical ones, its glyphs where Qt's OpenGL painter puts
/// them: that takes their parts of a pixel from logical places, a raster painter from device
/// pixels.
/// @return false where there are no such pixels, or where glyphs are too large for Qt to keep; then
///         nothing was drawn.
bool drawLikeOpenGL(QPainter& painter, const QRect& rect, int flags, const QString& text);

} // namespace keptTexts
