// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "TreeAccess.h"
#include "workbench/feed/IqFeed.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

using Points = std::vector<double>;

struct IqPoints : testing::Test
{
    static BlockPart part(const Points& i, const Points& q, std::int64_t position = 0)
    {
        auto block = std::make_shared<SignalBlock>();
        block->position = position;
        block->samples = block->i = i;
        block->q = q;
        return {block, 0, i.size()};
    }
    /// As one data set of as many samples.
    void notify(const Points& i, const Points& q)
    {
        iq.setGateLength(100.0 * double(i.size()));
        iq.take(part(i, q, position));
        position += std::int64_t(i.size()) * 2;
        iq.take(part({std::nan("")}, {}, position)); // the next one begins
        iq.notify();
    }
    IqFeed iq;
    std::int64_t position = 0;
};

TEST_F(IqPoints, AreSamplesThinnedOutWhereTheyAreTooMany)
{
    const Points i = ramp(1000);
    const Points q = {i.rbegin(), i.rend()};
    iq.show({part(i, q)}); // in a hundred data sets
    EXPECT_EQ(listAt(IqValues::iPath), ramp(10, 990.0));
    EXPECT_EQ(listAt(IqValues::qPath).back(), 0.0);
    iq.show({part(i, {})}); // a real signal has none
    EXPECT_TRUE(iq.isEmpty());
    auto quiet = std::make_shared<SignalBlock>(*part(i, q).block);
    quiet->isQuiet.resize(1000, 1);
    quiet->isQuiet[995] = 0;
    iq.show({{quiet, 0, 1000}});
    EXPECT_EQ(listAt(IqValues::iPath), Points{995.0});

    iq.show({part(ramp(1638400), ramp(1638400))});
    const Points thin = listAt(IqValues::iPath);
    EXPECT_EQ(listAt(IqValues::qPath), thin);
    ASSERT_EQ(thin.size(), IqFeed::maxPointCount);
    int phases[8] = {}; // of a clock with 8 samples a symbol
    for (std::size_t k = 0; k < thin.size(); ++k) {
        EXPECT_EQ(std::floor((thin[k] - 1622016.0) / 8.0), double(k));
        ++phases[int(thin[k]) % 8];
    }
    EXPECT_GT(*std::min_element(phases, phases + 8), 200); // of 256
}

/// The data sets that were written last, as many as a view keeps.
struct Sets : IObserver
{
    Sets() { trigger.Attach(this); }
    ~Sets() override { trigger.Detach(this); }
    void Update(Observable*, TChangeCode) override
    {
        newest.push_back(listAt(IqValues::iPath));
        if (newest.size() > IqFeed::setCount)
            newest.erase(newest.begin());
    }
    values::Value<bool>& trigger = valueAt<values::Value<bool>>(IqValues::triggerPath);
    std::vector<Points> newest;
};

TEST_F(IqPoints, AreTheSameHoweverManyAreTakenAtOnce)
{
    std::vector<Points> expected;
    for (const std::size_t together : {1U, 7U, 1000U}) { // parts
        iq.open({});
        iq.setGateLength(3200.0); // 32 samples in a set
        const Sets sets;
        for (std::size_t k = 0; k < 200; ++k) {
            const auto place = std::int64_t(k < 180 ? 111 * k : 1000 * k);
            iq.take(part(ramp(111, double(place)), ramp(111), place));
            if (k % together == together - 1)
                iq.notify();
        }
        iq.notify();
        if (expected.empty())
            expected = sets.newest;
        ASSERT_EQ(sets.newest.size(), 100U);
        EXPECT_EQ(sets.newest, expected) << together;
    }
}

TEST_F(IqPoints, AreSymbolsThatCanBeTrusted)
{
    auto block = std::make_shared<SignalBlock>(*part(ramp(100), ramp(100)).block);
    for (int k = 0; k < 10; ++k) {
        Symbol symbol;
        symbol.position = 10.0 * k + 0.5;
        symbol.value = {float(k), 1.0F};
        symbol.state = k == 5  ? SymbolState::Unlocked
                       : k < 2 ? SymbolState::Edge
                               : SymbolState::Good;
        block->symbols.push_back(symbol);
    }
    iq.open({1.0, 10.0, true, false, true});
    iq.setGateLength(2000.0); // sets of 20 samples
    iq.take({block, 0, 55});
    iq.take({block, 55, 20});
    iq.notify();
    EXPECT_EQ(listAt(IqValues::iPath), Points{4.0});
    iq.take({block, 75, 25});
    iq.notify();
    EXPECT_EQ(listAt(IqValues::iPath), Points({6.0, 7.0}));
    iq.setTrajectory(true);
    EXPECT_FALSE(iq.showsDecisions());
    iq.show({{block, 0, 100}});
    EXPECT_EQ(listAt(IqValues::iPath), Points{99.0});
}

TEST_F(IqPoints, FitAxesOfEqualScaleWhateverAFewSay)
{
    const auto expectAxes = [&](double x, double y) {
        EXPECT_NEAR(numberAt(IqValues::xMinPath), -x, 0.01);
        EXPECT_NEAR(numberAt(IqValues::xMaxPath), x, 0.01);
        EXPECT_NEAR(numberAt(IqValues::yMinPath), -y, 0.01);
        EXPECT_NEAR(numberAt(IqValues::yMaxPath), y, 0.01);
    };
    Points i(1000, 0.4);
    Points q(1000, -0.8);
    i[3] = 50.0;
    q[4] = std::nan("");
    notify(i, q);
    iq.setLevel(2.0);
    expectAxes(2.0, 2.0);
    iq.setAspect(3.0);
    expectAxes(6.0, 2.0);
    iq.fitLevels();
    notify(i, q);
    iq.followLevels(0.0);
    expectAxes(3.0, 1.0);
    iq.setAspect(0.5);
    expectAxes(1.0, 2.0);
    notify(Points(100, -1.6), Points(100, 0.0)); // more than one of a hundred
    iq.followLevels(0.0);
    expectAxes(2.0, 4.0);
}

} // namespace
