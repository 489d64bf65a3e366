// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <complex>
#include <optional>
#include <vector>

/// Figures of the points of a constellation at the instants of decision, relative to the nearest
/// ideal points of the modulation. Gain and turn of all points are removed first, by least squares;
/// offset and imbalance are not, and count in the errors.
struct ConstellationReadings
{
    /// @param q      as many as i. Points that are not finite do not count.
    /// @param ideal  points of the modulation, at least two different ones, at any scale.
    /// @param fitted  part of the noise power that the points lack, because phase and timing were
    ///                fitted to them, 0 to below 1; r.m.s. EVM and MER are corrected for it.
    /// @return none when there are fewer than four points for each ideal one, or all are 0.
    static std::optional<ConstellationReadings> of(const std::vector<double>& i,
                                                   const std::vector<double>& q,
                                                   const std::vector<std::complex<double>>& ideal,
                                                   double fitted = 0.0);

    /// Joins the figures of other points to these: means and extremes. Each part keeps its own
    /// gain.
    void join(const ConstellationReadings& other);

    double count = 0.0; ///< points
    /// Error vector magnitude relative to the r.m.s. of the ideal points, %: r.m.s. and largest
    /// (3GPP TS 36.104, annex E).
    double evmRms = 0.0;
    double evmPeak = 0.0;
    /// Modulation error ratio, dB: 20 log10(100 / evmRms) (ETSI TR 101 290).
    double mer = 0.0;
    /// Power of the offset of all points relative to that of the points, dB (origin offset, ibid.).
    double originOffset = 0.0;
    std::complex<double> offset; ///< offset of all points relative to the r.m.s. of the points
    /// Gain of I relative to that of Q, dB. None for a modulation that has only one of them.
    std::optional<double> imbalance;
    /// Deviation of the axes of I and Q from a right angle, degrees.
    std::optional<double> quadratureError;
};
