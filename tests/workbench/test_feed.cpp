// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "Recordings.h"
#include "platform/values/Tree.h"
#include "workbench/feed/SignalFeed.h"
#include "workbench/sources/NrzSource.h"

#include <QSignalSpy>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <numeric>
#include <set>

namespace {

/// Given samples in the first of two channels, and 1000 more in the second.
class ListSource : public SignalSource
{
public:
    ListSource(std::vector<double> samples, double rate, std::optional<double> frame)
        : m_samples(std::move(samples))
        , m_rate(rate)
        , m_frame(frame)
    {}
    QString name() const override { return "list"; }
    double sampleRate() const override { return m_rate; }
    int channelCount() const override { return 2; }
    std::optional<std::int64_t> sampleCount() const override { return end(); }
    std::optional<double> frameLength() const override { return m_frame; }
    std::int64_t position() const override { return m_position; }
    std::size_t read(std::vector<double>& block, std::size_t count) override
    {
        block.clear();
        for (; block.size() < 2 * count && m_position < end(); ++m_position) {
            block.push_back(m_samples[static_cast<std::size_t>(m_position)]);
            block.push_back(block.back() + 1000.0);
        }
        return block.size() / 2;
    }
    bool seek(std::int64_t position) override
    {
        const bool isPossible = canSeek && position >= 0 && position <= end();
        m_position = isPossible ? position : m_position;
        return isPossible;
    }
    bool canSeek = true;

private:
    std::int64_t end() const { return static_cast<std::int64_t>(m_samples.size()); }
    std::vector<double> m_samples;
    double m_rate;
    std::optional<double> m_frame;
    std::int64_t m_position = 0;
};

std::vector<double> ramp(double count)
{
    std::vector<double> samples(static_cast<std::size_t>(count));
    std::iota(samples.begin(), samples.end(), 0.0);
    return samples;
}

TEST(Pacing, CatchesUpALittleAndGivesUpTheRestWithoutDrifting)
{
    Pacer pacer(30.0, 4);
    pacer.start(1000);
    const std::int64_t rows[][4] = {// now, periods delivered, dropped, end of the next one
                                    {1000, 0, 0, 1033},     {1033, 1, 0, 1067},  {1050, 0, 0, 1067},
                                    {1067, 1, 0, 1100},     {1233, 4, 1, 1267},  {1266, 0, 0, 1267},
                                    {11233, 4, 296, 11267}, {11000, 0, 0, 11267}};
    for (const auto& row : rows) {
        const Pacer::Due due = pacer.takeDue(row[0]);
        EXPECT_EQ(due.delivered, row[1]) << row[0];
        EXPECT_EQ(due.dropped, row[2]) << row[0];
        EXPECT_EQ(pacer.nextMs(), row[3]) << row[0];
    }
}

struct Cut
{
    std::vector<double> samples;
    std::vector<double> markers;
    std::vector<std::size_t> starts;
};

Cut cut(std::vector<double> samples, std::optional<double> frame, std::size_t wanted,
        std::size_t step)
{
    ListSource source(std::move(samples), 100.0, frame);
    SegmentReader reader(source, 0);
    reader.setSegmentLength(wanted);
    Cut result;
    while (reader.read(step, result.samples, result.markers) > 0) {
    }
    for (std::size_t i = 0; i < result.markers.size(); ++i) {
        if (result.markers[i] != 0.0)
            result.starts.push_back(i);
    }
    return result;
}

TEST(Segments, AreAsLongAsTheirMarkersSayHoweverTheyAreRead)
{
    struct
    {
        std::optional<double> frame;
        std::vector<double> samples;
    } const rows[] = {
        {100.0, ramp(1000)},  {33.4, ramp(1000)}, {1.0, ramp(50)},
        {5000.0, ramp(1000)}, {{}, sine(1003)},   {{}, std::vector<double>(1003)}, // silence
        {{}, {0.5}},          {{}, {}},           {{}, std::vector<double>(500, std::nan(""))}};
    for (const auto& row : rows) {
        const Cut expected = cut(row.samples, row.frame, 64, 1);
        EXPECT_THAT(expected.samples,
                    testing::Pointwise(testing::NanSensitiveDoubleEq(), row.samples));
        for (const std::size_t step : {7U, 100U, 2000U})
            EXPECT_EQ(cut(row.samples, row.frame, 64, step).markers, expected.markers) << step;

        std::vector<std::size_t> ends = expected.starts;
        ends.push_back(row.samples.size());
        EXPECT_EQ(ends.front(), 0U);
        for (std::size_t i = 0; i < expected.starts.size(); ++i) {
            const bool isLast = i + 1 == expected.starts.size();
            const auto length = static_cast<double>(ends[i + 1] - ends[i]);
            if (row.frame) { // the end may cut one short
                EXPECT_EQ(ends[i], std::ceil(static_cast<double>(i) * *row.frame));
                EXPECT_TRUE(isLast || expected.markers[ends[i]] == length);
            } else {
                EXPECT_EQ(expected.markers[ends[i]], length);
                EXPECT_TRUE(isLast || std::abs(length - 64.0) <= 8.0) << length;
            }
        }
    }
}

TEST(Segments, StartWhereTheSignalIsCloseToZero)
{
    const Cut result = cut(sine(5000, 12.0), {}, 100, 50);
    ASSERT_GT(result.starts.size(), 40U);
    // Samples of this sine are 0.26 apart about zero.
    for (std::size_t i = 1; i < result.starts.size(); ++i)
        EXPECT_LE(std::abs(result.samples[result.starts[i]]), 0.13);
}

struct Feed : testing::Test, IObserver
{
    Feed() { trigger->Attach(this); }
    ~Feed() override { trigger->Detach(this); }
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
    template<class T>
    static T* find(const char* path)
    {
        return dynamic_cast<T*>(values::Tree::Instance().FindValue(path));
    }
    static std::list<double>& list(const char* path)
    {
        return find<values::ValueList<double>>(path)->GetList();
    }
    static double number(const char* path)
    {
        return find<values::ValueNumeric<double>>(path)->GetValue();
    }
    ListSource& play(std::vector<double> content, double rate)
    {
        auto source = std::make_unique<ListSource>(std::move(content), rate, std::nullopt);
        ListSource& opened = *source;
        feed.open(std::move(source), 0, std::nullopt);
        feed.play();
        return opened;
    }
    void runPeriods(int first, int last)
    {
        for (int i = first; i <= last; ++i)
            feed.advance(i * 1000 / 30 + 1);
    }

