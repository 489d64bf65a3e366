// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/sources/Recording.h"

#include <QCoreApplication>

/// Where live signals come from: "-", standard input; zmq://HOST:PORT, a ZeroMQ publisher;
/// soapy://KEY=VALUE,..., a radio. Anything else is a file's name.
struct LiveAddress
{
    Q_DECLARE_TR_FUNCTIONS(LiveAddress)
public:
    static bool isLive(const QString& address);
    /// Opens what a live address names.
    static Recording open(const QString& address, const Recording::Options& options);
    /// What people call a file or a live signal, for what is said of it.
    static QString title(const QString& address);

private:
    static void openInput(Recording& recording, const Recording::Options& options);
};
