// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/values/ValueBase.h"

namespace values {

ValueBase::ValueBase(const QString& pathName)
    : m_pathName(pathName)
{}

ValueBase::~ValueBase() = default;

void ValueBase::NotificationEnded()
{
    if (m_deleteWhenQuiet)
        delete this;
}

} // namespace values
