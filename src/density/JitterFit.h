// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "density/Figure.h"
#include "foundations/Export.h"

#include <vector>

namespace density {

/// Jitter of crossings, split into random and deterministic parts: a Gaussian around an instant
/// that jumps between two places (the dual-Dirac model, as with unequal duty cycles) or moves along
/// a sine, whichever is likelier. All values are in symbols.
///
/// The measured variance is divided between the parts by maximum likelihood, with profile
/// likelihood intervals (Wilks, Ann. Math. Statist. 9 (1938)). Where a deterministic part makes the
/// crossings not at least e^4 times as likely, there is none. Terms, and total jitter and bathtub
/// of the dual-Dirac model: Methodologies for Jitter and Signal Quality Specification (INCITS
/// TR-35:2004).
class ORVANE_API JitterFit
{
public:
    static constexpr std::int64_t least = 200; ///< crossings; fewer tell nothing
    enum class Deterministic { None, TwoInstants, Sine };

    /// @param times  of crossings against their clock, symbols; all finite.
    static JitterFit of(const std::vector<double>& times);

    Figure rms;
    Figure peakToPeak;    ///< of these crossings; it grows with their number
    Figure random;        ///< deviation of the Gaussian
    Figure deterministic; ///< from one end to the other
    Deterministic kind = Deterministic::None;
    double mean = 0.0;
    /// Largest distance between the distributions measured and fitted, 0 to 1 (Kolmogorov). Beyond
    /// 0.01 + 1.63 / sqrt(count), all but rms and peak to peak are withheld.
    double distance = 1.0;

    /// Distance of the times before and after which this part of the crossings lies.
    /// @param probability  between 0 and 0.5.
    Figure total(double probability) const;
    /// Part of the crossings that are later, or earlier, than a time in the model; NaN when it is
    /// withheld.
    double later(double time) const;
    double earlier(double time) const;

private:
    struct Model
    {
        double tail(double offset) const;

        Deterministic kind = Deterministic::None;
        double sigma = 0.0; // of the Gaussian
        double reach = 0.0; // of the deterministic part, to either side
    };
    class Likelihood;
    static Model modelOf(Deterministic kind, double variance, double share);
    static double placeOf(const Model& model, double probability);
    void chooseModel(const Likelihood& likelihood);
    double distanceTo(std::vector<double> times) const;
    Figure within(double value, double atLow, double atHigh, std::int64_t count) const;

    Model m_model;
    double m_lowShare = 0.0, m_highShare = 0.0; // of the variance, deterministic
    double m_variance = 0.0, m_varianceDeviation = 0.0;
};

} // namespace density
