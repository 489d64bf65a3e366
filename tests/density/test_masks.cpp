// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "density/Counter.h"
#include "density/MaskTest.h"
#include "density/Truth.h"

#include <gtest/gtest.h>

#include <QRectF>

#include <numeric>

using namespace density;

namespace {

Mask inTheMiddle()
{
    Mask mask;
    mask.name = "Middle";
    mask.polygons = {QPolygonF({{-0.25, 0.5}, {0.0, 0.75}, {0.25, 0.5}, {0.0, 0.25}})};
    mask.symbolCount = 1000;
    return mask;
}

using Trace = std::vector<float>;

TEST(Masks, AreTouchedByLinesThroughAlongAndInsideOfThem)
{
    const TraceShape shape{5, 2.0}; // samples at -1, -0.5, 0, 0.5, 1
    const float nan = std::numeric_limits<float>::quiet_NaN();
    struct
    {
        Trace trace;
        bool isHit;
    } const rows[] = {
        {{1, 1, 1, 1, 1}, false},             // above
        {{1, 1, 0.5F, 1, 1}, true},           // a sample inside
        {{1, 1, 0.75F, 1, 1}, true},          // its corner
        {{1, 1, 0.751F, 1, 1}, false},        // beside the corner
        {{0, 0, 0.1F, 1.2F, 1}, true},        // a line through, all samples outside
        {{0, 0.1F, -0.5F, 1, 1}, false},      // a line past it
        {{1, 1, nan, 0, 0}, false},           // would pass through, but for the bad sample
        {{nan, nan, 0.5F, nan, nan}, true},   // a point
        {{nan, nan, nan, nan, nan}, false},   // nothing
        {{0, -4e30F, 1e30F, 0, 0}, true},     // steep through
        {{0.5F, 0.5F, 1, 0.5F, 0.5F}, false}, // beside it at its level
    };
    for (const auto& row : rows) {
        MaskTest test(inTheMiddle(), shape, 0.0, 0.0, 1.0);
        EXPECT_EQ(test.add(row.trace.data(), 7), row.isHit) << &row - rows;
        EXPECT_EQ(test.result().hitCount, row.isHit ? 1 : 0);
    }
    // Half a symbol later, and between levels of 2 and 6.
    Mask mask = inTheMiddle();
    mask.origin = Mask::Origin::Crossing;
    mask.polygons[0].translate(0.5, 0.0);
    MaskTest later(mask, shape, 0.5, 2.0, 6.0);
    const Trace above{2, 2, 2, 5.1F, 2}, corner{2, 2, 6, 5, 6};
    EXPECT_TRUE(later.add(above.data(), 0)); // its edges pass through
    EXPECT_TRUE(later.add(corner.data(), 0));
    const Trace out{6, 6, 6, 5.01F, 6};
    EXPECT_FALSE(later.add(out.data(), 0));
    // A margin of 0.1 to all sides: the left and right corners are not that near, the top is.
    mask = inTheMiddle();
    mask.polygons = {QPolygonF(QRectF(-0.2, 0.3, 0.4, 0.4))};
    for (const double margin : {0.0, 0.1, -0.1}) {
        mask.margin = margin;
        for (const double beside : {-0.01, 0.01}) {
            MaskTest test(mask, shape, 0.0, 0.0, 1.0);
            const auto level = static_cast<float>(0.7 + margin + beside);
            const Trace flat(5, level);
            EXPECT_EQ(test.add(flat.data(), 0), beside < 0.0) << margin;
        }
    }
}

TEST(Masks, GiveTheirVerdictByTheirLimit)
{
    const TraceShape shape{5, 2.0};
    Mask mask = inTheMiddle();
    mask.mostHits = 2;
    mask.symbolCount = 10;
    mask.polygons.push_back(mask.polygons[0].translated(0.01, 0.0));
    const Trace clear{1, 1, 1, 1, 1}, hit{1, 1, 0.5F, 1, 1};
    using Verdict = MaskTest::Verdict;
    MaskTest test(mask, shape, 0.0, 0.0, 1.0);
    for (int k = 0; k < 10; ++k) {
        EXPECT_EQ(test.result().verdict, Verdict::Running);
        test.add(k == 3 || k == 8 ? hit.data() : clear.data(), 100 + k);
    }
    EXPECT_EQ(test.result().verdict, Verdict::Pass);
    EXPECT_EQ(test.result().newestHits, (std::vector<std::int64_t>{108, 103}));
    EXPECT_EQ(test.result().byPolygon, (std::vector<std::int64_t>{2, 2}));
    EXPECT_FALSE(test.add(hit.data(), 0)); // it has ended
    EXPECT_EQ(test.result().symbolCount, 10);
    MaskTest failing(mask, shape, 0.0, 0.0, 1.0);
    for (int k = 0; k < 3; ++k)
        failing.add(hit.data(), k);
    EXPECT_EQ(failing.result().verdict, Verdict::Fail);
    MaskTest none(Mask(), shape, 0.0, 0.0, 1.0);
    EXPECT_FALSE(none.add(hit.data(), 0));
}

TEST(Masks, StandAtTheCrossingsOrAtTheInstantOfDecision)
{
    Truth truth;
    truth.noise = truth.random = 0.02;
    truth.count = 5000;
    const TraceShape shape;
    EyeFigures figures = EyeFigures::of(truth.make(), shape);
    figures.instant = 0.2; // in so open an eye as good as the middle
    const auto middleOf = [&](const Mask& mask) {
        const auto place = MaskTest::Place::of(mask, figures);
        const MaskTest test(mask, shape, place->instant, place->low, place->high);
        return test.polygons()[0].boundingRect().center();
    };
    EXPECT_NEAR(middleOf(inTheMiddle()).x(), 0.2, 1e-9);
    // Half of 5,000 symbols have a crossing, whose mean deviates by 0.02 / 50.
    EXPECT_NEAR(middleOf(Mask::standard()[1]).x(), 0.0, 0.002);
    EXPECT_NEAR(middleOf(Mask::standard()[1]).y(), 0.0, 0.002);
    Withheld reason = Withheld::No;
    EXPECT_FALSE(MaskTest::Place::of(inTheMiddle(), EyeFigures(), &reason));
    EXPECT_EQ(reason, Withheld::TooFew);
}

TEST(Masks, ComeBackFromTheirTextAndSayWhatIsWrongWithIt)
{
    std::vector<Mask> masks = Mask::standard();
    masks.push_back(inTheMiddle());
    masks.back().levels = Mask::Levels::Absolute;
    masks.back().margin = -0.015;
    masks.back().mostHits = 3;
    for (const Mask& mask : masks) {
        EXPECT_TRUE(mask.isUsable()) << mask.name.toStdString();
        QString error;
        const auto read = Mask::fromJson(mask.toJson(), &error);
        ASSERT_TRUE(read) << error.toStdString();
        EXPECT_EQ(read->toJson(), mask.toJson());
        EXPECT_EQ(read->polygons, mask.polygons);
        EXPECT_TRUE(error.isEmpty());
    }
    const QByteArray good = inTheMiddle().toJson();
    struct
    {
        const char *part, *other, *named;
    } const rows[] = {{"{", "[", "byte"},
                      {"mask/1", "mask/2", "schema"},
                      {"\"relative\"", "\"somehow\"", "levels"},
                      {"\"middle\"", "\"left\"", "origin"},
                      {"\"margin\": 0", "\"margin\": \"0\"", "margin"},
                      {"\"hits\": 0", "\"hits\": 0.5", "hits"},
                      {"\"symbols\": 1000", "\"symbols\": 0", "limit"},
                      {"0.75", "[]", "pair"},
                      {"0.75", "1e300", "million"},
                      {"\"polygons\"", "\"polygon\"", "polygons"}};
    for (const auto& row : rows) {
        QByteArray bad = good;
        bad.replace(bad.indexOf(row.part), static_cast<int>(strlen(row.part)), row.other);
        QString error;
        EXPECT_FALSE(Mask::fromJson(bad, &error)) << row.part;
        EXPECT_TRUE(error.contains(row.named)) << error.toStdString();
        EXPECT_FALSE(Mask::fromJson(bad));
    }
    for (int length = 0; length + 2 < good.size(); ++length)
        EXPECT_FALSE(Mask::fromJson(good.left(length)));
}

TEST(WayBack, FindsExactlyThePlantedRuntsAndMaskHits)
{
    Truth truth;
    truth.noise = 0.02;
    truth.random = 0.01;
    truth.count = 120'000;
    const KeptSignal signal = truth.make();
    // Runts: the middle of a symbol is at 0 instead of at a level. Some are too old to be kept.
    const std::vector<std::int64_t> planted{100, 19'999, 20'001, 50'000, 50'001, 119'999};
    Counter counter({});
    Mask mask = inTheMiddle();
    mask.symbolCount = 1'000'000;
    MaskTest test(mask, TraceShape(), 0.0, -1.0, 1.0);
    for (std::size_t age = signal.count(); age-- > 0;) {
        const std::int64_t symbol = signal.symbolAt(age);
        Trace trace(signal.at(age), signal.at(age) + signal.length());
        if (std::count(planted.begin(), planted.end(), symbol))
            trace[16] = 0.0F;
        counter.add(trace.data(), trace.size(), symbol);
        test.add(trace.data(), symbol);
    }
    const GridSize size;
    std::vector<std::int64_t> found;
    for (const Counter::Hit& hit :
         counter.hits(Window{}, size, size.columns / 2, size.rows / 2, 100))
        found.push_back(hit.symbol);
    EXPECT_EQ(found, (std::vector<std::int64_t>{119'999, 50'001, 50'000, 20'001}));
    const std::vector<Counter::Hit> newest =
        counter.hits(Window{}, size, size.columns / 2, size.rows / 2, 1);
    ASSERT_EQ(newest.size(), 1U);
    EXPECT_EQ(counter.kept().symbolAt(newest[0].age), 119'999);
    EXPECT_EQ(counter.kept().at(newest[0].age)[16], 0.0F);
    // Where nothing passed.
    EXPECT_TRUE(counter.hits(Window{}, size, size.columns / 2, size.rows / 2 + 40, 100).empty());
    EXPECT_EQ(test.result().newestHits,
              (std::vector<std::int64_t>(planted.rbegin(), planted.rend())));
}

} // namespace
