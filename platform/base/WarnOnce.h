// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/base/Export.h"

#include <QLoggingCategory>
#include <QString>

/// Writes a warning to the log, each text once as long as the process runs; after 100 different
/// texts no more. From any thread.
ORVANE_PLATFORM_API void warnOnce(const QLoggingCategory& category, const QString& text);
