// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/base/WarnOnce.h"

#include <mutex>
#include <set>

void warnOnce(const QLoggingCategory& category, const QString& text)
{
    constexpr std::size_t mostTexts = 100; // the texts hold names, of which there may be any number
    static std::mutex mutex;
    static auto* const told = new std::set<QString>; // outlives every library's exit code
    {
        const std::lock_guard<std::mutex> lock(mutex);
        if (told->size() >= mostTexts || !told->insert(text).second)
            return;
    }
    qCWarning(category, "%s", qUtf8Printable(text));
}
