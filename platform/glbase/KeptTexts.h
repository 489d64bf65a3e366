// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QRect>
#include <QString>

class QPainter;

/// Texts that were laid out once are kept, as shaping a text takes longer than drawing it. GUI
/// thread only.
namespace keptTexts {

/// Draws one line of text in the middle of a rectangle, as QPainter::drawText does.
/// @return false where it is no such text, or does not fit, or where pixels are no whole part of a
///         logical one; then nothing was drawn.
bool draw(QPainter& painter, const QRect& rect, int flags, const QString& text);

} // namespace keptTexts
