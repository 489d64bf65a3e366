// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/base/Export.h"

#include <QString>

class QObject;

/// Values, views and diagrams belong to the GUI thread. Builds with assertions report their use in
/// another thread to the log (category orvane.threads), each name once; other builds do nothing.
namespace guiThread {

/// Whether the caller runs outside of the application object's thread. False while there is no such
/// object.
ORVANE_PLATFORM_API bool isElsewhere();
ORVANE_PLATFORM_API void report(const QString& name);
/// Class and object name.
ORVANE_PLATFORM_API QString nameOf(const QObject& object);

/// @param name  returns the name of the object; called only for a report.
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
