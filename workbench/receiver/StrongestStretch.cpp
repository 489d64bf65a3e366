// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/receiver/StrongestStretch.h"

#include "workbench/sources/SignalSource.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <vector>

namespace {

constexpr std::int64_t pieceCount = 512;
constexpr std::int64_t longestPiece = 2048; // samples

/// Standard deviation of some samples; a sample that is not finite counts as 0.
double deviationOf(const std::vector<double>& values, const SignalSource& source,
                   const ChannelChoice& channel)
{
    const auto step = static_cast<std::size_t>(source.facts().valueCount());
    std::complex<double> sum = 0.0;
    double power = 0.0, count = 0.0;
    for (std::size_t k = 0; k + step <= values.size(); k += step) {
        const auto sample = source.facts().isComplex ? channel.pairOf(&values[k])
                                                     : std::complex<double>(channel.of(&values[k]));
        const bool isFinite = std::isfinite(sample.real()) && std::isfinite(sample.imag());
        sum += isFinite ? sample : 0.0;
        power += isFinite ? std::norm(sample) : 0.0;
        count += 1.0;
    }
    const double variance = power / count - std::norm(sum / count);
    return std::isfinite(variance) ? std::sqrt(std::max(variance, 0.0)) : 0.0;
}

} // namespace

std::int64_t strongestStretch(SignalSource& source, const ChannelChoice& channel,
                              std::int64_t length)
{
    const std::int64_t count = source.sampleCount().value_or(0);
    if (count <= length)
        return 0;
    const std::int64_t position = source.position();
    const double step = static_cast<double>(count) / pieceCount;
    const auto pieceLength = std::min(longestPiece, static_cast<std::int64_t>(step) + 1);
    std::vector<double> sums(1, 0.0); // of the pieces before
    std::vector<double> values;
    for (std::int64_t piece = 0; piece < pieceCount; ++piece) {
        const auto start = static_cast<std::int64_t>(static_cast<double>(piece) * step);
        values.clear();
        if (source.seek(start))
            source.read(values, static_cast<std::size_t>(pieceLength));
        sums.push_back(sums.back() + (values.empty() ? 0.0 : deviationOf(values, source, channel)));
    }
    source.seek(position);
    const auto width = static_cast<std::size_t>(
        std::clamp(std::round(static_cast<double>(length) / step), 1.0, double{pieceCount}));
    std::size_t best = 0;
    for (std::size_t first = 0; first + width < sums.size(); ++first) {
        if (sums[first + width] - sums[first] > sums[best + width] - sums[best])
            best = first;
    }
    return std::min(static_cast<std::int64_t>(static_cast<double>(best) * step), count - length);
}
