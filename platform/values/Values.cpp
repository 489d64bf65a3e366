// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/values/Values.h"

#include <cstdlib>
#include <cxxabi.h>
#include <memory>
#include <typeinfo>

namespace values {

ValueSelection::~ValueSelection() = default;

QString TypeName(const ValueBase& value)
{
    if (dynamic_cast<const ValueSelection*>(&value))
        return QStringLiteral("ValueSelection");
    if (dynamic_cast<const ValueNumeric<double>*>(&value))
        return QStringLiteral("ValueNumeric<double>");
    if (dynamic_cast<const Value<double>*>(&value))
        return QStringLiteral("Value<double>");
    if (dynamic_cast<const Value<bool>*>(&value))
        return QStringLiteral("Value<bool>");
    if (dynamic_cast<const ValueList<double>*>(&value))
        return QStringLiteral("ValueList<double>");
    int status = 0;
    const std::unique_ptr<char, decltype(&std::free)> name(
        abi::__cxa_demangle(typeid(value).name(), nullptr, nullptr, &status), &std::free);
    return QString::fromLatin1(name ? name.get() : typeid(value).name());
}

template class Value<bool>;
template class Value<double>;
template class ValueNumeric<double>;
template class ValueList<double>;

} // namespace values
