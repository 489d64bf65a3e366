// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/values/Persistant.h"

#include <QApplication>
#include <QTemporaryDir>

#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("orvane-test"));
    // No test reads or writes the settings of the person who runs it.
    const QTemporaryDir settings;
    values::Persistant::SetStoreFile(settings.filePath(QStringLiteral("settings.ini")));
    return RUN_ALL_TESTS();
}
