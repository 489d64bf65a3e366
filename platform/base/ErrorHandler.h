// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/base/Export.h"

#include <QString>

/// Takes error messages of the framework.
class ORVANE_PLATFORM_API IErrorHandlerBase
{
public:
    virtual ~IErrorHandlerBase();
    virtual void Report(const QString& message) = 0;
};

/// The application's error handler: writes each message to Qt's log as a warning.
class ORVANE_PLATFORM_API ErrorHandler : public IErrorHandlerBase
{
public:
    static ErrorHandler& Instance();
    void Report(const QString& message) override;
};
