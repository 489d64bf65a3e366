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

/// A signal of given samples, one channel after the other offset by 1000 a channel.
class ListSource : public SignalSource
{
public:
    ListSource(std::vector<double> samples, double rate, std::optional<double> frame = {})
        : m_samples(std::move(samples))
        , m_rate(rate)
        , m_frame(frame)
    {}
    QString name() const override { return QStringLiteral("list"); }
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
        if (!canSeek || position < 0 || position > end())
            return false;
        m_position = position;
        return true;
    }
    bool canSeek = true;

private:
    std::int64_t end() const { return static_cast<std::int64_t>(m_samples.size()); }
    std::vector<double> m_samples;
    double m_rate;
    std::optional<double> m_frame;
    std::int64_t m_position = 0;
};

std::vector<double> ramp(std::size_t count)
{
    std::vector<double> samples(count);
    std::iota(samples.begin(), samples.end(), 0.0);
    return samples;
}

// --- Pacer

TEST(Pacing, CatchesUpALittleAndGivesUpTheRest)
{
    Pacer pacer(30.0, 4);
    pacer.start(1000);
    struct
    {
        std::int64_t now;
        std::int64_t delivered;
        std::int64_t dropped;
        std::int64_t next;
    } const rows[] = {
        {1000, 0, 0, 1033},     {1033, 1, 0, 1067}, {1050, 0, 0, 1067},
        {1067, 1, 0, 1100},     {1233, 4, 1, 1267}, // five periods late
        {11233, 4, 296, 11267},                     // held up for ten seconds
        {11000, 0, 0, 11267},                       // a clock that jumps back is waited for
    };
    for (const auto& row : rows) {
        const Pacer::Due due = pacer.takeDue(row.now);
        EXPECT_EQ(due.delivered, row.delivered) << row.now;
        EXPECT_EQ(due.dropped, row.dropped) << row.now;
        EXPECT_EQ(pacer.nextMs(), row.next) << row.now;
    }
}

// --- SegmentReader

struct Cut
{
    std::vector<double> samples;
    std::vector<double> markers;
    std::vector<std::size_t> starts() const
    {
        std::vector<std::size_t> result;
        for (std::size_t i = 0; i < markers.size(); ++i) {
            if (markers[i] != 0.0)
                result.push_back(i);
        }
        return result;
    }
};

Cut cut(SegmentReader& reader, std::size_t step)
{
    Cut result;
    while (reader.read(step, result.samples, result.markers) > 0) {
    }
    return result;
}

TEST(Segments, AreAsLongAsTheirMarkersSayHoweverTheyAreRead)
{
    struct
    {
        const char* name;
        std::optional<double> frame;
        std::vector<double> samples;
    } const rows[] = {
        {"frames", 100.0, ramp(1000)},
        {"frames of a broken length", 33.4, ramp(1000)},
        {"shortest frames", 1.0, ramp(50)},
        {"one frame too long", 5000.0, ramp(1000)},
        {"no frames", {}, sine(1003)},
        {"silence", {}, std::vector<double>(1003)},
        {"one sample", {}, {0.5}},
        {"nothing", {}, {}},
        {"not numbers", {}, std::vector<double>(500, std::nan(""))},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        std::vector<Cut> cuts;
        for (const std::size_t step : {1U, 7U, 100U, 2000U}) {
            ListSource source(row.samples, 100.0, row.frame);
            SegmentReader reader(source, 0);
            reader.setSegmentLength(64);
            cuts.push_back(cut(reader, step));
            EXPECT_THAT(cuts.back().samples,
                        testing::Pointwise(testing::NanSensitiveDoubleEq(), row.samples));
            EXPECT_EQ(cuts.back().markers, cuts.front().markers);
            EXPECT_EQ(reader.position(), static_cast<std::int64_t>(row.samples.size()));
        }
        const auto starts = cuts.front().starts();
        ASSERT_EQ(starts.empty(), row.samples.empty());
        for (std::size_t i = 0; i + 1 < starts.size(); ++i) {
            const auto length = static_cast<double>(starts[i + 1] - starts[i]);
            EXPECT_EQ(cuts.front().markers[starts[i]], length);
            EXPECT_TRUE(row.frame || std::abs(length - 64.0) <= 8.0) << length;
        }
        for (std::size_t i = 0; row.frame && i < starts.size(); ++i)
            EXPECT_EQ(static_cast<double>(starts[i]),
                      std::ceil(static_cast<double>(i) * *row.frame));
        if (!starts.empty() && !row.frame) { // a frame may be cut short at the end
            EXPECT_EQ(cuts.front().markers[starts.back()],
                      static_cast<double>(row.samples.size() - starts.back()));
        }
    }
}

