// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/values/Tree.h"

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
    const auto found = m_values.find(path);
    return found == m_values.end() ? nullptr : found->second.get();
}

bool Tree::Remove(const QString& path)
{
    const auto found = m_values.find(path);
    if (found == m_values.end())
        return false;
    // Out of the tree first: an observer that looks the path up again must not find it.
    ValueBase* const value = found->second.release();
    m_values.erase(found);
    value->m_state = ValueBase::StateRemoved;
    value->m_deleteWhenQuiet = true;
    value->Notify(ccState); // the value deletes itself as its outermost notification ends
    return true;
}

void Tree::ReleaseValue(const QString& /*path*/) { ++m_releaseCount; }

bool Tree::Insert(std::unique_ptr<ValueBase> value)
{
    const QString path = value->GetPathName();
    if (path.isEmpty())
        return false;
    return m_values.emplace(path, std::move(value)).second;
}

} // namespace values
