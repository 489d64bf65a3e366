// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/feed/TreeValues.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <iterator>

namespace {

constexpr std::size_t comparedAtOnce = 128; // values
constexpr std::size_t mostGaps = 1024;      // that memory has room for a node in

/// Makes nodes. Those in gaps between other things would lie far apart, and writing each would wait
/// for memory; those on top lie side by side.
std::list<double> nodes(std::size_t count)
{
    std::list<double> made(count + std::min(count, mostGaps));
    made.sort([](const double& a, const double& b) { return std::less<>()(&b, &a); });
    made.resize(count);
    made.reverse();
    return made;
}

/// Gives a list as many nodes as its content will have.
void resize(std::list<double>& list, std::list<double>& spare, std::size_t count)
{
    const std::size_t surplus = list.size() - std::min(list.size(), count);
    spare.splice(spare.begin(), list, std::prev(list.end(), static_cast<std::ptrdiff_t>(surplus)),
                 list.end());
    const std::size_t missing = count - list.size();
    if (spare.size() < missing)
        spare.splice(spare.end(), nodes(missing - spare.size()));
    list.splice(list.end(), spare, spare.begin(),
                std::next(spare.begin(), static_cast<std::ptrdiff_t>(missing)));
}

} // namespace

void treevalues::assign(std::list<double>& list, std::list<double>& spare,
                        const std::vector<double>& content)
{
    resize(list, spare, content.size());
    std::copy(content.begin(), content.end(), list.begin());
}

void treevalues::assignChanges(std::list<double>& list, std::list<double>& spare,
                               std::vector<double>& written, const std::vector<double>& content)
{
    const bool isKnown = written.size() == list.size(); // nobody else has changed it
    std::size_t changed = std::min(list.size(), content.size());
    while (isKnown && changed > 0) {
        const std::size_t count = std::min(changed, comparedAtOnce);
        const std::size_t first = changed - count;
        if (std::memcmp(&written[first], &content[first], count * sizeof(double)) != 0)
            break;
        changed = first;
    }
    const std::size_t kept = std::min(list.size(), content.size());
    resize(list, spare, content.size());
    std::copy_n(content.begin(), changed, list.begin());
    const auto added = static_cast<std::ptrdiff_t>(content.size() - kept);
    std::copy(content.end() - added, content.end(), std::prev(list.end(), added));
    written.resize(content.size());
    std::copy_n(content.begin(), changed, written.begin());
    std::copy(content.end() - added, content.end(), written.end() - added);
}
