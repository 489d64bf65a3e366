// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/feed/TreeValues.h"

#include <algorithm>

void treevalues::assign(std::list<double>& list, std::list<double>& spare,
                        const std::vector<double>& content)
{
    if (list.size() > content.size()) {
        const auto surplus = std::next(list.begin(), static_cast<std::ptrdiff_t>(content.size()));
        spare.splice(spare.begin(), list, surplus, list.end());
    }
    while (list.size() < content.size() && !spare.empty())
        list.splice(list.end(), spare, spare.begin());
    list.resize(content.size());
    std::copy(content.begin(), content.end(), list.begin());
}
