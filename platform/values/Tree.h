// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/values/ValueBase.h"

#include <map>
#include <memory>
#include <vector>

namespace values {

/// The application's values, each at a unique path such as "Receiver/Baseband/Samples". The tree
/// owns its values. GUI thread only.
class ORVANE_PLATFORM_API Tree : private ValueOwner
{
public:
    /// The application's tree. It is never destroyed.
    static Tree& Instance();

    Tree();
    ~Tree() override;
    Tree(const Tree&) = delete;
    Tree& operator=(const Tree&) = delete;

    /// The value at a path, or null. Never creates one. Owned by the tree.
    ValueBase* FindValue(const QString& path) const;

    /// All values in the order of their paths, see GetPathName and TypeName. Owned by the tree, and
    /// valid until a value goes.
    std::vector<ValueBase*> Values() const;

    /// Host side: puts a new value of type T at a path. Returns null, and changes nothing, when the
    /// path is empty or taken. Also returns null when a watcher of the path removed the value at
    /// once.
    template<class T>
    T* Create(const QString& path)
    {
        return Insert(std::make_unique<T>(path)) ? dynamic_cast<T*>(FindValue(path)) : nullptr;
    }

    /// Host side: removes a value: state 1, one ccState notification, then it is destroyed (after
    /// its outermost notification when it is notifying). False when there is none.
    bool Remove(const QString& path);

    /// Notifies an observer with ccContent whenever a value is put at a path, and with ccState when
    /// it leaves. The source of the notification is not the value. The observer must exist until
    /// Unwatch. See Binding.
    void Watch(const QString& path, IObserver* observer);
    /// Ends a Watch; an observer that does not watch the path is ignored.
    void Unwatch(const QString& path, IObserver* observer);

    /// Tells that a user of a path no longer needs it. The host owns the values, so the tree only
    /// counts the calls.
    void ReleaseValue(const QString& path);
    /// Number of calls of ReleaseValue.
    int ReleaseCount() const { return m_releaseCount; }

private:
    bool Insert(std::unique_ptr<ValueBase> value);
    /// Takes a value out of the tree, which is not destroyed.
    void LetGo(ValueBase& value) override;
    void TellWatchers(const QString& path, TChangeCode code);

    std::map<QString, std::unique_ptr<ValueBase>> m_values;
    std::map<QString, Observable> m_watchers; // of paths, whether there is a value or not
    int m_releaseCount = 0;
};

} // namespace values
