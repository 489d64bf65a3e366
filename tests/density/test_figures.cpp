// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "density/Counter.h"
#include "density/ErrorVectors.h"
#include "density/EyeFigures.h"
#include "density/Normal.h"
#include "density/Truth.h"

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <string>

using namespace density;

namespace {

constexpr double tolerance = 0.02;

void expectTrue(const Figure& figure, double truth, const char* what)
{
    ASSERT_TRUE(figure.isGiven()) << what << ": " << textOf(figure.reason).toStdString();
    EXPECT_NEAR(figure.value, truth, tolerance * std::abs(truth)) << what;
    EXPECT_LE(figure.low, figure.value) << what;
    EXPECT_GE(figure.high, figure.value) << what;
}

/// The place beyond which so much of a jitter lies that is both Gaussian and spread over a cycle.
double placeOf(double probability, double sigma, const std::function<double(double)>& wave)
{
    double low = 0.0, high = 10.0;
    for (int k = 0; k < 80; ++k) {
        const double middle = 0.5 * (low + high);
        double tail = 0.0;
        for (int step = 0; step < 3000; ++step)
            tail +=
                0.5 * std::erfc((middle - wave((step + 0.5) / 3000.0)) / sigma / M_SQRT2) / 3000.0;
        (tail > probability ? low : high) = middle;
    }
    return low;
}

TEST(EyeFigures, TellLevelsHeightAndQOfEvenAndUnevenLevels)
{
    for (const auto& levels :
         std::vector<std::vector<double>>{{-1.0, 1.0}, {-1.0, -0.4, 0.1, 1.2}, {0.0, 1e-3, 3e-3}}) {
        Truth truth;
        truth.levels = levels;
        const double range = levels.back() - levels.front();
        truth.noise = 0.02 * range;
        truth.random = 0.01;
        const EyeFigures figures = EyeFigures::of(truth.make(), TraceShape(), 1e-9);
        // Between edges of 0.4 symbols all instants are equally good, but for chance.
        EXPECT_LE(std::abs(figures.instant), 0.07);
        EXPECT_EQ(figures.traceCount, 100'000);
        ASSERT_EQ(figures.levels.size(), levels.size());
        for (std::size_t k = 0; k < levels.size(); ++k) {
            const Spread& spread = figures.levels[k].spread;
            EXPECT_NEAR(spread.mean.value, levels[k], 0.002 * range);
            EXPECT_LE(spread.mean.low, levels[k]);
            expectTrue(spread.sigma, truth.noise, "sigma");
            EXPECT_GT(spread.gaussianFit.value, 0.999);
            EXPECT_NEAR(figures.levels[k].share, 1.0 / static_cast<double>(levels.size()), 0.01);
        }
        for (std::size_t k = 0; k + 1 < levels.size(); ++k) {
            const double distance = levels[k + 1] - levels[k];
            const EyeFigures::Eye& eye = figures.eyes[k];
            EXPECT_NEAR(eye.bestLevel, 0.5 * (levels[k] + levels[k + 1]), tolerance * distance);
            expectTrue(eye.q, 0.5 * distance / truth.noise, "Q");
            // The 2 % are of the distance: what is left may be nothing.
            EXPECT_NEAR(eye.height.value, distance - 2.0 * 5.99781 * truth.noise,
                        tolerance * distance);
            EXPECT_GT(eye.innerHeight.value, eye.height.value);
        }
    }
}

TEST(EyeFigures, SplitJitterAndExtrapolateIt)
{
    const auto sine = [](double amplitude) {
        return [amplitude](double part) { return amplitude * std::sin(2.0 * M_PI * part); };
    };
    const auto halves = [](double reach) {
        return [reach](double part) { return part < 0.5 ? reach : -reach; };
    };
    // Noise moves a crossing by its own over the slope, 5 levels a symbol, on the straight line
    // between two samples: by sqrt(2/3) of that on average over places between them.
    const double ofNoise = 0.02 / 5.0 * std::sqrt(2.0 / 3.0);
    using Kind = JitterFit::Deterministic;
    struct
    {
        double random, sine, dutyCycle, noise;
        Kind kind;
        std::function<double(double)> wave;
        double peakToPeak;
    } const rows[] = {{0.02, 0.0, 0.0, 0.0, Kind::None, sine(0.0), 0.0},
                      {0.02, 0.06, 0.0, 0.02, Kind::Sine, sine(0.06), 0.12},
                      {0.01, 0.08, 0.0, 0.0, Kind::Sine, sine(0.08), 0.16},
                      {0.015, 0.0, 0.08, 0.0, Kind::TwoInstants, halves(0.04), 0.08}};
    for (const auto& row : rows) {
        Truth truth;
        truth.random = row.random;
        truth.sine = row.sine;
        truth.dutyCycle = row.dutyCycle;
        truth.noise = row.noise;
        const EyeFigures figures = EyeFigures::of(truth.make(), TraceShape(), 1e-12);
        ASSERT_EQ(figures.eyes.size(), 1U);
        const EyeFigures::Eye& eye = figures.eyes[0];
        const double sigma = std::hypot(row.random, row.noise > 0.0 ? ofNoise : 0.0);
        SCOPED_TRACE(testing::Message() << row.random << " " << row.sine << " " << row.dutyCycle);
        ASSERT_EQ(eye.jitter.kind, row.kind) << eye.jitter.distance;
        EXPECT_NEAR(eye.jitter.mean, -0.5, 0.001);
        expectTrue(eye.jitter.random, sigma, "random");
        if (row.peakToPeak > 0.0)
            expectTrue(eye.jitter.deterministic, row.peakToPeak, "deterministic");
        else
            EXPECT_EQ(eye.jitter.deterministic.value, 0.0);
        const double place = placeOf(1e-12, sigma, row.wave);
        expectTrue(eye.totalJitter, 2.0 * place, "total");
        expectTrue(eye.width, 1.0 - 2.0 * place, "width");
        // The bathtub: a quarter before the middle only the crossing before matters, half of the
        // symbols have one, and the logarithm of so small a part is what can be told.
        const double early = placeOf(1e-9, sigma, row.wave) - 0.5;
        EXPECT_NEAR(std::log10(figures.errorRateAt(0, early)), std::log10(0.5e-9),
                    9.0 * 2.0 * tolerance);
        EXPECT_NEAR(std::log10(figures.errorRateAt(0, -early)), std::log10(0.5e-9),
                    9.0 * 2.0 * tolerance);
    }
}

/// How often intervals hold the truth.
class Held
{
public:
    void add(const char* what, const Figure& figure, double truth)
    {
        ASSERT_TRUE(figure.isGiven()) << what << ": " << textOf(figure.reason).toStdString();
        Count& count = m_counts[what];
        ++count.trials;
        count.held += figure.low <= truth && truth <= figure.high ? 1 : 0;
    }
    /// 95 of 100 are expected, with a deviation of sqrt(trials * 0.95 * 0.05), of which three and a
    /// half: of ten figures one fails by chance in 400 runs, and these are seeded.
    void expect() const
    {
        for (const auto& [what, count] : m_counts)
            EXPECT_GE(count.held, 0.95 * count.trials - 3.5 * std::sqrt(0.0475 * count.trials))
                << what << " of " << count.trials;
    }

private:
    struct Count
    {
        int held = 0, trials = 0;
    };
    std::map<std::string, Count> m_counts;
};

TEST(EyeFigures, ExtrapolateTheErrorRateWithAnHonestConfidence)
{
    // Short of two symbols, for their levels alone.
    const TraceShape shape{3, 1.9};
    const double q = normal::placeOfTail(1e-6);
    Held held;
    for (unsigned trial = 0; trial < 100; ++trial) {
        std::mt19937 generator(trial);
        std::normal_distribution<float> gauss;
        KeptSignal kept(3, 100'000);
        for (int k = 0; k < 100'000; ++k) {
            const bool isHigh = generator() % 2;
            // Q = 2 / (0.3 + 0.7) at a scale of Q / 2.
            const auto level =
                static_cast<float>(isHigh ? q : 0.0) + (isHigh ? 0.7F : 0.3F) * gauss(generator);
            const float trace[] = {0.0F, level, 0.0F};
            kept.add(trace, k);
        }
        const EyeFigures figures = EyeFigures::of(kept, shape, 1e-4);
        ASSERT_EQ(figures.eyes.size(), 1U);
        const EyeFigures::Eye& eye = figures.eyes[0];
        held.add("error rate", eye.errorRate, 1e-6);
        EXPECT_GT(eye.errorRate.value, 0.5e-6);
        EXPECT_LT(eye.errorRate.value, 2e-6);
        held.add("Q", eye.q, q);
        held.add("height", eye.height, q - normal::placeOfTail(1e-4));
        held.add("mean", figures.levels[1].spread.mean, q);
        held.add("sigma", figures.levels[1].spread.sigma, static_cast<double>(0.7F));
        EXPECT_EQ(eye.width.reason, Withheld::ShortTraces);
    }
    held.expect();
}

TEST(JitterFit, HasAnHonestConfidence)
{
    Held held;
    const auto halves = [](double part) { return part < 0.5 ? 0.03 : -0.03; };
    const double total = 2.0 * placeOf(1e-9, 0.01, halves);
    for (unsigned trial = 0; trial < 40; ++trial) {
        std::mt19937 generator(trial);
        std::normal_distribution<double> gauss(0.0, 0.01);
        std::vector<double> times;
        times.reserve(3000);
        for (int k = 0; k < 3000; ++k)
            times.push_back((generator() % 2 ? 0.03 : -0.03) + gauss(generator));
        const JitterFit fit = JitterFit::of(times);
        ASSERT_EQ(fit.kind, JitterFit::Deterministic::TwoInstants);
        held.add("rms", fit.rms, std::hypot(0.03, 0.01));
        held.add("random", fit.random, 0.01);
        held.add("deterministic", fit.deterministic, 0.06);
        held.add("total", fit.total(1e-9), total);
    }
    held.expect();
}

TEST(ErrorVectors, HaveAnHonestConfidence)
{
    Held held;
    for (unsigned trial = 0; trial < 200; ++trial) {
        std::mt19937 generator(trial);
        std::normal_distribution<float> gauss(0.0F, 0.1F);
        ErrorVectors errors({{1.0, 1.0}, {1.0, -1.0}, {-1.0, 1.0}, {-1.0, -1.0}});
        for (int k = 0; k < 500; ++k)
            errors.add((generator() % 2 ? 1.0F : -1.0F) + gauss(generator),
                       (generator() % 2 ? 1.0F : -1.0F) + gauss(generator));
        const ErrorVectors::Figures figures = errors.figures();
        held.add("EVM", figures.evm, 10.0);
        held.add("MER", figures.mer, 20.0);
        held.add("EVM of a cluster", figures.clusters[0].evm, 10.0);

        // Errors that wander, as those of a phase do.
        errors.clear();
        float wander = gauss(generator);
        for (int k = 0; k < 20'000; ++k) {
            errors.add(1.0F + gauss(generator), 1.0F + wander);
            wander = 0.98F * wander + std::sqrt(1.0F - 0.98F * 0.98F) * gauss(generator);
        }
        held.add("MER of a wandering phase", errors.figures().mer, 20.0);
    }
    held.expect();
}

TEST(EyeFigures, WithholdWhatTheTracesCannotCarry)
{
    std::mt19937 generator(1);
    std::normal_distribution<float> gauss;
    const auto of = [&](int count, const std::function<float()>& level) {
        KeptSignal kept(33, 100'000);
        std::vector<float> trace(33);
        for (int k = 0; k < count; ++k) {
            std::generate(trace.begin(), trace.end(), level);
            kept.add(trace.data(), k);
        }
        return EyeFigures::of(kept, TraceShape());
    };
    const auto noise = [&] { return gauss(generator); };
    const auto even = [&] {
        return (generator() % 2 ? 1.0F : 0.0F) +
               0.3F * static_cast<float>(generator() % 1000) / 1000.0F;
    };
    const auto near = [&] { return (generator() % 2 ? 4.0F : 0.0F) + gauss(generator); };
    EXPECT_EQ(of(399, noise).reason, Withheld::TooFew);
    EXPECT_EQ(of(20'000, noise).reason, Withheld::NoLevels);
    const EyeFigures uneven = of(20'000, even);
    ASSERT_EQ(uneven.eyes.size(), 1U);
    EXPECT_EQ(uneven.eyes[0].errorRate.reason, Withheld::NotGaussian);
    EXPECT_NEAR(uneven.eyes[0].innerHeight.value, 0.7, 0.001);
    const EyeFigures close = of(20'000, near);
    ASSERT_EQ(close.eyes.size(), 1U);
    EXPECT_FALSE(close.eyes[0].errorRate.isGiven());
    const float nan = std::numeric_limits<float>::quiet_NaN();
    EXPECT_EQ(of(1000, [&] { return nan; }).traceCount, 0);
    EXPECT_EQ(of(1000, [&] { return 5.0F; }).reason, Withheld::NoLevels);

    std::vector<double> three;
    three.reserve(3000);
    std::normal_distribution<double> fine(0.0, 0.001);
    for (int k = 0; k < 3000; ++k)
        three.push_back(0.1 * (k % 3) + fine(generator));
    const JitterFit fit = JitterFit::of(three);
    EXPECT_TRUE(fit.rms.isGiven());
    EXPECT_EQ(fit.random.reason, Withheld::NoModel);
    EXPECT_EQ(fit.total(1e-12).reason, Withheld::NoModel);
    EXPECT_TRUE(std::isnan(fit.later(0.0)));
    EXPECT_EQ(JitterFit::of({0.1, 0.2}).rms.reason, Withheld::TooFew);
}

TEST(Spread, TellsWhatIsSpreadAlongABand)
{
    Truth truth;
    truth.noise = 0.05;
    truth.count = 20'000;
    const KeptSignal kept = truth.make();
    using Direction = Band::Direction;
    // At the middle of symbols, where half of the signal is on either level.
    const Spread levels =
        Spread::of(valuesAlong(kept, TraceShape(), {Direction::Vertical, -0.01, 0.01}));
    expectTrue(levels.sigma, std::hypot(1.0, 0.05), "both levels");
    EXPECT_LT(levels.gaussianFit.value, 0.7);
    // Beside a sample, on the line between two.
    const auto between = valuesAlong(kept, TraceShape(), {Direction::Vertical, 0.03, 0.0325});
    EXPECT_EQ(between.size(), 20'000U);
    truth.noise = 0.0;
    truth.random = 0.01;
    const KeptSignal clean = truth.make();
    std::vector<double> left;
    for (const double time : valuesAlong(clean, TraceShape(), {Direction::Horizontal, -0.1, 0.1})) {
        if (time < 0.0)
            left.push_back(time);
    }
    expectTrue(Spread::of(left).sigma, 0.01, "edges");
    EXPECT_NEAR(Spread::of(left).mean.value, -0.5, 0.0005);
    EXPECT_GT(Spread::of(left).gaussianFit.value, 0.99);
    EXPECT_TRUE(valuesAlong(kept, TraceShape{5, 2.0}, {Direction::Vertical, 0.0, 0.0}).empty());

    Snapshot picture;
    picture.window = {0.0, 4.0, 0.0, 2.0};
    picture.size = {4, 2};
    picture.counts = {1, 2, 3, 4, 5, 6, 7, 8};
    EXPECT_EQ(countsAlong(picture, {Direction::Vertical, 1.0, 3.0}), (std::vector<double>{5, 13}));
    EXPECT_EQ(countsAlong(picture, {Direction::Horizontal, 1.0, 9.0}),
              (std::vector<double>{5, 6, 7, 8}));
}

TEST(ErrorVectors, TellEvmAndMerOfAllSymbolsAndEachCluster)
{
    std::vector<std::complex<double>> ideal;
    ideal.reserve(4);
    for (int k = 0; k < 4; ++k)
        ideal.push_back(std::polar(1.0, M_PI / 4.0 + M_PI / 2.0 * k));
    ErrorVectors errors(ideal);
    Counter::Settings points;
    points.shape.reset();
    Counter counter(points);
    counter.setIdeal({0.0});
    std::mt19937 generator(1);
    std::normal_distribution<double> gauss;
    // An EVM of 5 %, of the last cluster 10 %, and its place off by 0.02.
    for (int k = 0; k < 40'000; ++k) {
        const double evm = k % 4 == 3 ? 0.1 : 0.05;
        const std::complex<double> symbol =
            ideal[static_cast<std::size_t>(k % 4)] + (k % 4 == 3 ? 0.02 : 0.0) +
            evm / M_SQRT2 * std::complex<double>(gauss(generator), gauss(generator));
        const float sample[] = {static_cast<float>(symbol.real()),
                                static_cast<float>(symbol.imag())};
        errors.add(sample[0], sample[1]);
        counter.add(sample, 2, k);
        if (k == 1000)
            counter.setIdeal(ideal); // of those before, too
    }
    errors.add(std::numeric_limits<float>::quiet_NaN(), 0.0F);
    const ErrorVectors::Figures figures = errors.figures();
    const double all = (3.0 * 0.05 * 0.05 + 0.1 * 0.1 + 0.02 * 0.02) / 4.0;
    expectTrue(figures.evm, 100.0 * std::sqrt(all), "EVM");
    expectTrue(figures.mer, -10.0 * std::log10(all), "MER");
    EXPECT_EQ(figures.evm.count, 40'000);
    EXPECT_EQ(counter.errorVectors().figures().evm.value, figures.evm.value);
    ASSERT_EQ(figures.clusters.size(), 4U);
    expectTrue(figures.clusters[0].evm, 5.0, "first cluster");
    expectTrue(figures.clusters[3].evm, 100.0 * std::hypot(0.1, 0.02), "last cluster");
    EXPECT_NEAR(figures.clusters[3].error.real(), 0.02, 4.0 * 0.0707 / 100.0);
    errors.clear();
    EXPECT_EQ(errors.figures().evm.reason, Withheld::TooFew);
    EXPECT_EQ(ErrorVectors().figures().mer.reason, Withheld::NoReference);
}

} // namespace
