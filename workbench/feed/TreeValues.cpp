// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/feed/TreeValues.h"

void treevalues::assign(std::list<double>& list, std::list<double>& spare,
                        const std::vector<double>& content)
{
    auto value = content.begin();
    auto node = list.begin();
    for (; node != list.end() && value != content.end(); ++node)
        *node = *value++;
    spare.splice(spare.begin(), list, node, list.end());
    auto taken = spare.begin();
    for (; taken != spare.end() && value != content.end(); ++taken)
        *taken = *value++;
    list.splice(list.end(), spare, spare.begin(), taken);
    list.insert(list.end(), value, content.end());
}
