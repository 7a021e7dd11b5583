// SPDX-License-Identifier: MIT
#include "platform/drawing/linerule.h"

#include <gtest/gtest.h>

namespace sixtrace::test {
namespace {

TEST(LineRule, OffsetsAreTheNearestIntegersWithHalvesTowardsTheEnd) {
    const LineRule rule{4, 2}; // offsets 0, 0.5, 1, 1.5, 2
    EXPECT_EQ(rule.offset(0), 0);
    EXPECT_EQ(rule.offset(1), 1);
    EXPECT_EQ(rule.offset(2), 1);
    EXPECT_EQ(rule.offset(3), 2);
    EXPECT_EQ(rule.offset(4), 2);
}

TEST(LineRule, ALineWithoutLengthHasNoOffset) {
    EXPECT_EQ(LineRule{}.offset(0), 0);
}

TEST(LineRule, FirstStepOfIsTheFirstStepThatReachesAnOffset) {
    for (std::int64_t length = 1; length <= 30; ++length) {
        for (std::int64_t rise = 1; rise <= length; ++rise) {
            const LineRule rule{length, rise};
            for (std::int64_t value = 1; value <= rise; ++value) {
                const std::int64_t step = rule.firstStepOf(value);
                EXPECT_GE(rule.offset(step), value);
                EXPECT_LT(rule.offset(step - 1), value);
            }
        }
    }
}

TEST(StepsInside, AreThoseWhoseCoordinateLiesOnTheSurface) {
    for (const int sign : {-1, 1}) {
        for (std::int64_t start = -15; start <= 15; ++start) {
            const StepRange range = stepsInside(start, sign, 10);
            for (std::int64_t k = -30; k <= 30; ++k) {
                const std::int64_t at = start + sign * k;
                EXPECT_EQ(k >= range.first && k <= range.last, at >= 0 && at < 10);
            }
        }
    }
}

TEST(OffsetStepsInside, AreThoseWhoseOffsetLiesOnTheSurface) {
    for (const int sign : {-1, 1}) {
        for (std::int64_t start = -15; start <= 25; ++start) {
            for (std::int64_t rise = 0; rise <= 23; ++rise) {
                const LineRule rule{23, rise};
                const StepRange range = offsetStepsInside(rule, start, sign, 10);
                for (std::int64_t k = 0; k <= 23; ++k) {
                    const std::int64_t at = start + sign * rule.offset(k);
                    EXPECT_EQ(k >= range.first && k <= range.last, at >= 0 && at < 10);
                }
            }
        }
    }
}

} // namespace
} // namespace sixtrace::test
