// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/base/Export.h"

#include <QString>

/// Turns axis numbers into text. The references are valid until the next call of the same object.
class ORVANE_PLATFORM_API IStringFormatter
{
public:
    virtual const QString& Format(double value) = 0;
    virtual const QString& FormatWithUnit(double value) = 0;
    virtual ~IStringFormatter();
};
