// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/base/GuiThread.h"

#include "platform/base/WarnOnce.h"

#include <QCoreApplication>
#include <QThread>

namespace {

Q_LOGGING_CATEGORY(threads, "orvane.threads")

} // namespace

bool guiThread::isElsewhere()
{
    const QCoreApplication* application = QCoreApplication::instance();
    return application && application->thread() != QThread::currentThread();
}

void guiThread::report(const QString& name)
{
    warnOnce(threads(), QStringLiteral("%1 is used outside of the GUI thread; hand data over with "
                                       "values::ListFeed")
                            .arg(name));
}

QString guiThread::nameOf(const QObject& object)
{
    const QString type = QString::fromLatin1(object.metaObject()->className());
    return object.objectName().isEmpty()
               ? type
               : QStringLiteral("%1 \"%2\"").arg(type, object.objectName());
}
