// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "views/ViewFrame.h"

#include "platform/base/WarnOnce.h"

namespace {

Q_LOGGING_CATEGORY(views, "orvane.views")

} // namespace

void warnOfSharedValue(const QObject& view, const QString& path, const QStringList& roles)
{
    if (roles.size() > 1)
        warnOnce(
            views(),
            QStringLiteral("%1: the value \"%2\" is bound as %3; only the first of these takes "
                           "its changes")
                .arg(guiThread::nameOf(view), path, roles.join(QStringLiteral(" and "))));
}
