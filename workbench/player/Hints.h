// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/sources/Result.h"

#include <QCoreApplication>
#include <QStringList>
#include <QVector>

/// Puts hints into words: which options of the command line give what a message asks for.
struct Hints
{
    Q_DECLARE_TR_FUNCTIONS(Hints)
public:
    /// The message and its hint in one sentence.
    static QString text(const Message& message);
    static QStringList texts(const QVector<Message>& messages);

private:
    static QString words(Hint hint);
};
