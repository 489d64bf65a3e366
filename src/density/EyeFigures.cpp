// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "density/EyeFigures.h"

#include "density/LevelFinder.h"
#include "density/Normal.h"

#include <algorithm>
#include <cmath>

namespace density {

namespace {

constexpr double leastGaussianFit = 0.98;
constexpr double leastQ = 2.5;     // less, and more than 1 % of a level is counted to the other one
constexpr double greatestQ = 1e4;  // beyond, instants are as good as one another
constexpr double tailCount = 50.0; // traces of a tail that is looked at
constexpr double tailTolerance = 0.05;

using Trace = const float*;

/// Levels at an instant: bounds between them, and which trace is on which.
class Levels
{
public:
    Levels(const std::vector<Trace>& traces, std::size_t sample)
        : m_sample(sample)
    {
        for (Trace trace : traces)
            m_sorted.push_back(static_cast<double>(trace[sample]));
        std::sort(m_sorted.begin(), m_sorted.end());
        m_bounds = boundsOfLevels(m_sorted);
    }
    std::size_t count() const { return m_bounds.size() + 1; }
    std::size_t levelOf(Trace trace) const { return levelOf(static_cast<double>(trace[m_sample])); }
    std::size_t levelOf(double value) const
    {
        return static_cast<std::size_t>(std::upper_bound(m_bounds.begin(), m_bounds.end(), value) -
                                        m_bounds.begin());
    }
    /// In order.
    std::vector<double> valuesOf(std::size_t level) const
    {
        const auto from =
            level == 0 ? m_sorted.begin()
                       : std::lower_bound(m_sorted.begin(), m_sorted.end(), m_bounds[level - 1]);
        const auto to = level == m_bounds.size()
                            ? m_sorted.end()
                            : std::lower_bound(m_sorted.begin(), m_sorted.end(), m_bounds[level]);
        return {from, to};
    }
    /// Q of the worst eye; 0 where there is none.
    double worstQ() const
    {
        double worst = count() > 1 ? greatestQ : 0.0;
        for (std::size_t k = 0; k + 1 < count(); ++k) {
            const Spread low = Spread::of(valuesOf(k));
            const Spread high = Spread::of(valuesOf(k + 1));
            if (!low.mean.isGiven() || !high.mean.isGiven())
                return 0.0;
            const double sigmas = low.sigma.value + high.sigma.value;
            worst = std::min(worst, (high.mean.value - low.mean.value) / std::max(sigmas, 1e-300));
        }
        return worst;
    }

private:
    std::size_t m_sample;
    std::vector<double> m_sorted;
    std::vector<double> m_bounds;
};

/// The middle of those neighbouring samples whose worst Q is, as far as chance lets tell, the best.
std::size_t bestSample(const std::vector<Trace>& traces, const TraceShape& shape)
{
    std::vector<int> samples;
    std::vector<double> worst;
    for (int sample = 0; sample < shape.sampleCount; ++sample) {
        if (std::abs(shape.timeOf(sample)) > 0.5)
            continue;
        samples.push_back(sample);
        worst.push_back(Levels(traces, static_cast<std::size_t>(sample)).worstQ());
    }
    const auto middle = static_cast<std::size_t>((shape.sampleCount - 1) / 2);
    const auto best = std::max_element(worst.begin(), worst.end());
    if (best == worst.end() || !(*best > 0.0))
        return middle;
    // Three deviations of Q, of a level on either side of it; see measureOpening.
    const double chance = 3.0 / std::sqrt(static_cast<double>(traces.size()));
    const auto isBest = [&](double q) { return q >= *best * (1.0 - chance); };
    auto first = best, last = best;
    while (first != worst.begin() && isBest(*(first - 1)))
        --first;
    while (last + 1 != worst.end() && isBest(*(last + 1)))
        ++last;
    const auto place = ((first - worst.begin()) + (last - worst.begin()) + 1) / 2;
    return static_cast<std::size_t>(samples[static_cast<std::size_t>(place)]);
}

/// Whether a level's tail on the side of an eye is as its Gaussian has it.
/// @param tailValue  beyond which tailCount of the level's so many values lie.
bool hasGaussianTail(const Spread& spread, double tailValue, std::size_t count)
{
    const double part = tailCount / static_cast<double>(count);
    // Less than three deviations out, there is no tail to look at.
    if (part > 0.05 || !(spread.sigma.value > 0.0))
        return true;
    const double expected = normal::placeOfTail(part);
    const double found = std::abs(tailValue - spread.mean.value) / spread.sigma.value;
    // Three deviations of the place of an order statistic.
    const double chance = 3.0 * part / std::sqrt(tailCount) / normal::density(expected);
    return std::abs(found - expected) <= tailTolerance * expected + chance;
}

bool isGaussian(const std::vector<double>& values, const Spread& spread, bool isTailAbove)
{
    if (!(spread.sigma.value > 1e-6 * std::abs(spread.mean.value)))
        return true; // no noise at all, or that of single precision
    const auto tail = static_cast<std::size_t>(tailCount);
    if (values.size() <= tail)
        return spread.gaussianFit.value >= leastGaussianFit;
    const double value = isTailAbove ? values[values.size() - 1 - tail] : values[tail];
    return spread.gaussianFit.value >= leastGaussianFit &&
           hasGaussianTail(spread, value, values.size());
}

/// The level figures of an eye.
void measureOpening(EyeFigures::Eye& eye, const EyeFigures::Level& below,
                    const EyeFigures::Level& above, Withheld withheld, double probability)
{
    const Spread& low = below.spread;
    const Spread& high = above.spread;
    const std::int64_t count = low.mean.count + high.mean.count;
    const double distance = high.mean.value - low.mean.value;
    const double sigmas = low.sigma.value + high.sigma.value;
    eye.innerHeight = Figure::of(high.lowest - low.highest, 0.0, count);
    eye.bestLevel =
        sigmas > 0.0
            ? (low.sigma.value * high.mean.value + high.sigma.value * low.mean.value) / sigmas
            : 0.5 * (low.mean.value + high.mean.value);
    const double q = distance / std::max(sigmas, 1e-300);
    if (withheld == Withheld::No && q < leastQ)
        withheld = Withheld::Overlap;
    if (withheld != Withheld::No) {
        eye.q = eye.errorRate = eye.height = Figure::none(withheld, count);
        return;
    }
    const auto deviation = [](const Figure& figure) {
        return (figure.high - figure.value) / 1.959964;
    };
    const double ofDistance = std::hypot(deviation(low.mean), deviation(high.mean));
    const double ofSigmas = std::hypot(deviation(low.sigma), deviation(high.sigma));
    const double reach = normal::placeOfTail(probability);
    eye.height =
        Figure::of(distance - reach * sigmas, std::hypot(ofDistance, reach * ofSigmas), count);
    if (!(sigmas > 1e-9 * distance)) {
        // Without any noise there is no tail to tell of.
        eye.q = eye.errorRate = Figure::none(Withheld::TooFew, count);
        return;
    }
    eye.q = Figure::of(q, q * std::hypot(ofDistance / distance, ofSigmas / sigmas), count);
    eye.errorRate =
        Figure::within(normal::tail(q), normal::tail(eye.q.high), normal::tail(eye.q.low), count);
}

/// Crossings from one instant of decision to the next, and between which levels.
class Transitions
{
public:
    Transitions(const std::vector<Trace>& traces, const TraceShape& shape, std::size_t decision)
        : m_traces(traces)
        , m_shape(shape)
        , m_last(decision)
        , m_first(static_cast<std::size_t>(
              std::max(0.0, std::round(static_cast<double>(decision) - shape.samplesPerSymbol()))))
    {}
    /// Times of crossing a level, symbols from the middle of the traces, of those that change from
    /// the level below an eye to the one above it or back.
    std::vector<double> times(const Levels& levels, std::size_t eye, double level) const
    {
        std::vector<double> result;
        for (Trace trace : m_traces) {
            const std::size_t before = levels.levelOf(static_cast<double>(trace[m_first]));
            const std::size_t after = levels.levelOf(trace);
            if (std::min(before, after) == eye && std::max(before, after) == eye + 1)
                addTime(trace, level, result);
        }
        return result;
    }

private:
    // Noise may cross more than once: halfway from the first to the last.
    void addTime(Trace trace, double level, std::vector<double>& times) const
    {
        double first = 0.0, last = 0.0;
        bool isFound = false;
        for (std::size_t k = m_first; k < m_last; ++k) {
            const double before = static_cast<double>(trace[k]) - level;
            const double after = static_cast<double>(trace[k + 1]) - level;
            if ((before < 0.0) == (after < 0.0))
                continue;
            last = m_shape.timeOf(static_cast<int>(k)) +
                   before / (before - after) / m_shape.samplesPerSymbol();
            first = isFound ? first : last;
            isFound = true;
        }
        if (isFound)
            times.push_back(0.5 * (first + last));
    }

