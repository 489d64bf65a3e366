// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "SentSignal.h"
#include "workbench/receiver/FirFilter.h"

#include <limits>

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();

TEST(ReceiverSettings, TellsWhatCannotBeReceived)
{
    using Settings = ReceiverSettings;
    const auto flawOf = [](auto member, double value) {
        Settings settings = Sending{Mod::Qpsk}.settings();
        settings.*member = value;
        return !settings.flaw(sampleRate).isEmpty();
    };
    for (const double value : {noNumber, infinity, -infinity, -1e300, 1e300})
        EXPECT_TRUE(flawOf(&Settings::shift, value)) << value;
    for (const double shift : {-48000.0, 48000.0})
        EXPECT_FALSE(flawOf(&Settings::shift, shift));
    EXPECT_TRUE(flawOf(&Settings::shift, 48001.0));
    const struct
    {
        std::optional<double> Settings::*member;
        std::vector<double> good;
        std::vector<double> bad;
    } rows[] = {{&Settings::bandwidth, {4.8, 47999.0}, {0.0, -1.0, 5e-324, 4.7, 48000.0}},
                {&Settings::squelch, {-150.0, 60.0}, {-151.0, 61.0}},
                {&Settings::rollOff, {0.01, 1.0}, {0.0, -0.1, 0.009, 1.01}},
                {&Settings::symbolRate, {0.48, 24000.0, 48000.0}, {0.0, -6000.0, 0.47, 24001.0}}};
    for (const auto& row : rows) {
        for (const double value : row.good)
            EXPECT_FALSE(flawOf(row.member, value)) << value;
        for (const double value : row.bad)
            EXPECT_TRUE(flawOf(row.member, value)) << value;
        for (const double value : {noNumber, infinity, -infinity, -1e300, 1e300})
            EXPECT_TRUE(flawOf(row.member, value)) << value;
    }
}

TEST(FirFilter, GivesWhatAPlainSumGivesInBlocksOfAnyLength)
{
    const std::vector<float> taps = {0.7F, -0.2F, 0.31F, 1e-3F, 0.9F};
    std::vector<std::complex<float>> input(5); // the last ones of them before the signal
    FirFilter filter(taps, 3.0F);
    for (const std::size_t count : {1, 15, 0, 16, 17, 40}) {
        std::vector<std::complex<float>> block;
        for (std::size_t k = 0; k < count; ++k) {
            const auto x = static_cast<float>(input.size());
            input.emplace_back(std::sin(x), std::cos(1.3F * x));
            block.push_back(input.back());
        }
        filter.process(block);
        ASSERT_EQ(block.size(), count);
        for (std::size_t k = 0; k < count; ++k) {
            std::complex<float> sum;
            for (std::size_t tap = taps.size(); tap-- > 0;) // the oldest sample first
                sum += taps[tap] * input[input.size() - count + k - tap];
            EXPECT_EQ(block[k], 3.0F * sum) << count << ' ' << k;
        }
    }
}

} // namespace