    SignalFeed feed;
    std::list<double>& samples = list(TimeValues::samplesPath);
    std::list<double>& markers = list(TimeValues::markersPath);
    values::Value<bool>* trigger = find<values::Value<bool>>(TimeValues::triggerPath);
    int notifications = 0;
    std::vector<double> received;
    std::vector<double> receivedMarkers;
};

TEST_F(Feed, PlaysInStepWithTheClockWithoutLosingSamples)
{
    const double rows[][3] = {
        // sample rate, speed, samples in a second
        {48000.0, 1.0, 48000}, {8000.0, 1.0, 8000},   {8000.0, 0.1, 800}, {1000.0, 10.0, 10000},
        {7.0, 1.0, 7},         {3e7, 1.0, 30 * 65536}}; // as much as notifications may carry
    for (const auto& row : rows) {
        received.clear();
        notifications = 0;
        feed.setSpeed(row[1]);
        play(ramp(3e6), row[0]);
        runPeriods(1, 30);
        const auto count = static_cast<double>(received.size());
        EXPECT_NEAR(count, row[2], 1.0) << row[0];
        EXPECT_EQ(received, ramp(count)) << row[0];
        EXPECT_EQ(feed.position(), count);
        EXPECT_EQ(notifications, std::min(30.0, row[2]));
        EXPECT_EQ(feed.dropCount(), 0);
    }
}

TEST_F(Feed, WritesTheListsInPlace)
{
    play(ramp(100000), 8000.0); // 266 and 267 samples in turn
    std::set<const double*> nodes;
    std::size_t known = 0;
    for (int i = 1; i <= 60; ++i) {
        runPeriods(i, i);
        for (const std::list<double>* written : {&samples, &markers}) {
            for (const double& value : *written)
                nodes.insert(&value);
        }
        known = i == 6 ? nodes.size() : known;
    }
    EXPECT_EQ(nodes.size(), known);
    EXPECT_LE(known, 2U * 267U);
}

TEST_F(Feed, CatchesUpInOneNotificationAndSkipsWhatIsTooOld)
{
    play(ramp(1e6), 3000.0);
    feed.advance(34);
    feed.advance(134); // three periods late
    EXPECT_EQ(notifications, 2);
    EXPECT_EQ(received, ramp(400));
    EXPECT_EQ(feed.dropCount(), 0);

    feed.advance(10134);
    EXPECT_EQ(notifications, 3);
    EXPECT_EQ(feed.dropCount(), 296);
    ASSERT_EQ(received.size(), 800U);
    EXPECT_EQ(received[400], 400.0 + 296 * 100); // and the picture shows the latest
    EXPECT_NE(receivedMarkers[400], 0.0) << "a trace must not bridge the gap";

    NrzSettings settings;
    settings.frameSymbolCount = 37;
    feed.open(std::make_unique<NrzSource>(settings), 0, std::nullopt);
    EXPECT_EQ(feed.dropCount(), 0);
    feed.play();
    feed.advance(10010);
    EXPECT_EQ(markers.front(), 37.0 * 40.0) << "no frame is shown from its middle";
}

TEST_F(Feed, EndsOrStartsOver)
{
    QSignalSpy playing(&feed, &SignalFeed::playingChanged);
    feed.setRepeat(false);
    ListSource& source = play(ramp(250), 3000.0);
    runPeriods(1, 5);
    EXPECT_EQ(received, ramp(250));
    ASSERT_EQ(playing.size(), 2);
    EXPECT_FALSE(playing.last().first().toBool());

    feed.setRepeat(true);
    feed.play(); // from the start again
    runPeriods(1, 5);
    ASSERT_EQ(received.size(), 750U);
    EXPECT_EQ(received[500], 0.0);
    EXPECT_NE(receivedMarkers[500], 0.0);

    source.canSeek = false; // such as a pipe
    runPeriods(6, 12);
    EXPECT_FALSE(feed.isPlaying());
    play({}, 3000.0);
    runPeriods(1, 2);
    EXPECT_FALSE(feed.isPlaying()) << "nothing must not repeat for ever";
}

TEST_F(Feed, PlaysThroughToTheEndOfTheOpenSegment)
{
    feed.open(std::make_unique<ListSource>(ramp(1e6), 1000.0, 70.0), 0, std::nullopt);
    feed.playThrough(0.1);
    EXPECT_EQ(received.size(), 140U);
    feed.playThrough(1e6);
    EXPECT_EQ(received.size(), 1000000U);
}

TEST_F(Feed, SaysOnceWhenThereIsASignalToScaleTo)
{
    QSignalSpy seen(&feed, &SignalFeed::signalSeen);
    std::vector<double> content(500, 0.25);
    content[150] = std::nan("");
    content[350] = 0.5;
    play(content, 3000.0);
    runPeriods(1, 3);
    EXPECT_EQ(seen.size(), 0);
    runPeriods(4, 30); // comes again as the signal repeats
    EXPECT_EQ(seen.size(), 1);
    feed.setWatching(true);
    runPeriods(31, 35);
    EXPECT_EQ(seen.size(), 2);
}

TEST_F(Feed, GoesOnInTheChosenChannel)
{
    play(ramp(1000), 3000.0);
    runPeriods(1, 1);
    feed.setChannel(1);
    runPeriods(2, 2);
    ASSERT_EQ(received.size(), 200U);
    EXPECT_EQ(received[100], 1100.0);
}

TEST_F(Feed, LaysTheSignalOutOnTheTimeAxis)
{
    using Unit = TimeScale::Unit;
    struct
    {
        double rate;
        double count;
        std::optional<double> symbolRate;
        Unit unit;
        double samplesPerUnit;
        double xMin;
    } const rows[] = {
        {48000.0, 1e6, {}, Unit::Millisecond, 48.0, -2000.0},
        {48000.0, 24000, {}, Unit::Millisecond, 48.0, -500.0},
        {48000.0, 1e6, 9600.0, Unit::Symbol, 5.0, -19200.0},
        {1.0, 1000, {}, Unit::Second, 1.0, -200.0},
        {4e8, 400000, {}, Unit::Microsecond, 400.0, -1000.0},
        {4e8, 100, {}, Unit::Nanosecond, 0.4, -250.0},
        {48000.0, 1, {}, Unit::Microsecond, 0.048, -16.0 / 0.048},
    };
    for (const auto& row : rows) {
        auto source = std::make_unique<ListSource>(ramp(row.count), row.rate, std::nullopt);
        feed.open(std::move(source), 0, row.symbolRate);
        EXPECT_EQ(feed.scale().unit, row.unit) << row.rate;
        EXPECT_DOUBLE_EQ(number(TimeValues::baudratePath), row.samplesPerUnit) << row.rate;
        EXPECT_NEAR(number(TimeValues::xMinPath), row.xMin, 1e-9) << row.rate;
        // Whatever span is chosen, the traces that a diagram keeps cover it.
        for (const double span : {1e-12, 0.01, 1e12}) {
            feed.setSpan(span);
            EXPECT_LE(feed.span() * row.rate, 90.0 * feed.segmentLength()) << row.rate;
            EXPECT_GE(feed.span() * row.rate, 15.9) << row.rate;
        }
    }
}

TEST(Values, LeaveTheTreeWithTheFeed)
{
    std::optional<SignalFeed> feed;
    for (int i = 0; i < 2; ++i) {
        feed.emplace();
        EXPECT_TRUE(values::Tree::Instance().FindValue(TimeValues::samplesPath));
        feed.reset();
        EXPECT_FALSE(values::Tree::Instance().FindValue(TimeValues::samplesPath));
    }
}

} // namespace
