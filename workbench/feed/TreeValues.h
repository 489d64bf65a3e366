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
/// nodes are made only when these are not enough, so that a steady stream allocates nothing.
/// Neighbours in the list are nearly always neighbours in memory, too.
void assign(std::list<double>& list, std::list<double>& spare, const std::vector<double>& content);
/// The same where most of the content comes again, such as markers, nearly all of which are 0:
/// touches the nodes whose values change.
/// @param written  what the last call has written; becomes the content.
void assignChanges(std::list<double>& list, std::list<double>& spare, std::vector<double>& written,
                   const std::vector<double>& content);

} // namespace treevalues
