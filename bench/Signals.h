// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "peers/PeerPlot.h"

#include <cstddef>
#include <vector>

/// Signals that benchmarks draw; always the same. And the same for other libraries, with our
/// colours.
namespace drawn {

constexpr int recordCount = 100; ///< Data sets that the time and the IQ diagram keep.

/// Samples of a data set of the time diagram: 2 levels with noise.
std::vector<double> square(std::size_t count);
/// @param yMax  of both signs, of the range of Y.
PeerSignal squareForPeers(std::size_t count, double yMax);

/// Points of a data set of the IQ diagram, I, Q, I, Q...: 16QAM with noise.
std::vector<float> constellation(std::size_t pointCount);
PeerSignal constellationForPeers(std::size_t pointCount);

enum Eye { twoLevels, noise };
constexpr int eyeSamples = 100; ///< Of a trace.
constexpr int eyeBufferSize = 10000;
/// Traces that fill the buffer.
std::vector<std::vector<double>> eye(Eye kind);
PeerSignal eyeForPeers(Eye kind);

} // namespace drawn
