// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/base/Export.h"

#include <QString>

/// Shows lines of text over a picture.
class ORVANE_PLATFORM_API ITextDisplayer
{
public:
    /// Removes all lines.
    virtual void clear() = 0;
    /// Appends a line.
    virtual void addTextFreqList(const QString& line) = 0;
    virtual ~ITextDisplayer();
};
