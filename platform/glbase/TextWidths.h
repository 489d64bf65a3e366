// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/base/Export.h"

class QFont;
class QString;

namespace textWidths {

/// Width of a text, as QFontMetrics::horizontalAdvance tells it, which shapes the text each time:
/// it is asked once, and kept. GUI thread only.
ORVANE_PLATFORM_API int of(const QFont& font, const QString& text);

} // namespace textWidths
