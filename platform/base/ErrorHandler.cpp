// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/base/ErrorHandler.h"

#include <QDebug>

IErrorHandlerBase::~IErrorHandlerBase() = default;

ErrorHandler& ErrorHandler::Instance()
{
    static auto* const handler = new ErrorHandler; // outlives every library's exit code
    return *handler;
}

void ErrorHandler::Report(const QString& message) { qWarning().noquote() << message; }
