// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/feed/Decimation.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
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

} // namespace
