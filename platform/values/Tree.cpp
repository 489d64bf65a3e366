// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/values/Tree.h"

#include "platform/base/GuiThread.h"

#include <utility>

namespace values {

Tree& Tree::Instance()
{
    static auto* const tree = new Tree; // outlives every library's exit code
    return *tree;
}

Tree::Tree() = default;

Tree::~Tree()
{
    while (!m_values.empty())
        Remove(m_values.begin()->second->GetPathName());
}

ValueBase* Tree::FindValue(const QString& path) const
{
    guiThread::check([&path] { return QStringLiteral("The value \"%1\"").arg(path); });
    const auto found = m_values.find(path);
    return found == m_values.end() ? nullptr : found->second.get();
}

std::vector<ValueBase*> Tree::Values() const
{
    std::vector<ValueBase*> values;
    for (const auto& [path, value] : m_values)
        values.push_back(value.get());
    return values;
}

bool Tree::Remove(const QString& path)
{
    ValueBase* const value = FindValue(path);
    if (!value)
        return false;
    // Out of the tree first: an observer that looks the path up again must not find it.
    Tree::LetGo(*value); // the destructor comes here, too
    value->m_state = ValueBase::StateRemoved;
    value->m_deleteWhenQuiet = true;
    value->Notify(ccState); // the value deletes itself as its outermost notification ends
    return true;
}

void Tree::LetGo(ValueBase& value)
{
    const QString path = value.m_pathName;
    value.m_pOwner = nullptr;
    const auto found = m_values.find(path);
    found->second.release(); // NOLINT(bugprone-unused-return-value)
    m_values.erase(found);
    TellWatchers(path, ccState);
}

void Tree::Watch(const QString& path, IObserver* observer) { m_watchers[path].Attach(observer); }

void Tree::Unwatch(const QString& path, IObserver* observer)
{
    const auto found = m_watchers.find(path);
    if (found == m_watchers.end())
        return;
    found->second.Detach(observer);
    if (found->second.ObserverCount() == 0)
        m_watchers.erase(found); // an Observable may be destroyed while it notifies
}

void Tree::TellWatchers(const QString& path, TChangeCode code)
{
    const auto found = m_watchers.find(path);
    if (found != m_watchers.end())
        found->second.Notify(code);
}

void Tree::ReleaseValue(const QString& /*path*/) { ++m_releaseCount; }

bool Tree::Insert(std::unique_ptr<ValueBase> value)
{
    const QString path = value->GetPathName();
    if (path.isEmpty() || m_values.count(path) != 0)
        return false;
    ValueBase* const inserted = value.get();
    m_values.emplace(path, std::move(value));
    inserted->m_pOwner = this;
    TellWatchers(path, ccContent);
    return true;
}

} // namespace values