TEST(Segments, StartWhereTheSignalIsCloseToZero)
{
    ListSource source(sine(5000, 12.0), 100.0);
    SegmentReader reader(source, 0);
    reader.setSegmentLength(100);
    const Cut result = cut(reader, 50);
    const auto starts = result.starts();
    ASSERT_GT(starts.size(), 40U);
    // Samples of this sine are 0.26 apart about zero.
    for (std::size_t i = 1; i < starts.size(); ++i)
        EXPECT_LE(std::abs(result.samples[starts[i]]), 0.13);
}

TEST(Segments, StartAnewAfterASeek)
{
    ListSource plain(ramp(1000), 100.0);
    SegmentReader reader(plain, 1);
    reader.setSegmentLength(100);
    Cut result;
    reader.read(50, result.samples, result.markers);
    ASSERT_TRUE(reader.seek(500));
    EXPECT_FALSE(reader.seek(1001));
    reader.read(2, result.samples, result.markers);
    EXPECT_EQ(result.samples[50], 1500.0); // channel 1
    EXPECT_NE(result.markers[50], 0.0);

    ListSource framed(ramp(1000), 100.0, 40.0);
    SegmentReader frames(framed, 0);
    ASSERT_TRUE(frames.seek(81));
    EXPECT_EQ(frames.position(), 120); // no frame is shown from its middle
}

// --- SignalFeed

struct Feed : testing::Test, IObserver
{
    Feed()
    {
        trigger = find<values::Value<bool>>(TimeValues::triggerPath);
        trigger->Attach(this);
    }
    ~Feed() override { trigger->Detach(this); }
    void Update(Observable*, TChangeCode code) override
    {
        if (code != ccContent)
            return;
        ++notifications;
        EXPECT_EQ(samples().size(), markers().size());
        EXPECT_FALSE(samples().empty());
        received.insert(received.end(), samples().begin(), samples().end());
        receivedMarkers.insert(receivedMarkers.end(), markers().begin(), markers().end());
    }
    template<class T>
    T* find(const char* path)
    {
        return dynamic_cast<T*>(values::Tree::Instance().FindValue(path));
    }
    std::list<double>& samples()
    {
        return find<values::ValueList<double>>(TimeValues::samplesPath)->GetList();
    }
    std::list<double>& markers()
    {
        return find<values::ValueList<double>>(TimeValues::markersPath)->GetList();
    }
    double number(const char* path) { return find<values::ValueNumeric<double>>(path)->GetValue(); }
    ListSource& open(std::vector<double> content, double rate, std::optional<double> frame = {})
    {
        auto source = std::make_unique<ListSource>(std::move(content), rate, frame);
        ListSource& opened = *source;
        feed.open(std::move(source), 0, std::nullopt);
        return opened;
    }
    /// Plays for so many periods, one at a time.
    void playPeriods(int first, int last)
    {
        for (int i = first; i <= last; ++i)
            feed.advance(i * 1000 / 30 + 1);
    }

    SignalFeed feed;
    values::Value<bool>* trigger;
    int notifications = 0;
    std::vector<double> received;
    std::vector<double> receivedMarkers;
};

TEST_F(Feed, PlaysInStepWithTheClockWithoutLosingSamples)
{
    struct
    {
        double rate;
        double speed;
        double inASecond;
    } const rows[] = {
        {48000.0, 1.0, 48000}, {8000.0, 1.0, 8000},      {8000.0, 0.1, 800}, {1000.0, 10.0, 10000},
        {7.0, 1.0, 7},         {30.0e6, 1.0, 30 * 65536}}; // as much as a notification may carry
    for (const auto& row : rows) {
        received.clear();
        notifications = 0;
        open(ramp(3000000), row.rate);
        feed.setSpeed(row.speed);
        feed.play();
        playPeriods(1, 30);
        EXPECT_NEAR(static_cast<double>(received.size()), row.inASecond, 1.0) << row.rate;
        EXPECT_EQ(received, ramp(received.size())) << row.rate;
        EXPECT_EQ(feed.position(), static_cast<std::int64_t>(received.size()));
        EXPECT_EQ(notifications, std::min(30.0, row.inASecond));
    }
    EXPECT_EQ(feed.dropCount(), 0);
}

TEST_F(Feed, WritesTheListsInPlace)
{
    open(ramp(100000), 8000.0); // 266 and 267 samples in turn
    feed.play();
    std::set<const double*> nodes;
    const auto collect = [&] {
        for (const std::list<double>* list : {&samples(), &markers()}) {
            for (const double& value : *list)
                nodes.insert(&value);
        }
    };
    for (int i = 1; i <= 6; ++i) {
        playPeriods(i, i);
        collect();
    }
    const std::size_t known = nodes.size();
    EXPECT_LE(known, 2U * 267U);
    for (int i = 7; i <= 60; ++i) {
        playPeriods(i, i);
        collect();
    }
    EXPECT_EQ(nodes.size(), known);
}

