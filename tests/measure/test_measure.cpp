// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "receiver/SentSignal.h"
#include "workbench/measure/CarrierPhases.h"
#include "workbench/measure/ConstellationReadings.h"
#include "workbench/measure/CrossingClock.h"
#include "workbench/measure/EyeReadings.h"
#include "workbench/measure/EyeTraces.h"
#include "workbench/measure/LevelReadings.h"

namespace {

std::optional<LevelReadings> levelOf(const std::vector<double>& samples, double sampleRate)
{
    return LevelReadings::of(samples.data(), samples.size(), sampleRate);
}

TEST(LevelMeasurement, KnowsTheFrequencyOfASineWithGapsNoiseOrFewPeriods)
{
    for (const double hertz : {50.0, 123.4, 3100.0}) {
        Random random;
        std::vector<double> samples(48000);
        for (std::size_t k = 0; k < samples.size(); ++k)
            samples[k] = 0.3 + 0.5 * std::sin(2.0 * pi * hertz * double(k) / 48000.0) +
                         0.03 * random.noise();
        samples[77] = noNumber;
        samples[200] = infinity;
        std::fill_n(samples.begin() + 20000, 1920, noNumber);
        EXPECT_NEAR(levelOf(samples, 48000.0)->mean, 0.3, 2e-3);
        EXPECT_NEAR(levelOf(samples, 48000.0)->frequency.value_or(0.0), hertz, 2e-3 * hertz);
        samples.resize(std::size_t(4.6 * 48000.0 / hertz));
        EXPECT_NEAR(levelOf(samples, 48000.0)->frequency.value_or(0.0), hertz, 1e-2 * hertz);
    }
}

TEST(LevelMeasurement, GoesOnWhereLevelsAreKnown)
{
    LevelMeter meter;
    constexpr std::size_t rest = 100; // all alike for as long as levels are looked for, then a sine
    for (std::size_t k = 0; k < 2 * LevelMeter::mostForLevels + rest; ++k)
        meter.add(k < LevelMeter::mostForLevels ? 0.5 : std::sin(0.3 * double(k)));
    EXPECT_NEAR(*meter.readings(2.0 * pi)->frequency, 0.3, 1e-6);
    EXPECT_NEAR(meter.readings(1.0)->mean, 0.25, 1e-4);
}

TEST(LevelMeasurement, KnowsTheFrequencyOfPulsesHoweverShort)
{
    for (const double duty : {0.005, 0.03, 0.2, 0.5, 0.97}) {
        Random random;
        std::vector<double> samples(48000);
        for (std::size_t k = 0; k < samples.size(); ++k)
            samples[k] = 5.0 + (double(k % 400) < 400.0 * duty ? 1.0 : 0.0) + 0.05 * random.noise();
        samples[5000] = duty < 0.02 ? 5.0 : 30.0; // a click, one pulse more at most
        EXPECT_NEAR(levelOf(samples, 48000.0)->frequency.value_or(0.0), 120.0, 1.1) << duty;
    }
}

TEST(LevelMeasurement, KnowsNoFrequencyOfWhatHasNone)
{
    for (unsigned seed = 0; seed < 200; ++seed) {
        Random random(seed);
        std::vector<double> samples(2000);
        double smooth = 0.0;
        for (double& sample : samples)
            sample = smooth = 0.01 * double(seed % 100) * smooth + random.noise();
        EXPECT_FALSE(levelOf(samples, 1.0)->frequency) << seed;
        std::fill(samples.begin(), samples.end(), 0.0); // heart beats
        for (std::size_t k = 5; k < samples.size(); k += 60 + random.below(50))
            samples[k] = 1.0;
        EXPECT_FALSE(levelOf(samples, 1.0)->frequency) << seed;
    }
    EXPECT_FALSE(levelOf(std::vector<double>(100, 0.5), 1.0)->frequency);
    EXPECT_FALSE(levelOf({0, 1, 0, 1, 0, 1, 0}, 1.0)->frequency) << "two periods";
    for (const std::vector<double>& none : {std::vector<double>(), {noNumber, infinity}})
        EXPECT_FALSE(levelOf(none, 1.0));
    EXPECT_EQ(levelOf({1e300, -1e300}, 1.0)->highest, 1e300);
}

constexpr int perSymbol = 32;
constexpr int shown = 2;
constexpr std::size_t traceLength = shown * perSymbol + 1;

/// Traces of a random signal with straight edges, half a symbol long about their instants.
struct Eye
{
    unsigned levels = 2;
    double noise = 0.0; // rms at the samples
    double ones = 1.0;  // times that of what is above the middle
    std::size_t traces = 2000;

