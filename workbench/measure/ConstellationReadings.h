// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <complex>
#include <optional>
#include <vector>

/// What the points of a constellation measure at the instants of decision, against the ideal points
/// of the modulation that are nearest to them. Gain and turn of the whole are taken out first, by
/// least squares; offset and imbalance are not, and count in the errors.
struct ConstellationReadings
{
    /// @param q      as many as i. Points that are not finite do not count.
    /// @param ideal  points of the modulation, at least two different ones; their scale does not
    ///               matter.
    /// @param fitted  part of the power of noise that is missing in the points, as they were fitted
    ///                to it, 0 to below 1: made up for in r.m.s. EVM and MER.
    /// @return none where the points are fewer than four for each ideal one, or all are 0.
    static std::optional<ConstellationReadings> of(const std::vector<double>& i,
                                                   const std::vector<double>& q,
                                                   const std::vector<std::complex<double>>& ideal,
                                                   double fitted = 0.0);

    /// Makes these those of other points, too: means and extremes. Each part keeps its own gain.
    void join(const ConstellationReadings& other);

    double count = 0.0; ///< points
    /// Error vector magnitude against the r.m.s. of the ideal points, %: r.m.s. and largest (3GPP
    /// TS 36.104, annex E).
    double evmRms = 0.0;
    double evmPeak = 0.0;
    /// Modulation error ratio, dB: 20 log10(100 / evmRms) (ETSI TR 101 290).
    double mer = 0.0;
    /// Power of what is added to all points against that of the points, dB (origin offset, ibid.).
    double originOffset = 0.0;
    std::complex<double> offset; ///< the same against the r.m.s. of the points
    /// Gain of I against that of Q, dB. None of a modulation that has but one of them.
    std::optional<double> imbalance;
    /// By how much the axes of I and Q miss a right angle, degrees.
    std::optional<double> quadratureError;
};
