// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/values/Tree.h"
#include "workbench/feed/IqFeed.h"
#include "workbench/sources/NrzSource.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numeric>

namespace {

using Points = std::vector<double>;

Points ramp(std::size_t count)
{
    Points samples(count);
    std::iota(samples.begin(), samples.end(), 0.0);
    return samples;
}

struct IqPoints : testing::Test
{
    static Points list(const char* path)
    {
        const auto* value = values::Tree::Instance().FindValue(path);
        const auto& list = dynamic_cast<const values::ValueList<double>*>(value)->GetList();
        return {list.begin(), list.end()};
    }
    static double number(const char* path)
    {
        auto* value = values::Tree::Instance().FindValue(path);
        return dynamic_cast<values::ValueNumeric<double>*>(value)->GetValue();
    }
    void notify(const Points& i, const Points& q)
    {
        iq.take(0, i, q);
        iq.notify();
    }
    IqFeed iq;
};

TEST_F(IqPoints, AreSamplesThinnedOutWhereTheyAreTooMany)
{
    const Points i = ramp(1000);
    const Points q = {i.rbegin(), i.rend()};
    notify(i, q);
    EXPECT_EQ(list(IqValues::iPath), i);
    EXPECT_EQ(list(IqValues::qPath), q);
    notify(i, {}); // a real signal
    EXPECT_EQ(list(IqValues::qPath), Points());

    iq.take(0, ramp(8192), ramp(8192));
    iq.take(8192, ramp(8192), ramp(8192));
    iq.notify();
    const Points thin = list(IqValues::iPath);
    EXPECT_EQ(list(IqValues::qPath), thin);
    ASSERT_EQ(thin.size(), IqFeed::maxPointCount);
    int phases[8] = {}; // of a clock with 8 samples a symbol
    for (std::size_t k = 0; k < thin.size(); ++k) {
        EXPECT_EQ(std::floor(thin[k] / 8.0), double(k % 1024));
        ++phases[int(thin[k]) % 8];
    }
    EXPECT_GT(*std::min_element(phases, phases + 8), 200); // of 256
}

TEST_F(IqPoints, AreTheMiddlesOfSymbolsThatAreKnown)
{
    const NrzSource source; // 40 samples a symbol
    const double first = std::round(*source.firstSymbol());
    iq.open(source, std::nullopt);
    Points received;
    for (std::int64_t position = 0; position < 1000; position += 7) {
        Points block = ramp(7);
        for (double& sample : block)
            sample += double(position);
        iq.take(position, block, block);
    }
    iq.notify();
    const Points middles = list(IqValues::iPath);
    ASSERT_EQ(middles.size(), std::size_t((1000 - first) / 40) + 1);
    for (std::size_t k = 0; k < middles.size(); ++k)
        EXPECT_EQ(middles[k], first + 40.0 * double(k));
    iq.open(source, 1200.0); // another clock than the source's: unknown
    notify(ramp(100), {});
    EXPECT_EQ(list(IqValues::iPath).size(), 100U);
}

TEST_F(IqPoints, FitAxesOfEqualScaleWhateverAFewSay)
{
    const auto expectAxes = [&](double x, double y) {
        EXPECT_NEAR(number(IqValues::xMinPath), -x, 0.01);
        EXPECT_NEAR(number(IqValues::xMaxPath), x, 0.01);
        EXPECT_NEAR(number(IqValues::yMinPath), -y, 0.01);
        EXPECT_NEAR(number(IqValues::yMaxPath), y, 0.01);
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
    iq.fit();
    notify(i, q);
    expectAxes(3.0, 1.0);
    iq.setAspect(0.5);
    expectAxes(1.0, 2.0);
    notify(Points(100, -1.6), {}); // within the second
    expectAxes(2.0, 4.0);
    for (int k = 0; k < IqFeed::fitCount; ++k)
        notify({0.1}, {});
    notify(Points(1000, 9.0), {}); // too late
    expectAxes(2.0, 4.0);
}

} // namespace
