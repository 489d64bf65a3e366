// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/values/Tree.h"
#include "platform/values/Values.h"

#include <list>
#include <vector>

/// Helpers of the classes that keep the values of a view in the value tree.
namespace treevalues {

/// A new value. Its path is free: there is one object of each class at a time.
template<class T>
T* create(const char* path)
{
    T* value = values::Tree::Instance().Create<T>(path);
    Q_ASSERT(value);
    return value;
}

/// Gives a list a new content. Nodes move between the list and the spare ones; new ones are made
/// only where those do not do, so a steady stream allocates nothing.
void assign(std::list<double>& list, std::list<double>& spare, const std::vector<double>& content);

} // namespace treevalues
