// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "density/LevelFinder.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace density {

namespace {

constexpr std::size_t binCount = 256;
constexpr double smoothing = 3.0;     // bins, deviation of a Gaussian
constexpr double outlyingPart = 2e-3; // of the values, on either side, that set no range
constexpr double deepEnough = 0.5;    // of the density of the lower of two heaps
constexpr double leastPart = 0.02;    // of the values, in a heap

struct Heap
{
    std::size_t peak;
    std::size_t end; // bin of the valley after it
};

std::vector<double> smooth(const std::vector<double>& counts)
{
    constexpr int reach = static_cast<int>(4.0 * smoothing);
    std::vector<double> result(counts.size());
    for (int k = 0; k < static_cast<int>(counts.size()); ++k) {
        for (int offset = -reach; offset <= reach; ++offset) {
            const int other = k + offset;
            if (other >= 0 && other < static_cast<int>(counts.size()))
                result[static_cast<std::size_t>(k)] +=
                    counts[static_cast<std::size_t>(other)] *
                    std::exp(-0.5 * offset * offset / (smoothing * smoothing));
        }
    }
    return result;
}

/// The middle of the least dense places between two bins.
std::size_t valley(const std::vector<double>& density, std::size_t from, std::size_t to)
{
    const auto begin = density.begin() + static_cast<std::ptrdiff_t>(from);
    const auto end = density.begin() + static_cast<std::ptrdiff_t>(to) + 1;
    const auto first = std::min_element(begin, end);
    auto last = first;
    while (last + 1 != end && *(last + 1) <= *first)
        ++last;
    return static_cast<std::size_t>((first - density.begin()) + (last - first) / 2);
}

std::vector<Heap> heapsOf(const std::vector<double>& density)
{
    std::vector<Heap> heaps;
    bool isRising = true;
    for (std::size_t k = 0; k < density.size(); ++k) {
        const double next = k + 1 < density.size() ? density[k + 1] : 0.0;
        if (isRising && next < density[k]) {
            heaps.push_back({k, 0});
            isRising = false;
        } else if (next > density[k]) {
            isRising = true;
        }
    }
    for (std::size_t k = 0; k + 1 < heaps.size(); ++k)
        heaps[k].end = valley(density, heaps[k].peak, heaps[k + 1].peak);
    if (!heaps.empty())
        heaps.back().end = density.size();
    return heaps;
}

/// Joins a heap with the next one.
void join(std::vector<Heap>& heaps, std::size_t first, const std::vector<double>& density)
{
    Heap& heap = heaps[first];
    const Heap& next = heaps[first + 1];
    if (density[next.peak] > density[heap.peak])
        heap.peak = next.peak;
    heap.end = next.end;
    heaps.erase(heaps.begin() + static_cast<std::ptrdiff_t>(first) + 1);
}

/// Joins the heaps with the flattest valley between them; false where all valleys are deep.
bool joinFlattest(std::vector<Heap>& heaps, const std::vector<double>& density)
{
    std::size_t flattest = 0;
    double height = 0.0;
    for (std::size_t k = 0; k + 1 < heaps.size(); ++k) {
        const double lower = std::min(density[heaps[k].peak], density[heaps[k + 1].peak]);
        const double ratio = density[heaps[k].end] / lower;
        if (ratio > height) {
            height = ratio;
            flattest = k;
        }
    }
    if (height < deepEnough)
        return false;
    join(heaps, flattest, density);
    return true;
}

/// Joins the smallest heap with the neighbour behind the higher valley; false where none is small.
bool joinSmallest(std::vector<Heap>& heaps, const std::vector<double>& density,
                  const std::vector<double>& counts, double total)
{
    std::size_t smallest = 0, begin = 0;
    double least = total;
    for (std::size_t k = 0; k < heaps.size(); ++k) {
        double count = 0.0;
        for (std::size_t bin = begin; bin < heaps[k].end; ++bin)
            count += counts[bin];
        begin = heaps[k].end;
        if (count < least) {
            least = count;
            smallest = k;
        }
    }
    if (heaps.size() < 2 || least >= leastPart * total)
        return false;
    const bool hasNext = smallest + 1 < heaps.size();
    const bool joinsNext = smallest == 0 || (hasNext && density[heaps[smallest].end] >
                                                            density[heaps[smallest - 1].end]);
    join(heaps, joinsNext ? smallest : smallest - 1, density);
    return true;
}

} // namespace

std::vector<double> boundsOfLevels(const std::vector<double>& sorted)
{
    const auto outliers =
        static_cast<std::size_t>(outlyingPart * static_cast<double>(sorted.size()));
    const double lowest = sorted[outliers];
    const double range = sorted[sorted.size() - 1 - outliers] - lowest;
    if (!(range > 0.0) || !std::isfinite(range))
        return {};
    // A margin, so that the heaps at the ends have both flanks.
    const double start = lowest - 0.1 * range;
    const double binWidth = 1.2 * range / static_cast<double>(binCount);
    std::vector<double> counts(binCount);
    double total = 0.0;
    for (const double value : sorted) {
        const double bin = (value - start) / binWidth;
        if (bin >= 0.0 && bin < static_cast<double>(binCount)) {
            counts[static_cast<std::size_t>(bin)] += 1.0;
            total += 1.0;
        }
    }
    const std::vector<double> density = smooth(counts);
    std::vector<Heap> heaps = heapsOf(density);
    while (joinFlattest(heaps, density) || joinSmallest(heaps, density, counts, total)) {
    }
    std::vector<double> bounds;
    for (std::size_t k = 0; k + 1 < heaps.size(); ++k)
        bounds.push_back(start + (static_cast<double>(heaps[k].end) + 0.5) * binWidth);
    return bounds;
}

} // namespace density
