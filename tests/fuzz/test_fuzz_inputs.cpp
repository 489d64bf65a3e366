// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
// What fuzzing kept, and what it once found: tests/fuzz/inputs/NAME/*.
#include "ReadBack.h"

#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

namespace {

TEST(FuzzInputs, ReadBackWithoutHarm)
{
    int count = 0;
    QDirIterator files(QStringLiteral(ORVANE_FUZZ_INPUTS), QDir::Files,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        SCOPED_TRACE(qPrintable(file.fileName()));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        readBack(QFileInfo(file).dir().dirName(), file.readAll());
        ++count;
    }
    EXPECT_GT(count, 10);
}

} // namespace
