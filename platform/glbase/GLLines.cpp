// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/glbase/GLLines.h"

void GLLines::AddLine(float x1, float y1, float x2, float y2)
{
    m_lines.emplace_back(static_cast<qreal>(x1), static_cast<qreal>(y1), static_cast<qreal>(x2),
                         static_cast<qreal>(y2));
}