    const std::vector<Trace>& m_traces;
    TraceShape m_shape;
    std::size_t m_last, m_first;
};

std::vector<Trace> wholeTraces(const KeptSignal& kept)
{
    std::vector<Trace> traces;
    for (std::size_t age = kept.count(); age-- > 0;) {
        Trace trace = kept.at(age);
        if (std::all_of(trace, trace + kept.length(), [](float x) { return std::isfinite(x); }))
            traces.push_back(trace);
    }
    return traces;
}

} // namespace

EyeFigures EyeFigures::of(const KeptSignal& kept, const TraceShape& shape, double probability)
{
    EyeFigures figures;
    if (probability > 1e-300 && probability < 0.5)
        figures.probability = probability;
    if (!shape.isUsable() || kept.length() != static_cast<std::size_t>(shape.sampleCount))
        return figures;
    const std::vector<Trace> traces = wholeTraces(kept);
    figures.traceCount = static_cast<std::int64_t>(traces.size());
    if (figures.traceCount < least)
        return figures;
    std::vector<Trace> choosing, measuring;
    for (std::size_t k = 0; k < traces.size(); ++k)
        (k % 4 == 0 ? choosing : measuring).push_back(traces[k]);
    const std::size_t decision = bestSample(choosing, shape);
    figures.instant = shape.timeOf(static_cast<int>(decision));

    const Levels levels(measuring, decision);
    figures.reason = levels.count() < 2 ? Withheld::NoLevels : Withheld::No;
    if (levels.count() < 2 || levels.count() > mostLevels)
        return figures;
    std::vector<std::vector<double>> values;
    for (std::size_t k = 0; k < levels.count(); ++k) {
        values.push_back(levels.valuesOf(k));
        figures.levels.push_back(
            {Spread::of(values.back()),
             static_cast<double>(values.back().size()) / static_cast<double>(measuring.size())});
    }
    const Transitions transitions(traces, shape, decision);
    for (std::size_t k = 0; k + 1 < levels.count(); ++k) {
        const Level& low = figures.levels[k];
        const Level& high = figures.levels[k + 1];
        Eye eye;
        const bool isEnough = low.spread.mean.isGiven() && high.spread.mean.isGiven();
        const bool isGauss = isEnough && isGaussian(values[k], low.spread, true) &&
                             isGaussian(values[k + 1], high.spread, false);
        measureOpening(eye, low, high,
                       !isEnough  ? Withheld::TooFew
                       : !isGauss ? Withheld::NotGaussian
                                  : Withheld::No,
                       figures.probability);
        if (shape.symbolCount < 2.0) {
            eye.totalJitter = eye.width = Figure::none(Withheld::ShortTraces);
        } else {
            const double middle = 0.5 * (low.spread.mean.value + high.spread.mean.value);
            const std::vector<double> times = transitions.times(levels, k, middle);
            eye.jitter = JitterFit::of(times);
            eye.transitionShare =
                static_cast<double>(times.size()) / static_cast<double>(traces.size());
            eye.totalJitter = eye.jitter.total(figures.probability);
            eye.width = eye.totalJitter;
            eye.width.value = 1.0 - eye.totalJitter.value;
            eye.width.low = 1.0 - eye.totalJitter.high;
            eye.width.high = 1.0 - eye.totalJitter.low;
        }
        figures.eyes.push_back(eye);
    }
    return figures;
}

double EyeFigures::errorRateAt(std::size_t eye, double time) const
{
    if (eye >= eyes.size())
        return std::numeric_limits<double>::quiet_NaN();
    const Eye& one = eyes[eye];
    // The crossing before that comes too late, and the one after that comes too early.
    return one.transitionShare * (one.jitter.later(time) + one.jitter.earlier(time - 1.0));
}

} // namespace density
