// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/base/Export.h"

#include <QString>

/// An object with a unit text.
class ORVANE_PLATFORM_API IUnitTextProvider
{
public:
    /// Text appended to read-outs, " " for none.
    virtual void SetUnitText(QString unit) = 0;
    virtual ~IUnitTextProvider();
};
