// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/base/Export.h"

class QFont;
class QFontMetrics;
class QString;

namespace textWidths {

/// Width of a text, as QFontMetrics::horizontalAdvance tells it, which shapes the text each time:
/// it is asked once, and kept. GUI thread only.
ORVANE_PLATFORM_API int of(const QFont& font, const QString& text);
/// The same with the metrics of the font at hand.
int of(const QFont& font, const QFontMetrics& metrics, const QString& text);

} // namespace textWidths
