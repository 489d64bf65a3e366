// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/sources/LiveAddress.h"

#include "workbench/sources/PlainText.h"

bool LiveAddress::isInput(const QString& address) { return address == QLatin1String("-"); }

bool LiveAddress::isZmq(const QString& address)
{
    return address.startsWith(QLatin1String("zmq://"));
}

bool LiveAddress::isSoapy(const QString& address)
{
    return address.startsWith(QLatin1String("soapy://"));
}

bool LiveAddress::isLive(const QString& address)
{
    return isInput(address) || isZmq(address) || isSoapy(address);
}

QString LiveAddress::title(const QString& address)
{
    return isInput(address) ? tr("standard input") : plainText(address, maxLineLength);
}
