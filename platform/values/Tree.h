// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/values/ValueBase.h"

#include <map>
#include <memory>

namespace values {

/// The application's values, each at a unique path such as "Receiver/Baseband/Samples". The tree
/// owns its values. GUI thread only.
class ORVANE_PLATFORM_API Tree
{
public:
    /// The application's tree. It is never destroyed.
    static Tree& Instance();

    Tree();
    ~Tree();
    Tree(const Tree&) = delete;
    Tree& operator=(const Tree&) = delete;

    /// The value at a path, or null. Never creates one. Owned by the tree.
    ValueBase* FindValue(const QString& path) const;

    /// Host side: puts a new value of type T at a path. Null, and nothing changes, when the path is
    /// empty or taken.
    template<class T>
    T* Create(const QString& path)
    {
        auto value = std::make_unique<T>(path);
        T* created = value.get();
        return Insert(std::move(value)) ? created : nullptr;
    }

    /// Host side: removes a value: state 1, one ccState notification, then it is destroyed (after
    /// its outermost notification when it is notifying). False when there is none.
    bool Remove(const QString& path);

    /// A user of a path says that it needs it no longer. Values belong to the host, so the tree
    /// only counts the call.
    void ReleaseValue(const QString& path);
    int ReleaseCount() const { return m_releaseCount; }

private:
    bool Insert(std::unique_ptr<ValueBase> value);

    std::map<QString, std::unique_ptr<ValueBase>> m_values;
    int m_releaseCount = 0;
};

} // namespace values
