// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/values/ValueBase.h"

#include "platform/values/Tree.h"
#include "platform/values/Values.h"

#include <cstdlib>
#include <cxxabi.h>
#include <memory>
#include <typeinfo>

namespace values {

ValueBase::ValueBase(const QString& pathName)
    : m_pathName(pathName)
{}

ValueBase::~ValueBase()
{
    if (m_state == StateRemoved)
        return;
    // It dies without being removed: nobody may be left with a pointer to it.
    if (m_pTree)
        m_pTree->LetGo(*this);
    m_state = StateRemoved;
    Notify(ccState);
}

QString ValueBase::GetTypeName() const
{
    if (dynamic_cast<const ValueSelection*>(this))
        return QStringLiteral("ValueSelection");
    if (dynamic_cast<const ValueNumeric<double>*>(this))
        return QStringLiteral("ValueNumeric<double>");
    if (dynamic_cast<const Value<double>*>(this))
        return QStringLiteral("Value<double>");
    if (dynamic_cast<const Value<bool>*>(this))
        return QStringLiteral("Value<bool>");
    if (dynamic_cast<const ValueList<double>*>(this))
        return QStringLiteral("ValueList<double>");
    int status = 0;
    const std::unique_ptr<char, decltype(&std::free)> name(
        abi::__cxa_demangle(typeid(*this).name(), nullptr, nullptr, &status), &std::free);
    return QString::fromLatin1(name ? name.get() : typeid(*this).name());
}

QString ValueBase::Name() const { return QStringLiteral("The value \"%1\"").arg(m_pathName); }

void ValueBase::NotificationEnded()
{
    if (m_deleteWhenQuiet)
        delete this;
}

} // namespace values