TEST_F(Feed, CatchesUpInOneNotificationAndSkipsWhatIsTooOld)
{
    open(ramp(1000000), 3000.0);
    feed.play();
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
    EXPECT_EQ(markers().front(), 37.0 * 40.0) << "no frame is shown from its middle";
}

TEST_F(Feed, EndsOrStartsOver)
{
    QSignalSpy playing(&feed, &SignalFeed::playingChanged);
    ListSource& source = open(ramp(250), 3000.0);
    feed.setRepeat(false);
    feed.play();
    playPeriods(1, 5);
    EXPECT_EQ(received, ramp(250));
    EXPECT_FALSE(feed.isPlaying());
    ASSERT_EQ(playing.size(), 2);
    EXPECT_FALSE(playing.last().first().toBool());

    feed.setRepeat(true);
    feed.play(); // from the start again
    received.clear();
    receivedMarkers.clear();
    playPeriods(1, 5);
    ASSERT_EQ(received.size(), 500U);
    EXPECT_EQ(received[250], 0.0);
    EXPECT_NE(receivedMarkers[250], 0.0);

    source.canSeek = false; // such as a pipe
    playPeriods(6, 12);
    EXPECT_FALSE(feed.isPlaying());

    open({}, 3000.0);
    feed.play();
    playPeriods(1, 2);
    EXPECT_FALSE(feed.isPlaying()) << "nothing must not repeat for ever";
}

TEST_F(Feed, PlaysThroughToTheEndOfTheOpenSegment)
{
    open(ramp(3000000), 1000.0, 70.0);
    feed.playThrough(0.1);
    EXPECT_EQ(received.size(), 140U);
    feed.playThrough(1e6);
    EXPECT_EQ(received.size(), 3000000U);
    EXPECT_TRUE(feed.repeat());
}

TEST_F(Feed, ShowsTheChosenChannel)
{
    open(ramp(1000), 3000.0);
    feed.play();
    playPeriods(1, 1);
    feed.setChannel(1);
    playPeriods(2, 2);
    ASSERT_EQ(received.size(), 200U);
    EXPECT_EQ(received[99], 99.0);
    EXPECT_EQ(received[100], 1100.0); // goes on where it was
}

TEST_F(Feed, LaysTheSignalOutOnTheTimeAxis)
{
    struct
    {
        double rate;
        std::size_t count;
        std::optional<double> symbolRate;
        TimeScale::Unit unit;
        double samplesPerUnit;
        double xMin;
    } const rows[] = {
        {48000.0, 1000000, {}, TimeScale::Unit::Millisecond, 48.0, -2000.0},
        {48000.0, 24000, {}, TimeScale::Unit::Millisecond, 48.0, -500.0},
        {48000.0, 1000000, 9600.0, TimeScale::Unit::Symbol, 5.0, -19200.0},
        {1.0, 1000, {}, TimeScale::Unit::Second, 1.0, -200.0},
        {4.0e8, 400000, {}, TimeScale::Unit::Microsecond, 400.0, -1000.0},
        {4.0e8, 100, {}, TimeScale::Unit::Nanosecond, 0.4, -250.0},
        {48000.0, 1, {}, TimeScale::Unit::Microsecond, 0.048, -16.0 / 0.048},
    };
    for (const auto& row : rows) {
        feed.open(std::make_unique<ListSource>(ramp(row.count), row.rate), 0, row.symbolRate);
        EXPECT_EQ(feed.scale().unit, row.unit) << row.rate;
        EXPECT_DOUBLE_EQ(number(TimeValues::baudratePath), row.samplesPerUnit) << row.rate;
        EXPECT_NEAR(number(TimeValues::xMinPath), row.xMin, 1e-9) << row.rate;
        EXPECT_EQ(number(TimeValues::xMaxPath), 0.0);
        // Whatever span is chosen, the traces that a diagram keeps cover it.
        for (const double span : {1e-12, 0.01, 1e12}) {
            feed.setSpan(span);
            EXPECT_LE(feed.span() * row.rate, 90.0 * feed.segmentLength()) << row.rate;
            EXPECT_GE(feed.span() * row.rate, 16.0) << row.rate;
        }
    }
}

TEST(Values, LeaveTheTreeWithTheFeed)
{
    for (int i = 0; i < 2; ++i) {
        const SignalFeed feed;
        EXPECT_TRUE(values::Tree::Instance().FindValue(TimeValues::samplesPath));
    }
    for (const char* path : {TimeValues::samplesPath, TimeValues::markersPath,
                             TimeValues::triggerPath, TimeValues::xMinPath, TimeValues::xMaxPath,
                             TimeValues::yMinPath, TimeValues::yMaxPath, TimeValues::baudratePath})
        EXPECT_FALSE(values::Tree::Instance().FindValue(path)) << path;
}

} // namespace
