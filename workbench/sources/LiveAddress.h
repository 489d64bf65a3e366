// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QCoreApplication>
#include <QString>

/// Where live signals come from: "-", standard input; zmq://HOST:PORT, a ZeroMQ publisher;
/// soapy://KEY=VALUE,..., a radio. Anything else is a file's name.
struct LiveAddress
{
    Q_DECLARE_TR_FUNCTIONS(LiveAddress)
public:
    static bool isLive(const QString& address);
    static bool isInput(const QString& address);
    static bool isZmq(const QString& address);
    static bool isSoapy(const QString& address);
    /// Name of a file or a live signal in messages.
    static QString title(const QString& address);
};
