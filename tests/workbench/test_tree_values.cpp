// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/feed/TreeValues.h"

#include <gtest/gtest.h>

namespace {

TEST(ListsOfTheTree, HoldWhatWasWrittenLastInNoMoreNodesThanTheLongestNeeds)
{
    std::list<double> whole, spareOfWhole, changes, spareOfChanges;
    std::vector<double> written;
    for (const std::size_t size : {0, 1000, 1000, 1, 700, 3000, 0, 2999, 300, 300, 3000}) {
        std::vector<double> content(size, 0.0);
        for (std::size_t k = 0; k < size; k += 2 + size / 3)
            content[k] = double(size + k);
        treevalues::assign(whole, spareOfWhole, content);
        treevalues::assignChanges(changes, spareOfChanges, written, content);
        EXPECT_EQ(std::vector<double>(whole.begin(), whole.end()), content);
        EXPECT_EQ(std::vector<double>(changes.begin(), changes.end()), content);
    }
    EXPECT_EQ(whole.size() + spareOfWhole.size(), 3000U);
    EXPECT_EQ(changes.size() + spareOfChanges.size(), 3000U);
}

} // namespace
