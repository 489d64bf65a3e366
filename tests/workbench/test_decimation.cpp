// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/feed/Decimation.h"
#include "workbench/feed/LevelRange.h"
#include "workbench/feed/Segments.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

namespace {

TEST(Segments, AreThinnedOutToTheirExtremes)
{
    std::mt19937 random(1);
    for (const std::size_t factor : {1U, 2U, 5U, 1000U}) {
        Decimation decimation;
        decimation.setFactor(factor);
        for (const std::size_t length : {1U, 7U, 100U, 1001U}) {
            std::vector<double> segment(length), thin, thinMarkers;
            for (double& sample : segment)
                sample = double(random() % 1000);
            segment[0] = std::nan("");
            std::vector<double> segmentMarkers(length);
            segmentMarkers[0] = double(length);
            for (long k = 0; k < long(length); k += 13) { // as it comes
                const long end = std::min(k + 13, long(length));
                decimation.run({&segment[0] + k, &segment[0] + end},
                               {&segmentMarkers[0] + k, &segmentMarkers[0] + end}, thin,
                               thinMarkers);
            }
            EXPECT_EQ(thinMarkers[0], double(thin.size())) << factor << ' ' << length;
            EXPECT_EQ(std::count(thinMarkers.begin(), thinMarkers.end(), 0.0),
                      long(thin.size()) - 1);
            EXPECT_LE(thin.size(), factor == 1 ? length : length / factor + 2);
            if (length > 1) {
                const auto [lowest, highest] =
                    std::minmax_element(segment.begin() + 1, segment.end());
                EXPECT_THAT(thin, testing::IsSupersetOf({*lowest, *highest}));
            }
        }
    }
}

// Levels are gone through in vectors, and singly after the last whole one.
TEST(Levels, OfManySamplesAreThoseOfEachThatIsANumber)
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    std::mt19937 random(3);
    for (std::size_t count = 0; count < 200; ++count) {
        std::vector<double> samples;
        LevelExtremes plain;
        double quietest = infinity;
        for (std::size_t k = 0; k < count; ++k) {
            const double odd[] = {infinity, -infinity, std::nan("")};
            // Few values, so that some are equal.
            const double value = random() % 8 ? double(random() % 90) - 40.0 : odd[random() % 3];
            samples.push_back(value);
            plain.add(value);
            quietest = std::min(quietest, std::isnan(value) ? infinity : std::abs(value));
        }
        LevelExtremes extremes;
        extremes.add(samples.data(), count);
        EXPECT_EQ(extremes.lowest, plain.lowest);
        EXPECT_EQ(extremes.highest, plain.highest);
        if (count == 0)
            continue;
        Segments segments;
        segments.setLength(10000);
        const std::size_t cut = segments.next(0, segments.neededCount(0), false, samples);
        const std::size_t chosen = cut - segments.windowStart();
        ASSERT_LT(chosen, count);
        EXPECT_TRUE(std::abs(samples[chosen]) == quietest || quietest == infinity);
        for (std::size_t k = 0; chosen != count / 2 && k < chosen; ++k)
            EXPECT_NE(std::abs(samples[k]), quietest); // it is the first
    }
}

} // namespace
