// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/values/ValueBase.h"

namespace values {

ValueOwner::~ValueOwner() = default;

ValueBase::ValueBase(const QString& pathName)
    : m_pathName(pathName)
{}

ValueBase::~ValueBase()
{
    if (m_state == StateRemoved)
        return;
    // Destroyed without Tree::Remove: observers and the tree must drop their pointers.
    if (m_pOwner)
        m_pOwner->LetGo(*this);
    m_state = StateRemoved;
    Notify(ccState);
}

QString ValueBase::Name() const { return QStringLiteral("The value \"%1\"").arg(m_pathName); }

void ValueBase::NotificationEnded()
{
    if (m_deleteWhenQuiet)
        delete this;
}

} // namespace values
