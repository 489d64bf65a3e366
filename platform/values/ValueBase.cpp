// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/values/ValueBase.h"

namespace values {

ValueBase::ValueBase(const QString& pathName)
    : m_pathName(pathName)
{}

ValueBase::~ValueBase()
{
    // One that dies without being removed from a tree must not leave anyone with a pointer to it.
    if (m_state == StateRemoved)
        return;
    m_state = StateRemoved;
    Notify(ccState);
}

void ValueBase::NotificationEnded()
{
    if (m_deleteWhenQuiet)
        delete this;
}

} // namespace values