    std::vector<double> samples() const
    {
        Random random;
        std::vector<double> result;
        for (std::size_t trace = 0; trace < traces; ++trace) {
            double symbols[4]; // middles at -1, 0 and 1 symbols, and the one after
            for (double& symbol : symbols)
                symbol = random.below(levels);
            for (std::size_t i = 0; i < traceLength; ++i) {
                const double time = double(i) / perSymbol - 1.0;
                double value = symbols[0];
                for (int k = 0; k < 3; ++k)
                    value += (symbols[k + 1] - symbols[k]) *
                             std::clamp(2.0 * (time - k) + 1.5, 0.0, 1.0);
                result.push_back(value + (value > 0.5 ? ones : 1.0) * noise * random.noise());
            }
        }
        return result;
    }
    std::optional<EyeReadings> read() const
    {
        return EyeReadings::of(samples(), traceLength, shown);
    }
};

TEST(EyeMeasurement, TellsLevelsOfUnevenNoiseAndNoneFromMany)
{
    Eye eye;
    eye.noise = 0.03;
    eye.ones = 2.0;
    const EyeReadings::Eye uneven = eye.read().value().eyes[0];
    EXPECT_NEAR(uneven.lowSigma, 0.03, 0.002);
    EXPECT_NEAR(uneven.highSigma, 0.06, 0.004);
    EXPECT_LT(uneven.innerHeight, uneven.height);
    eye.noise = 0.13;
    EXPECT_LT(eye.read()->eyes[0].height, 0.0);
    EXPECT_EQ(eye.read()->eyes[0].opening, 0.0) << "closed";
    eye.noise = 0.04;
    eye.ones = 1.0;
    eye.levels = 8;
    EXPECT_FALSE(eye.read());
    eye.levels = 2;
    std::vector<double> struck = eye.samples();
    std::for_each_n(struck.begin(), 20 * traceLength, [](double& sample) { sample += 50.0; });
    EXPECT_EQ(EyeReadings::of(struck, traceLength, shown).value().levelCount(), 2) << "a click";

    // Two levels that their neighbours split, as behind a narrow filter, and rare ones.
    Random random;
    const auto bit = [&] { return random.below(2) ? 1.0 : -1.0; };
    for (const bool isRare : {false, true}) {
        std::vector<double> flat;
        for (int trace = 0; trace < 500; ++trace)
            flat.insert(flat.end(), traceLength,
                        isRare ? random.below(10) / 9 + 0.02 * random.noise()
                               : 0.15 * (bit() + bit()) + 0.7 * bit());
        const auto readings = EyeReadings::of(flat, traceLength, shown);
        ASSERT_EQ(readings.value().levelCount(), 2) << isRare;
        EXPECT_FALSE(readings->eyes[0].width || readings->eyes[0].crossing) << "no transitions";
    }
    for (unsigned seed = 0; seed < 100; ++seed) {
        Random noise(seed);
        std::vector<double> noises(100 * traceLength), sine(100 * traceLength);
        for (std::size_t k = 0; k < sine.size(); ++k) {
            noises[k] = noise.noise();
            sine[k] = std::sin(0.37 * double(k) + seed);
        }
        EXPECT_FALSE(EyeReadings::of(noises, traceLength, shown)) << seed;
        EXPECT_FALSE(EyeReadings::of(sine, traceLength, shown)) << seed;
    }
}

TEST(EyeMeasurement, IsNotKnownOfTooLittleOrBadSamples)
{
    Eye eye;
    eye.traces = EyeReadings::minTraceCount - 1;
    EXPECT_FALSE(eye.read());
    eye.traces = 100;
    std::vector<double> samples = eye.samples();
    EXPECT_FALSE(EyeReadings::of(samples, traceLength, 1)->eyes[0].width) << "no neighbours";
    EXPECT_FALSE(EyeReadings::of(samples, traceLength, 0));
    EXPECT_TRUE(EyeReadings::of(samples, traceLength, 40)); // more symbols than samples
    for (const std::size_t length : {std::size_t(0), std::size_t(2), samples.size() + 1})
        EXPECT_FALSE(EyeReadings::of(samples, length, shown));
    for (std::size_t k = 0; k < samples.size(); k += 2 * traceLength)
        samples[k] = k % 3 == 0 ? noNumber : infinity; // every other trace
    EXPECT_TRUE(EyeReadings::of(samples, traceLength, shown));
    for (const double value : {noNumber, 1.0})
        EXPECT_FALSE(EyeReadings::of(std::vector<double>(6500, value), traceLength, shown));
}

TEST(ConstellationMeasurement, IsNotKnownOfTooLittleOrBadPoints)
{
    const std::vector<Complex> ideal = {{1.0, 1.0}, {-1.0, 1.0}, {1.0, -1.0}, {-1.0, -1.0}};
    const std::pair<std::size_t, double> cases[] = {{0, 1.0}, {15, 1.0}, {99, 0.0}, {99, 1e300}};
    for (const auto& [count, value] : cases) {
        const std::vector<double> axis(count, value);
        EXPECT_FALSE(ConstellationReadings::of(axis, axis, ideal)) << count;
    }
    EXPECT_FALSE(ConstellationReadings::of({1.0, 2.0}, {1.0, 2.0}, {}));
}

TEST(CrossingClock, FollowsWanderButNotJitter)
{
    // A clock 100 ppm off that wanders by a period of the record; jitter; a sine of some symbols.
    const double rows[][3] = {{0.0, 0.02, 0.0}, {0.2, 0.02, 0.0}, {0.0, 0.0, 0.1}, {0.2, 0.0, 0.1}};
    for (const auto& [wander, jitter, sine] : rows) {
        Random random;
        std::vector<crossingClock::Crossing> crossings;
        for (double symbol = 0.0; symbol < 16000.0; symbol += 1.0 + random.below(3))
            crossings.push_back({0, symbol,
                                 0.3 + 1e-4 * symbol + jitter * random.noise() +
                                     sine * std::sin(2.0 * pi * symbol / 9.7) +
                                     wander * std::sin(2.0 * pi * symbol / 16000.0)});
        double square = 0.0, most = 0.0;
        for (const double offset : crossingClock::offsetsOf(crossings).values) {
            square += offset * offset / double(crossings.size());
            most = std::max(most, std::abs(offset));
        }
        const double truth = std::hypot(jitter, sine * std::sqrt(0.5));
        // 8000 crossings: 1 / sqrt(16000), three times; what a clock of 370 of them takes off.
        EXPECT_NEAR(std::sqrt(square), truth, 0.03 * truth);
        // Where a line follows wander at an end, 2 of 185 crossings' deviations.
        EXPECT_LT(most, sine > 0.0 ? 1.1 * sine : 5.0 * jitter);
    }
}

TEST(Regression, CoversTheTruthByItsDeviation)
{
    // Points, stretches, memory of errors from point to point.
    for (const auto& [points, stretches, memory] :
         {std::tuple(400U, 1U, 0.0), {4U, 100U, 0.0}, {60U, 5U, 0.0}, {2000U, 2U, 0.9}}) {
        double squares = 0.0;
        constexpr int trials = 400;
        Random random;
        for (int trial = 0; trial < trials; ++trial) {
            Regression line;
            for (std::size_t stretch = 0; stretch < stretches; ++stretch) {
                line.startStretch();
                double error = random.noise() / std::sqrt(1.0 - memory * memory);
                const double start = 1e6 * random.noise();
                for (std::size_t k = 0; k < points; ++k) {
                    const double time = 1e5 + double(stretch * 3000 + k);
                    line.add(time, start + 2.5 * double(k) + error);
                    error = memory * error + random.noise();
                }
            }
            const auto slope = line.slope();
            ASSERT_TRUE(slope && slope->deviation);
            squares += std::pow((slope->value - 2.5) / *slope->deviation, 2) / trials;
        }
        // 15 batches: as Student's t, 1.08; of 400 trials within four deviations.
        EXPECT_NEAR(std::sqrt(squares), 1.04, 0.18);
    }
    Regression line;
    EXPECT_FALSE(line.slope());
    line.add(1.0, 2.0);
    EXPECT_FALSE(line.slope());
    line.add(2.0, 5.0);
    EXPECT_EQ(line.slope()->value, 3.0);
    EXPECT_FALSE(line.slope()->deviation);
}

TEST(Regression, JoinsStretchesThatGoOnUpToAnAmbiguity)
{
    for (const double step : {0.0, 3.0, 0.6}) { // ambiguities of 1.5
        Random random;
        Regression line;
        for (int k = 0; k < 450; ++k) {
            if (k == 250)
                line.startStretch();
            if (k < 200 || k >= 250)
                line.add(k, 0.01 * k + (k < 225 ? 0.0 : step) + 0.01 * random.noise());
        }
        const Regression::Slope apart = line.slope().value();
        line.join(1.5);
        const Regression::Slope joined = line.slope().value();
        // A line twice as long has half the deviation.
        EXPECT_EQ(*joined.deviation < 0.75 * *apart.deviation, step != 0.6) << step;
        EXPECT_NEAR(joined.value, 0.01, 4.0 * *joined.deviation) << step;
    }
}

TEST(Regression, JoinsStretchesOfPointsThatNoiseHides)
{
    double apart = 0.0, joined = 0.0; // sums of squares
    for (unsigned seed = 0; seed < 60; ++seed) {
        Random random(seed);
        Regression line;
        for (int k = 0; k < 2000; ++k) {
            if (k == 1000)
                line.startStretch();
            line.add(k, 0.01 * k + (k < 1000 ? 0.0 : 1.5) + 0.45 * random.noise());
        }
        apart += std::pow(line.slope()->value - 0.01, 2);
        line.join(1.5);
        joined += std::pow(line.slope()->value - 0.01, 2);
    }
    // A quarter of it; each sum within a factor of 1.5, three times sqrt(2 / 60), of its mean.
    EXPECT_LT(joined, 0.5 * apart);
}

TEST(CarrierPhases, ComeToTheBoundOfSymbolsThatAreInDoubt)
{
    // 16QAM of 10 dB, looked at from phases of a loop that shakes and has drifted.
    std::vector<Complex> ideal;
    ideal.reserve(16);
    for (int k = 0; k < 16; ++k)
        ideal.push_back(Complex(2.0 * (k % 4) - 3.0, 2.0 * (k / 4) - 3.0) / std::sqrt(10.0));
    const Decisions decisions(ideal);
    constexpr double noise = 0.05, turn = 2e-4;
    constexpr int count = 4000, trials = 40;
    double square = 0.0;
    for (unsigned seed = 0; seed < trials; ++seed) {
        Random random(seed);
        const double start = 6.0 * random.noise();
        std::vector<CarrierPhases::Symbol> symbols;
        for (int k = 0; k < count; ++k) {
            const double off = 0.05 * std::sin(0.011 * k + start) + 0.05 * (k / 2000.0 - 1.0);
            const Complex point = ideal[random.below(16)] * std::polar(1.0, -off) +
                                  std::sqrt(noise) * Complex(random.noise(), random.noise());
            symbols.push_back({turn * k + off, point, k == 0});
        }
        Regression line;
        const auto phases = CarrierPhases(decisions, noise, false).of(symbols);
        for (std::size_t k = 0; k < phases.size(); ++k)
            line.add(double(k), phases[k].value, phases[k].weight);
        square += std::pow(line.slope()->value - turn, 2) / trials;
    }
    // 16 points of 10 dB tell 0.232 of what known ones do; 40 trials, three deviations.
    const double bound = std::sqrt(6.0 / (std::pow(count, 3) * 10.0 * 0.232));
    EXPECT_LT(std::sqrt(square), bound * (1.1 + 3.0 / std::sqrt(2.0 * trials)));
}

/// A stretch of signal whose samples are their own positions, a symbol in the middle of each eight.
SignalBlock blockAt(std::int64_t position, std::size_t count, bool isAfterGap)
{
    SignalBlock block;
    block.position = position;
    block.time = double(position) / sampleRate;
    block.isAfterGap = isAfterGap;
    block.gain = 2.0; // of the constellation alone
    for (std::size_t k = 0; k < count; ++k) {
        const double place = double(position) + double(k);
        block.samples.push_back(place);
        if (k % 8 == 4) {
            block.symbols.emplace_back();
            block.symbols.back().position = place;
            block.symbols.back().time = place / sampleRate;
            block.symbols.back().state = SymbolState::Good;
        }
    }
    return block;
}

TEST(EyeTraces, AreOneOfEachSymbolThatIsWhole)
{
    SignalFormat format;
    format.sampleRate = sampleRate;
    format.samplesPerSymbol = 8.0;
    const auto countOf = [&](const std::vector<SignalBlock>& blocks, double from = 0.0,
                             double to = 1.0, std::size_t most = 1000) {
        return EyeTraces::of(shared(blocks), from, to, format, 0.0, most).count();
    };
    const SignalBlock first = blockAt(80, 800, true), next = blockAt(880, 400, false);
    EXPECT_EQ(countOf({first, next}), 148U) << "100 and 50 symbols, less those at the ends";
    EXPECT_EQ(countOf({first, blockAt(960, 400, true)}), 146U) << "none over a gap";
    EXPECT_EQ(countOf({first, next}, 164.0 / sampleRate, 884.0 / sampleRate), 90U);
    SignalBlock bad = first;
    bad.symbols[50].state = SymbolState::Unlocked;
    EXPECT_EQ(countOf({bad, next}), 145U) << "nor beside a symbol that is not good";
    bad = first;
    bad.isQuiet.assign(800, 0);
    bad.isQuiet[400] = 1; // between two symbols
    EXPECT_EQ(countOf({bad, next}), 146U) << "nor over silence";
    bad = first;
    bad.symbols.erase(bad.symbols.begin() + 50);
    EXPECT_EQ(countOf({bad, next}), 145U) << "nor where one is missing";
    // Of 148 every fourth stretch of three is left.
    const EyeTraces few = EyeTraces::of(shared({first, next}), 0.0, 1.0, format, 0.0, 50);
    EXPECT_EQ(few.count(), 39U);
    EXPECT_EQ(few.skipped, 148 - 39);
    // From the middle of the symbol before to that of the one after, in the signal's own level.
    const EyeTraces all = EyeTraces::of(shared({first, next}), 0.0, 1.0, format, 0.0, 1000);
    for (std::size_t trace = 10; trace < 130; ++trace) {
        const double middle = 84.0 + 8.0 * double(trace + 1);
        for (std::size_t k = 0; k < EyeTraces::length; ++k)
            EXPECT_NEAR(all.samples[trace * EyeTraces::length + k],
                        middle + (double(k) - 32.0) / 4.0, 1e-3);
        EXPECT_EQ(all.nearest[trace], middle);
    }
}

} // namespace
