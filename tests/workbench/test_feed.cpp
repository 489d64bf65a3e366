// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "Recordings.h"
#include "TreeAccess.h"
#include "workbench/feed/SignalFeed.h"
#include "workbench/pipeline/SpareBlocks.h"

#include <QSignalSpy>
#include <QTest>
#include <QThread>

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>

namespace {

/// Given samples in the first of two channels, and 1000 more in the second.
struct ListSource : SignalSource
{
    ListSource(std::vector<double> content, double sampleRate, std::optional<double> frame = {})
        : samples(std::move(content))
    {
        m_facts.sampleRate = sampleRate;
        m_facts.channelCount = 2;
        m_facts.frameLength = frame;
    }
    std::int64_t count() const { return std::int64_t(samples.size()); }
    std::optional<std::int64_t> sampleCount() const override { return count(); }
    std::int64_t position() const override { return next; }
    std::size_t read(std::vector<double>& block, std::size_t wanted) override
    {
        block.clear();
        for (; block.size() < 2 * wanted && next < count(); ++next) {
            block.push_back(samples[std::size_t(next)]);
            block.push_back(block.back() + 1000.0);
        }
        return block.size() / 2;
    }
    bool seek(std::int64_t position) override
    {
        const bool isPossible = canSeek && position >= 0 && position <= count();
        next = isPossible ? position : next;
        return isPossible;
    }
    std::vector<double> samples;
    std::int64_t next = 0;
    bool canSeek = true;
};

struct Feed : testing::Test, IObserver
{
    Feed()
    {
        trigger.Attach(this);
        feed.transport().setTimeout(std::chrono::minutes(1));
    }
    ~Feed() override { trigger.Detach(this); }
    void Update(Observable*, TChangeCode code) override
    {
        if (code != ccContent)
            return;
        ++notifications;
        EXPECT_EQ(samples.size(), markers.size());
        EXPECT_FALSE(samples.empty());
        received.insert(received.end(), samples.begin(), samples.end());
        receivedMarkers.insert(receivedMarkers.end(), markers.begin(), markers.end());
    }
    ListSource& play(std::vector<double> content, double rate, std::optional<double> frame = {})
    {
        auto source = std::make_unique<ListSource>(std::move(content), rate, frame);
        ListSource& opened = *source;
        feed.open(std::move(source), 0, std::nullopt);
        feed.transport().play();
        return opened;
    }
    void runPeriods(int first, int last)
    {
        for (int i = first; i <= last; ++i)
            feed.transport().advance(i * 1000 / 30 + 1);
    }

