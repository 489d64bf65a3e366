// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/values/Tree.h"
#include "platform/values/Values.h"

#include <list>
#include <vector>

/// Helpers of the classes that keep the values of a view in the value tree.
namespace treevalues {

/// Creates a value. Its path is free, as there is one object of each class at a time.
template<class T>
T* create(const char* path)
{
    T* value = values::Tree::Instance().Create<T>(path);
    Q_ASSERT(value);
    return value;
}

/// Replaces the content of a list. Nodes move between the list and a spare list of its own; new
/// nodes are made only when these are not enough, so that a steady stream allocates nothing. They
/// keep their order, so that neighbours in the list stay neighbours in memory.
void assign(std::list<double>& list, std::list<double>& spare, const std::vector<double>& content);

} // namespace treevalues
