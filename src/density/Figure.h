// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundations/Export.h"

#include <QString>

#include <cstdint>
#include <limits>

namespace density {

/// Reason why a figure is withheld.
enum class Withheld {
    No,          ///< it is not withheld
    TooFew,      ///< too few symbols or crossings to tell
    NoLevels,    ///< no two levels can be told apart
    Overlap,     ///< levels overlap so much that what belongs to which is not known
    NotGaussian, ///< a level's spread is not Gaussian, so its tails cannot be extrapolated
    NoModel,     ///< neither two instants nor a sine, with random jitter, explain the crossings
    ShortTraces, ///< traces are shorter than two symbols
    NoReference  ///< the points of the constellation are not known
};

/// The reason in one sentence, in the user's language; empty when the figure is not withheld.
ORVANE_API QString textOf(Withheld reason);

/// A measured value with its confidence.
struct Figure
{
    double value = std::numeric_limits<double>::quiet_NaN();
    /// Ends of the 95 % confidence interval, which holds as far as the model of the figure does.
    double low = std::numeric_limits<double>::quiet_NaN();
    double high = std::numeric_limits<double>::quiet_NaN();
    std::int64_t count = 0; ///< number of symbols, or crossings, that were measured
    Withheld reason = Withheld::TooFew;

    bool isGiven() const { return reason == Withheld::No; }
    static Figure of(double value, double deviation, std::int64_t count)
    {
        constexpr double reach = 1.959964; // deviations of a normal distribution that hold 95 %
        return {value, value - reach * deviation, value + reach * deviation, count, Withheld::No};
    }
    static Figure within(double value, double low, double high, std::int64_t count)
    {
        return {value, low, high, count, Withheld::No};
    }
    static Figure none(Withheld reason, std::int64_t count = 0)
    {
        Figure figure;
        figure.count = count;
        figure.reason = reason;
        return figure;
    }
};

} // namespace density