    SignalFeed feed;
    std::list<double>& samples =
        valueAt<values::ValueList<double>>(TimeValues::samplesPath).GetList();
    std::list<double>& markers =
        valueAt<values::ValueList<double>>(TimeValues::markersPath).GetList();
    values::Value<bool>& trigger = valueAt<values::Value<bool>>(TimeValues::triggerPath);
    int notifications = 0;
    std::vector<double> received;
    std::vector<double> receivedMarkers;
};

TEST(SpareBlocks, UseMemoryAgainThatNobodyHolds)
{
    const auto spare = std::make_shared<SpareBlocks>();
    SignalBlock one, other;
    one.samples = {1.0, 2.0};
    other.samples = {3.0};
    const double* const memory = one.samples.data();
    SignalBlockPtr held = spare->share(std::move(one));
    SignalBlockPtr also = held;
    const SignalBlockPtr kept = spare->share(std::move(other));
    held.reset();
    EXPECT_FALSE(spare->take());
    also.reset();
    EXPECT_EQ(spare->take().value_or(SignalBlock()).samples.data(), memory);
    EXPECT_FALSE(spare->take());
    EXPECT_EQ(kept->samples, std::vector<double>{3.0});
}

TEST_F(Feed, CutsSegmentsAsLongAsTheirMarkersSayNearZero)
{
    const std::pair<std::optional<double>, std::vector<double>> rows[] = {
        {100.0, ramp(1000)}, {33.4, ramp(1000)},
        {1.0, ramp(50)},     {5000.0, ramp(1000)},
        {{}, sine(1003)},    {{}, std::vector<double>(1003)},
        {{}, {0.5}},         {{}, std::vector<double>(500, std::nan(""))}};
    feed.transport().setRepeat(false);
    for (const auto& [frame, content] : rows) {
        received.clear();
        receivedMarkers.clear();
        play(content, 1920.0, frame); // 64 samples are due at a time
        feed.setSpan(0.1);
        runPeriods(1, 30);
        ASSERT_EQ(received.size(), content.size());
        std::size_t start = 0;
        int count = 0;
        for (; start < content.size(); ++count) {
            const double length = receivedMarkers[start];
            ASSERT_GT(length, 0.0);
            if (frame) {
                EXPECT_EQ(start, std::ceil(count * *frame));
            } else if (start > 0) { // samples of the sine are 0.08 apart about zero
                EXPECT_FALSE(std::abs(content[start]) > 0.04) << start;
            }
            start += std::size_t(length);
            EXPECT_TRUE(frame || start == content.size() || std::abs(length - 64.0) <= 8.0);
        }
        EXPECT_EQ(std::count(receivedMarkers.begin(), receivedMarkers.end(), 0.0),
                  long(content.size()) - count);
    }
}

TEST_F(Feed, PlaysInStepWithTheClockWithoutLosingSamples)
{
    const double rows[][3] = {// sample rate, speed, samples in a second
                              {48000.0, 1.0, 48000},
                              {8000.0, 0.1, 800},
                              {1000.0, 10.0, 10000},
                              {7.0, 1.0, 7}};
    for (const auto& [rate, speed, expected] : rows) {
        received.clear();
        notifications = 0;
        feed.transport().setSpeed(speed);
        play(ramp(3e6), rate);
        runPeriods(1, 30);
        const auto count = double(received.size());
        EXPECT_NEAR(count, expected, 1.0) << rate;
        EXPECT_EQ(received, ramp(count)) << rate;
        EXPECT_EQ(feed.transport().position(), count);
        EXPECT_EQ(notifications, std::min(30.0, expected));
    }
}

TEST_F(Feed, WritesOfALongSegmentWhatTheAxisShowsAndMoreOnceItReachesBack)
{
    QSignalSpy cleared(&feed, &SignalFeed::timeCleared);
    play(ramp(1e6), 3e5); // 10000 samples in a period
    feed.setSpan(0.005);
    runPeriods(1, 10);
    std::size_t start = 0;
    for (; start + 3000 <= received.size(); start += 3000) {
        ASSERT_EQ(receivedMarkers[start], 3000.0) << "two spans";
        ASSERT_EQ(received[start + 2999] - received[start], 2999.0);
    }
    EXPECT_GE(start, 24000U);

    received.clear();
    const double unit = feed.scale().samplesPerUnit;
    feed.reachBack(-2900.0 / unit);
    EXPECT_TRUE(received.empty()) << "so much was written";
    EXPECT_TRUE(cleared.empty());
    feed.reachBack(-20000.0 / unit);
    EXPECT_EQ(cleared.size(), 1);
    EXPECT_GE(received.size(), 20000U);
    runPeriods(11, 12);
    const auto count = double(received.size());
    EXPECT_EQ(received, ramp(count, double(feed.transport().position()) - count));
    EXPECT_EQ(cleared.size(), 1);
}

TEST_F(Feed, CatchesUpInOneNotificationAndPlaysLaterWhatIsTooOld)
{
    play(ramp(1e6), 3000.0);
    feed.transport().advance(34);
    feed.transport().advance(134); // three periods late
    EXPECT_EQ(notifications, 2);
    EXPECT_EQ(received, ramp(400));

    feed.transport().advance(10134);
    EXPECT_EQ(notifications, 3);
    EXPECT_EQ(received, ramp(800));

    ReceiverSettings settings;
    settings.isOn = true;
    settings.hasGainControl = false;
    feed.setReceiver(settings);
    received.clear();
    feed.transport().advance(10201); // goes on where it was
    EXPECT_THAT(received, testing::Pointwise(testing::DoubleNear(0.5), ramp(200, 800.0)));
    feed.setReceiver({});

    received.clear();
    play(ramp(1000), 3e6); // over and over
    runPeriods(1, 30);
    EXPECT_EQ(received.size(), 3000000U);
    EXPECT_EQ(feed.gate().blocks().front()->position, 0) << "each sample once, in order of time";
    EXPECT_EQ(feed.gate().sampleCount(), 1000U);
}

TEST_F(Feed, EndsOrStartsOverAndGoesOnInTheChosenChannel)
{
    QSignalSpy playing(&feed.transport(), &Transport::playingChanged);
    feed.transport().setRepeat(false);
    ListSource& source = play(ramp(250), 3000.0);
    runPeriods(1, 5);
    EXPECT_EQ(received, ramp(250));
    ASSERT_EQ(playing.size(), 2);
    EXPECT_FALSE(playing.last().first().toBool());

    feed.transport().setRepeat(true);
    feed.transport().play(); // from the start again
    runPeriods(1, 5);
    ASSERT_EQ(received.size(), 750U);
    EXPECT_EQ(received[500], 0.0);
    EXPECT_NE(receivedMarkers[500], 0.0);

    source.canSeek = false; // such as a pipe
    runPeriods(6, 12);
    EXPECT_FALSE(feed.transport().isPlaying());
    play({}, 3000.0);
    runPeriods(1, 2);
    EXPECT_FALSE(feed.transport().isPlaying()) << "nothing must not repeat for ever";

    play(ramp(1000), 3000.0);
    runPeriods(1, 1);
    feed.setChannel(1);
    runPeriods(2, 2);
    EXPECT_EQ(received.back(), 1199.0);
    feed.setChannel({1, 0});
    runPeriods(3, 3);
    EXPECT_EQ(received.back(), 1000.0) << "the difference";
}

TEST_F(Feed, PlaysThroughToTheSampleAndShowsAllPanesOfTheGate)
{
    // sample rate, frame, times played one after the other
    const std::tuple<double, std::optional<double>, std::vector<double>> rows[] = {
        {1000.0, 70.0, {0.1, 0.001, 0.05}},
        {3e5, {}, {1e-4, 5.5e-3, 1.0 / 300.0}},
        {360.0, {}, {0.15, 2.0}},
        {1e6, {}, {0.3}}};
    for (const auto& [rate, frame, times] : rows) {
        feed.open(std::make_unique<ListSource>(ramp(1e6), rate, frame), 0, std::nullopt);
        feed.setSpan(0.02);
        double played = 0.0;
        for (const double time : times) {
            received.clear();
            feed.transport().playThrough(time);
            played += std::round(time * rate);
            EXPECT_EQ(feed.transport().position(), played);
            EXPECT_EQ(received.back(), played - 1.0);
            const double shown = std::min(std::ceil(feed.span() * rate), played);
            EXPECT_EQ(feed.gate().samples(), ramp(shown, played - shown)) << rate;
            EXPECT_EQ(listAt(IqValues::iPath).back(), played - 1.0);
        }
    }
    feed.transport().playThrough(1e6);
    EXPECT_EQ(feed.transport().position(), 1000000);
}

/// Counts up, at the rate at which a device does; a moment is long gone when it is read.
struct LiveSource : ListSource
{
    LiveSource()
        : ListSource(ramp(400000), 1e5)
    {
        m_facts.isLive = true;
    }
    std::optional<std::int64_t> sampleCount() const override { return std::nullopt; }
    bool hasEnded() const override { return next >= count(); }
    bool seek(std::int64_t) override { return false; }
};

TEST_F(Feed, LeavesOutBlocksOfALiveSignalThatNobodyTakes)
{
    feed.open(std::make_unique<LiveSource>(), 0, std::nullopt);
    feed.transport().setRepeat(true); // which nothing live can
    QThread::msleep(700);
    feed.transport().play(); // without what came meanwhile
    EXPECT_TRUE(QTest::qWaitFor([&] { return !received.empty() && received.back() > 40000.0; }));
    EXPECT_LT(received.size(), 30000U);
    received.clear();
    receivedMarkers.clear();
    QThread::msleep(1200); // more than may wait has come by now
    for (int i = 1; feed.transport().isPlaying(); ++i) {
        feed.transport().advance(i * 1000 / 30 + 1);
        QTest::qWait(1);
    }
    EXPECT_EQ(received.back(), 399999.0);
    EXPECT_GT(feed.gapCount(), 0);
    EXPECT_LT(feed.gapCount(), 10) << "rather few and long ones";
    EXPECT_GT(feed.leftOutPart(), 0.1);
    EXPECT_LT(feed.leftOutPart(), 0.9);
    std::size_t segment = 0; // each is of samples that came after one another
    for (std::size_t k = 0; k < received.size(); ++k) {
        segment = receivedMarkers[k] > 0.0 ? k : segment;
        ASSERT_EQ(received[k] - received[segment], double(k - segment));
    }
}

TEST_F(Feed, SeeksAndChangesWhatPlaysAtOnce)
{
    play(ramp(1e5), 3000.0);
    runPeriods(1, 1);
    feed.transport().seek(20.0);
    runPeriods(2, 2);
    EXPECT_EQ(received.back(), 60099.0);
    feed.transport().seek(1.0);
    runPeriods(3, 3);
    feed.changeSource(
        [](SignalSource& source) { static_cast<ListSource&>(source).samples[3100] = -7.0; });
    received.clear();
    runPeriods(4, 4);
    EXPECT_EQ(received.front(), -7.0); // though it had been read before
    feed.transport().setRepeat(false);
    feed.transport().setSpeed(Transport::fastest);
    runPeriods(5, 5);
    EXPECT_EQ(feed.transport().position(), 100000);
    EXPECT_EQ(received.back(), 99999.0);
}

TEST_F(Feed, FitsTheLevelsToWhatIsShownAndFollowsItWithoutJumps)
{
    std::vector<double> content(3000, 0.25); // silent, then loud, then quiet
    content[150] = std::nan("");
    for (std::size_t k = 400; k < content.size(); ++k)
        content[k] = (k < 1000 ? 4.0 : 1.0) * (k % 2 == 0 ? 1.0 : -1.0);
    feed.setLevels(-9.0, 9.0);
    feed.fitLevels();
    play(content, 3000.0);
    feed.setSpan(0.1);
    const auto expectTop = [&](int from, int to, double elapsed, double top) {
        runPeriods(from, to);
        feed.time().followLevels(elapsed);
        EXPECT_NEAR(numberAt(TimeValues::yMaxPath), top, 1e-9) << "period " << to;
    };
    expectTop(1, 3, 9.0, 9.0); // there are no levels yet
    EXPECT_EQ(received[150], 0.25) << "where the NaN was";
    expectTop(4, 5, 0.1, 4.4);
    expectTop(6, 15, 2.0, 4.4); // less than half of it is used, but not for long
    expectTop(16, 16, 2.0, 1.1);
    feed.setLevels(-9.0, 9.0);
    expectTop(17, 18, 9.0, 9.0);
}

TEST_F(Feed, LaysTheSignalOutOnTheTimeAxis)
{
    using Unit = TimeScale::Unit;
    // sample rate, sample count, symbol rate; what follows: unit, samples of it, start of the axis
    const std::tuple<double, double, std::optional<double>, Unit, double, double> rows[] = {
        {48000.0, 1e6, {}, Unit::Millisecond, 48.0, -3200.0 / 48.0},
        {48000.0, 1e6, 9600.0, Unit::Symbol, 5.0, -400.0},
        {360.0, 1e6, {}, Unit::Second, 360.0, -4.0},
        {4e8, 400000, {}, Unit::Microsecond, 400.0, -8.0},
        {4e8, 20, {}, Unit::Nanosecond, 0.4, -50.0},
    };
    for (const auto& [rate, count, symbolRate, unit, samplesPerUnit, xMin] : rows) {
        feed.open(std::make_unique<ListSource>(ramp(count), rate), 0, symbolRate);
        EXPECT_EQ(feed.scale().unit, unit) << rate;
        EXPECT_DOUBLE_EQ(numberAt(TimeValues::baudratePath), samplesPerUnit);
        EXPECT_NEAR(numberAt(TimeValues::xMinPath), xMin, 1e-9) << rate;
        feed.setCountingSymbols(false);
        EXPECT_NE(feed.scale().unit, Unit::Symbol);
        EXPECT_NEAR(numberAt(TimeValues::xMinPath) * feed.scale().unitSeconds(), -feed.span(),
                    1e-9 * feed.span());
        feed.setCountingSymbols(true);
        // Whatever span is chosen, the traces that a diagram keeps cover it.
        for (const double span : {1e-12, 0.01, 1e12}) {
            feed.setSpan(span);
            EXPECT_LE(feed.span() * rate, 90.0 * feed.segmentLength()) << rate;
            EXPECT_GE(feed.span() * rate, 15.9) << rate;
        }
    }
}

} // namespace
