// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/feed/Segments.h"

#include "workbench/receiver/Vectors.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

/// The smallest magnitude at each place of whole vectors.
ORVANE_WIDEST void magnitudesOf(const double* samples, std::size_t count, Doubles& smallest)
{
    for (std::size_t k = 0; k < count; k += doublesWidth) {
        Doubles level;
        load(samples + k, level);
        const Doubles magnitude = level < 0.0 ? -level : level;
        smallest = magnitude < smallest ? magnitude : smallest;
    }
}

double smallestMagnitude(const std::vector<double>& samples)
{
    const std::size_t whole = samples.size() / doublesWidth * doublesWidth;
    double result = std::numeric_limits<double>::infinity();
    Doubles smallest;
    for (std::size_t k = 0; k < doublesWidth; ++k)
        smallest[k] = result;
    magnitudesOf(samples.data(), whole, smallest);
    for (std::size_t k = 0; k < doublesWidth; ++k)
        result = std::min(result, smallest[k]);
    for (std::size_t k = whole; k < samples.size(); ++k)
        result = std::abs(samples[k]) < result ? std::abs(samples[k]) : result;
    return result;
}

/// Where the signal is closest to zero; in silence, the middle. A NaN only where all are.
std::size_t quietest(const std::vector<double>& samples)
{
    const std::size_t middle = samples.size() / 2;
    const double smallest = smallestMagnitude(samples);
    if (std::abs(samples[middle]) == smallest)
        return middle;
    const auto best = std::find_if(samples.begin(), samples.end(), [smallest](double sample) {
        return std::abs(sample) == smallest;
    });
    return best == samples.end() ? middle : static_cast<std::size_t>(best - samples.begin());
}

} // namespace

void Segments::setLength(std::size_t length) { m_length = std::max<std::size_t>(length, 1); }

std::size_t Segments::neededCount(std::int64_t position) const
{
    if (!m_frameLength)
        return m_length + tolerance() + 1;
    const double frame = std::ceil(static_cast<double>(position + 1) / *m_frameLength);
    return static_cast<std::size_t>(static_cast<std::int64_t>(std::ceil(frame * *m_frameLength)) -
                                    position);
}

std::size_t Segments::windowStart() const { return m_length - tolerance(); }

std::size_t Segments::next(std::int64_t position, std::size_t known, bool isAll,
                           const std::vector<double>& window) const
{
    if (known < neededCount(position))
        return isAll ? known : 0;
    return m_frameLength ? known : windowStart() + quietest(window);
}
