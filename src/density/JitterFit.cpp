// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "density/JitterFit.h"

#include "density/Normal.h"
#include "density/Spread.h"

#include <algorithm>
#include <cmath>
#include <functional>

namespace density {

namespace {

// Places on a sine that stand for all: the mean over them is a Gauss-Chebyshev integral (Abramowitz
// and Stegun, 25.4.38), good while the random part is above 1/100 of the sine's reach.
constexpr int sinePlaces = 200;
constexpr double highestShare = 0.9999; // of the variance, deterministic
constexpr double clearGain = 4.0;       // of the logarithm of likelihood
constexpr double intervalGain = 1.9207; // half of the 95 % point of chi squared of 1 degree
constexpr std::size_t binCount = 400;

const std::vector<double>& sineOffsets()
{
    static const std::vector<double> offsets = [] {
        std::vector<double> result(sinePlaces);
        for (std::size_t k = 0; k < result.size(); ++k)
            result[k] = std::cos(M_PI * (static_cast<double>(k) + 0.5) / sinePlaces);
        return result;
    }();
    return offsets;
}

/// Mean of a function over the places of a deterministic part.
template<class Function>
double meanOver(JitterFit::Deterministic kind, double reach, const Function& function)
{
    switch (kind) {
    case JitterFit::Deterministic::None:
        return function(0.0);
    case JitterFit::Deterministic::TwoInstants:
        return 0.5 * (function(reach) + function(-reach));
    case JitterFit::Deterministic::Sine:
        break;
    }
    double sum = 0.0;
    for (const double offset : sineOffsets())
        sum += function(reach * offset);
    return sum / sinePlaces;
}

/// The place of the largest value, between two others.
double maximise(const std::function<double(double)>& function, double low, double high)
{
    constexpr int coarseSteps = 24;
    double best = low, bestValue = function(low);
    const double step = (high - low) / coarseSteps;
    for (int k = 1; k <= coarseSteps; ++k) {
        const double value = function(low + k * step);
        if (value > bestValue) {
            bestValue = value;
            best = low + k * step;
        }
    }
    // Golden section.
    const double ratio = 0.5 * (std::sqrt(5.0) - 1.0);
    double from = std::max(low, best - step), to = std::min(high, best + step);
    for (int k = 0; k < 24; ++k) {
        const double left = to - ratio * (to - from);
        const double right = from + ratio * (to - from);
        if (function(left) > function(right))
            to = right;
        else
            from = left;
    }
    const double middle = 0.5 * (from + to);
    return function(middle) > bestValue ? middle : best;
}

/// Where a falling function passes 0, between two places of which it may be beyond at either.
double zeroOf(const std::function<double(double)>& function, double low, double high)
{
    for (int k = 0; k < 60; ++k) {
        const double middle = 0.5 * (low + high);
        (function(middle) > 0.0 ? low : high) = middle;
    }
    return 0.5 * (low + high);
}

} // namespace

double JitterFit::Model::tail(double offset) const
{
    if (!(sigma > 0.0))
        return offset < 0.0 ? 1.0 : 0.0;
    return meanOver(kind, reach,
                    [&](double place) { return normal::tail((offset - place) / sigma); });
}

/// Of times in bins, against their mean.
class JitterFit::Likelihood
{
public:
    Likelihood(const std::vector<double>& times, double mean, double lowest, double highest)
        : m_start(lowest - mean)
        , m_width((highest - lowest) / binCount)
        , m_counts(binCount)
    {
        for (const double time : times) {
            const double bin = (time - lowest) / m_width;
            m_counts[std::min(static_cast<std::size_t>(bin), binCount - 1)] += 1.0;
        }
    }
    double of(const Model& model) const
    {
        double sum = 0.0;
        for (std::size_t k = 0; k < binCount; ++k) {
            if (m_counts[k] == 0.0)
                continue;
            const double offset = m_start + (static_cast<double>(k) + 0.5) * m_width;
            const double density = meanOver(model.kind, model.reach, [&](double place) {
                return normal::density((offset - place) / model.sigma);
            });
            sum += m_counts[k] * std::log(std::max(density / model.sigma, 1e-300));
        }
        return sum;
    }

private:
    double m_start, m_width;
    std::vector<double> m_counts;
};

JitterFit::Model JitterFit::modelOf(Deterministic kind, double variance, double share)
{
    Model model;
    model.kind = kind;
    model.sigma = std::sqrt(variance * (1.0 - share));
    // The variance of two instants is the square of their reach, that of a sine half of it.
    model.reach = std::sqrt(variance * share * (kind == Deterministic::Sine ? 2.0 : 1.0));
    return model;
}

JitterFit JitterFit::of(const std::vector<double>& times)
{
    JitterFit fit;
    const auto count = static_cast<std::int64_t>(times.size());
    fit.rms = fit.peakToPeak = fit.random = fit.deterministic =
        Figure::none(Withheld::TooFew, count);
    if (count < least)
        return fit;
    const Spread spread = Spread::of(times);
    fit.rms = spread.sigma;
    fit.peakToPeak = spread.peakToPeak;
    fit.mean = spread.mean.value;
    fit.m_variance = spread.sigma.value * spread.sigma.value;
    fit.m_varianceDeviation =
        (spread.sigma.high - spread.sigma.low) / 3.92 * 2.0 * spread.sigma.value;
    // A clock to the last digit of single precision.
    if (spread.sigma.value < 1e-6) {
        fit.random = fit.deterministic = Figure::of(0.0, 1e-6, count);
        fit.distance = 0.0;
        return fit;
    }
    fit.chooseModel(Likelihood(times, fit.mean, spread.lowest, spread.highest));
    fit.distance = fit.distanceTo(times);
    if (fit.distance > 0.01 + 1.63 / std::sqrt(static_cast<double>(count))) {
        fit.random = fit.deterministic = Figure::none(Withheld::NoModel, count);
        return fit;
    }
    const auto figure = [&](double value, double atLow, double atHigh) {
        return fit.within(value, atLow, atHigh, count);
    };
    const Model low = modelOf(fit.kind, fit.m_variance, fit.m_lowShare);
    const Model high = modelOf(fit.kind, fit.m_variance, fit.m_highShare);
    fit.random = figure(fit.m_model.sigma, low.sigma, high.sigma);
    fit.deterministic = figure(2.0 * fit.m_model.reach, 2.0 * low.reach, 2.0 * high.reach);
    return fit;
}

// The likeliest kind and share of the deterministic part, and the ends of the share's interval.
void JitterFit::chooseModel(const Likelihood& likelihood)
{
    double best = likelihood.of(modelOf(Deterministic::None, m_variance, 0.0)) + clearGain;
    double share = 0.0;
    for (const Deterministic candidate : {Deterministic::TwoInstants, Deterministic::Sine}) {
        const auto gain = [&](double part) {
            return likelihood.of(modelOf(candidate, m_variance, part));
        };
        const double found = maximise(gain, 0.0, highestShare);
        if (gain(found) > best) {
            best = gain(found);
            share = found;
            kind = candidate;
        }
    }
    m_model = modelOf(kind, m_variance, share);
    m_lowShare = m_highShare = share;
    if (kind == Deterministic::None)
        return;
    const auto isWithin = [&](double part) {
        return likelihood.of(modelOf(kind, m_variance, part)) - best + intervalGain;
    };
    m_highShare = zeroOf(isWithin, share, highestShare);
    m_lowShare = share - zeroOf([&](double below) { return isWithin(share - below); }, 0.0, share);
}

double JitterFit::distanceTo(std::vector<double> times) const
{
    std::sort(times.begin(), times.end());
    double largest = 0.0;
    for (std::size_t k = 0; k < times.size(); k += times.size() / 500 + 1) {
        const double before = (static_cast<double>(k) + 0.5) / static_cast<double>(times.size());
        largest = std::max(largest, std::abs(before - 1.0 + m_model.tail(times[k] - mean)));
    }
    return largest;
}

// A figure that is as the root of the variance, with its values at the ends of the share's
// interval.
Figure JitterFit::within(double value, double atLow, double atHigh, std::int64_t count) const
{
    // Half the interval of the variance, relative.
    const double relative = m_variance > 0.0 ? 0.98 * m_varianceDeviation / m_variance : 0.0;
    return Figure::within(value, std::min(atLow, atHigh) * (1.0 - relative),
                          std::max(atLow, atHigh) * (1.0 + relative), count);
}

double JitterFit::placeOf(const Model& model, double probability)
{
    const double farthest = model.reach + model.sigma * normal::placeOfTail(probability);
    return zeroOf([&](double offset) { return std::log(model.tail(offset) / probability); }, 0.0,
                  farthest);
}

Figure JitterFit::total(double probability) const
{
    if (!random.isGiven() || !(probability > 1e-300 && probability < 0.5))
        return Figure::none(random.isGiven() ? Withheld::TooFew : random.reason, random.count);
    const auto at = [&](double share) {
        return 2.0 * placeOf(modelOf(kind, m_variance, share), probability);
    };
    return within(2.0 * placeOf(m_model, probability), at(m_lowShare), at(m_highShare),
                  random.count);
}

double JitterFit::later(double time) const
{
    return random.isGiven() ? m_model.tail(time - mean) : std::numeric_limits<double>::quiet_NaN();
}

// The model is symmetric, and a small part is not 1 less a large one.
double JitterFit::earlier(double time) const { return later(2.0 * mean - time); }

} // namespace density
