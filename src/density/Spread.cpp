// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "density/Spread.h"

#include "density/Normal.h"

#include <algorithm>
#include <cmath>

namespace density {

namespace {

/// Squared correlation of sorted values with those that a Gaussian leads one to expect.
double gaussianFitOf(const std::vector<double>& sorted, double mean, double sigma)
{
    if (!(sigma > 0.0))
        return 0.0;
    // More places tell no more.
    constexpr std::size_t most = 2000;
    const std::size_t step = sorted.size() / most + 1;
    double sum = 0.0, squares = 0.0, expectedSquares = 0.0;
    double first = 0.0, expectedFirst = 0.0, count = 0.0;
    for (std::size_t k = step / 2; k < sorted.size(); k += step) {
        const double share =
            (static_cast<double>(k) + 0.625) / (static_cast<double>(sorted.size()) + 0.25);
        const double expected = -normal::placeOfTail(share);
        const double value = (sorted[k] - mean) / sigma;
        first += value;
        expectedFirst += expected;
        sum += value * expected;
        squares += value * value;
        expectedSquares += expected * expected;
        count += 1.0;
    }
    const double shared = sum - first * expectedFirst / count;
    const double own = squares - first * first / count;
    return shared * shared / (own * (expectedSquares - expectedFirst * expectedFirst / count));
}

} // namespace

Spread Spread::of(std::vector<double> values)
{
    values.erase(std::remove_if(values.begin(), values.end(),
                                [](double value) { return !std::isfinite(value); }),
                 values.end());
    Spread spread;
    const auto count = static_cast<std::int64_t>(values.size());
    if (count < least) {
        spread.mean = spread.sigma = spread.peakToPeak = spread.gaussianFit =
            Figure::none(Withheld::TooFew, count);
        return spread;
    }
    std::sort(values.begin(), values.end());
    const auto n = static_cast<double>(count);
    double mean = 0.0;
    for (const double value : values)
        mean += value / n;
    double second = 0.0, fourth = 0.0;
    for (const double value : values) {
        const double square = (value - mean) * (value - mean);
        second += square / n;
        fourth += square * square / n;
    }
    const double sigma = std::sqrt(second * n / (n - 1.0));
    const double kurtosis = second > 0.0 ? fourth / (second * second) : 1.0;
    spread.mean = Figure::of(mean, sigma / std::sqrt(n), count);
    spread.sigma = Figure::of(sigma, sigma * std::sqrt((kurtosis - 1.0) / (4.0 * n)), count);
    spread.lowest = values.front();
    spread.highest = values.back();
    spread.peakToPeak = Figure::of(spread.highest - spread.lowest, 0.0, count);
    spread.gaussianFit = Figure::of(gaussianFitOf(values, mean, sigma), 0.0, count);
    return spread;
}

namespace {

void addLevels(const float* trace, const TraceShape& shape, const Band& band,
               std::vector<double>& values)
{
    const auto place = [&](double time) {
        return (time - shape.timeOf(0)) * shape.samplesPerSymbol();
    };
    const double last = shape.sampleCount - 1;
    const double from = std::clamp(std::ceil(place(band.start)), 0.0, last + 1.0);
    const double to = std::clamp(std::floor(place(band.stop)), -1.0, last);
    for (int k = static_cast<int>(from); k <= static_cast<int>(to); ++k)
        values.push_back(static_cast<double>(trace[k]));
    const double middle = place(0.5 * (band.start + band.stop));
    if (from <= to || !(middle >= 0.0 && middle <= last))
        return;
    const int sample = std::min(static_cast<int>(middle), shape.sampleCount - 2);
    const auto before = static_cast<double>(trace[sample]);
    values.push_back(before +
                     (middle - sample) * (static_cast<double>(trace[sample + 1]) - before));
}

void addCrossings(const float* trace, const TraceShape& shape, double level,
                  std::vector<double>& values)
{
    for (int k = 0; k + 1 < shape.sampleCount; ++k) {
        const double before = static_cast<double>(trace[k]) - level;
        const double after = static_cast<double>(trace[k + 1]) - level;
        if ((before < 0.0) != (after < 0.0) && std::isfinite(before) && std::isfinite(after))
            values.push_back(shape.timeOf(k) +
                             before / (before - after) / shape.samplesPerSymbol());
    }
}

} // namespace

std::vector<double> valuesAlong(const KeptSignal& kept, const TraceShape& shape, const Band& band)
{
    std::vector<double> values;
    if (kept.length() != static_cast<std::size_t>(shape.sampleCount) || !(band.start <= band.stop))
        return values;
    for (std::size_t age = kept.count(); age-- > 0;) {
        if (band.direction == Band::Direction::Vertical)
            addLevels(kept.at(age), shape, band, values);
        else
            addCrossings(kept.at(age), shape, 0.5 * (band.start + band.stop), values);
    }
    return values;
}

std::vector<double> countsAlong(const Snapshot& snapshot, const Band& band)
{
    const bool isVertical = band.direction == Band::Direction::Vertical;
    const GridSize& size = snapshot.size;
    std::vector<double> sums(static_cast<std::size_t>(isVertical ? size.rows : size.columns));
    const Window& window = snapshot.window;
    const auto isInside = [&](int cell) {
        const double place = isVertical
                                 ? window.left + window.width() * ((cell + 0.5) / size.columns)
                                 : window.bottom + window.height() * ((cell + 0.5) / size.rows);
        return place >= band.start && place <= band.stop;
    };
    int first = 0, end = isVertical ? size.columns : size.rows;
    while (first < end && !isInside(first))
        ++first;
    while (first < end && !isInside(end - 1))
        --end;
    for (int row = isVertical ? 0 : first; row < (isVertical ? size.rows : end); ++row) {
        for (int column = isVertical ? first : 0; column < (isVertical ? end : size.columns);
             ++column)
            sums[static_cast<std::size_t>(isVertical ? row : column)] += snapshot.at(column, row);
    }
    return sums;
}

} // namespace density
