// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/base/Export.h"

#include <QString>

class QObject;

/// Values, views and diagrams belong to the GUI thread. Builds with assertions report their use in
/// another thread to the log (category orvane.threads), each name once; other builds do nothing.
namespace guiThread {

/// Whether this is another thread than that of the application object. False without one.
ORVANE_PLATFORM_API bool isElsewhere();
ORVANE_PLATFORM_API void report(const QString& name);
/// Class and object name.
ORVANE_PLATFORM_API QString nameOf(const QObject& object);

/// @param name  gives the name of what is used; called only for a report.
template<class Name>
void check([[maybe_unused]] const Name& name)
{
#ifndef NDEBUG
    if (isElsewhere())
        report(name());
#endif
}
inline void checkObject([[maybe_unused]] const QObject& object)
{
    check([&object] { return nameOf(object); });
}

} // namespace guiThread
