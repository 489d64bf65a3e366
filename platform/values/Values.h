// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/values/ValueBase.h"

#include <list>
#include <utility>

namespace values {

///@{
/// Part of a value's type. These parts tell numbers from switches, and values that a host formats
/// in different ways. A value can be bound only as the type it was created with.
template<class T>
struct FormatFloat
{};
template<class T>
struct FormatBool
{};
template<class T, class F>
struct StreamFormat
{};
///@}

/// The format of a value that is created without one.
template<class T>
struct DefaultFormat
{
    using type = FormatFloat<T>;
};
/// The format of a switch that is created without one.
template<>
struct DefaultFormat<bool>
{
    using type = FormatBool<bool>;
};

/// A value of one item. Setting it always notifies ccContent, even if the content does not change:
/// a trigger announces new data by being set. A setter does nothing after its notification, since
/// an observer may destroy the value.
template<class T, class F = typename DefaultFormat<T>::type, class S = StreamFormat<T, F>>
class Value : public ValueBase
{
public:
    explicit Value(const QString& pathName = QString())
        : ValueBase(pathName)
    {}

    /// The content.
    T GetValue() const { return m_value; }
    /// Sets the content and notifies ccContent.
    void SetValue(T value)
    {
        m_value = value;
        Notify(ccContent);
    }

private:
    T m_value = T();
};

/// A number.
template<class T, class F = typename DefaultFormat<T>::type, class S = StreamFormat<T, F>>
class ValueNumeric : public Value<T, F, S>
{
public:
    using Value<T, F, S>::Value;
};

/// A list of numbers. Readers use it by reference. A writer may fill it in place with GetList() and
/// announce it with Notify(ccContent) or by setting a trigger value.
template<class T, class F = typename DefaultFormat<T>::type, class S = StreamFormat<T, F>>
class ValueList : public ValueBase
{
public:
    explicit ValueList(const QString& pathName = QString())
        : ValueBase(pathName)
    {}

    /// The numbers, to be read or changed in place; without a notification.
    std::list<T>& GetList() { return m_list; }
    const std::list<T>& GetList() const { return m_list; }
    /// Replaces the content, reusing the nodes that are there, and notifies ccContent.
    template<class Iterator>
    void Assign(Iterator first, Iterator last)
    {
        m_list.assign(first, last);
        Notify(ccContent);
    }

private:
    std::list<T> m_list;
};

// The instantiations that cross library borders exist once, in the platform library.
extern template class ORVANE_PLATFORM_API Value<bool>;
extern template class ORVANE_PLATFORM_API Value<double>;
extern template class ORVANE_PLATFORM_API ValueNumeric<double>;
extern template class ORVANE_PLATFORM_API ValueList<double>;

/// The index of one of several choices.
class ORVANE_PLATFORM_API ValueSelection : public ValueNumeric<double>
{
public:
    using ValueNumeric<double>::ValueNumeric;
    ~ValueSelection() override;
};

/// Type of a value as it is written here, such as "ValueList<double>"; for other types their full
/// C++ name.
ORVANE_PLATFORM_API QString TypeName(const ValueBase& value);

} // namespace values
